#include "rows/Declaration.h"

#include <algorithm>
#include <iterator>

#include "rows/Tokens.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

// What a word is to a declaration.
enum class Meaning : unsigned char {
    Name,            // of a type or of what is declared
    Modifier,        // as long as no type has begun; a name behind it
    Access,          // a modifier that only members have
    MemberModifier,  // of members; elsewhere a statement has it
    Ref,             // a modifier of structs, or of a type
    Event,           // of members, and tells which
    Conversion,      // "implicit", "explicit"
    Delegate,        // a method's header follows
    Class,           // a type's name follows, here and below
    Struct,
    Interface,
    Enum,
    Record,     // the same, if it does follow
    Namespace,  // its name follows
    Operator,
    This,
    Statement,  // no declaration has it before its name
};

struct Word {
    std::string_view text;
    Meaning meaning;
};

// Of the words that begin statements only those are here that another word may follow.
constexpr Word kWords[] = {
    {"abstract", Meaning::Modifier},
    {"as", Meaning::Statement},
    {"async", Meaning::Modifier},
    {"await", Meaning::Statement},
    {"base", Meaning::Statement},
    {"case", Meaning::Statement},
    {"catch", Meaning::Statement},
    {"class", Meaning::Class},
    {"const", Meaning::Modifier},
    {"delegate", Meaning::Delegate},
    {"do", Meaning::Statement},
    {"else", Meaning::Statement},
    {"enum", Meaning::Enum},
    {"event", Meaning::Event},
    {"explicit", Meaning::Conversion},
    {"extern", Meaning::Modifier},
    {"file", Meaning::Modifier},
    {"fixed", Meaning::MemberModifier},
    {"for", Meaning::Statement},
    {"foreach", Meaning::Statement},
    {"goto", Meaning::Statement},
    {"if", Meaning::Statement},
    {"implicit", Meaning::Conversion},
    {"in", Meaning::Statement},
    {"interface", Meaning::Interface},
    {"internal", Meaning::Access},
    {"is", Meaning::Statement},
    {"lock", Meaning::Statement},
    {"namespace", Meaning::Namespace},
    {"new", Meaning::MemberModifier},
    {"operator", Meaning::Operator},
    {"override", Meaning::Modifier},
    {"partial", Meaning::Modifier},
    {"private", Meaning::Access},
    {"protected", Meaning::Access},
    {"public", Meaning::Access},
    {"readonly", Meaning::Modifier},
    {"record", Meaning::Record},
    {"ref", Meaning::Ref},
    {"required", Meaning::Modifier},
    {"return", Meaning::Statement},
    {"scoped", Meaning::Modifier},
    {"sealed", Meaning::Modifier},
    {"static", Meaning::Modifier},
    {"struct", Meaning::Struct},
    {"switch", Meaning::Statement},
    {"this", Meaning::This},
    {"throw", Meaning::Statement},
    {"unsafe", Meaning::Modifier},
    {"using", Meaning::Statement},
    {"virtual", Meaning::Modifier},
    {"volatile", Meaning::Modifier},
    {"while", Meaning::Statement},
    {"yield", Meaning::Statement},
};

// A hash of words of two letters and more; no two of those above share one.
constexpr std::size_t HashOf(std::string_view word) {
    const auto byte = [word](std::size_t i) { return static_cast<unsigned char>(word[i]); };
    return (byte(0) + 2U * byte(1) + 10U * byte(word.size() - 1) + 6U * word.size()) % 256;
}

// Where in `kWords` the word of each hash is.
constexpr std::array<unsigned char, 256> kWordsByHash = [] {
    std::array<unsigned char, 256> words{};
    for (std::size_t i = 0; i < std::size(kWords); ++i) {
        words[HashOf(kWords[i].text)] = static_cast<unsigned char>(i);
    }
    return words;
}();

constexpr Meaning MeaningOf(std::string_view word) {
    if (word.size() < 2) return Meaning::Name;
    const Word& candidate = kWords[kWordsByHash[HashOf(word)]];
    return candidate.text == word ? candidate.meaning : Meaning::Name;
}
static_assert(std::all_of(std::begin(kWords), std::end(kWords),
                          [](const Word& word) { return MeaningOf(word.text) == word.meaning; }));

class DeclarationReader {
  public:
    DeclarationReader(std::string_view text, const Surroundings& surroundings, bool opensBlock)
        : text_(text), tokens_(text), surroundings_(surroundings), opensBlock_(opensBlock) {}

    Declaration Read() {
        if (surroundings_.around == Around::Enum) return ReadEnumerator();
        while (TakeToken() == Step::GoOn) {
        }
        return found_;
    }

  private:
    // What a token comes to.
    enum class Step : unsigned char { GoOn, Decided };

    enum class Before : unsigned char { Start, Word, Type, Dot };

