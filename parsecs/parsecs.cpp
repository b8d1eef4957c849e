// parsecs: shows the structure of source files, each parsed by one of several threads.
#include <exception>
#include <memory>

#include "parsecs/Plan.h"
#include "parsecs/command/CommandLine.h"
#include "parsecs/command/OptionTable.h"
#include "parsecs/index/IndexForm.h"
#include "parsecs/input/Inputs.h"
#include "parsecs/manual/Manual.h"
#include "parsecs/map/MapForm.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/output/Temporary.h"
#include "parsecs/report/Messages.h"
#include "parsecs/run/Run.h"
#include "parsecs/text/TextForm.h"

namespace {

int ShowAbout(const Options& options) {
    OutputFile output(options.output);
    output.Write(AboutText(options));
    output.Finish();
    return kDone;
}

std::unique_ptr<Form> MakeForm(const Options& options, const Inputs& inputs) {
    switch (options.form) {
        case Options::Form::Index:
            return std::make_unique<IndexForm>(options.formFile, inputs.named);
        case Options::Form::Map: return std::make_unique<MapForm>(options.formFile);
        default: return MakeTextForm(options);
    }
}

int ParseInputs(Options options) {
    SettleOutput(options);
    CheckPlan(options);
    const Inputs inputs = FindInputs(options);
    CheckOutputs(options, inputs);
    const std::unique_ptr<Form> form = MakeForm(options, inputs);
    return Run(options, inputs, *form);
}

}  // namespace

int main(int argc, char** argv) {
    PrepareStandardFiles();
    RemoveTemporariesOnSignals();
    try {
        const Options options = ReadCommandLine(argc, argv);
        return options.about == Options::About::Nothing ? ParseInputs(options) : ShowAbout(options);
    } catch (const UsageError& error) {
        Say(error.what());
        return kUsage;
    } catch (const std::exception& failure) {
        Say(ReasonOf(failure));
        return kNotWritten;
    }
}
