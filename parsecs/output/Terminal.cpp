#include "parsecs/output/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

namespace plugincs {

bool GoesToTerminal(const Options& options) {
    return options.output.empty() && options.folder.empty() && isatty(STDOUT_FILENO) != 0;
}

bool WantsColour(const Options& options) {
    if (options.colour != Options::Colour::Auto) return options.colour == Options::Colour::Always;
    const char* const noColour = std::getenv("NO_COLOR");
    return GoesToTerminal(options) && (noColour == nullptr || *noColour == '\0');
}

std::size_t TerminalWidth() {
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

bool HasErrorTerminal() { return isatty(STDERR_FILENO) != 0; }

}  // namespace plugincs
