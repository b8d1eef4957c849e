// parsecs: shows the structure of source files, each parsed by one of several threads.
#include <cxxabi.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <new>
#include <typeinfo>

#include "parsecs/Plan.h"
#include "parsecs/command/CommandLine.h"
#include "parsecs/diff/Diff.h"
#include "parsecs/diff/States.h"
#include "parsecs/form/FormKind.h"
#include "parsecs/manual/Manual.h"
#include "parsecs/messages/Messages.h"
#include "parsecs/options/ExitCode.h"
#include "parsecs/output/OutputFile.h"
#include "parsecs/output/Temporary.h"
#include "parsecs/run/Run.h"

namespace plugincs {

namespace {

// Where no exception may leave a function, among them many of the library's own, one without memory
// ends the program.
[[noreturn]] void EndWithoutMemory() {
    const std::type_info* const thrown = abi::__cxa_current_exception_type();
    if (thrown != nullptr && *thrown != typeid(std::bad_alloc)) std::abort();
    Say("out of memory");
    RemoveTemporariesAndEnd(kNotWritten);
}

// Before the objects of other files are made.
[[gnu::constructor(101)]] void PrepareForTheEnd() { std::set_terminate(EndWithoutMemory); }

int ShowAbout(const Options& options) {
    OutputFile output(options.output);
    output.Write(AboutText(options));
    output.Finish();
    return kDone;
}

int ParseInputs(Options options) {
    CheckPlan(options);
    SettleOutput(options);
    const Inputs inputs = FindInputs(options);
    CheckOutputs(options, inputs);
    const std::unique_ptr<Form> form = options.form->make(options, inputs);
    return Run(options, inputs, *form);
}

int CompareStates(Options options) {
    CheckPlan(options);
    SettleOutput(options);
    States states = FindStates(options);
    for (const Inputs* const inputs : {&states.old, &states.now}) CheckOutputs(options, *inputs);
    return Diff(options, states);
}

int Answer(const Options& options) {
    if (options.about != Options::About::Nothing) return ShowAbout(options);
    return options.diff ? CompareStates(options) : ParseInputs(options);
}

int Main(int argc, char** argv) {
    PrepareStandardFiles();
    RemoveTemporariesOnSignals();
    try {
        return Answer(ReadCommandLine(argc, argv));
    } catch (const UsageError& error) {
        Say(error.what());
        return kUsage;
    } catch (const std::exception& failure) {
        Say(ReasonOf(failure));
        return kNotWritten;
    }
}

}  // namespace

}  // namespace plugincs

int main(int argc, char** argv) { return plugincs::Main(argc, argv); }
