// Renders node records as a JSON array, byte for byte as hosts expect it. Texts are escaped by a
// backslash before a double quote, an apostrophe or a backslash; every other byte is written raw.
#pragma once

#include <string>
#include <string_view>

#include "output/TextBuffer.h"
#include "tree/ObjectBranch.h"

/// About the size of the text for the nodes at and below `root`.
std::size_t EstimateSize(const ObjectBranch& root);

/// Writes one array: construct, `Add` each record in order, `Finish` once.
class JsonRecords {
  public:
    /// The text must outlive the writer.
    explicit JsonRecords(TextBuffer& text);

    /// Writes the record; ids of its parent and children are read through its pointers.
    void Add(const ObjectBranch& record);

    void Finish();

  private:
    void PutChildIds(const ChildList& children);
    void EscapePath(std::string_view path);

    TextBuffer& text_;
    bool first_ = true;
    std::string_view path_;    // of the last record; all records of a file share one
    std::string escapedPath_;  // the same, escaped
};
