// What a worker process says about a file.
#pragma once

#include <cstdint>
#include <string>

#include "parsecs/Form.h"

struct Reply {
    enum class Kind : std::uint8_t {
        Made,        ///< `text` is what the form made of the file; see `outcome`.
        Unreadable,  ///< `text` says why, here and below.
        NoMemory,
        Crashed,
    };
    Kind kind = Kind::Made;
    FileOutcome outcome;
    std::string text;
};

/// Before each text on its way from a worker.
struct ReplyHead {
    Reply::Kind kind;
    FileOutcome outcome;
    std::uint64_t size;  ///< Of the text.
};
