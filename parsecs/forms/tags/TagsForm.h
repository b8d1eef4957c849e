// Tags as a form of output: one sorted file of all inputs, with which editors jump to declarations.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "parsecs/form/FormKind.h"
#include "parsecs/forms/tags/TagPaths.h"

namespace plugincs {

class TagsForm : public Form {
  public:
    /// The tags become the file `output`, or go to standard output if that is empty. Throws
    /// UsageError for a file that holds something else.
    explicit TagsForm(std::string output);

    MadeFile Make(ReadSource source) const override;
    void Take(const FoundFile& file, Piece& piece) override;
    void Finish(bool complete) override;

  private:
    /// Most lines are told apart by their first bytes.
    struct Line {
        std::uint64_t begin;
        std::string_view text;
        bool operator<(const Line& other) const;
    };

    std::vector<Line> SortedLines() const;

    std::string output_;
    TagPaths paths_;
    std::deque<std::string> texts_;  // of the files
};

extern const FormKind kTagsForm;

}  // namespace plugincs
