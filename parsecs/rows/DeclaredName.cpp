#include "parsecs/rows/DeclaredName.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/CharClass.h"
#include "text/StringHelpers.h"

namespace {

using Kind = Declaration::Kind;

// What a word is to a declaration.
enum class Meaning : unsigned char {
    Name,            // of a type or of what is declared
    Modifier,        // as long as no type has begun; a name behind it
    Access,          // a modifier that only members have
    MemberModifier,  // of members; elsewhere a statement has it
    Delegate,        // a modifier to us: a method's header follows
    Type,            // a type's name follows
    Record,          // the same, if it does follow
    Namespace,       // its name follows
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
    {"class", Meaning::Type},
    {"const", Meaning::Modifier},
    {"delegate", Meaning::Delegate},
    {"do", Meaning::Statement},
    {"else", Meaning::Statement},
    {"enum", Meaning::Type},
    {"event", Meaning::Access},
    {"explicit", Meaning::Modifier},
    {"extern", Meaning::Modifier},
    {"file", Meaning::Modifier},
    {"fixed", Meaning::MemberModifier},
    {"goto", Meaning::Statement},
    {"if", Meaning::Statement},
    {"implicit", Meaning::Modifier},
    {"in", Meaning::Statement},
    {"interface", Meaning::Type},
    {"internal", Meaning::Access},
    {"is", Meaning::Statement},
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
    {"ref", Meaning::Modifier},
    {"required", Meaning::Modifier},
    {"return", Meaning::Statement},
    {"scoped", Meaning::Modifier},
    {"sealed", Meaning::Modifier},
    {"static", Meaning::Modifier},
    {"struct", Meaning::Type},
    {"switch", Meaning::Statement},
    {"this", Meaning::This},
    {"throw", Meaning::Statement},
    {"unsafe", Meaning::Modifier},
    {"using", Meaning::Statement},
    {"virtual", Meaning::Modifier},
    {"volatile", Meaning::Modifier},
    {"yield", Meaning::Statement},
};

// A hash of words of two letters and more; no two of those above share one.
constexpr std::size_t HashOf(std::string_view word) {
    const auto byte = [word](std::size_t i) { return static_cast<unsigned char>(word[i]); };
    return (byte(0) + 19U * byte(1) + 2U * byte(word.size() - 1) + 7U * word.size()) % 256;
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

constexpr bool BeginsWord(char c) { return IsAsciiLetter(c) || c == '_'; }

// Most bytes of a text are asked.
constexpr std::array<bool, 256> kContinueWord = [] {
    std::array<bool, 256> continues{};
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        continues[static_cast<std::size_t>(byte)] = BeginsWord(c) || IsAsciiDigit(c);
    }
    return continues;
}();

bool ContinuesWord(char c) { return kContinueWord[static_cast<unsigned char>(c)]; }

// Steps through a text token by token.
class Tokens {
  public:
    explicit Tokens(std::string_view text) : text_(text) {}

    // The next token's first character, or 0 at the end; it is not taken.
    char Peek() {
        while (position_ < text_.size() && text_[position_] == ' ') ++position_;
        return position_ < text_.size() ? text_[position_] : '\0';
    }

    void Skip() { ++position_; }

    // The word that is next, without an '@' before it; empty when there is none.
    std::string_view TakeWord() {
        if (Peek() == '@') ++position_;
        const std::size_t start = position_;
        if (start == text_.size() || !BeginsWord(text_[start])) return {};
        while (position_ < text_.size() && ContinuesWord(text_[position_])) ++position_;
        return text_.substr(start, position_ - start);
    }

    // A literal from its opening quote on.
    void SkipLiteral() {
        const char quote = text_[position_++];
        while (position_ < text_.size() && text_[position_] != quote) {
            position_ += text_[position_] == '\\' ? 2 : 1;
        }
        position_ = std::min(position_ + 1, text_.size());
    }

    // From an opening parenthesis or bracket to behind the one that closes it, or the end.
    void SkipBrackets() {
        std::size_t open = 0;
        do {
            const char c = text_[position_];
            if (c == '"' || c == '\'') {
                SkipLiteral();
                continue;
            }
            if (c == '(' || c == '[') ++open;
            if (c == ')' || c == ']') --open;
            ++position_;
        } while (open > 0 && position_ < text_.size());
    }

    // From a '<' to behind its '>', if what stands between them can only be types.
    bool SkipTypeArguments() {
        std::size_t open = 0;
        for (; position_ < text_.size(); ++position_) {
            const char c = text_[position_];
            if (c == '<') ++open;
            if (c == '>' && --open == 0) {
                ++position_;
                return true;
            }
            constexpr std::string_view kOfTypes = "<> ,.:?*[]()@";
            if (!ContinuesWord(c) && kOfTypes.find(c) == std::string_view::npos) return false;
        }
        return false;
    }

    // Attribute sections end at their first ']', and what is left of one goes before what follows
    // it: "typeof(int[]))] void F()". Skips to behind the last bracket that closes nothing.
    void SkipDebris() {
        constexpr std::string_view kDebris = ")],";
        if (kDebris.find(Peek()) == std::string_view::npos) return;
        std::size_t end = 0;
        while (position_ < text_.size()) {
            const char c = text_[position_];
            if (c == '(' || c == '[') {
                SkipBrackets();
            } else if (c == '"' || c == '\'') {
                SkipLiteral();
            } else {
                ++position_;
                if (c == ')' || c == ']') end = position_;
            }
        }
        position_ = end;
    }

