#include "host/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace {

std::string_view Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

std::size_t TerminalWidth(int descriptor) {
    constexpr std::size_t kUsual = 80;
    const std::size_t columns = std::strtoul(Environment("COLUMNS").data(), nullptr, 10);
    if (columns != 0) return columns;
    if (isatty(descriptor) == 0) return 0;
    winsize size{};
    const bool known = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return known ? size.ws_col : kUsual;
}

bool ShowsColour(int descriptor) {
    return isatty(descriptor) != 0 && Environment("NO_COLOR").empty() &&
           Environment("TERM") != "dumb";
}
