// A worker process: parses the files whose numbers it receives, until there are no more.
#pragma once

#include <cstdint>
#include <vector>

#include "parsecs/Form.h"

/// In the parent, how a file is ordered.
using FileNumber = std::uint32_t;

/// Runs in the forked process. Reads numbers of files from the socket and answers each, in order,
/// with a ReplyHead and its text. Ends the process with the connection. What the parser says of
/// itself goes to standard error, or nowhere.
[[noreturn]] void RunWorker(int socket, const Form& form, const std::vector<FoundFile>& files,
                            bool showTraces);
