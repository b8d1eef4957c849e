#include "cleaner/Cleaner.h"

#include <utility>

#include "process/Traces.h"
#include "text/StringHelpers.h"

std::string Cleaner::CleanText(std::string text, std::vector<std::string> definedSymbols,
                               std::vector<std::string>& defines, CleaningMaps* maps) const {
    ReplaceAll(text, "\t", " ");
    ReplaceAll(text, "\r", "\n");
    text = UncommentAndUnquoteText(text, maps == nullptr ? nullptr : &maps->comments);
    Trace("the final data is ");
    Trace(text);
    return PreProcessorSimulation(text, std::move(definedSymbols), defines,
                                  maps == nullptr ? nullptr : &maps->conditionals);
}

void Cleaner::ReplaceAll(std::string& text, std::string_view from, std::string_view to) const {
    replaceAll(text, from, to);
}