    bool InType() const { return surroundings_.around == Around::Type; }

    Declaration ReadEnumerator() {
        Named(Declares::Enumerator, tokens_.TakeWord());
        return found_;
    }

    Step TakeToken() {
        switch (tokens_.Peek()) {
            case '\0':
            case '=':
            case ',': return Value();
            case '(': return TakeParenthesis();
            case '[': return TakeBracket();
            case '<': return TakeTypeArguments();
            case '?':
            case '*': return TakeTypeMark();
            case '.': return TakeDot();
            case ':': return TakeColon();
            case '~': return Destructor();
            default: return TakeWord();
        }
    }

    Step TakeWord() {
        const bool plain = tokens_.Peek() != '@';
        const std::string_view word = tokens_.TakeWord();
        if (word.empty()) return Nothing();
        switch (plain ? MeaningOf(word) : Meaning::Name) {
            case Meaning::Modifier: return name_.empty() ? Modifier() : TakeName(word);
            case Meaning::MemberModifier:
                return (InType() || member_) && name_.empty() ? Modifier() : Nothing();
            case Meaning::Access: member_ = true; return Modifier();
            case Meaning::Ref:
                if (IsWordNext("struct") || IsWordNext("partial")) return Modifier();
                typeBegun_ = true;
                return Step::GoOn;
            case Meaning::Event: event_ = member_ = true; return Step::GoOn;
            case Meaning::Conversion: conversion_ = true; return Step::GoOn;
            case Meaning::Delegate: return TakeDelegate();
            case Meaning::Class: return Named(Declares::Class, tokens_.TakeWord());
            case Meaning::Struct: return Named(Declares::Struct, tokens_.TakeWord());
            case Meaning::Interface: return Named(Declares::Interface, tokens_.TakeWord());
            case Meaning::Enum: return Named(Declares::Enum, tokens_.TakeWord());
            case Meaning::Record: return TakeRecord(word);
            case Meaning::Namespace: return Namespace();
            case Meaning::Operator: return Operator(word);
            case Meaning::This: return Indexer(word);
            case Meaning::Statement: return Nothing();
            case Meaning::Name: break;
        }
        return TakeName(word);
    }

    bool IsWordNext(std::string_view word) const {
        Tokens ahead = tokens_;
        return ahead.TakeWord() == word;
    }

    // Modifiers come first.
    Step Modifier() {
        if (!typeBegun_) found_.modifiers = text_.substr(0, tokens_.position());
        return Step::GoOn;
    }

    // Or a type: "delegate* unmanaged[Cdecl]<int, void>".
    Step TakeDelegate() {
        delegate_ = tokens_.Peek() != '*';
        if (delegate_) return Step::GoOn;
        tokens_.Skip();
        tokens_.TakeWord();
        if (tokens_.Peek() == '[') tokens_.SkipBrackets();
        return TakeType();
    }

    // What stands before a name, and not before a dot, is its type.
    Step TakeName(std::string_view word) {
        qualified_ = before_ == Before::Dot;
        typed_ = typed_ || (before_ != Before::Start && !qualified_);
        name_ = word;
        before_ = Before::Word;
        typeBegun_ = true;
        return Step::GoOn;
    }

    Step TakeParenthesis() {
        if (before_ != Before::Start) return Function();
        tokens_.SkipBrackets();  // a tuple
        return TakeType();
    }

    Step TakeType() {
        before_ = Before::Type;
        typeBegun_ = true;
        return Step::GoOn;
    }

    // The rank of an array, or the size of a buffer behind its name. At the start it is an
    // attribute section where no statement was thought to start.
    Step TakeBracket() {
        if (before_ == Before::Start) {
            tokens_.SkipBrackets();
            return Step::GoOn;
        }
        Tokens ahead = tokens_;
        ahead.Skip();
        while (ahead.Peek() == ',') ahead.Skip();
        if (ahead.Peek() != ']') return Value();
        ahead.Skip();
        tokens_ = ahead;
        return TakeType();
    }

    Step TakeTypeArguments() { return tokens_.SkipTypeArguments() ? TakeType() : Nothing(); }

    // Nullable types, and pointers.
    Step TakeTypeMark() {
        if (before_ == Before::Start) return Nothing();
        tokens_.Skip();
        return TakeType();
    }

    Step TakeDot() {
        tokens_.Skip();
        before_ = Before::Dot;
        return Step::GoOn;
    }

    // "global::A" is as good as "global.A".
    Step TakeColon() {
        tokens_.Skip();
        if (tokens_.Peek() != ':') return Nothing();
        return TakeDot();
    }

