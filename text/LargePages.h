#pragma once

#include <cstddef>

/// Asks the system to back a block of many megabytes with large pages, which are cheaper to touch
/// for the first time; smaller blocks are left alone. Only advice: nothing depends on it.
void AskForLargePages(void* block, std::size_t size);
