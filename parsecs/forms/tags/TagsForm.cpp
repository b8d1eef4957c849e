#include "parsecs/forms/tags/TagsForm.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "parsecs/form/SourceRows.h"
#include "parsecs/forms/tags/TagLines.h"
#include "parsecs/output/OutputFile.h"

namespace plugincs {

namespace {

struct LinesPiece : Piece {
    std::string text;
};

// "--tags a.cs b.cs" is a slip that would cost a source.
void CheckIsTags(const std::string& output) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(output, error)) return;
    std::string begin(kTagsMark.size(), '\0');
    std::ifstream file(output, std::ios::binary);
    file.read(begin.data(), static_cast<std::streamsize>(begin.size()));
    if (file.gcount() == 0 || begin == kTagsMark) return;
    throw UsageError("--tags " + output + ": is no tags file, and is left as it is");
}

// As a number that is smaller for what comes first in the order of bytes.
std::uint64_t FirstBytes(std::string_view text) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof number; ++i) {
        number = number << 8U | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    }
    return number;
}

}  // namespace

TagsForm::TagsForm(std::string output) : output_(std::move(output)), paths_(output_) {
    CheckIsTags(output_);
}

MadeFile TagsForm::Make(ReadSource source) const {
    const FileRows file = RowsOf(std::move(source));
    auto piece = std::make_unique<LinesPiece>();
    AppendTags(file, paths_.Of(file.path()), piece->text);
    return {OutcomeOf(file), std::move(piece)};
}

void TagsForm::Take(const FoundFile& /*file*/, Piece& piece) {
    texts_.push_back(std::move(static_cast<LinesPiece&>(piece).text));
    texts_.back().shrink_to_fit();
}

bool TagsForm::Line::operator<(const Line& other) const {
    return begin != other.begin ? begin < other.begin : text < other.text;
}

std::vector<TagsForm::Line> TagsForm::SortedLines() const {
    std::vector<Line> lines;
    for (const std::string& text : texts_) {
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = text.find('\n', begin) + 1;
            const std::string_view line = std::string_view(text).substr(begin, end - begin);
            lines.push_back({FirstBytes(line), line});
            begin = end;
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

void TagsForm::Finish(bool complete) {
    if (!complete) return;
    constexpr std::size_t kAtOnce = 1U << 16U;
    OutputFile output(output_);
    std::string bytes(kTagsHead);
    for (const Line& line : SortedLines()) {
        bytes += line.text;
        if (bytes.size() < kAtOnce) continue;
        output.Write(bytes);
        bytes.clear();
    }
    output.Write(bytes);
    output.Finish();
}

constinit const FormKind kTagsForm{
    .option = "tags",
    .argument = "FILE",
    .help = "Tags for Vim and other editors, or their readers: a sorted line for each declaration.",
    .suffix = "",
    .make = [](const Options& options, const Inputs& /*inputs*/) -> std::unique_ptr<Form> {
        return std::make_unique<TagsForm>(options.output);
    },
};

}  // namespace plugincs
