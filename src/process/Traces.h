// The messages of a parse on standard output. They go through C stdio, so that they stay in order
// with the host's own output, and are flushed and redirected with it.
#pragma once

#include <string_view>

/// Writes the text as it stands.
void Trace(std::string_view text);

/// Whether standard output is certainly the null device, so that costly traces can be skipped.
bool TracesAreDiscarded();
