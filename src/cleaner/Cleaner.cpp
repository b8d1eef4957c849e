#include "cleaner/Cleaner.h"

#include <utility>

#include "text/StringHelpers.h"

std::string Cleaner::CleanText(std::string text, std::vector<std::string> definedSymbols,
                               std::vector<std::string>& defines, Traces traces,
                               CleaningMaps* maps) const {
    ReplaceAll(text, "\t", " ");
    ReplaceAll(text, "\r", "\n");
    text = UncommentAndUnquoteText(text, maps == nullptr ? nullptr : &maps->comments);
    traces.Write("the final data is ");
    traces.Write(text);
    return PreProcessorSimulation(text, std::move(definedSymbols), defines, traces,
                                  maps == nullptr ? nullptr : &maps->conditionals);
}

void Cleaner::ReplaceAll(std::string& text, std::string_view from, std::string_view to) const {
    replaceAll(text, from, to);
}
