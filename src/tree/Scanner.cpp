#include "tree/Scanner.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "text/ByteSets.h"
#include "text/StringHelpers.h"
#include "tree/Directives.h"
#include "tree/Parse.h"

namespace plugincs {

namespace {

// What a character outside literals does besides being appended to the chunk. Parentheses and most
// newlines are only counted.
enum class Step : unsigned char {
    None,
    Literal,
    StartDirective,
    Backslash,
    EndLine,
    EndStatement,
    StartAttribute,
    EndAttribute,
    OpenBlock,
    CloseBlock,
};

constexpr Step StepOf(char c) {
    switch (c) {
        case '\'':
        case '"': return Step::Literal;
        case '#': return Step::StartDirective;
        case '\\': return Step::Backslash;
        case '\n': return Step::EndLine;
        case ';': return Step::EndStatement;
        case '[': return Step::StartAttribute;
        case ']': return Step::EndAttribute;
        case '{': return Step::OpenBlock;
        case '}': return Step::CloseBlock;
        default: return Step::None;
    }
}

constexpr std::string_view kSteps = "'\"#\\;{}";
constexpr std::string_view kBrackets = "[]";  // steps only where attributes are dropped

constexpr bool EveryStepIsFound() {
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const bool found =
            c == '\n' || kSteps.find(c) != kSteps.npos || kBrackets.find(c) != kBrackets.npos;
        if ((StepOf(c) != Step::None) != found) return false;
    }
    return true;
}
static_assert(EveryStepIsFound());

constexpr ByteSets kScanned{ByteSet(kSteps), ByteSet(kBrackets), ByteSet("\n"), ByteSet("("),
                            ByteSet(")")};
constexpr ByteSets kLiteralStops{ByteSet("'\"\\")};

class Scanner {
  public:
    explicit Scanner(ScanState& state) : s_(state), text_(state.text.data(), state.text.size()) {}

    Parse::End Run() {
        while (true) {
            TakeText();
            if (s_.position == s_.text.size()) {
                if (s_.current->parent != nullptr) KeepRest();
                return Parse::End::Whole;
            }
            if (const Parse::End end = TakeStep(); end != Parse::End::Whole) return end;
        }
    }

  private:
    // Each step says how the scan stands after it: Whole, if it can go on.
    Parse::End TakeStep() {
        switch (StepOf(s_.text[s_.position])) {
            case Step::Literal: TakeLiteral(); break;
            case Step::StartDirective:
                if (!StartDirective(s_)) TakeAsText();
                break;
            case Step::Backslash:
                TakeAsText();
                if (!s_.inAttribute) s_.collected.NoteBackslash();
                break;
            case Step::EndLine: return EndLine();
            case Step::EndStatement:
                if (s_.parenDepth == 0) return EndStatement();
                TakeAsText();
                break;
            case Step::StartAttribute:
                if (StartsAttribute()) {
                    s_.inAttribute = true;
                    ++s_.position;
                } else {
                    TakeAsText();
                }
                break;
            case Step::EndAttribute:
                if (s_.inAttribute) {
                    s_.inAttribute = false;
                    ++s_.position;
                } else {
                    TakeAsText();
                }
                break;
            case Step::OpenBlock: OpenBlock(); break;
            case Step::CloseBlock: return CloseBlock();
            case Step::None: assert(false); break;
        }
        return Parse::End::Whole;
    }

    // Appends the text up to the next step to the chunk; in an attribute section it is dropped.
    // Newlines are only steps where they may end a directive or be escaped by a backslash.
    void TakeText() {
        const std::size_t start = s_.position;
        ByteMask found = 0;
        while (found == 0 && s_.position < text_.size()) {
            const auto [steps, brackets, lineFeeds, opening, closing] =
                kScanned.In(text_, s_.position);
            found = steps;
            if (!s_.declarationMode) found |= brackets;
            if (s_.inDirective || s_.collected.HasBackslash()) found |= lineFeeds;
            const ByteMask passed = Below(found);
            s_.lineCounter += CountBits(lineFeeds & passed);
            s_.parenDepth += CountBits(opening & passed) - CountBits(closing & passed);
            s_.position += First(found);
        }
        s_.position = std::min(s_.position, text_.size());
        if (!s_.inAttribute && s_.position > start) s_.collected.Keep(start, s_.position);
    }

    // The character at the position is only text here.
    void TakeAsText() {
        if (!s_.inAttribute) s_.collected.Keep(s_.position, s_.position + 1);
        ++s_.position;
    }

