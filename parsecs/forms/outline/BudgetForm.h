// The declarations of a whole code base in at most so many bytes.
//
// What is left out first: private members; members that are not public; all members; types in
// types; all types; and in the end files. Each of these goes file by file, from the largest one on,
// until the rest fits; files themselves go from the smallest one on.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "parsecs/form/Form.h"
#include "parsecs/forms/outline/Skeleton.h"

namespace plugincs {

class BudgetForm : public Form {
  public:
    /// The outline becomes the file `output`, or goes to standard output if that is empty.
    BudgetForm(std::string output, std::size_t mostBytes)
        : output_(std::move(output)), mostBytes_(mostBytes) {}

    MadeFile Make(ReadSource source) const override;
    void Take(const FoundFile& file, Piece& piece) override;
    void Finish(bool complete) override;

  private:
    struct File {
        Skeleton skeleton;
        std::array<std::size_t, Skeleton::kDetails> sizes;  // of what each detail shows
        Skeleton::Detail detail = Skeleton::Detail::All;
        bool shown = true;

        std::size_t Size() const { return sizes[static_cast<std::size_t>(detail)]; }
    };
    struct SkeletonPiece;

    void Fit();
    std::string Text() const;

    std::string output_;
    std::size_t mostBytes_;
    std::vector<File> files_;
};

}  // namespace plugincs
