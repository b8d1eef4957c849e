#include "parsecs/forms/rows/RowsForm.h"

#include <utility>

#include "parsecs/form/SourceRows.h"
#include "parsecs/form/TextForm.h"
#include "parsecs/forms/rows/JsonLines.h"

namespace plugincs {

namespace {

FileOutcome Append(ReadSource source, std::string& out) {
    const FileRows file = RowsOf(std::move(source));
    AppendJsonLines(file, out);
    return OutcomeOf(file);
}

std::unique_ptr<Form> Make(const Options& options, const Inputs& /*inputs*/) {
    return MakeTextForm(options, {Append, kJsonLinesHead});
}

}  // namespace

constinit const FormKind kRowsForm{
    .option = "jsonl",
    .argument = "",
    .help = "JSON Lines, a row for each node, with its place in the file.",
    .suffix = ".jsonl",
    .make = Make,
};

}  // namespace plugincs
