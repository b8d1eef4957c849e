#include "parsecs/diff/DeclaredHeader.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "parsecs/diff/SourceTokens.h"

namespace plugincs {

namespace {

// Kinds of which no two in one scope have the same name and parameters.
std::string_view KindOf(const Row& row) {
    if (IsType(row.declares)) return "type";
    const bool isStatic = row.modifiers.find("static") != std::string_view::npos;
    if (row.declares == Declares::Constructor)
        return isStatic ? "first constructor" : "constructor";
    if (row.declares == Declares::Destructor) return "destructor";
    return IsFunction(row.declares) ? "function" : "value";
}

// The interface that an explicit member is for, with its last dot: "IList<int>.".
std::string_view QualifierBefore(std::string_view text, std::size_t name) {
    if (name == 0 || text[name - 1] != '.') return {};
    std::size_t begin = name;
    for (int open = 0; begin > 0; --begin) {
        const char c = text[begin - 1];
        if (c == '>') ++open;
        if (c == '<') --open;
        if (c == ' ' && open <= 0) break;
    }
    return text.substr(begin, name - begin);
}

bool IsOpening(std::string_view sign) { return sign == "(" || sign == "[" || sign == "{"; }
bool IsClosing(std::string_view sign) { return sign == ")" || sign == "]" || sign == "}"; }

class HeaderReader {
  public:
    HeaderReader(const Row& row, HashPoint point)
        : row_(row),
          nameAt_(static_cast<std::size_t>(row.name.data() - row.text.data())),
          key_(point),
          tokens_(row.text) {}

    DeclaredHeader Read() {
        TakeName();
        TakeTypeParameters();
        if (text() == "(" || (row_.declares == Declares::Indexer && text() == "[")) {
            TakeParameters();
        }
        while (!EndsSignature()) Step();
        header_.key = key_.value();
        return header_;
    }

  private:
    std::string_view text() const { return token_.text; }
    bool AtEnd() const { return token_.kind == SourceToken::Kind::End; }

    void Step() {
        if (IsOpening(text())) ++open_;
        if (IsClosing(text())) --open_;
        ++header_.tokens;
        token_ = tokens_.Next();
    }

    void TakeName() {
        key_.Add(KindOf(row_));
        token_ = tokens_.Next();
        while (!AtEnd() && token_.position < nameAt_) Step();
        header_.nameBegin = header_.tokens;
        while (!AtEnd() && token_.position < nameAt_ + row_.name.size()) Step();
        header_.nameEnd = header_.tokens;
        key_.Add(QualifierBefore(row_.text, nameAt_));
        // Theirs is that of the type, which may have another one.
        const bool hasTypesName =
            row_.declares == Declares::Constructor || row_.declares == Declares::Destructor;
        if (!hasTypesName) key_.Add(row_.name);
        header_.nameKey = key_.value();
        open_ = 0;
    }

    // Only their number tells two types or functions apart.
    void TakeTypeParameters() {
        if (IsValue(row_.declares) || text() != "<") return;
        std::uint64_t count = 1;
        int open = 0;
        do {
            if (text() == "<") ++open;
            if (text() == ">") --open;
            if (text() == ",") ++count;
            Step();
        } while (open > 0 && !AtEnd());
        key_.Add(count);
    }

    void TakeParameters() {
        if (IsType(row_.declares)) return;  // of a record
        const int around = open_;
        Step();
        while (open_ > around && !AtEnd()) TakeParameter(around + 1);
    }

    // The type: without attributes, name and default value.
    void TakeParameter(int level) {
        std::vector<std::string_view> type;
        int angles = 0;
        bool hasDefault = false;
        while (!AtEnd() && open_ >= level) {
            const bool outside = open_ == level && angles <= 0;
            if (outside && text() == ",") break;
            if (outside && text() == "=") hasDefault = true;
            if (open_ == level && IsClosing(text())) break;
            if (outside && type.empty() && text() == "[") {
                SkipBrackets();
                continue;
            }
            if (!hasDefault) {
                if (text() == "<") ++angles;
                if (text() == ">") --angles;
                type.push_back(text());
            }
            Step();
        }
        AddType(type);
        if (!AtEnd()) Step();  // the comma or what closes the list
    }

    void SkipBrackets() {
        const int around = open_;
        do {
            Step();
        } while (open_ > around && !AtEnd());
    }

    void AddType(std::vector<std::string_view>& type) {
        constexpr std::string_view kOfParameters[] = {"this", "params", "scoped"};
        for (const std::string_view word : kOfParameters) {
            if (type.size() > 1 && type.front() == word) type.erase(type.begin());
        }
        if (type.size() > 1) type.pop_back();
        if (type.size() > 1 && type.back() == "@") type.pop_back();
        for (const std::string_view piece : type) key_.Add(piece);
        key_.Add(",");
    }

    bool EndsSignature() const {
        if (AtEnd()) return true;
        if (open_ > 0 || IsType(row_.declares)) return false;
        if (text() == "=>") return true;
        if (row_.declares == Declares::Constructor) return text() == ":";
        return IsValue(row_.declares) && (text() == "=" || text() == ",");
    }

    const Row& row_;
    const std::size_t nameAt_;  // in the text
    TextHash key_;
    DeclaredHeader header_;
    SourceTokens tokens_;
    SourceToken token_;
    int open_ = 0;  // brackets, from the name on
};

}  // namespace

DeclaredHeader HeaderOf(const Row& row, HashPoint point) { return HeaderReader(row, point).Read(); }

}  // namespace plugincs
