#include "parsecs/forms/outline/OutlineForm.h"

#include <utility>

#include "parsecs/form/SourceRows.h"
#include "parsecs/form/TextForm.h"
#include "parsecs/forms/outline/BudgetForm.h"
#include "parsecs/forms/outline/Outline.h"
#include "parsecs/forms/outline/Skeleton.h"
#include "parsecs/output/Terminal.h"

namespace plugincs {

namespace {

// Fits a terminal.
OutlineStyle StyleOf(const Options& options) {
    return {GoesToTerminal(options) ? TerminalWidth() : 0, WantsColour(options)};
}

FileOutcome AppendDeclarations(ReadSource source, std::string& out) {
    const FileRows file = RowsOf(std::move(source));
    Skeleton(file).Append(Skeleton::Detail::All, out);
    return OutcomeOf(file);
}

std::unique_ptr<Form> Make(const Options& options, const Inputs& /*inputs*/) {
    if (options.mostBytes > 0) {
        return std::make_unique<BudgetForm>(options.output, options.mostBytes);
    }
    if (options.declarations) return MakeTextForm(options, {AppendDeclarations});
    const OutlineStyle style = StyleOf(options);
    return MakeTextForm(options, {[style](ReadSource source, std::string& out) {
                            const FileRows file = RowsOf(std::move(source));
                            AppendOutline(file, style, out);
                            return OutcomeOf(file);
                        }});
}

}  // namespace

constinit const FormKind kOutlineForm{
    .option = "outline",
    .argument = "",
    .help = "A tree for reading, a line for each node.",
    .suffix = ".txt",
    .make = Make,
};

}  // namespace plugincs
