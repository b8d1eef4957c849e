#include "parsecs/input/InputList.h"

#include "parsecs/input/Source.h"
#include "parsecs/options/Options.h"

namespace plugincs {

std::vector<std::string> ReadInputList(const std::string& file, char end) {
    std::vector<std::string> names;
    std::string text;
    try {
        text = ReadBytes(file);
    } catch (const ReadFailure& failure) {
        throw UsageError(file + ": " + failure.what());
    }
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t stop = std::min(text.find(end, begin), text.size());
        std::string name = text.substr(begin, stop - begin);
        if (end == '\n' && name.ends_with('\r')) name.pop_back();
        if (!name.empty()) names.push_back(std::move(name));
        begin = stop + 1;
    }
    return names;
}

}  // namespace plugincs
