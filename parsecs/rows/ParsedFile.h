// A source file as rows: what parsecs shows to people, made from the tree.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "parsecs/Form.h"
#include "parsecs/rows/DeclaredName.h"
#include "parsecs/rows/Lines.h"
#include "tree/Parse.h"

/// One node. Its subtree has the ids from `id` to `last`.
///
/// The first two rows are the file and "namespace global", which holds what stands in it: they have
/// the whole file, or no place where that is empty; but the second ends where a brace too many
/// closes it. The last row lists the operands of conditional directives and has no place.
struct Row {
    std::int32_t id;
    std::int32_t parent;    ///< -1 for the file itself, which comes first.
    std::int32_t last;      ///< Largest id in its subtree.
    std::int32_t depth;     ///< 0 for the file itself.
    std::string_view kind;  ///< The kind of the node's record.
    std::string_view name;  ///< What a declaration declares; empty where the text declares nothing.
    std::string_view text;  ///< The node's whole text.
    bool plain = false;     ///< Whether the text certainly stands in JSON as it is.
    Declaration::Kind declares;  ///< None where there is no name.
    Place begin;  ///< First byte of the text, or of what made the node where it has none.
    Place end;    ///< The ';', the '}' or the last byte that ends it.
};

/// Parses on construction.
class ParsedFile {
  public:
    /// Throws std::bad_alloc.
    explicit ParsedFile(ReadSource source);
    ParsedFile(const ParsedFile&) = delete;
    ParsedFile& operator=(const ParsedFile&) = delete;

    /// Abandoned without any rows.
    Parse::End end() const { return parse_.end; }

    /// In pre-order, which is the order of the source and of the ids. Views are valid as long as
    /// this object is.
    const std::vector<Row>& rows() const { return rows_; }
    const std::string& path() const { return parse_.path; }

  private:
    Parse parse_;
    std::vector<Row> rows_;
};
