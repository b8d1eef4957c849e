// What the index takes over of a file.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "parsecs/form/Form.h"
#include "rows/FileRows.h"
#include "rows/FunctionFigures.h"

namespace plugincs {

struct FilePiece : Piece {
    /// Of a file whose hash is the one that was known.
    explicit FilePiece(std::uint64_t hashOfText) : hash(hashOfText) {}

    FilePiece(std::uint64_t hashOfText, ReadSource source) : hash(hashOfText) {
        file.emplace(std::move(source.path), std::move(source.text), source.traces);
        functions = FiguresOf(file->rows());
        comments = file->Comments();
    }

    std::uint64_t hash;
    std::optional<FileRows> file;
    std::vector<FunctionFigures> functions;
    std::vector<Comment> comments;
};

}  // namespace plugincs
