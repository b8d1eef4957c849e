#include "parsecs/Plan.h"

#include <algorithm>
#include <filesystem>

#include "parsecs/form/FormKind.h"
#include "parsecs/forms/rows/RowsForm.h"
#include "parsecs/output/OutputPath.h"

namespace plugincs {

namespace {

namespace fs = std::filesystem;

bool IsFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

void CheckInputs(const Options& options) {
    if (options.inputs.empty() && options.list.empty()) {
        throw UsageError(
            "nothing to parse: name files or folders, or - for standard input; see "
            "parsecs --help");
    }
    if (options.listEndsInNul && options.list.empty()) throw UsageError("-0 needs --files-from");
    const auto& inputs = options.inputs;
    if (options.list == kStandardStream &&
        std::count(inputs.begin(), inputs.end(), kStandardStream) > 0) {
        throw UsageError("standard input cannot be both the list and a source");
    }
}

void CheckPlaces(const Options& options) {
    std::error_code error;
    if (!options.formFile.empty() && !(options.output + options.folder).empty()) {
        throw UsageError("--" + std::string(options.form->option) +
                         " FILE tells the place: leave out -o and --into");
    }
    if (!options.output.empty() && !options.folder.empty()) {
        throw UsageError("-o and --into are two places: use one");
    }
    if (options.output.ends_with('/') || IsFolder(options.output)) {
        throw UsageError("-o " + options.output + " is a folder: use --into " + options.output);
    }
    const fs::file_status folder = fs::status(options.folder, error);
    if (fs::exists(folder) && !fs::is_directory(folder)) {
        throw UsageError("--into " + options.folder + " is no folder: use -o FILE for one output");
    }
}

void CheckOutline(const Options& options) {
    const bool outline = options.form->option == "outline";
    if (options.declarations && !outline) throw UsageError("--declarations needs --outline");
    if (options.mostBytes > 0 && !outline) throw UsageError("--max-bytes needs --outline");
    if (options.mostBytes == 0 || options.folder.empty()) return;
    throw UsageError("--max-bytes is for one output of all inputs: leave out --into");
}

// A diff has inputs of its own, and one output.
void CheckDiff(const Options& options) {
    if (!options.form->option.empty() && options.form != &kRowsForm) {
        throw UsageError("--diff goes with --jsonl, and with no other form");
    }
    if (!options.list.empty() || options.listEndsInNul) {
        throw UsageError("--diff takes no list of files");
    }
    if (!options.folder.empty()) throw UsageError("--diff makes one output: use -o FILE");
    if (options.git && options.inputs.size() > 2) {
        throw UsageError("--diff --git takes two revisions at most");
    }
    if (!options.git && options.inputs.size() != 2) {
        throw UsageError("--diff takes two files or two folders, OLD and NEW, or --git");
    }
}

bool NeedsOneFile(const Options& options) {
    return options.folder.empty() && !options.form->takesSeveral;
}

void CheckNumber(const Options& options) {
    if (!NeedsOneFile(options)) return;
    const bool one = options.list.empty() && options.inputs.size() == 1;
    if (one && !IsFolder(options.inputs.front())) return;
    const std::string what = !options.list.empty()       ? "a list of files"
                             : options.inputs.size() > 1 ? "several files"
                                                         : options.inputs.front() + " is a folder:";
    throw UsageError(what +
                     " would make several JSON arrays: use --into DIR for a file each, or "
                     "--jsonl");
}

}  // namespace

void SettleOutput(Options& options) {
    if (!options.formFile.empty()) options.output = options.formFile;
    if (options.output == kStandardStream) options.output.clear();
}

void CheckPlan(const Options& options) {
    if (options.git && !options.diff) throw UsageError("--git needs --diff");
    options.diff ? CheckDiff(options) : CheckInputs(options);
    CheckPlaces(options);
    CheckOutline(options);
    if (!options.link.empty() && options.form->option != "html") {
        throw UsageError("--link needs --html");
    }
    if (options.diff) return;
    CheckNumber(options);
}

void CheckOutputs(const Options& options, const Inputs& inputs) {
    const auto refuse = [&inputs](const std::string& output) {
        if (inputs.Holds(output)) throw UsageError(output + ": is an input, and would be replaced");
    };
    if (!options.output.empty()) refuse(options.output);
    const bool elsewhere = !(options.output + options.folder).empty();
    if (!elsewhere && inputs.HoldStandardOutput()) {
        throw UsageError("standard output: is an input, and would be replaced");
    }
    if (options.folder.empty()) return;
    for (const FoundFile& file : inputs.files) {
        if (file.kind == FoundFile::Kind::StandardInput) {
            throw UsageError("--into: standard input has no path below it: use -o FILE");
        }
        refuse(OutputPath(options.folder, file.path, options.form->suffix));
    }
}

}  // namespace plugincs
