// Runs the fuzz target on files, without the fuzzer. Prints the name of each to standard error
// first, so that a crash can be told to its file.
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        std::fprintf(stderr, "%s\n", argv[i]);
        std::ifstream file(argv[i], std::ios::binary);
        if (!file) return 1;
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
}
