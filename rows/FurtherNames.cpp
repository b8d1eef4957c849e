#include "rows/FurtherNames.h"

#include <algorithm>
#include <utility>

#include "rows/Tokens.h"
#include "text/StringHelpers.h"

namespace plugincs {

namespace {

class NamesFinder {
  public:
    explicit NamesFinder(std::string_view rest) : tokens_(rest), mayWaste_(4 * rest.size()) {}

    std::vector<FurtherName> Find(std::int64_t open) {
        SkipValue(open);
        while (tokens_.Peek() == ',') TakeName();
        return std::move(names_);
    }

  private:
    void TakeName() {
        tokens_.Skip();
        tokens_.Peek();
        const std::string_view text = tokens_.Rest();
        const std::string_view name = tokens_.TakeWord();
        const char next = tokens_.Peek();
        SkipValue(0);
        const bool isName = next == '\0' || next == '=' || next == ',' || next == '[';
        if (!name.empty() && isName) names_.push_back({name, rtrim(tokens_.Since(text))});
    }

    // To the next comma outside of brackets, or the end.
    void SkipValue(std::int64_t open) {
        while (const char c = tokens_.Peek()) {
            if (c == ',' && open <= 0) return;
            if (c == '"' || c == '\'') {
                tokens_.SkipLiteral();
            } else if (c == '(' || c == '[') {
                tokens_.SkipBrackets();
            } else if (c == '<') {
                SkipLess();
            } else {
                if (c == ')' || c == ']') --open;
                tokens_.Skip();
            }
        }
    }

    // What begins with a '<', or that sign alone. What follows may have to be read again: only so
    // often that all of it takes time linear in the text.
    void SkipLess() {
        Tokens ahead = tokens_;
        if (mayWaste_ > 0 && ahead.SkipTypeArguments()) {
            tokens_ = ahead;
            return;
        }
        mayWaste_ -= std::min(mayWaste_, ahead.position() - tokens_.position());
        tokens_.Skip();
    }

    Tokens tokens_;
    std::size_t mayWaste_;  // bytes
    std::vector<FurtherName> names_;
};

}  // namespace

std::vector<FurtherName> FindFurtherNames(std::string_view rest, std::int64_t open) {
    return NamesFinder(rest).Find(open);
}

}  // namespace plugincs
