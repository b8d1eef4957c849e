// The module as hosts use it: loaded with dlopen, called through its C names.
#pragma once

#include <PluginCS.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/support/QuietStdout.h"

/// RAII for the loaded module.
struct Module {
    Module() : handle(dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL)) {
        EXPECT_NE(handle, nullptr) << dlerror();
        parse = Get<PluginCS_ParseCS>("ParseCS");
        parseToFile = Get<PluginCS_parseAllFiles>("parseAllFiles");
        cleanup = Get<PluginCS_CleanupCS>("CleanupCS");
        info = Get<PluginCS_Info>("Info");
    }
    ~Module() { dlclose(handle); }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    template <typename T>
    T Get(const char* name) const {
        return reinterpret_cast<T>(dlsym(handle, name));
    }

    /// The text of the file, or "none" if the parse is given up.
    std::string Text(const char* path) const {
        const QuietStdout quiet;
        const char* const text = parse(path);
        std::string copy = text == nullptr ? "none" : text;
        cleanup();
        return copy;
    }

    /// The text and what the parse left in the counters.
    std::string Outcome(const std::string& path) const {
        std::string outcome = Text(path.c_str());
        for (const char* counter : {"objectCount", "currentIndex"}) {
            outcome += ' ' + std::to_string(*Get<std::int32_t*>(counter));
        }
        return outcome;
    }

    void* handle;
    PluginCS_ParseCS parse;
    PluginCS_parseAllFiles parseToFile;
    PluginCS_CleanupCS cleanup;
    PluginCS_Info info;
};
