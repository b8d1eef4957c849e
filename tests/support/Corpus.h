// The golden cases, and temporary files.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

inline std::string ReadText(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// Writes a file into a folder that is removed when the process exits; returns its path.
inline std::string WriteTemporary(const std::string& name, std::string_view text) {
    struct Folder {
        Folder() { std::filesystem::create_directories(path); }
        ~Folder() { std::filesystem::remove_all(path); }
        std::filesystem::path path = testing::TempDir() + "plugincs" + std::to_string(getpid());
    };
    static const Folder folder;
    std::string path = folder.path / name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

/// The file names of the sources in the folder CASES, sorted.
inline std::vector<std::string> CaseNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(CASES)) {
        if (entry.path().extension() == ".cs") names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}
