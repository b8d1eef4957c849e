// Six predicates on the text of one statement or block header. They are heuristics that overlap,
// and have no ranking: each caller evaluates them in an order of its own. None allocates; each is
// linear in its text. Comparisons are exact and case-sensitive; letters are ASCII letters.
//
// The `Detect...` functions are part of a fixed interface: product code asks `MeaningOfFirstWord`
// and `AskParts`, which answer several of the questions at once.
#pragma once

#include <string_view>

namespace plugincs {

/// The keyword list that the first word of a text is on: one look-up for three classifiers below.
enum class FirstWordMeaning : unsigned char { Other, Logic, Loop, Defines };
FirstWordMeaning MeaningOfFirstWord(std::string_view text);

/// The results of DetectReturnDeclaration, DetectFunctionDeclaration and DetectVariableDeclaration,
/// found in one walk over the text's parts.
struct Answers {
    bool returned = false;
    bool function = false;
    bool variable = false;

    bool operator==(const Answers&) const = default;
};
Answers AskParts(std::string_view text);

/// The first part is "return".
bool DetectReturnDeclaration(std::string_view text);

/// The first word is if, else, switch, try or catch, or "==" stands outside quotes and brackets.
bool DetectLogic(std::string_view text);

/// The first word is while, for or foreach.
bool DetectLoop(std::string_view text);

/// The first word is using, #include, import, package or #define.
bool DetectDefines(std::string_view text);

/// At least two parts stand before the first "(", no part anywhere is ".", and no part before that
/// "(" is "=", "+=" or "-=" (one after it is a default argument).
bool DetectFunctionDeclaration(std::string_view text);

/// One of
///   letter... letter...            without a "(" part
///   letter... letter... "=" rest   without a "(" part before the "="
///   letter... "[" or "<" rest      without a "=" part
/// where letter... is a part that begins with a letter. The words are not looked at: "return x"
/// is accepted too.
bool DetectVariableDeclaration(std::string_view text);

}  // namespace plugincs

// The names of a fixed interface.
using plugincs::DetectDefines;
using plugincs::DetectFunctionDeclaration;
using plugincs::DetectLogic;
using plugincs::DetectLoop;
using plugincs::DetectReturnDeclaration;
using plugincs::DetectVariableDeclaration;
