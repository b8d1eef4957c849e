// What the program says on standard error.
#pragma once

#include <string>

/// Writes a line. Control bytes, which could move a terminal's cursor, are question marks.
void Say(const std::string& message);

/// Writes a line that the next one overwrites; only a terminal can do that.
void ShowPassing(const std::string& message);

/// Removes such a line, if there is one.
void ClearPassing();
