#include "parsecs/text/TextForm.h"

#include <filesystem>
#include <optional>
#include <utility>

#include "parsecs/outline/Outline.h"
#include "parsecs/outline/Terminal.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/output/OutputPath.h"
#include "parsecs/records/Records.h"
#include "parsecs/rows/JsonLines.h"
#include "parsecs/rows/Outcome.h"
#include "parsecs/strict/StrictJson.h"

namespace {

FileOutcome AppendStrict(ReadSource source, const OutlineStyle& /*style*/, std::string& out) {
    std::string records;
    const FileOutcome outcome = AppendRecords(std::move(source), records);
    out += StrictJson(records);
    return outcome;
}

FileOutcome AppendBytes(ReadSource source, const OutlineStyle& /*style*/, std::string& out) {
    return AppendRecords(std::move(source), out);
}

FileOutcome AppendRows(ReadSource source, const OutlineStyle& /*style*/, std::string& out) {
    const FileRows file(std::move(source.path), std::move(source.text), source.traces);
    AppendJsonLines(file, out);
    return OutcomeOf(file);
}

FileOutcome AppendTree(ReadSource source, const OutlineStyle& style, std::string& out) {
    const FileRows file(std::move(source.path), std::move(source.text), source.traces);
    AppendOutline(file, style, out);
    return OutcomeOf(file);
}

struct TextFormat {
    FileOutcome (*append)(ReadSource source, const OutlineStyle& style, std::string& out);
    bool takesSeveral;
    std::string_view suffix;
    std::string_view head;  // of each output
};

const TextFormat& FormatOf(Options::Form form) {
    static const TextFormat kFormats[] = {
        {AppendBytes, false, ".json", ""},
        {AppendStrict, false, ".json", ""},
        {AppendRows, true, ".jsonl", kJsonLinesHead},
        {AppendTree, true, ".txt", ""},
    };
    return kFormats[static_cast<std::size_t>(form)];
}

struct TextPiece : Piece {
    std::string text;
};

class TextForm : public Form {
  public:
    TextForm(const TextFormat& format, const OutlineStyle& style)
        : format_(format), style_(style) {}

    MadeFile Make(ReadSource source) const override {
        auto piece = std::make_unique<TextPiece>();
        const FileOutcome outcome = format_.append(std::move(source), style_, piece->text);
        if (outcome.kind == FileOutcome::Kind::GivenUp) return {outcome, nullptr};
        return {outcome, std::move(piece)};
    }

    void Take(const FoundFile& file, Piece& piece) override {
        TakeText(file, static_cast<TextPiece&>(piece).text);
    }

  protected:
    virtual void TakeText(const FoundFile& file, std::string_view text) = 0;

    bool TakesSeveral() const { return format_.takesSeveral; }
    std::string_view Head() const { return format_.head; }
    std::string_view Suffix() const { return format_.suffix; }

  private:
    const TextFormat& format_;
    OutlineStyle style_;
};

class OneOutput : public TextForm {
  public:
    OneOutput(const TextFormat& format, const OutlineStyle& style, std::string path)
        : TextForm(format, style), path_(std::move(path)) {}

    void TakeText(const FoundFile& /*file*/, std::string_view text) override {
        // It was no folder when it was looked at first.
        if (output_ && !TakesSeveral()) throw std::runtime_error("several files for one output");
        Output().Write(text);
    }

    void Finish(bool complete) override {
        if (complete) Output().Finish();
    }

  private:
    // Opened late: where there is nothing to write, nothing is replaced.
    OutputFile& Output() {
        if (!output_) output_.emplace(path_).Write(Head());
        return *output_;
    }

    std::string path_;
    std::optional<OutputFile> output_;
};

class FolderOfOutputs : public TextForm {
  public:
    FolderOfOutputs(const TextFormat& format, const OutlineStyle& style, std::string folder)
        : TextForm(format, style), folder_(std::move(folder)) {}

    void TakeText(const FoundFile& file, std::string_view text) override {
        try {
            const std::filesystem::path path = OutputPath(folder_, file.path, Suffix());
            MakeFolder(path.parent_path());
            OutputFile output(path.string());
            output.Write(Head());
            output.Write(text);
            output.Finish();
        } catch (const std::runtime_error& error) {
            throw OutputFailure(error.what());
        }
    }

    void Finish(bool complete) override {
        if (complete) MakeFolder(folder_);
    }

  private:
    // Files of one folder follow each other.
    void MakeFolder(const std::filesystem::path& folder) {
        if (folder == made_) return;
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        if (error) throw OutputFailure(folder.string() + ": " + error.message());
        made_ = folder;
    }

    std::string folder_;
    std::filesystem::path made_;
};

OutlineStyle StyleOf(const Options& options) {
    const bool terminal = options.output.empty() && options.folder.empty();
    OutlineStyle style = StyleFor(terminal ? STDOUT_FILENO : -1);
    if (options.colour != Options::Colour::Auto) {
        style.colour = options.colour == Options::Colour::Always;
    }
    return style;
}

}  // namespace

bool TakesSeveral(Options::Form form) { return FormatOf(form).takesSeveral; }

std::string_view OutputSuffix(Options::Form form) { return FormatOf(form).suffix; }

std::unique_ptr<Form> MakeTextForm(const Options& options) {
    const TextFormat& format = FormatOf(options.form);
    const OutlineStyle style = StyleOf(options);
    if (!options.folder.empty()) {
        return std::make_unique<FolderOfOutputs>(format, style, options.folder);
    }
    return std::make_unique<OneOutput>(format, style, options.output);
}
