// Renders records as a JSON array, byte for byte as hosts expect it. Texts are escaped by a
// backslash before a double quote, an apostrophe or a backslash; every other byte is written raw.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "output/RecordClassification.h"
#include "output/TextBuffer.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

/// An estimate of the text's size in bytes, for a tree with so many nodes in all.
std::size_t EstimateSize(const ObjectBranch& root, std::size_t nodes);

/// Writes one array: construct, `Add` each record in order, `Finish` once. Throws std::bad_alloc.
class JsonRecords {
  public:
    /// The text must outlive the writer.
    explicit JsonRecords(TextBuffer& text);

    /// Writes the record; the ids of its node's parent and children are read from the tree.
    void Add(const Record& record);

    void Finish();

  private:
    // What records of one kind and with the same tags share.
    struct Members {
        std::string_view kind;
        std::string_view tags;
        std::string text;
    };

    std::string_view KindToTags(const Record& record);

    TextBuffer& text_;
    bool first_ = true;
    std::string_view path_;            // of the last record; all records of a file share one
    std::string pathMember_;           // cached for that path
    std::array<Members, 32> members_;  // the same, by kind and tags
};

}  // namespace plugincs
