// A source file as rows, complete and in its own words: what is shown to people and their tools.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "process/Traces.h"
#include "rows/Reading.h"
#include "rows/Row.h"
#include "tree/Parse.h"

namespace plugincs {

/// A comment, with its marks.
struct Comment {
    Place begin;
    std::string_view text;
};

/// Makes the rows on construction. Nothing in it is shared: files may be made into rows in any
/// number of threads.
class FileRows {
  public:
    /// `path` is the name that the rows bear, `source` what was read from it. Throws
    /// std::bad_alloc, and std::length_error for a source above 2 GiB.
    FileRows(std::string path, std::string source, Traces traces = Traces(nullptr));
    FileRows(const FileRows&) = delete;
    FileRows& operator=(const FileRows&) = delete;

    /// In pre-order, which is the order of the source and of the ids. Views are valid as long as
    /// this object is.
    const std::vector<Row>& rows() const { return rows_; }
    const std::string& path() const { return parse_.path; }
    /// What it was made of.
    std::string_view source() const { return source_; }

    /// Where a byte of a row's text stands in the source: of one that begins at `begin` the one at
    /// `offset`. Linear in that.
    std::size_t PositionOf(std::size_t begin, std::size_t offset) const;
    /// Where attribute sections stand at the start of a statement, in order.
    const std::vector<Span>& attributes() const { return reading_.attributes; }

    /// The line at which the scan stopped, at braces that do not match; 0 where it went through.
    std::int32_t stoppedAt() const { return stoppedAt_; }

    /// The lines where conditional groups begin of which only one branch is in the rows.
    const std::vector<std::int32_t>& cutAt() const { return cutAt_; }

    std::vector<Comment> Comments() const;

  private:
    const std::string source_;
    Reading reading_;  // but for its text, which the parse has
    Parse parse_;
    std::vector<Row> rows_;
    std::int32_t stoppedAt_ = 0;
    std::vector<std::int32_t> cutAt_;
};

}  // namespace plugincs