    // "record" is a name too.
    Step TakeRecord(std::string_view word) {
        Tokens ahead = tokens_;
        std::string_view name = ahead.TakeWord();
        const bool kind = name == "struct" || name == "class";
        if (kind) name = ahead.TakeWord();
        const bool declares = !name.empty() && MeaningOf(name) == Meaning::Name &&
                              std::string_view("=,").find(ahead.Peek()) == std::string_view::npos;
        return declares ? Named(Declares::Record, name) : TakeName(word);
    }

    // A name with its type before it.
    Step Value() {
        if (!typed_ || !(InType() || member_)) return Nothing();
        const bool arrow = tokens_.IsNext("=>");
        if (event_) return Several(Declares::Event);
        if (arrow || (tokens_.Peek() == '\0' && opensBlock_)) {
            return Named(Declares::Property, name_);
        }
        return Several(Declares::Field);
    }

    Step Several(Declares what) {
        found_.more = true;
        return Named(what, name_);
    }

    // Without a type only a constructor is one.
    Step Function() {
        if (delegate_) return typed_ ? Named(Declares::Delegate, name_) : Nothing();
        if (typed_) return TypedFunction();
        if (name_ == "extension") return Nothing();  // a block of members
        const bool ofType = InType() && (name_ == surroundings_.typeName || opensBlock_);
        return !qualified_ && (ofType || member_) ? Named(Declares::Constructor, name_) : Nothing();
    }

    Step TypedFunction() {
        if (InType() || member_) return Named(Declares::Method, name_);
        const bool possible =
            surroundings_.around == Around::Code || surroundings_.around == Around::File;
        return possible && HasBody() ? Named(Declares::Local, name_) : Nothing();
    }

    // A local function has one, or is extern; what looks like its header is a call otherwise.
    bool HasBody() const {
        if (opensBlock_ || found_.modifiers.find("extern") != std::string_view::npos) return true;
        Tokens ahead = tokens_;
        ahead.SkipBrackets();
        ahead.Peek();
        return ahead.IsNext("=>") || ahead.IsNext("where ");
    }

    Step Destructor() {
        const std::string_view name = tokens_.Rest();
        tokens_.Skip();
        const bool isName = !tokens_.TakeWord().empty();
        if (!InType() || before_ != Before::Start || !isName) return Nothing();
        return Named(Declares::Destructor, tokens_.Since(name));
    }

    Step Namespace() {
        const std::string_view first = tokens_.TakeWord();
        std::string_view whole = first;
        while (!first.empty() && tokens_.Peek() == '.') {
            tokens_.Skip();
            tokens_.TakeWord();
            whole = tokens_.Since(first);
        }
        return Named(Declares::Namespace, whole);
    }

    // Whatever stands between the word and the parameters: "operator +", "operator int".
    Step Operator(std::string_view word) {
        while (tokens_.Peek() != '(' && tokens_.Peek() != '\0') tokens_.Skip();
        const Declares what = conversion_ ? Declares::Conversion : Declares::Operator;
        return Named(what, rtrim(tokens_.Since(word)));
    }

    Step Indexer(std::string_view word) {
        const bool declares = before_ != Before::Start && tokens_.Peek() == '[';
        return declares && (InType() || member_) ? Named(Declares::Indexer, word) : Nothing();
    }

    static Step Nothing() { return Step::Decided; }

    Step Named(Declares what, std::string_view name) {
        if (name.empty()) return Nothing();
        found_.what = what;
        found_.name = name;
        return Step::Decided;
    }

    std::string_view text_;
    Tokens tokens_;
    const Surroundings& surroundings_;
    const bool opensBlock_;
    std::string_view name_;          // the last name so far
    Before before_ = Before::Start;  // what came last, modifiers left out
    bool typeBegun_ = false;         // no modifier can follow
    bool typed_ = false;             // a type stands before the name
    bool qualified_ = false;         // a dot does
    bool member_ = false;            // says itself that it is one
    bool event_ = false;
    bool conversion_ = false;
    bool delegate_ = false;
    Declaration found_;
};

constexpr std::string_view kNames[] = {
    "",         "namespace", "class",       "struct",     "interface", "enum",    "record",
    "delegate", "method",    "constructor", "destructor", "property",  "indexer", "event",
    "field",    "operator",  "conversion",  "enumerator", "local"};
static_assert(std::size(kNames) == kDeclaresCount);

}  // namespace

std::string_view NameOf(Declares what) { return kNames[static_cast<std::size_t>(what)]; }

Declaration ReadDeclaration(std::string_view text, const Surroundings& surroundings,
                            bool opensBlock) {
    const Declaration found = DeclarationReader(text, surroundings, opensBlock).Read();
    return found.what == Declares::Nothing ? Declaration() : found;
}

std::string_view BehindName(std::string_view text, const Declaration& declaration) {
    if (declaration.what == Declares::Nothing) return text;
    const char* const behind = declaration.name.data() + declaration.name.size();
    return text.substr(static_cast<std::size_t>(behind - text.data()));
}

}  // namespace plugincs
