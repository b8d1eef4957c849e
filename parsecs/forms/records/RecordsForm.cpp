#include "parsecs/forms/records/RecordsForm.h"

#include "parsecs/form/Records.h"
#include "parsecs/form/TextForm.h"

namespace plugincs {

namespace {

std::unique_ptr<Form> Make(const Options& options, const Inputs& /*inputs*/) {
    return MakeTextForm(options, {AppendRecords});
}

}  // namespace

constinit const FormKind kRecordsForm{
    .option = "",
    .argument = "",
    .help = "",
    .suffix = ".json",
    .takesSeveral = false,
    .make = Make,
};

}  // namespace plugincs
