#include "tree/Scanner.h"

#include <cstdio>

#include "plugin/ModuleState.h"
#include "text/ByteScan.h"
#include "text/StringHelpers.h"
#include "tree/Directives.h"
#include "tree/NodeCreation.h"

namespace {

// The characters that some step looks at; all others only grow the chunk. Brackets count only where
// attributes are dropped, and stop the scan for nothing elsewhere.
Bytes16 AreSteps(Bytes16 bytes) {
    return bytes.Is('(') | bytes.Is(')') | bytes.Is('{') | bytes.Is('}') | bytes.Is(';') |
           bytes.Is('\n') | bytes.Is('\'') | bytes.Is('"') | bytes.Is('#');
}
Bytes16 AreStepsOrBrackets(Bytes16 bytes) {
    return AreSteps(bytes) | bytes.Is('[') | bytes.Is(']');
}

// The character at the position, and every following one up to the next that ends text, go to the
// chunk, parentheses counted; in an attribute section they are dropped.
void TakeText(Scanner& s) {
    const std::size_t start = s.position;
    char c = s.text[start];
    do {
        if (c == '(') ++s.parenDepth;
        if (c == ')') --s.parenDepth;
        s.position = s.declarationMode ? FindWhere(s.text, s.position + 1, AreSteps)
                                       : FindWhere(s.text, s.position + 1, AreStepsOrBrackets);
        if (s.position == s.text.size()) break;
        c = s.text[s.position];
    } while (c == '(' || c == ')');
    if (!s.inAttribute) s.collected.Keep(start, s.position);
}

// A literal runs to the next quote of its own kind that no backslash escapes, or to the end of the
// text. All of it is plain text, its newlines uncounted, and it counts even in an attribute
// section.
void TakeLiteral(Scanner& s) {
    const std::size_t start = s.position;
    const char quote = s.text[s.position++];
    while (s.position < s.text.size()) {
        const char c = s.text[s.position++];
        if (c == quote) break;
        if (c == '\\' && s.position < s.text.size()) ++s.position;
    }
    s.collected.Keep(start, s.position);
}

ScanStep StopWithError(Scanner& s, const char* message) {
    std::fputs(message, stdout);
    AddNode(s, *s.root, BranchType::Error, KindName::kNullParentError, s.lineCounter);
    return ScanStep::Stop;
}

ScanStep EndLine(Scanner& s) {
    ++s.lineCounter;
    // A backslash continues the line: the newline is swallowed.
    if (s.collected.LastWordEndsInBackslash()) {
        ++s.position;
        return ScanStep::Continue;
    }
    const DirectiveEnd end = s.inDirective ? EndDirective(s) : DirectiveEnd::Unrecognised;
    if (end == DirectiveEnd::Abandoned) return ScanStep::Abandon;
    if (end == DirectiveEnd::Unrecognised) TakeText(s);
    return ScanStep::Continue;
}

ScanStep EndStatement(Scanner& s) {
    ++s.position;
    if (s.collected.IsEmpty()) {
        // The ';' of "};" closes a struct declaration.
        s.inStruct = false;
        return ScanStep::Continue;
    }
    if (s.current->parent == nullptr) {
        // The statement takes its id and its count, but a root takes no statements.
        ++currentIndex;
        ++objectCount;
        return StopWithError(s, "zero children. This is not correct.");
    }
    AddNode(s, *s.current, BranchType::Line, KindName::kLine, s.lineCounter);
    return ScanStep::Continue;
}

bool StartsAttribute(Scanner& s) {
    return !s.declarationMode && !s.inAttribute && s.parenDepth == 0 && s.collected.IsBlank();
}

// Whether the block that opens is a declaration ("namespace N", "class A", "else"): a header
// without parentheses. A struct is none, and marks what stands in its body.
bool OpensDeclaration(Scanner& s) {
    if (s.inDirective || !s.declarationMode) return false;
    const std::string_view header = s.collected.View();
    if (ContainsWord(header, "struct")) {
        if (!Contains(header, "\"") && !Contains(header, "(")) s.inStruct = true;
        return false;
    }
    return !Contains(header, "(");
}

void OpenBlock(Scanner& s) {
    ++s.position;
    if (OpensDeclaration(s)) {
        s.current = AddNode(s, *s.current, BranchType::Define, KindName::kDefine, 0);
    } else if (s.inStruct) {
        s.current = AddNode(s, *s.current, BranchType::Define, KindName::kDefine, s.lineCounter);
    } else {
        s.current =
            AddNode(s, *s.current, BranchType::Container, KindName::kContainer, s.lineCounter);
    }
}

ScanStep CloseBlock(Scanner& s) {
    ++s.position;
    if (s.current->parent == nullptr)
        return StopWithError(s, "Null parent branch? This is not right.");
    // A last statement without its ';' is given up.
    s.current = s.current->parent;
    s.collected.Restart(s.position);
    return ScanStep::Continue;
}

ScanStep TakeStep(Scanner& s) {
    switch (s.text[s.position]) {
        case '\'':
        case '"': TakeLiteral(s); break;
        case '#':
            if (!StartDirective(s)) TakeText(s);
            break;
        case '\n': return EndLine(s);
        case ';':
            if (s.parenDepth == 0) return EndStatement(s);
            TakeText(s);
            break;
        case '[':
            if (StartsAttribute(s)) {
                s.inAttribute = true;
                ++s.position;
            } else {
                TakeText(s);
            }
            break;
        case ']':
            if (s.inAttribute) {
                s.inAttribute = false;
                ++s.position;
            } else {
                TakeText(s);
            }
            break;
        case '{': OpenBlock(s); break;
        case '}': return CloseBlock(s);
        default: TakeText(s); break;
    }
    return ScanStep::Continue;
}

}  // namespace

Scanner::Scanner(std::string& sourceText, bool inDeclarationMode, ObjectBranch& fileRoot)
    : text(sourceText),
      declarationMode(inDeclarationMode),
      root(&fileRoot),
      current(AddChild(fileRoot)),
      collected(sourceText) {
    // Neither counted nor given a kind of its own.
    AssignIdentity(*current);
    current->branchTypeAsString = KindName::kNamespace;
    current->filePath = root->filePath;
    current->contents = "namespace global";
}

ScanStep ScanText(Scanner& scanner) {
    ScanStep step = ScanStep::Continue;
    while (step == ScanStep::Continue && scanner.position < scanner.text.size()) {
        step = TakeStep(scanner);
    }
    chunk = std::string(scanner.collected.View());  // with no more room than it needs
    return step;
}

ObjectBranch* AddNode(Scanner& scanner, ObjectBranch& parent, BranchType type,
                      std::string_view kindName, std::int32_t lineNumber) {
    ObjectBranch* const node = MakeNode(parent);
    node->branchType = type;
    node->branchTypeAsString = kindName;
    node->lineNumber = lineNumber;
    node->filePath = scanner.current->filePath;
    node->contents = scanner.collected.TakeContents();
    scanner.collected.Restart(scanner.position);
    return node;
}
