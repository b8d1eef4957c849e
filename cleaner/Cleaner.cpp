#include "cleaner/Cleaner.h"

#include <cstdio>
#include <utility>

#include "text/StringHelpers.h"

std::string Cleaner::CleanText(std::string text, const std::vector<std::string>& definedSymbols,
                               std::vector<std::string>& defines) const {
    ReplaceAll(text, "\t", " ");
    ReplaceAll(text, "\r", "\n");
    text = UncommentAndUnquoteText(std::move(text));
    std::fputs("the final data is ", stdout);
    std::fwrite(text.data(), 1, text.size(), stdout);
    return PreProcessorSimulation(std::move(text), definedSymbols, defines);
}

void Cleaner::ReplaceAll(std::string& text, std::string_view from, std::string_view to) const {
    replaceAll(text, from, to);
}
