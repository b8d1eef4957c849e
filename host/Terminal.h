// What a terminal at a descriptor can show.
#pragma once

#include <cstddef>

/// COLUMNS if that is set, else the terminal's width, else 0: there is nothing to fit into.
std::size_t TerminalWidth(int descriptor);

/// Only a terminal gets colours, and none for who set NO_COLOR.
bool ShowsColour(int descriptor);
