#include "analysis/FirstLook.h"

#include <cassert>
#include <optional>

#include "analysis/PartWalker.h"
#include "text/ByteSets.h"
#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

// What comes behind the bytes that are looked at. The contents of literals count like the rest.
struct Later {
    bool dots = false;  // those in numbers too
    bool parentheses = false;
    bool others = false;  // literals and assignments, among which the parentheses tell nothing
};

// The parts of a text of which the block holds the beginning, each as the bit of its first byte.
struct Parts {
    bool known = false;        // whether there is anything to ask
    bool returned = false;     // the first one is "return"
    ByteMask second = 0;       // the second one; 0 if the text has only one
    ByteMask parentheses = 0;  // "("
    ByteMask dots = 0;         // "."
    ByteMask plain = 0;        // "="
    ByteMask assignments = 0;  // "=", "+=", "-="
    ByteMask equals = 0;       // not only parts: all these bytes,
    ByteMask comparisons = 0;  // and all of comparison operators
    Later later;
};

void FindAssignments(std::string_view text, Parts& parts) {
    if (parts.equals == 0) return;
    static constexpr ByteSets kOperators{PartBytes::kArithmetic, ByteSet("+-")};
    const auto [arithmetic, sums] = kOperators.In(text.data());
    const ByteMask comparisons = parts.comparisons;
    // A comparison joins any operator before it, an arithmetic one only its like.
    parts.plain = parts.equals & ~(comparisons >> 1) & ~((comparisons | arithmetic) << 1);
    const ByteMask joined = parts.equals >> 1 & ~(comparisons >> 2);
    parts.assignments = parts.plain | (sums & ~(arithmetic << 1) & joined);
}

// The text begins with a word, or its parts stay unknown.
Parts FindParts(std::string_view text, const Later& behindBlock) {
    static constexpr ByteSets kSets{PartBytes::kWord,       PartBytes::kSpace, PartBytes::kQuote,
                                    PartBytes::kComparison, PartBytes::kDot,   ByteSet("("),
                                    ByteSet("="),           ByteSet('0', '9')};
    const auto [inWord, space, quotes, comparisons, dots, opening, equals, digits] =
        kSets.In(text.data());
    // A literal ends what is looked at. In a longer text so does the block, less two bytes: those
    // after a part can decide what it is.
    const ByteMask own = MaskOfFirst(text.size());
    const ByteMask seen = own >> (text.size() > kBlockSize ? 2 : 0) & Below(quotes);
    const ByteMask unseen = own & ~seen;
    const ByteMask joined = dots & digits << 1;  // a dot after a digit belongs to a word
    const ByteMask words = (inWord | joined) & seen;
    const ByteMask first = Below(~words);

    Parts parts;
    parts.second = Lowest(seen & ~space & ~first);
    parts.known = (words & 1) != 0 && (parts.second != 0 || unseen == 0);
    parts.returned = first == MaskOfFirst(6) && text.starts_with("return");
    parts.parentheses = opening & seen;
    parts.dots = dots & ~joined & seen;
    parts.equals = equals & seen;
    parts.comparisons = comparisons & own;
    parts.later = behindBlock;
    parts.later.dots |= (dots & unseen) != 0;
    parts.later.parentheses |= (opening & unseen) != 0;
    parts.later.others |= (quotes & own) != 0;
    return parts;
}

// The answers to `AskParts`, or nullopt where what comes later decides.

std::optional<bool> DeclaresFunction(const Parts& parts) {
    const ByteMask forbidden = parts.assignments & Below(parts.parentheses);
    if ((parts.dots | forbidden) != 0) return false;
    if (parts.parentheses == 0 && parts.later.others) return std::nullopt;
    const bool opens = parts.parentheses != 0 || parts.later.parentheses;
    return opens && parts.later.dots ? std::nullopt : std::optional(opens);
}

std::optional<bool> DeclaresVariable(std::string_view text, const Parts& parts) {
    if (parts.second == 0 || !IsAsciiLetter(text[0])) return false;
    const std::string_view second = text.substr(First(parts.second));
    if (IsAsciiLetter(second[0])) {
        const ByteMask decisive = Lowest(parts.parentheses | parts.plain);
        if (decisive != 0) return (decisive & parts.plain) != 0;
        return parts.later.others ? std::nullopt : std::optional(!parts.later.parentheses);
    }
    const bool less =
        second[0] == '<' && !(second.size() > 1 && PartBytes::kComparison.Has(second[1]));
    if (second[0] != '[' && !less) return false;
    if (parts.plain != 0) return false;
    return parts.later.others ? std::nullopt : std::optional(true);
}

// Sets `answers` to `AskParts` of the text, and returns true, if its beginning is enough; what it
// sets otherwise has no meaning.
bool AskBeginning(std::string_view text, const Later& behindBlock, Answers& answers) {
    Parts parts = FindParts(text, behindBlock);
    if (!parts.known) return false;
    answers.returned = parts.returned;
    // Neither a function nor a variable: most statements are calls and assignments to members.
    if ((parts.second & (parts.dots | parts.parentheses)) != 0) return true;
    FindAssignments(text, parts);
    const std::optional<bool> function = DeclaresFunction(parts);
    const std::optional<bool> variable = DeclaresVariable(text, parts);
    if (!function || !variable) return false;
    answers.function = *function;
    answers.variable = *variable;
    return true;
}

// What is found in a text, block after block.
struct Findings {
    ByteMask escapes = 0;
    ByteMask parentheses = 0;
    ByteMask equalities = 0;  // "=="
    ByteMask classes = 0;     // "cl"
    ByteMask structs = 0;     // "ruc"
    Later later;

    void AddBlock(std::string_view text, std::size_t at) {
        static constexpr ByteSets kSets{ByteSet(kEscaped), ByteSet("="), ByteSet("."),
                                        ByteSet("("),      ByteSet("c"), ByteSet("l"),
                                        ByteSet("r"),      ByteSet("u")};
        const auto [escape, equals, dots, opening, c, l, r, u] = kSets.In(text.data() + at);
        const ByteMask own = MaskOfFirst(text.size() - at);
        escapes |= escape & own;
        parentheses |= opening & own;
        equalities |= equals & equals >> 1 & own;
        classes |= c & l >> 1 & own;
        structs |= r & u >> 1 & c >> 2 & own;
        if (at == 0) return;
        later.dots |= (dots & own) != 0;
        later.parentheses |= (opening & own) != 0;
        later.others |= ((equals | escape) & own) != 0;
    }
};

}  // namespace

void LookAt(std::string_view text, std::size_t readable, FirstLook& look) {
    if (readable < text.size() + kBlockSize) return;
    Findings found;
    // The blocks overlap, so that each holds whole words.
    for (std::size_t at = 0; at < text.size(); at += kBlockSize - 2) found.AddBlock(text, at);
    look.mayHoldEquality = found.equalities != 0;
    look.mayHoldClass = found.classes != 0;
    look.mayHoldStruct = found.structs != 0;
    look.mayHoldParenthesis = found.parentheses != 0;
    look.plain = found.escapes == 0;
    look.brief = text.size() <= kBlockSize;
    look.asked = text.empty() || AskBeginning(text, found.later, look.answers);
    assert(!look.asked || look.answers == AskParts(text));
}

}  // namespace plugincs
