#include "parsecs/diff/Matching.h"

#include <cstdint>
#include <unordered_map>
#include <utility>

namespace plugincs {

namespace {

// Declarations that are alike in something.
struct Group {
    std::vector<Declared*> old;
    std::vector<Declared*> now;

    bool IsPair() const { return old.size() == 1 && now.size() == 1; }
};

using Groups = std::unordered_map<std::uint64_t, Group>;

class Matcher {
  public:
    explicit Matcher(std::vector<Change>& changes) : changes_(changes) {}

    void Run(Declared& old, Declared& now) {
        Join(old, now);
        while (!pending_.empty()) {
            const auto [one, other] = pending_.back();
            pending_.pop_back();
            MatchBelow(*one, *other);
        }
    }

  private:
    void Join(Declared& old, Declared& now) {
        old.partner = &now;
        now.partner = &old;
        if (old.signature != now.signature) Tell(ChangeKind::Signature, old, now);
        if (old.body != now.body) Tell(ChangeKind::Body, old, now);
        pending_.emplace_back(&old, &now);
    }

    void Tell(ChangeKind kind, const Declared& old, const Declared& now) {
        changes_.push_back(MakeChange(kind, &old, &now));
    }

    void MatchBelow(Declared& old, Declared& now) {
        for (auto& [key, group] : Grouped(old, now, &Declared::key)) JoinAlike(group);
        Groups left = Grouped(old, now, &Declared::nameKey);
        for (auto& [key, group] : left) {
            const bool lone = group.IsPair();
            DropJoined(group);
            JoinNamesakes(group, lone);
        }
    }

    static Groups Grouped(Declared& old, Declared& now, std::uint64_t Declared::*key) {
        Groups groups;
        ForEachBelow(old, [&](Declared& each) { groups[each.*key].old.push_back(&each); });
        ForEachBelow(now, [&](Declared& each) { groups[each.*key].now.push_back(&each); });
        return groups;
    }

    static void DropJoined(Group& group) {
        const auto isJoined = [](const Declared* each) { return each->partner != nullptr; };
        std::erase_if(group.old, isJoined);
        std::erase_if(group.now, isJoined);
    }

    void JoinAlike(Group& group) {
        if (!group.IsPair()) JoinSame(group, &Declared::whole);
        if (group.old.size() == group.now.size()) JoinInOrder(group);
    }

    void JoinInOrder(Group& group) {
        for (std::size_t i = 0; i < std::min(group.old.size(), group.now.size()); ++i) {
            Join(*group.old[i], *group.now[i]);
        }
        DropJoined(group);
    }

    void JoinSame(Group& group, std::uint64_t Declared::*text) {
        Groups same;
        for (Declared* const each : group.old) same[each->*text].old.push_back(each);
        for (Declared* const each : group.now) same[each->*text].now.push_back(each);
        for (auto& [hash, alike] : same) JoinInOrder(alike);
        DropJoined(group);
    }

    // Their parameters differ.
    void JoinNamesakes(Group& group, bool lone) {
        if (group.IsPair() && (lone || group.old.front()->body == group.now.front()->body)) {
            return JoinInOrder(group);
        }
        Groups same;
        for (Declared* const each : group.old) same[each->body].old.push_back(each);
        for (Declared* const each : group.now) same[each->body].now.push_back(each);
        for (auto& [body, alike] : same) {
            if (alike.IsPair() && alike.old.front()->hasCode) JoinInOrder(alike);
        }
    }

    std::vector<Change>& changes_;
    std::vector<std::pair<Declared*, Declared*>> pending_;  // partners, not looked into yet
};

}  // namespace

void Match(Declared& old, Declared& now, std::vector<Change>& changes) {
    Matcher(changes).Run(old, now);
}

}  // namespace plugincs
