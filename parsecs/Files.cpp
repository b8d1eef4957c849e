#include "parsecs/Files.h"

#include <fstream>

bool Attempt(const std::string& input, const std::function<void()>& step,
             std::vector<Failure>& failures) {
    try {
        step();
        return true;
    } catch (const Failure& failure) {
        failures.push_back(failure);
    } catch (const std::exception& error) {
        failures.emplace_back(kNoText, input, error.what());
    }
    return false;
}

void WriteFile(const std::string& path, std::string_view text) {
    std::ofstream file(path, std::ios::binary);
    if (!file) throw Failure(kBadUsage, path);
    file << text;
    file.close();
    if (!file) throw Failure(kNoText, path);
}
