// Invariants of the parse of any bytes at all: shared by the fuzz target and the tests.
#pragma once

#include <string>
#include <string_view>

/// Runs the whole pipeline on the bytes in memory, and says in a few words which invariant is
/// broken; empty when all hold.
std::string BrokenPromise(std::string_view bytes);
