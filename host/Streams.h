// The standard streams, which the module and the program share.
#pragma once

#include <string>
#include <string_view>

/// A descriptor for `path`, a device or pipe that takes bytes, or for standard output if that is
/// empty. Call it before RedirectTraces: the path may be a name for standard output. A closed
/// standard output shows when it is written to.
int OpenSink(const std::string& path);

/// The module prints its traces to standard output: sends them to standard error or nowhere for
/// the rest of the run.
void RedirectTraces(bool toStandardError);

/// Reads standard input to its end, replaces it by what was read, and returns the name under which
/// the module can open it: directly, it could not open a socket.
std::string SpoolStandardInput();

/// Writes all of it or throws a WriteFailure; `name` is for the message.
void WriteAll(int descriptor, std::string_view text, const std::string& name);
