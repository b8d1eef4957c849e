#include "parsecs/outline/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

OutlineStyle StyleFor(int descriptor) {
    OutlineStyle style;
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) == 0) style.width = size.ws_col;
    const char* const noColour = std::getenv("NO_COLOR");
    style.colour = isatty(descriptor) != 0 && (noColour == nullptr || *noColour == '\0');
    return style;
}
