#include "cleaner/Cleaner.h"

#include <utility>

#include "text/StringHelpers.h"

namespace plugincs {

std::string Cleaner::CleanText(std::string text, std::vector<std::string> definedSymbols,
                               std::vector<std::string>& defines, Traces traces) const {
    ReplaceAll(text, "\t", " ");
    ReplaceAll(text, "\r", "\n");
    text = UncommentAndUnquoteText(text);
    traces.Write("the final data is ");
    traces.Write(text);
    return PreProcessorSimulation(text, std::move(definedSymbols), defines, traces);
}

void Cleaner::ReplaceAll(std::string& text, std::string_view from, std::string_view to) const {
    replaceAll(text, from, to);
}

}  // namespace plugincs
