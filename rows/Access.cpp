#include "rows/Access.h"

#include <iterator>

#include "rows/Tokens.h"

namespace plugincs {

namespace {

constexpr std::string_view kNames[] = {"",          "public",   "protected internal",
                                       "protected", "internal", "private protected",
                                       "private",   "file",     ""};
static_assert(std::size(kNames) == static_cast<std::size_t>(Access::Inside) + 1);

struct Said {
    bool isPublic = false;
    bool isProtected = false;
    bool isInternal = false;
    bool isPrivate = false;
    bool isFile = false;
    bool isPartial = false;
};

Said SaidBy(std::string_view modifiers) {
    Said said;
    Tokens tokens(modifiers);
    while (tokens.Peek() != '\0') {
        const std::string_view word = tokens.TakeWord();
        if (word.empty()) tokens.Skip();
        said.isPublic |= word == "public";
        said.isProtected |= word == "protected";
        said.isInternal |= word == "internal";
        said.isPrivate |= word == "private";
        said.isFile |= word == "file";
        said.isPartial |= word == "partial";
    }
    return said;
}

// "void I.M()" is for who knows the interface.
bool IsExplicit(const Row& row) {
    auto before = static_cast<std::size_t>(row.name.data() - row.text.data());
    while (before > 0 && (row.text[before - 1] == ' ' || row.text[before - 1] == '@')) --before;
    return before > 0 && row.text[before - 1] == '.';
}

Access Unsaid(const Row& row, const Row* around, bool isPartial) {
    const bool atTop = around == nullptr || around->declares == Declares::Namespace;
    const bool another = IsType(row.declares) && isPartial;  // part of the type may say
    if (row.declares == Declares::Namespace || another || IsExplicit(row)) return Access::Open;
    if (row.declares == Declares::Local) return Access::Inside;
    if (row.declares == Declares::Enumerator) return Access::Public;
    if (atTop) return Access::Internal;
    return around->declares == Declares::Interface ? Access::Public : Access::Private;
}

}  // namespace

std::string_view NameOf(Access access) { return kNames[static_cast<std::size_t>(access)]; }

Access AccessOf(const Row& row, const Row* around) {
    const Said said = SaidBy(row.modifiers);
    if (said.isPublic) return Access::Public;
    if (said.isProtected && said.isInternal) return Access::ProtectedInternal;
    if (said.isProtected && said.isPrivate) return Access::PrivateProtected;
    if (said.isProtected) return Access::Protected;
    if (said.isInternal) return Access::Internal;
    if (said.isPrivate) return Access::Private;
    if (said.isFile) return Access::File;
    return Unsaid(row, around, said.isPartial);
}

}  // namespace plugincs
