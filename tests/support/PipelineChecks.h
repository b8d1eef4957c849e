// What holds for the parse of any bytes at all: shared by the fuzz target and the tests.
#pragma once

#include <string>
#include <string_view>

/// Takes the bytes through the whole pipeline, from memory to memory, and returns in a few words
/// the first promise that was broken; empty when all were kept.
std::string BrokenPromise(std::string_view bytes);
