// Six yes/no questions about the text of one statement or block header. They are shallow, overlap,
// and do not rank themselves: each caller asks them in an order of its own. None allocates; each
// is linear in its text. Comparisons are exact and case-sensitive; a word begins with a letter only
// when that is an ASCII one.
#pragma once

#include <string_view>

/// What the first word of a text is to the classifiers below: all three lists of words are asked
/// for at once.
enum class FirstWordMeaning : unsigned char { Other, Logic, Loop, Defines };
FirstWordMeaning MeaningOfFirstWord(std::string_view text);

/// What the parts of a text say, all found in one walk over them. See the classifiers of these
/// names.
struct Declares {
    bool returned = false;
    bool function = false;
    bool variable = false;
};
Declares AskParts(std::string_view text);

/// The first part is "return".
bool DetectReturnDeclaration(std::string_view text);

/// The first word is if, else, switch, try or catch, or "==" stands outside quotes and brackets.
bool DetectLogic(std::string_view text);

/// The first word is while, for or foreach.
bool DetectLoop(std::string_view text);

/// The first word is using, #include, import, package or #define.
bool DetectDefines(std::string_view text);

/// At least two parts stand before the first "(", no part anywhere is ".", and no part before that
/// "(" is "=", "+=" or "-=" (one behind it is a default argument).
bool DetectFunctionDeclaration(std::string_view text);

/// One of
///   letter... letter...            without a "(" part
///   letter... letter... "=" rest   without a "(" part before the "="
///   letter... "[" or "<" rest      without a "=" part
/// where letter... is a part that begins with a letter. The words are not looked at: "return x"
/// is accepted too.
bool DetectVariableDeclaration(std::string_view text);
