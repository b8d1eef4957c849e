// Columns as a stream of Arrow's, for any library that takes one, without a copy.
#pragma once

#include <functional>
#include <memory>

#include "core/ArrowAbi.h"
#include "core/Columns.h"

namespace plugincs {

/// The columns that come next, null at the end. What it throws becomes the stream's error, with the
/// exception's message.
using NextColumns = std::function<std::shared_ptr<const Columns>()>;

/// A stream that the receiver releases. It may be used in any thread, by one at a time.
ArrowArrayStream MakeStream(NextColumns next);

}  // namespace plugincs
