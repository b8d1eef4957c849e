// What a parse says on the process's standard output. It goes through C stdio, so that a host sees
// it in order with its own, flushes it, and redirects it.
#pragma once

#include <string_view>

/// Writes the text as it stands.
void Trace(std::string_view text);

/// Whether standard output is the null device: whoever would write much can spare it.
bool TracesAreDiscarded();
