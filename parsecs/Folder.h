// Runs with an output folder.
#pragma once

#include "parsecs/Files.h"
#include "parsecs/Module.h"

/// Parses each input, and each *.cs file below those that are folders, to a .json file: a folder's
/// files keep their paths below it, other files the path that names them. Shows progress on a
/// terminal and ends with a count on standard error.
void ParseIntoFolder(const Module& module, const std::vector<std::string>& inputs,
                     const std::string& folder, bool strict, std::vector<Failure>& failures);
