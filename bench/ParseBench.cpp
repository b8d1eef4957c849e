// How fast a parse is, and that its time is linear in its input.
//
// Only ratios within one run can be compared between machines. The floor of a parse is what every
// parser must do: read the file, and copy a text of the result's size into a new block.
#include <PluginCS.h>
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>

#include "bench/SourceGenerator.h"
#include "process/Files.h"

using namespace plugincs;

namespace {

using Files = std::vector<std::string>;

std::string TemporarySource(const std::string& name, const std::string& text) {
    const std::string folder = std::filesystem::temp_directory_path() / "plugincs-bench";
    std::filesystem::create_directories(folder);
    std::string path = folder + "/" + name + ".cs";
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::size_t TotalSize(const Files& files) {
    std::size_t size = 0;
    for (const auto& file : files) size += std::filesystem::file_size(file);
    return size;
}

Files SourcesBelow(const char* folder) {
    Files files;
    if (folder == nullptr) return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".cs" && entry.is_regular_file()) {
            files.push_back(entry.path().string());
        }
    }
    return files;
}

// The whole parse, from files to texts that are freed again.
void Parse(benchmark::State& state, const Files& files) {
    for (auto step : state) {
        for (const auto& file : files) {
            benchmark::DoNotOptimize(ParseCS(file.c_str()));
            CleanupCS();
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(TotalSize(files)));
}

void Floor(benchmark::State& state, const Files& files) {
    std::vector<std::string> texts;
    for (const auto& file : files) {
        const char* const text = ParseCS(file.c_str());
        texts.emplace_back(text == nullptr ? "" : text);
        CleanupCS();
    }
    for (auto step : state) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            benchmark::DoNotOptimize(ReadWholeFile(files[i]).data());
            const std::size_t size = texts[i].size() + 1;
            void* const block = std::malloc(size);
            benchmark::DoNotOptimize(std::memcpy(block, texts[i].c_str(), size));
            benchmark::ClobberMemory();
            std::free(block);
        }
    }
}

// For comparison, a common tool: tags of the same files, as JSON, in one process.
void Ctags(benchmark::State& state, const Files& files) {
    const std::string list = TemporarySource("list", "");
    std::ofstream lines(list);
    for (const auto& file : files) lines << file << '\n';
    lines.close();
    const std::string command = "ctags --languages=C# --output-format=json -f - -L " + list;
    for (auto step : state) benchmark::DoNotOptimize(std::system(command.c_str()));
}

constexpr std::string_view kPeer = "ctags/folder";

// The runs of each benchmark, by its name. They are interleaved with those of the others.
using Seconds = std::map<std::string, std::vector<double>>;

double Median(std::vector<double> runs) {
    std::sort(runs.begin(), runs.end());
    return runs[runs.size() / 2];
}

// Prints the usual table, and after it the ratios.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    explicit RatioReporter(const Files& corpus) : ConsoleReporter(OO_None), corpus_(corpus) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            const double unit = benchmark::GetTimeUnitMultiplier(run.time_unit);
            const std::string& name = run.run_name.function_name;
            // CPU time leaves out what else the machine does, but the peer is another process.
            const double time =
                name == kPeer ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
            seconds_[name].push_back(time / unit);
        }
    }

    void Finalize() override {
        GetOutputStream() << std::fixed << std::setprecision(2) << "\nRatios of medians\n";
        if (!corpus_.empty()) PrintCorpus();
        for (const char* size : {"100KB", "1MB", "10MB"}) {
            Print(std::string("parse : floor, generated source of ") + size,
                  std::string("parse/") + size, std::string("floor/") + size);
        }
        Print("time per byte, 10MB : 100KB", "parse/10MB", "parse/100KB", 0.01);
        for (const Shape& shape : HostileShapes()) {
            const std::string name = std::string("shape/") + shape.name;
            Print("doubled input, " + std::string(shape.name), name + "/doubled", name);
        }
    }

  private:
    void PrintCorpus() {
        const double megabytes = static_cast<double>(TotalSize(corpus_)) / 1e6;
        GetOutputStream() << "  the folder's " << corpus_.size() << " files, " << megabytes
                          << " MB: " << megabytes / Median(seconds_["parse/folder"]) << " MB/s\n";
        Print("parse : floor, the folder", "parse/folder", "floor/folder");
        Print("ctags : parse, the folder", std::string(kPeer), "parse/folder");
    }

    void Print(const std::string& what, const std::string& above, const std::string& below,
               double factor = 1) {
        if (seconds_.count(above) == 0 || seconds_.count(below) == 0) return;
        const double ratio = factor * Median(seconds_[above]) / Median(seconds_[below]);
        GetOutputStream() << "  " << std::left << std::setw(56) << what << std::right
                          << std::setw(8) << ratio << "\n";
    }

    const Files& corpus_;
    Seconds seconds_;
};

void Register(const std::string& name, void (*run)(benchmark::State&, const Files&),
              const Files& files) {
    benchmark::RegisterBenchmark(name.c_str(), run, files)->Unit(benchmark::kMillisecond);
}

void RegisterAll(const Files& corpus) {
    const std::pair<const char*, std::size_t> sizes[] = {
        {"100KB", 100'000}, {"1MB", 1'000'000}, {"10MB", 10'000'000}};
    for (const auto& [name, size] : sizes) {
        const Files files{TemporarySource(name, GenerateSource(size))};
        Register(std::string("parse/") + name, Parse, files);
        Register(std::string("floor/") + name, Floor, files);
    }
    if (!corpus.empty()) {
        Register("parse/folder", Parse, corpus);
        Register("floor/folder", Floor, corpus);
        if (std::system("ctags --version >/dev/null 2>&1") == 0) {
            Register(std::string(kPeer), Ctags, corpus);
        }
    }
    for (const Shape& shape : HostileShapes()) {
        const std::string name = std::string("shape/") + shape.name;
        const auto source = [&](const char* which, std::size_t size) {
            const std::string file = std::to_string(&shape - HostileShapes().data()) + which;
            return Files{TemporarySource(file, shape.generate(size))};
        };
        Register(name, Parse, source("a", 1 << 19));
        Register(name + "/doubled", Parse, source("b", 1 << 20));
    }
}

// The module writes its traces to descriptor 1: redirects that to the null device, and returns a
// stream on a copy of the old one for the benchmark's report.
std::ofstream TakeStandardOutput() {
    const int kept = dup(STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    return std::ofstream("/dev/fd/" + std::to_string(kept), std::ios::app);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::ofstream out = TakeStandardOutput();
    const Files corpus = SourcesBelow(std::getenv("PARSE_CORPUS"));
    RegisterAll(corpus);
    RatioReporter reporter(corpus);
    reporter.SetOutputStream(&out);
    reporter.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::filesystem::remove_all(std::filesystem::temp_directory_path() / "plugincs-bench");
}
