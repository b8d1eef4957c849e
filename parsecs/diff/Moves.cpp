#include "parsecs/diff/Moves.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "parsecs/diff/Matching.h"

namespace plugincs {

namespace {

using Files = std::vector<std::unique_ptr<DeclaredFile>>;
using Candidates = std::vector<Declared*>;

Candidates WithoutPartner(const Files& files) {
    Candidates found;
    for (const auto& file : files) {
        for (Declared& each : file->declared) {
            if (each.partner == nullptr) found.push_back(&each);
        }
    }
    return found;
}

bool IsField(const Declared& each) {
    return each.declares == Declares::Field || each.declares == Declares::Event ||
           each.declares == Declares::Enumerator;
}

// Rules: what must be the same in both states and in nothing else; no value where a rule does not
// apply. Each is tried on what those before it have left.
using Key = std::optional<std::uint64_t>;
using Rule = Key (*)(const Declared& each);

Key SameFile(const Declared& each) {
    if (!each.IsFile() || (each.size == 1 && each.body == 0)) return std::nullopt;
    return each.whole;
}

Key SameWithScope(const Declared& each) {
    return each.IsFile() ? std::nullopt : Key(Mixed(each.whole, Mixed(each.key, each.scopeHash)));
}

// Whatever has something in it that tells it from others by chance.
Key SameText(const Declared& each) {
    if (each.IsFile() || IsField(each)) return std::nullopt;
    const bool tells =
        IsType(each.declares) ? each.size > 1 : IsFunction(each.declares) || each.hasCode;
    return tells ? Key(each.whole) : std::nullopt;
}

// Of a type in which something has changed: see BringsAlong.
Key SameHeader(const Declared& each) {
    if (!IsType(each.declares)) return std::nullopt;
    return Mixed(Mixed(each.signature, each.body), Mixed(each.key, each.scopeHash));
}

// `scope` is the one around in the new state; null where it has no partner.
Key SameButForName(const Declared& each, const Declared* scope) {
    const bool tells = IsType(each.declares) ? each.size > 1 : each.hasCode && !IsField(each);
    if (scope == nullptr || !tells) return std::nullopt;
    const auto address = reinterpret_cast<std::uintptr_t>(scope);
    return Mixed(each.nameless, Mixed(address, each.scopeHash));
}

Key OldSameButForName(const Declared& each) {
    return each.IsFile() ? std::nullopt : SameButForName(each, each.parent->partner);
}

Key NewSameButForName(const Declared& each) {
    if (each.IsFile() || each.parent->partner == nullptr) return std::nullopt;
    return SameButForName(each, each.parent);
}

template <Rule kRule>
Key OfType(const Declared& each) {
    return IsType(each.declares) ? kRule(each) : std::nullopt;
}

// Whether a function of the old type is in the new one as it was.
bool BringsAlong(Declared& old, Declared& now) {
    std::unordered_set<std::uint64_t> functions;
    ForEachBelow(old, [&](const Declared& each) {
        if (each.hasCode && !IsField(each)) functions.insert(each.whole);
    });
    bool found = false;
    ForEachBelow(now, [&](const Declared& each) { found |= functions.contains(each.whole); });
    return found;
}

class Mover {
  public:
    Mover(const Files& old, const Files& now, std::vector<Change>& changes)
        : old_(WithoutPartner(old)), now_(WithoutPartner(now)), changes_(changes) {}

    // Types first: what is in them goes along.
    void Run() {
        ForUnique(SameFile, SameFile, &Mover::Move);
        ForUnique(OfType<SameWithScope>, OfType<SameWithScope>, &Mover::Move);
        ForUnique(OfType<SameText>, OfType<SameText>, &Mover::Move);
        ForUnique(OfType<OldSameButForName>, OfType<NewSameButForName>, &Mover::Rename);
        ForUnique(SameHeader, SameHeader, &Mover::MoveInPart);
        ForUnique(SameWithScope, SameWithScope, &Mover::Move);
        ForUnique(SameText, SameText, &Mover::Move);
        ForUnique(OldSameButForName, NewSameButForName, &Mover::Rename);
        TellTheRest();
    }

  private:
    struct Found {
        Declared* old = nullptr;
        Declared* now = nullptr;
        bool isUnique = true;
    };

    static void Note(Declared* each, Declared*& place, Found& found) {
        if (place != nullptr) found.isUnique = false;
        place = each;
    }

    void ForUnique(Rule oldRule, Rule nowRule, void (Mover::*act)(Declared& old, Declared& now)) {
        std::unordered_map<std::uint64_t, Found> all;
        for (Declared* const each : old_) {
            if (each->partner != nullptr) continue;
            if (const auto key = oldRule(*each)) Note(each, all[*key].old, all[*key]);
        }
        for (Declared* const each : now_) {
            if (each->partner != nullptr) continue;
            const auto key = nowRule(*each);
            if (key && all.contains(*key)) Note(each, all[*key].now, all[*key]);
        }
        // In the order of the old state: what moves first takes others along.
        for (Declared* const each : old_) {
            if (each->partner != nullptr) continue;
            const auto key = oldRule(*each);
            if (!key) continue;
            const Found& found = all[*key];
            const bool isFree = found.now != nullptr && found.now->partner == nullptr;
            if (found.isUnique && isFree) (this->*act)(*each, *found.now);
        }
    }

    void Move(Declared& old, Declared& now) {
        TellMove(old, now);
        TakeAlong(old, now);
    }

    void Rename(Declared& old, Declared& now) {
        changes_.push_back(MakeChange(ChangeKind::Renamed, &old, &now));
        TakeAlong(old, now);
    }

    void MoveInPart(Declared& old, Declared& now) {
        if (!BringsAlong(old, now)) return;
        TellMove(old, now);
        Match(old, now, changes_);
    }

    // The order of members is no change, even in two parts of one class.
    void TellMove(const Declared& old, const Declared& now) {
        const bool inPlace = old.file->pair == now.file->pair && old.scope == now.scope;
        if (inPlace && !now.IsFile()) return;
        changes_.push_back(MakeChange(ChangeKind::Moved, &old, &now));
    }

    // What is nested in one is in the other, too: nothing more is told of it.
    static void TakeAlong(Declared& old, Declared& now) {
        old.partner = &now;
        now.partner = &old;
        for (Declared& each : old) each.partner = &now;
        for (Declared& each : now) each.partner = &old;
    }

    void TellTheRest() {
        for (const Declared* const each : old_) {
            if (each->partner != nullptr) continue;
            changes_.push_back(MakeChange(ChangeKind::Removed, each, nullptr));
        }
        for (const Declared* const each : now_) {
            if (each->partner != nullptr) continue;
            changes_.push_back(MakeChange(ChangeKind::Added, nullptr, each));
        }
    }

    Candidates old_;
    Candidates now_;
    std::vector<Change>& changes_;
};

}  // namespace

void FindMoves(const Files& old, const Files& now, std::vector<Change>& changes) {
    Mover(old, now, changes).Run();
}

}  // namespace plugincs
