#include "analysis/Classifiers.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "analysis/PartWalker.h"
#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

struct Keyword {
    std::string_view word;
    FirstWordMeaning meaning;
};

constexpr Keyword kKeywords[] = {
    {"if", FirstWordMeaning::Logic},         {"else", FirstWordMeaning::Logic},
    {"switch", FirstWordMeaning::Logic},     {"try", FirstWordMeaning::Logic},
    {"catch", FirstWordMeaning::Logic},      {"using", FirstWordMeaning::Defines},
    {"#include", FirstWordMeaning::Defines}, {"import", FirstWordMeaning::Defines},
    {"package", FirstWordMeaning::Defines},  {"#define", FirstWordMeaning::Defines},
    {"while", FirstWordMeaning::Loop},       {"for", FirstWordMeaning::Loop},
    {"foreach", FirstWordMeaning::Loop},
};

constexpr std::uint32_t BitOf(char c) { return 1U << (static_cast<unsigned char>(c) % 32); }

// A prefilter: indexed by a keyword's first character, a bit mask of the second ones.
constexpr std::array<std::uint32_t, 256> kSecondCharacters = [] {
    std::array<std::uint32_t, 256> bits{};
    for (const Keyword& keyword : kKeywords) {
        bits[static_cast<unsigned char>(keyword.word[0])] |= BitOf(keyword.word[1]);
    }
    return bits;
}();

// False for most texts; true may be a false positive.
bool MayBeginWithKeyword(std::string_view text) {
    return text.size() > 1 &&
           (kSecondCharacters[static_cast<unsigned char>(text[0])] & BitOf(text[1])) != 0;
}

// What a part is to the two state machines below.
enum class Mark : unsigned char {
    None,
    Other,
    Letter,
    Assign,
    AssignSum,
    Parenthesis,
    Opening,
    Dot
};

Mark MarkOf(std::string_view part) {
    if (part.empty()) return Mark::None;
    if (IsAsciiLetter(part[0])) return Mark::Letter;
    if (part.size() == 2 && part[1] == '=' && (part[0] == '+' || part[0] == '-')) {
        return Mark::AssignSum;
    }
    if (part.size() > 1) return Mark::Other;
    switch (part[0]) {
        case '=': return Mark::Assign;
        case '(': return Mark::Parenthesis;
        case '[':
        case '<': return Mark::Opening;
        case '.': return Mark::Dot;
        default: return Mark::Other;
    }
}

// Whether the rest of a text holds any of the characters: otherwise none of its parts matters.
bool HasAny(std::string_view rest, std::string_view characters) {
    return rest.find_first_of(characters) != std::string_view::npos;
}

// At least two parts before the first "(", none of them an assignment, and no "." anywhere.
struct FunctionQuestion {
    bool impossible;
    bool parenthesis = false;

    FunctionQuestion(Mark first, Mark second) : impossible(Forbids(first) || Forbids(second)) {}

    static bool Forbids(Mark mark) {
        return mark == Mark::None || mark == Mark::Parenthesis || mark == Mark::Dot ||
               mark == Mark::Assign || mark == Mark::AssignSum;
    }

    void Look(Mark mark) {
        if (mark == Mark::Parenthesis) parenthesis = true;
        if (mark == Mark::Dot || (!parenthesis && Forbids(mark))) impossible = true;
    }
};

// A type and a name, and no "(" before a "="; or a type and "[" or "<", and no "=" at all.
struct VariableQuestion {
    bool named;
    bool answer;
    bool decided;

    VariableQuestion(Mark first, Mark second)
        : named(second == Mark::Letter),
          answer(first == Mark::Letter && (named || second == Mark::Opening)),
          decided(!answer) {}

    void Look(Mark mark) {
        if (decided) return;
        decided = mark == Mark::Assign || (named && mark == Mark::Parenthesis);
        if (decided) answer = named && mark == Mark::Assign;
    }
};

}  // namespace

FirstWordMeaning MeaningOfFirstWord(std::string_view text) {
    if (!MayBeginWithKeyword(text)) return FirstWordMeaning::Other;
    const std::string_view first = FirstWord(text);
    for (const auto& [word, meaning] : kKeywords) {
        if (word == first) return meaning;
    }
    return FirstWordMeaning::Other;
}

bool DetectLogic(std::string_view text) {
    return MeaningOfFirstWord(text) == FirstWordMeaning::Logic || OutsideStringMatch(text, "==");
}

bool DetectLoop(std::string_view text) {
    return MeaningOfFirstWord(text) == FirstWordMeaning::Loop;
}

bool DetectDefines(std::string_view text) {
    return MeaningOfFirstWord(text) == FirstWordMeaning::Defines;
}

bool DetectReturnDeclaration(std::string_view text) { return PartWalker(text).Next() == "return"; }

bool DetectFunctionDeclaration(std::string_view text) { return AskParts(text).function; }

bool DetectVariableDeclaration(std::string_view text) { return AskParts(text).variable; }

Answers AskParts(std::string_view text) {
    PartWalker walker(text);
    const std::string_view first = walker.Next();
    const Mark firstMark = MarkOf(first);
    const Mark secondMark = MarkOf(walker.Next());
    FunctionQuestion function(firstMark, secondMark);
    VariableQuestion variable(firstMark, secondMark);
    const auto open = [&] { return !function.impossible || !variable.decided; };
    bool more = open() && HasAny(walker.Rest(), "(=.");
    std::size_t fromDot = std::string_view::npos;  // what the next known dot begins
    while (more && open()) {
        const Mark mark = MarkOf(walker.Next());
        if (mark == Mark::None) break;
        function.Look(mark);
        variable.Look(mark);
        // Only a dot can matter now: parameter lists are long, and most have none.
        const std::string_view rest = walker.Rest();
        if (mark == Mark::Parenthesis && variable.decided && rest.size() < fromDot) {
            fromDot = rest.size() - std::min(rest.size(), rest.find('.'));
            more = fromDot > 0;
        }
    }
    return {first == "return", !function.impossible && function.parenthesis, variable.answer};
}

}  // namespace plugincs
