#include "parsecs/forms/strict/StrictForm.h"

#include <utility>

#include "parsecs/form/Records.h"
#include "parsecs/form/TextForm.h"
#include "parsecs/forms/strict/StrictJson.h"

namespace plugincs {

namespace {

FileOutcome Append(ReadSource source, std::string& out) {
    std::string records;
    const FileOutcome outcome = AppendRecords(std::move(source), records);
    out += StrictJson(records);
    return outcome;
}

std::unique_ptr<Form> Make(const Options& options, const Inputs& /*inputs*/) {
    return MakeTextForm(options, {Append});
}

}  // namespace

constinit const FormKind kStrictForm{
    .option = "strict",
    .argument = "",
    .help =
        "The records as valid JSON. Like the records themselves one array for one "
        "file: for more use --into.",
    .suffix = ".json",
    .takesSeveral = false,
    .make = Make,
};

}  // namespace plugincs
