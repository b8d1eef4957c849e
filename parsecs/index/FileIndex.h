// What the index holds of one file, as bytes from a worker to the parent.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "parsecs/Form.h"
#include "parsecs/rows/ParsedFile.h"

/// FNV-1a, 64 bits.
std::uint64_t HashOf(std::string_view bytes);

/// How big and how nested a function is. The meaning of the figures is in schema.sql.
struct FunctionFigures {
    std::int32_t id;
    std::int32_t last;
    std::int32_t size;
    std::int32_t nesting;
    std::int32_t branches;
    std::int32_t loops;
};

/// Of all functions of the file, in the order of the rows, those within others included.
std::vector<FunctionFigures> FiguresOf(const std::vector<Row>& rows);

struct FileIndex {
    std::uint64_t hash = 0;
    bool unchanged = false;     ///< The hash is the one that was known: nothing else is filled in.
    std::int32_t stopped = -1;  ///< The line at which the parse stopped; -1 where it went through.
    std::vector<FunctionFigures> functions;
    std::string_view rows;  ///< For a RowReader.
};

/// Of a file whose content has that hash and does not have to be parsed.
void EncodeUnchanged(std::uint64_t hash, std::string& out);

void EncodeFile(std::uint64_t hash, const FileOutcome& outcome, const ParsedFile& file,
                std::string& out);

/// The views are valid as long as the bytes are.
FileIndex DecodeFile(std::string_view bytes);
