#include "parsecs/command/CommandLine.h"

#include <algorithm>
#include <string_view>

#include "parsecs/command/OptionTable.h"
#include "parsecs/command/Suggestion.h"
#include "parsecs/forms/FormTable.h"

namespace plugincs {

namespace {

std::string Suggestion(const std::string& name) {
    const std::string_view meant = MeantBy(name);
    if (meant.empty()) return ", see parsecs --help";
    return std::string(": did you mean --").append(meant) + "?";
}

void CheckChoice(const Option& option, const std::string& value) {
    if (option.argument.find('|') == std::string_view::npos) return;
    const std::string choices = "|" + std::string(option.argument) + "|";
    const bool one = value.find('|') == std::string::npos;
    if (one && choices.find("|" + value + "|") != std::string::npos) return;
    throw UsageError(
        std::string("--").append(option.name).append(" takes ").append(option.argument) + ", not " +
        value);
}

class Reader {
  public:
    Reader(int argc, const char* const* argv) : rest_(argv + 1, argv + argc) {
        options_.form = kFormKinds.front();
    }

    Options Read() {
        while (at_ < rest_.size()) TakeArgument(rest_[at_++]);
        return std::move(options_);
    }

  private:
    void TakeArgument(const std::string& argument) {
        if (argument == "--") {
            while (at_ < rest_.size()) options_.inputs.push_back(rest_[at_++]);
        } else if (argument.starts_with("--")) {
            TakeLong(argument.substr(2));
        } else if (argument.size() > 1 && argument.front() == '-') {
            TakeLetters(argument);
        } else {
            options_.inputs.push_back(argument);
        }
    }

    void TakeLong(const std::string& argument) {
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const Option* const option = FindOption(name);
        if (option == nullptr) throw UsageError("no option --" + name + Suggestion(name));
        if (equals == std::string::npos) return Apply(*option, "--" + name);
        if (option->argument.empty()) throw UsageError("--" + name + " takes no value");
        ApplyValue(*option, "--" + name, argument.substr(equals + 1));
    }

    // What follows a letter that takes a value is the value.
    void TakeLetters(const std::string& argument) {
        for (std::size_t i = 1; i < argument.size(); ++i) {
            const std::string name = {'-', argument[i]};
            const Option* const option = FindOption(argument[i]);
            if (option == nullptr) throw UsageError("no option " + name + ", see parsecs --help");
            if (option->argument.empty() || i + 1 == argument.size()) {
                Apply(*option, name);
            } else {
                return ApplyValue(*option, name, argument.substr(i + 1));
            }
        }
    }

    void Apply(const Option& option, const std::string& name) {
        if (option.argument.empty()) return option.apply(options_, "");
        if (at_ == rest_.size()) {
            throw UsageError(name + " needs a value: " + std::string(option.argument));
        }
        ApplyValue(option, name, rest_[at_++]);
    }

    void ApplyValue(const Option& option, const std::string& name, const std::string& value) {
        if (value.empty()) throw UsageError(name + " needs a value that is not empty");
        CheckChoice(option, value);
        option.apply(options_, value);
    }

    std::vector<std::string> rest_;
    std::size_t at_ = 0;
    Options options_;
};

}  // namespace

Options ReadCommandLine(int argc, const char* const* argv) { return Reader(argc, argv).Read(); }

}  // namespace plugincs
