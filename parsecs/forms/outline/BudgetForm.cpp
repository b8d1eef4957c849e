#include "parsecs/forms/outline/BudgetForm.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "parsecs/form/SourceRows.h"
#include "parsecs/output/OutputFile.h"

namespace plugincs {

namespace {

std::string MarkOfFiles(std::size_t count) {
    return count == 0 ? "" : "\xE2\x80\xA6 " + std::to_string(count) + " more files\n";
}

}  // namespace

struct BudgetForm::SkeletonPiece : Piece {
    explicit SkeletonPiece(const FileRows& rows) : file{Skeleton(rows), {}} {
        std::string text;
        for (std::size_t i = 0; i < file.sizes.size(); ++i) {
            text.clear();
            file.skeleton.Append(static_cast<Skeleton::Detail>(i), text);
            file.sizes[i] = text.size();
        }
    }
    File file;
};

MadeFile BudgetForm::Make(ReadSource source) const {
    const FileRows file = RowsOf(std::move(source));
    return {OutcomeOf(file), std::make_unique<SkeletonPiece>(file)};
}

void BudgetForm::Take(const FoundFile& /*file*/, Piece& piece) {
    files_.push_back(std::move(static_cast<SkeletonPiece&>(piece).file));
}

// Files of one size go in the order of the inputs.
void BudgetForm::Fit() {
    std::vector<File*> largestFirst;
    std::size_t total = 0;
    for (File& file : files_) {
        largestFirst.push_back(&file);
        total += file.Size();
    }
    std::stable_sort(largestFirst.begin(), largestFirst.end(),
                     [](const File* a, const File* b) { return a->sizes[0] > b->sizes[0]; });
    for (std::size_t detail = 1; detail < Skeleton::kDetails; ++detail) {
        for (File* const file : largestFirst) {
            if (total <= mostBytes_) return;
            total -= file->Size();
            file->detail = static_cast<Skeleton::Detail>(detail);
            total += file->Size();
        }
    }
    std::size_t left = 0;
    for (auto file = largestFirst.rbegin(); file != largestFirst.rend(); ++file) {
        if (total + MarkOfFiles(left).size() <= mostBytes_) return;
        total -= (*file)->Size();
        (*file)->shown = false;
        ++left;
    }
}

std::string BudgetForm::Text() const {
    std::string text;
    std::size_t left = 0;
    for (const File& file : files_) {
        file.shown ? file.skeleton.Append(file.detail, text) : void(++left);
    }
    return text + MarkOfFiles(left);
}

void BudgetForm::Finish(bool complete) {
    if (!complete) return;
    Fit();
    OutputFile output(output_);
    output.Write(Text());
    output.Finish();
}

}  // namespace plugincs
