#include "parsecs/records/Records.h"

#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

#include "parsecs/rows/Outcome.h"
#include "plugin/Pipeline.h"
#include "process/ModuleState.h"

namespace {

// The last record but one is that of the error, if there was one: what a text holds has a backslash
// before each quote, and cannot be taken for it.
bool EndsInError(std::string_view records) {
    constexpr std::string_view kKind = "\"branchTypeAsString\": \"";
    const std::size_t last = records.rfind(kKind);
    if (last == std::string_view::npos || last == 0) return false;
    const std::size_t before = records.rfind(kKind, last - 1);
    return before != std::string_view::npos &&
           records.substr(before + kKind.size()).starts_with("error");
}

}  // namespace

FileOutcome AppendRecords(ReadSource source, std::string& out) {
    ParseText(source.path, source.text, "");
    const std::unique_ptr<char, void (*)(void*)> text(std::exchange(returnResult, nullptr),
                                                      std::free);
    if (text == nullptr) return {FileOutcome::Kind::GivenUp, 0};
    const std::string_view records = text.get();
    out += records;
    if (!EndsInError(records)) return {};
    // The records count lines in their own way: the true line is in the rows.
    return OutcomeOf(ParsedFile(std::move(source.path), std::move(source.text)));
}
