// What a look at a text in blocks of bytes tells, without a walk over its parts.
#pragma once

#include <cstddef>
#include <string_view>

#include "analysis/Classifiers.h"

namespace plugincs {

/// What is known of a text. The prefilters, which may be true for nothing, spare a search each.
struct FirstLook {
    bool mayHoldEquality = true;     ///< False when the text certainly holds no "==",
    bool mayHoldClass = true;        ///< no "class",
    bool mayHoldStruct = true;       ///< no "struct",
    bool mayHoldParenthesis = true;  ///< or no "(".
    bool plain = false;              ///< True when it certainly needs no backslash in JSON,
    bool brief = false;              ///< and when it has at most 64 bytes: 64 more can be read.
    bool asked = false;              ///< Whether `answers` is set,
    Answers answers;                 ///< a cache of `AskParts` of the text.
};

/// Looks at a text. `readable` is how many bytes may be read from its beginning, past its end too:
/// with less than 64 behind the text nothing is found out. Fills in `look`, which must be new.
void LookAt(std::string_view text, std::size_t readable, FirstLook& look);

}  // namespace plugincs
