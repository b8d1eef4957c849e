// The data of the map: the rows of a code base as columns of numbers, each text once.
//
// Numbers are written seven bits a byte, the lowest first, the top bit set on all but the last.
// First come six of them: the format, 1 if there are only definitions, how many files, rows on the
// map, texts, and rows that were read. Then sections, each the number of its bytes and its bytes:
//
//   of the files: how many rows, the last line, the statements that no row on the map counts, the
//     line at which the parse stopped or 0, and that of the first #if of which a branch is left out
//   of the rows: the columns of MapColumns::Column
//   the folder that the program ran in and the template of links; the paths; the texts; each ended
//     by a line feed
//
// A line feed within a text is written as a carriage return: of those there are none by now.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rows/FileRows.h"
#include "rows/MapRole.h"

namespace plugincs {

/// How much of a code base is on the map.
enum class MapDetail : std::uint8_t {
    Statements,   ///< Every row.
    Definitions,  ///< What declares something and holds others, with the numbers of all below it.
};

/// What the page has to know beside the sources.
struct MapSetting {
    std::string folder;  ///< The name of the one that paths begin from.
    std::string link;    ///< The template of links to places; empty for none.
};

class MapColumns {
  public:
    MapColumns(MapDetail detail, const MapSetting& setting);

    void Add(const FileRows& file);

    std::size_t files() const { return files_; }
    std::size_t rows() const { return rows_; }

    /// The bytes in their order, in pieces. Views are valid until the next call.
    std::vector<std::string_view> Pieces();

  private:
    /// Of the columns of the rows.
    enum Column : std::uint8_t {
        Up,    ///< How many levels it lies above a child of the row before.
        What,  ///< MapRole, or for a declaration kDeclares more than the number of what it is.
        Line,  ///< Zigzag, from the line of the row before, or from 0.
        Span,  ///< Zigzag: lines from its first to its last.
        Text,  ///< 0: none; 1: the next new one; 2: what followed the text before when that was
               ///< met last; or 3 more than the zigzag from the text before.
        Name,  ///< As the text, but follows the row's text.
        Statements,  ///< Itself, and what was left out of the map below it.
        Branches,    ///< Of these, those that branch or loop.
        Nesting,     ///< How deep those branches lie in one another.
        Step,        ///< Branches between the row above it on the map and what lies in it.
        Begin,       ///< The column of its first byte; left out where links do not tell it.
        ColumnCount
    };
    struct MapRow {
        const Row* row;
        MapRole role;
        std::int32_t depth;
        std::uint32_t statements, branches, nesting, step;
    };

    /// Of a column of texts: the last one, and which followed each when it was met last.
    struct Followers {
        std::int32_t last = 0;
        std::vector<std::int32_t> of;
    };

    void Choose(const std::vector<Row>& rows);
    void Append(const MapRow& row, const MapRow* before);
    std::uint32_t TextCode(std::string_view text, Followers& followers);

    MapDetail detail_;
    bool hasBegins_;
    std::string about_;
    std::size_t files_ = 0;
    std::size_t rows_ = 0;
    std::size_t rowsRead_ = 0;
    std::array<std::string, ColumnCount> columns_;
    std::string fileRows_;
    std::string fileLines_;
    std::string fileStatements_;
    std::string fileStops_;
    std::string fileCuts_;
    std::string paths_;
    std::string texts_;
    std::unordered_map<std::string, std::int32_t> textIds_;
    Followers names_;
    Followers rowTexts_;
    std::vector<MapRow> chosen_;           // of the file that is being added
    std::uint32_t statementsOutside_ = 0;  // of that file
    std::vector<std::string> numbers_;     // what Pieces made
};

}  // namespace plugincs