    // A literal runs to the next unescaped quote of its own kind, or to the end of the text. All of
    // it is text, its newlines are not counted, and it is kept even in an attribute section.
    void TakeLiteral() {
        const std::size_t start = s_.position;
        const char quote = s_.text[s_.position++];
        bool backslash = false;
        while (true) {
            s_.position = Find(kLiteralStops, text_, s_.position);
            if (s_.position == s_.text.size()) break;
            const char c = s_.text[s_.position++];
            if (c == quote) break;
            if (c != '\\') continue;
            backslash = true;
            if (s_.position < s_.text.size()) ++s_.position;
        }
        s_.collected.Keep(start, s_.position);
        if (backslash) s_.collected.NoteBackslash();
    }

    Parse::End StopWithError(std::string_view message) {
        s_.root->parse->traces.Write(message);
        AddNode(s_, *s_.root, Kinds::kNullParentError, s_.lineCounter, s_.position - 1);
        return Parse::End::StoppedEarly;
    }

    Parse::End EndLine() {
        ++s_.lineCounter;
        // A backslash continues the line: the newline is dropped.
        if (s_.collected.LastWordEndsInBackslash()) {
            ++s_.position;
            return Parse::End::Whole;
        }
        const DirectiveEnd end = s_.inDirective ? EndDirective(s_) : DirectiveEnd::Unrecognised;
        if (end == DirectiveEnd::Abandoned) return Parse::End::Abandoned;
        if (end == DirectiveEnd::Unrecognised) TakeAsText();
        return Parse::End::Whole;
    }

    Parse::End EndStatement() {
        ++s_.position;
        if (s_.collected.IsEmpty()) {
            // The ';' of "};" closes a struct declaration.
            s_.inStruct = false;
            s_.collected.Restart(s_.position);
            return Parse::End::Whole;
        }
        if (s_.current->parent == nullptr) {
            // The statement still uses up an id and a count, though a root takes no statements.
            ++s_.root->parse->nextId;
            ++s_.root->parse->objectCount;
            return StopWithError("zero children. This is not correct.");
        }
        AddNode(s_, *s_.current, Kinds::kLine, s_.lineCounter, s_.position - 1);
        return Parse::End::Whole;
    }

    bool StartsAttribute() {
        return !s_.declarationMode && !s_.inAttribute && s_.parenDepth == 0 &&
               s_.collected.IsBlank();
    }

    // Whether the block is a declaration ("namespace N", "class A", "else"): a header without
    // parentheses. A struct is none, but its block and those inside become defines. That the header
    // is reduced by now changes nothing that is looked for.
    bool OpensDeclaration(const ObjectBranch& block) {
        if (s_.inDirective || !s_.declarationMode) return false;
        const bool parenthesis = block.look.mayHoldParenthesis && Contains(block.contents, "(");
        if (block.look.mayHoldStruct && ContainsWord(block.contents, "struct")) {
            if (!Contains(block.contents, "\"") && !parenthesis) s_.inStruct = true;
            return false;
        }
        return !parenthesis;
    }

    // The text before a block's end, or before that of the file, which no ';' has ended.
    void KeepRest() {
        if (s_.places == nullptr || s_.collected.IsBlank()) return;
        AddNode(s_, *s_.current, Kinds::kLine, s_.lineCounter, NodePlace::kNone);
    }

    void OpenBlock() {
        ++s_.position;
        if (s_.places != nullptr) s_.outerDepths.push_back(std::exchange(s_.parenDepth, 0));
        s_.current = AddNode(s_, *s_.current, Kinds::kContainer, s_.lineCounter, NodePlace::kNone);
        const bool declaration = OpensDeclaration(*s_.current);
        if (declaration) s_.current->lineNumber = 0;
        if (declaration || s_.inStruct) SetKind(*s_.current, Kinds::kDefine);
    }

    Parse::End CloseBlock() {
        if (s_.current->parent != nullptr) KeepRest();
        ++s_.position;
        if (s_.current->parent == nullptr) {
            return StopWithError("Null parent branch? This is not right.");
        }
        if (!s_.outerDepths.empty()) {
            s_.parenDepth = s_.outerDepths.back();
            s_.outerDepths.pop_back();
        }
        // A last statement without its ';' is discarded, unless nothing shall be lost.
        LeaveNode(s_, s_.position - 1);
        s_.collected.Restart(s_.position);
        return Parse::End::Whole;
    }

    ScanState& s_;
    const std::string_view text_;  // the state's text; only bytes before the position are edited
};

}  // namespace

void ScanText(ScanState& scan) {
    Parse& parse = *scan.root->parse;
    parse.end = Scanner(scan).Run();
    parse.leftOver = std::string(scan.collected.View());
}

}  // namespace plugincs
