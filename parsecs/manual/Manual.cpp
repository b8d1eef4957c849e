#include "parsecs/manual/Manual.h"

#include "parsecs/forms/rows/RowsSchema.h"

namespace plugincs {

std::string AboutText(const Options& options) {
    switch (options.about) {
        case Options::About::Version: return "parsecs " PROJECT_VERSION "\n";
        case Options::About::Schema: return kRowsSchema;
        case Options::About::ManPage: return ManPage();
        case Options::About::Completion: return Completion(options.shell);
        default: return HelpText();
    }
}

}  // namespace plugincs
