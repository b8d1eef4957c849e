#include "parsecs/manual/Manual.h"

namespace plugincs {

std::string AboutText(const Options& options) {
    switch (options.about) {
        case Options::About::Version: return "parsecs " PROJECT_VERSION "\n";
        case Options::About::ManPage: return ManPage();
        case Options::About::Completion: return Completion(options.shell);
        default: return HelpText();
    }
}

}  // namespace plugincs
