#pragma once

#include <string>
#include <vector>

#include "tree/ObjectBranch.h"

/// Appends to the root the node that lists the file's define list, an entry a line. `contents`
/// comes empty, receives the node's text and must outlive the tree.
void AppendAllDefines(ObjectBranch* root, const std::vector<std::string>& defines,
                      std::string& contents);
