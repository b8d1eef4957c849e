#include "parsecs/forms/tags/TagLines.h"

#include <algorithm>
#include <vector>

#include "parsecs/forms/tags/Addresses.h"
#include "rows/Access.h"
#include "rows/Enclosing.h"
#include "rows/Signature.h"
#include "text/ByteSets.h"

namespace plugincs {

namespace {

constexpr std::string_view kSpecial = "\\\t\n\r";
constexpr std::string_view kLetters = "\\tnr";
constexpr ByteSets kSpecialBytes{ByteSet(kSpecial)};

// Tabs and line ends part fields and lines.
void AppendValue(std::string_view value, std::string& out) {
    for (std::size_t at = 0; at < value.size();) {
        const std::size_t special = Find(kSpecialBytes, value, at);
        out.append(value, at, special - at);
        if (special == value.size()) return;
        out.append("\\").append(1, kLetters[kSpecial.find(value[special])]);
        at = special + 1;
    }
}

void AppendField(std::string_view name, std::string_view value, std::string& out) {
    out.append("\t").append(name).append(":");
    AppendValue(value, out);
}

void AppendNumber(std::string_view name, std::int32_t value, std::string& out) {
    out.append("\t").append(name).append(":").append(std::to_string(value));
}

struct Declared {
    const Row* row;
    const Row* around;
    std::size_t line;  // of the name
};

class FileTags {
  public:
    FileTags(const FileRows& file, std::string& out)
        : file_(file), lines_(file.source()), out_(out) {}

    void Append(std::string_view path) {
        Collect();
        std::string place = "\t";
        AppendValue(path, place);
        place += '\t';
        const Addresses addresses(file_.source(), lines_, NameLines());
        for (const Declared& declared : declared_) {
            AppendValue(declared.row->name, out_);
            out_ += place;
            addresses.Append(declared.line, out_);
            out_ += ";\"";
            AppendFields(declared);
            out_ += '\n';
        }
    }

  private:
    void Collect() {
        Enclosing enclosing(file_.rows());
        for (const Row& row : file_.rows()) {
            const Row* const around = enclosing.Of(row);
            if (row.declares != Declares::Nothing)
                declared_.push_back({&row, around, NameLine(row)});
        }
    }

    // A type or modifiers may stand on lines of their own before the name.
    std::size_t NameLine(const Row& row) {
        const auto first = static_cast<std::size_t>(row.begin.line);
        if (row.begin.line == row.end.line) return first;
        const auto offset = static_cast<std::size_t>(row.name.data() - row.text.data());
        const auto column = static_cast<std::size_t>(row.begin.column - 1);
        const std::size_t begin = lines_.BeginOf(first) + column;
        const std::string_view upToName = row.text.substr(0, offset + row.name.size());
        if (file_.source().substr(begin).starts_with(upToName)) return first;
        return static_cast<std::size_t>(lines_.At(file_.PositionOf(begin, offset)).line);
    }

    const std::vector<std::size_t>& NameLines() {
        for (const Declared& declared : declared_) nameLines_.push_back(declared.line);
        std::sort(nameLines_.begin(), nameLines_.end());
        nameLines_.erase(std::unique(nameLines_.begin(), nameLines_.end()), nameLines_.end());
        return nameLines_;
    }

    void AppendFields(const Declared& declared) {
        const Row& row = *declared.row;
        const Access access = AccessOf(row, declared.around);
        const std::string_view parameters = ParametersOf(row);
        AppendField("kind", NameOf(row.declares), out_);
        AppendNumber("line", static_cast<std::int32_t>(declared.line), out_);
        if (declared.around != nullptr) {
            AppendField(NameOf(declared.around->declares), row.scope, out_);
        }
        if (IsOfFile(access)) AppendField("file", "", out_);
        if (!NameOf(access).empty()) AppendField("access", NameOf(access), out_);
        if (!parameters.empty()) AppendField("signature", parameters, out_);
        AppendNumber("end", row.end.line, out_);
    }

    const FileRows& file_;
    Lines lines_;
    std::string& out_;
    std::vector<Declared> declared_;
    std::vector<std::size_t> nameLines_;
};

}  // namespace

const std::string_view kTagsHead =
    "!_TAG_FILE_ENCODING\tutf-8\t//\n"
    "!_TAG_FILE_FORMAT\t2\t/extended format/\n"
    "!_TAG_FILE_SORTED\t1\t/0=unsorted, 1=sorted, 2=foldcase/\n"
    "!_TAG_OUTPUT_EXCMD\tmixed\t/number, pattern, or both/\n"
    "!_TAG_OUTPUT_FILESEP\tslash\t/slash or backslash/\n"
    "!_TAG_OUTPUT_MODE\tu-ctags\t/u-ctags or e-ctags/\n"
    "!_TAG_OUTPUT_VERSION\t1.0\t/current.age/\n"
    "!_TAG_PATTERN_LENGTH_LIMIT\t96\t/0 for no limit/\n"
    "!_TAG_PROGRAM_NAME\tparsecs\t//\n"
    "!_TAG_PROGRAM_VERSION\t" PROJECT_VERSION "\t//\n";

void AppendTags(const FileRows& file, std::string_view path, std::string& out) {
    FileTags(file, out).Append(path);
}

}  // namespace plugincs
