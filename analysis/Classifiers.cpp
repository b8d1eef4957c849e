#include "analysis/Classifiers.h"

#include <initializer_list>

#include "analysis/PartWalker.h"
#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace {

bool BeginsWithLetter(std::string_view part) { return !part.empty() && IsAsciiLetter(part[0]); }

// Most texts begin with none of the words, and with none of their first characters.
bool FirstWordIsOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
    for (const std::string_view word : words) {
        if (!text.empty() && text[0] == word[0] && FirstWord(text) == word) return true;
    }
    return false;
}

}  // namespace

bool DetectReturnDeclaration(std::string_view text) { return PartWalker(text).Next() == "return"; }

bool DetectLogic(std::string_view text) {
    if (FirstWordIsOneOf(text, {"if", "else", "switch", "try", "catch"})) return true;
    return OutsideStringMatch(text, "==");
}

bool DetectLoop(std::string_view text) {
    return FirstWordIsOneOf(text, {"while", "for", "foreach"});
}

bool DetectDefines(std::string_view text) {
    return FirstWordIsOneOf(text, {"using", "#include", "import", "package", "#define"});
}

bool DetectFunctionDeclaration(std::string_view text) {
    if (!Contains(text, "(")) return false;
    PartWalker walker(text);
    bool parenthesis = false;
    std::size_t index = 0;
    for (auto part = walker.Next(); !part.empty(); part = walker.Next(), ++index) {
        if (part == ".") return false;
        if (parenthesis) continue;
        if (part == "=" || part == "+=" || part == "-=") return false;
        if (part == "(") {
            if (index < 2) return false;
            parenthesis = true;
        }
    }
    return parenthesis;
}

bool DetectVariableDeclaration(std::string_view text) {
    PartWalker walker(text);
    if (!BeginsWithLetter(walker.Next())) return false;
    const std::string_view second = walker.Next();
    const bool named = BeginsWithLetter(second);
    if (!named && second != "[" && second != "<") return false;
    // With a name, what comes first decides; an array or generic type takes no initialiser, and
    // its parentheses do not matter.
    for (auto part = walker.Next(); !part.empty(); part = walker.Next()) {
        if (part == "=") return named;
        if (named && part == "(") return false;
    }
    return true;
}
