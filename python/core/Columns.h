// Rows as columns, laid out as Arrow has them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rows/FileRows.h"

namespace plugincs {

/// Texts behind one another. Always valid UTF-8, as readers of Arrow rely on it.
struct TextColumn {
    std::vector<std::int32_t> offsets{0};
    std::string bytes;

    /// `plain`: the text is ASCII. Otherwise each byte that belongs to no UTF-8 sequence becomes
    /// U+FFFD. Throws std::length_error beyond 2 GiB, which offsets cannot tell.
    void Append(std::string_view text, bool plain);
    std::string_view At(std::size_t index) const;
};

/// Texts that recur: each once, and its number in each row.
struct WordColumn {
    std::vector<std::int32_t> numbers;
    TextColumn words;
};

/// The rows of some files, or a part of those of one.
struct Columns {
    TextColumn name, attributes, text;
    WordColumn file, scope, modifiers;
    std::vector<std::int8_t> kind, declares;  ///< Numbers of KindName::kAll and Declares.
    std::vector<std::int32_t> id, parent, last, depth;
    std::vector<std::int32_t> line, column, endLine, endColumn;
    std::vector<std::uint8_t> hasPlace;  ///< A bit for each row; empty where all have one.
    std::int64_t withoutPlace = 0;

    std::size_t size() const { return id.size(); }
};

/// Makes files into columns, one after the other.
class ColumnsMaker {
  public:
    /// Appends the rows of the file. Throws std::bad_alloc, and std::length_error for a row that is
    /// too large: then all that was made is lost.
    void Add(const FileRows& file);

    /// All rows, in as many pieces as their texts need.
    std::vector<std::shared_ptr<const Columns>> Made();

  private:
    // The numbers of the words of a column, as long as it grows.
    struct WordHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view word) const {
            return std::hash<std::string_view>()(word);
        }
    };
    class Numbers {
      public:
        void Append(std::string_view word, WordColumn& to);
        void Forget() { *this = Numbers(); }
        // The next word may have the last one's address and be another.
        void BeginFile() { last_ = {}; }

      private:
        std::unordered_map<std::string, std::int32_t, WordHash, std::equal_to<>> numbers_;
        std::string_view last_;
        std::int32_t lastNumber_ = 0;
    };

    void AddRow(const Row& row, std::string_view file);
    bool HasRoomFor(const Row& row) const;
    void AddPlaces(const Row& row);
    void EndPiece();

    Columns columns_;
    Numbers files_, scopes_, modifiers_;
    std::vector<std::size_t> withoutPlace_;  // indexes of rows
    std::vector<std::shared_ptr<const Columns>> made_;
};

}  // namespace plugincs
