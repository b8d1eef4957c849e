// How big and how nested functions are.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "rows/Row.h"

namespace plugincs {

/// The figures of one function. Their meaning is in schema.sql.
struct FunctionFigures {
    std::int32_t id;
    std::int32_t last;
    std::int32_t size;
    std::int32_t nesting;
    std::int32_t branches;
    std::int32_t loops;
    std::int32_t parameters = 0;
    std::optional<std::uint64_t> body{};
};

/// FNV-1a, 64 bits.
std::uint64_t HashOf(std::string_view bytes);

/// Of all functions of the file, in the order of the rows, those within others included.
std::vector<FunctionFigures> FiguresOf(const std::vector<Row>& rows);

}  // namespace plugincs
