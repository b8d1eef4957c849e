// What came of a file.
#pragma once

#include <cstdint>
#include <string>

#include "parsecs/form/Form.h"

namespace plugincs {

struct Reply {
    enum class Kind : std::uint8_t {
        Made,        ///< See `made`.
        Unreadable,  ///< `reason` says why, here and below.
        Failed,      ///< While its piece was made.
    };
    Kind kind = Kind::Made;
    MadeFile made;
    std::string reason;
};

/// Reads the file and has the form make its piece. Whatever fails is told in the reply.
Reply ReplyTo(const FoundFile& file, const Form& form, Traces traces) noexcept;

}  // namespace plugincs
