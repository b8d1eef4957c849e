#include "parsecs/form/TextForm.h"

#include <filesystem>
#include <optional>
#include <utility>

#include "parsecs/form/FormKind.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/output/OutputPath.h"

namespace plugincs {

namespace {

struct TextPiece : Piece {
    std::string text;
};

class TextForm : public Form {
  public:
    explicit TextForm(TextFormat format) : format_(std::move(format)) {}

    MadeFile Make(ReadSource source) const override {
        auto piece = std::make_unique<TextPiece>();
        const FileOutcome outcome = format_.append(std::move(source), piece->text);
        if (outcome.kind == FileOutcome::Kind::GivenUp) return {outcome, nullptr};
        return {outcome, std::move(piece)};
    }

    void Take(const FoundFile& file, Piece& piece) override {
        TakeText(file, static_cast<TextPiece&>(piece).text);
    }

  protected:
    virtual void TakeText(const FoundFile& file, std::string_view text) = 0;

    std::string_view Head() const { return format_.head; }

  private:
    TextFormat format_;
};

class OneOutput : public TextForm {
  public:
    OneOutput(TextFormat format, const Options& options)
        : TextForm(std::move(format)),
          path_(options.output),
          takesSeveral_(options.form->takesSeveral) {}

    void TakeText(const FoundFile& /*file*/, std::string_view text) override {
        // It was no folder when it was looked at first.
        if (output_ && !takesSeveral_) throw std::runtime_error("several files for one output");
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
    bool takesSeveral_;
    std::optional<OutputFile> output_;
};

class FolderOfOutputs : public TextForm {
  public:
    FolderOfOutputs(TextFormat format, const Options& options)
        : TextForm(std::move(format)), folder_(options.folder), suffix_(options.form->suffix) {}

    void TakeText(const FoundFile& file, std::string_view text) override {
        try {
            const std::filesystem::path path = OutputPath(folder_, file.path, suffix_);
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
    std::string_view suffix_;
    std::filesystem::path made_;
};

}  // namespace

std::unique_ptr<Form> MakeTextForm(const Options& options, TextFormat format) {
    if (options.folder.empty()) return std::make_unique<OneOutput>(std::move(format), options);
    return std::make_unique<FolderOfOutputs>(std::move(format), options);
}

}  // namespace plugincs