    // From where a taken word begins up to the position.
    std::string_view Since(std::string_view word) const {
        const auto start = static_cast<std::size_t>(word.data() - text_.data());
        return text_.substr(start, position_ - start);
    }

  private:
    std::string_view text_;
    std::size_t position_ = 0;
};

class DeclarationReader {
  public:
    DeclarationReader(std::string_view text, const Scope& scope) : tokens_(text), scope_(scope) {}

    Declaration Read() {
        tokens_.SkipDebris();
        while (TakeToken() == Step::GoOn) {
        }
        return found_;
    }

  private:
    // What a token comes to.
    enum class Step : unsigned char { GoOn, Decided };

    enum class Before : unsigned char { Start, Word, Type, Dot };

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
            case Meaning::Modifier: return name_.empty() ? Step::GoOn : TakeName(word);
            case Meaning::MemberModifier:
                return (scope_.inType || member_) && name_.empty() ? Step::GoOn : Nothing();
            case Meaning::Access: member_ = true; return Step::GoOn;
            case Meaning::Delegate:
                if (tokens_.Peek() == '*') return TakeName(word);  // a pointer to a function
                return Step::GoOn;
            case Meaning::Type: return Named(Kind::Type, tokens_.TakeWord());
            case Meaning::Record: return TakeRecord(word);
            case Meaning::Namespace: return Namespace();
            case Meaning::Operator: return Operator(word);
            case Meaning::This: return Indexer(word);
            case Meaning::Statement: return Nothing();
            case Meaning::Name: break;
        }
        return TakeName(word);
    }

    // What stands before a name, and not before a dot, is its type.
    Step TakeName(std::string_view word) {
        qualified_ = before_ == Before::Dot;
        typed_ = typed_ || (before_ != Before::Start && !qualified_);
        name_ = word;
        before_ = Before::Word;
        return Step::GoOn;
    }

    Step TakeParenthesis() {
        if (before_ != Before::Start) return Function();
        tokens_.SkipBrackets();  // a tuple
        before_ = Before::Type;
        return Step::GoOn;
    }

    // An attribute section that was left where no statement starts, the rank of an array, or the
    // size of a buffer behind its name.
    Step TakeBracket() {
        if (before_ == Before::Start) {
            tokens_.SkipBrackets();
            return Step::GoOn;
        }
        tokens_.Skip();
        while (tokens_.Peek() == ',') tokens_.Skip();
        if (tokens_.Peek() != ']') return Value();
        tokens_.Skip();
        before_ = Before::Type;
        return Step::GoOn;
    }

    Step TakeTypeArguments() {
        if (!tokens_.SkipTypeArguments()) return Nothing();
        before_ = Before::Type;
        return Step::GoOn;
    }

    // Nullable types, and pointers.
    Step TakeTypeMark() {
        if (before_ == Before::Start) return Nothing();
        tokens_.Skip();
        before_ = Before::Type;
        return Step::GoOn;
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

    Step TakeRecord(std::string_view word) {
        Tokens ahead = tokens_;
        const std::string_view name = ahead.TakeWord();
        const bool declares = !name.empty() && MeaningOf(name) == Meaning::Name;
        return declares ? Named(Kind::Type, name) : TakeName(word);
    }

    // A name with its type before it.
    Step Value() {
        return typed_ && (scope_.inType || member_) ? Named(Kind::Value, name_) : Nothing();
    }

    // Without a type only a constructor is one.
    Step Function() {
        const bool ofType = scope_.inType && name_ == scope_.typeName;
        const bool constructor = !qualified_ && (ofType || member_);
        return typed_ || constructor ? Named(Kind::Function, name_) : Nothing();
    }

    Step Destructor() {
        tokens_.Skip();
        const std::string_view word = tokens_.TakeWord();
        if (!scope_.inType || before_ != Before::Start || word.empty()) return Nothing();
        return Named(Kind::Function, {word.data() - 1, word.size() + 1});
    }

    Step Namespace() {
        const std::string_view first = tokens_.TakeWord();
        std::string_view whole = first;
        while (!first.empty() && tokens_.Peek() == '.') {
            tokens_.Skip();
            tokens_.TakeWord();
            whole = tokens_.Since(first);
        }
        return Named(Kind::Namespace, whole);
    }

    // Whatever stands between the word and the parameters: "operator +", "operator int".
    Step Operator(std::string_view word) {
        while (tokens_.Peek() != '(' && tokens_.Peek() != '\0') tokens_.Skip();
        return Named(Kind::Function, rtrim(tokens_.Since(word)));
    }

    Step Indexer(std::string_view word) {
        return before_ == Before::Start ? Nothing() : Named(Kind::Value, word);
    }

    static Step Nothing() { return Step::Decided; }

    Step Named(Kind kind, std::string_view name) {
        if (!name.empty()) found_ = {kind, name};
        return Step::Decided;
    }

    Tokens tokens_;
    const Scope& scope_;
    std::string_view name_;          // the last name so far
    Before before_ = Before::Start;  // what came last, modifiers left out
    bool typed_ = false;             // a type stands before the name
    bool qualified_ = false;         // a dot does
    Declaration found_;
    bool member_ = false;  // says itself that it is one
};

}  // namespace

Declaration DeclaredBy(std::string_view text, const Scope& scope) {
    return DeclarationReader(text, scope).Read();
}

Scope ScopeBelow(std::string_view text, const Declaration& declaration, const Scope& scope) {
    if (text.starts_with('#')) return scope;  // a directive's section stands where it does
    if (declaration.kind == Kind::Type) return {true, declaration.name};
    return {};
}
