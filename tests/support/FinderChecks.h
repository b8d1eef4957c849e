// Whether all ways to find sets of bytes find the same: shared by the fuzz target and the tests.
#pragma once

#include <string>
#include <string_view>

/// Says in a few words which way differs from the sets themselves in a block of the bytes; empty
/// when none does.
std::string BrokenByFinders(std::string_view bytes);
