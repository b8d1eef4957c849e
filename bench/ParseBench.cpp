// How fast a parse is, and that its time grows with its input and no faster.
//
// Times of this machine say little; the ratios do. The floor of a parse is what no parser can do
// without: reading the file and copying a text of the result's size into a fresh block.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>

#include "bench/SourceGenerator.h"
#include "cleaner/Cleaner.h"
#include "output/JsonRecords.h"
#include "output/RecordClassification.h"
#include "output/TextBuffer.h"
#include "plugin/FileIo.h"
#include "plugin/ModuleState.h"
#include "plugin/PluginCS.h"
#include "tree/ClassNames.h"
#include "tree/InlineFunctions.h"
#include "tree/NodeCreation.h"
#include "tree/Scanner.h"

namespace {

using Files = std::vector<std::string>;

std::string TemporarySource(const std::string& name, const std::string& text) {
    const std::string folder = std::filesystem::temp_directory_path() / "plugincs-bench";
    std::filesystem::create_directories(folder);
    std::string path = folder + "/" + name + ".cs";
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::int64_t TotalSize(const Files& files) {
    std::int64_t size = 0;
    for (const auto& file : files)
        size += static_cast<std::int64_t>(std::filesystem::file_size(file));
    return size;
}

// Whether a round finds the allocator as the round before left it, or without memory in reserve, as
// in a process that parses its first file.
enum class Memory { kWarm, kFresh };

void Prepare(benchmark::State& state, Memory memory) {
    if (memory == Memory::kWarm) return;
    state.PauseTiming();
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    state.ResumeTiming();
}

void ReportRates(benchmark::State& state, std::int64_t bytes, std::int64_t records) {
    state.SetBytesProcessed(state.iterations() * bytes);
    state.SetItemsProcessed(state.iterations() * records);
}

// The whole parse: files in, texts out, texts released.
void Parse(benchmark::State& state, const Files& files, Memory memory) {
    std::int64_t records = 0;
    const auto parseAll = [&files, &records] {
        records = 0;
        for (const auto& file : files) {
            benchmark::DoNotOptimize(ParseCS(file.c_str()));
            CleanupCS();
            records += objectCount + 2;
        }
    };
    // Memory that the process touches for the first time ever is charged to nobody.
    parseAll();
    for (auto step : state) {
        Prepare(state, memory);
        parseAll();
    }
    ReportRates(state, TotalSize(files), records);
    state.SetComplexityN(TotalSize(files));
}

void Floor(benchmark::State& state, const Files& files, Memory memory) {
    std::vector<std::string> texts;
    for (const auto& file : files) {
        const char* const text = ParseCS(file.c_str());
        texts.emplace_back(text == nullptr ? "" : text);
        CleanupCS();
    }
    for (auto step : state) {
        Prepare(state, memory);
        for (std::size_t i = 0; i < files.size(); ++i) {
            benchmark::DoNotOptimize(ReadWholeFile(files[i]).data());
            const std::size_t size = texts[i].size() + 1;
            void* const block = std::malloc(size);
            benchmark::DoNotOptimize(std::memcpy(block, texts[i].c_str(), size));
            benchmark::ClobberMemory();
            std::free(block);
        }
    }
    ReportRates(state, TotalSize(files), 0);
}

// One source taken through the stages, each of which can be run again on what the one before left.
struct Stages {
    explicit Stages(const std::string& source) : raw(source) {
        std::vector<std::string> defines;
        cleaned = Cleaner().CleanText(raw, {}, defines);
        Build();
        AddObjectToVector(&root, &records);
    }
    ~Stages() { FreeChildren(&root); }
    Stages(const Stages&) = delete;
    Stages& operator=(const Stages&) = delete;

    void Build() {
        FreeChildren(&root);
        text = cleaned;
        Scanner scanner(text, true, root);
        ScanText(scanner);
        GenerateInlineFunctions(&root);
        ExpandClassnames(&root);
    }

    std::string raw;
    std::string cleaned;
    std::string text;
    ObjectBranch root;
    std::vector<ObjectBranch> records;
};

void CleanStage(benchmark::State& state, const std::string& source) {
    for (auto step : state) {
        std::vector<std::string> defines;
        benchmark::DoNotOptimize(Cleaner().CleanText(source, {}, defines));
    }
    ReportRates(state, static_cast<std::int64_t>(source.size()), 0);
}

void BuildStage(benchmark::State& state, const std::string& source) {
    Stages stages(source);
    for (auto step : state) stages.Build();
    ReportRates(state, static_cast<std::int64_t>(source.size()),
                static_cast<std::int64_t>(stages.records.size()));
}

void ClassifyStage(benchmark::State& state, const std::string& source) {
    const Stages stages(source);
    std::string name;
    for (auto step : state) {
        for (const ObjectBranch& node : stages.records) {
            ObjectBranch record = node;
            ClassifyRecord(record, name);
            benchmark::DoNotOptimize(record);
        }
    }
    ReportRates(state, static_cast<std::int64_t>(source.size()),
                static_cast<std::int64_t>(stages.records.size()));
}

void RenderStage(benchmark::State& state, const std::string& source) {
    const Stages stages(source);
    for (auto step : state) {
        TextBuffer text(EstimateSize(stages.root));
        JsonRecords records(text);
        for (const ObjectBranch& record : stages.records) records.Add(record);
        records.Finish();
        benchmark::DoNotOptimize(text.View().data());
    }
    ReportRates(state, static_cast<std::int64_t>(source.size()),
                static_cast<std::int64_t>(stages.records.size()));
}

void RegisterPair(const std::string& name, const Files& files, Memory memory = Memory::kWarm) {
    benchmark::RegisterBenchmark(("parse/" + name).c_str(), Parse, files, memory);
    benchmark::RegisterBenchmark(("floor/" + name).c_str(), Floor, files, memory);
}

void RegisterAll() {
    const std::pair<const char*, std::size_t> sizes[] = {
        {"10KB", 10'000}, {"100KB", 100'000}, {"1MB", 1'000'000}, {"10MB", 10'000'000}};
    for (const auto& [name, size] : sizes) {
        RegisterPair(name, {TemporarySource(name, GenerateSource(size))});
    }
    RegisterPair("1MB, fresh memory", {TemporarySource("fresh", GenerateSource(1'000'000))},
                 Memory::kFresh);
    if (const char* folder = std::getenv("PARSE_CORPUS")) {
        Files files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.path().extension() == ".cs" && entry.is_regular_file()) {
                files.push_back(entry.path().string());
            }
        }
        RegisterPair("corpus", files);
    }
    const std::string source = GenerateSource(1'000'000);
    benchmark::RegisterBenchmark("stage/clean", CleanStage, source);
    benchmark::RegisterBenchmark("stage/build", BuildStage, source);
    benchmark::RegisterBenchmark("stage/classify", ClassifyStage, source);
    benchmark::RegisterBenchmark("stage/render", RenderStage, source);
    for (const Shape& shape : HostileShapes()) {
        const auto parse = [&shape](benchmark::State& state) {
            const auto size = static_cast<std::size_t>(state.range(0));
            Parse(state, {TemporarySource("shape", shape.generate(size))}, Memory::kWarm);
        };
        benchmark::RegisterBenchmark((std::string("shape/") + shape.name).c_str(), parse)
            ->RangeMultiplier(2)
            ->Range(1 << 18, 1 << 20)
            ->Unit(benchmark::kMillisecond)
            ->Complexity();
    }
}

// The usual table, and at its end the ratios, which are what can be quoted. Of several repetitions
// the best counts: what else the machine does can only make it slower.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    RatioReporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            const std::string name = run.benchmark_name();
            const double seconds = run.GetAdjustedRealTime() / Scale(run);
            const double rate = run.counters.at("bytes_per_second");
            seconds_[name] =
                seconds_.count(name) == 0 ? seconds : std::min(seconds_[name], seconds);
            bytesPerSecond_[name] = std::max(bytesPerSecond_[name], rate);
        }
    }

    void Finalize() override {
        std::ostream& out = GetOutputStream();
        out << std::fixed << std::setprecision(2) << "\nRatios\n";
        for (const char* name : {"10KB", "100KB", "1MB", "1MB, fresh memory", "10MB", "corpus"}) {
            Print(std::string("whole parse : floor, ") + name, seconds_,
                  std::string("parse/") + name, std::string("floor/") + name);
        }
        Print("time per byte, 10MB : 100KB", bytesPerSecond_, "parse/100KB", "parse/10MB");
        for (const char* name : {"clean", "build", "classify", "render"}) {
            Print(std::string(name) + " : whole parse, 1MB", seconds_, std::string("stage/") + name,
                  "parse/1MB");
        }
        for (const Shape& shape : HostileShapes()) {
            const std::string name = std::string("shape/") + shape.name;
            Print("doubled input, " + name.substr(6), seconds_, name + "/1048576",
                  name + "/524288");
        }
    }

  private:
    static double Scale(const Run& run) { return benchmark::GetTimeUnitMultiplier(run.time_unit); }

    void Print(const std::string& what, const std::map<std::string, double>& figures,
               const std::string& above, const std::string& below) {
        const auto a = figures.find(above);
        const auto b = figures.find(below);
        if (a == figures.end() || b == figures.end()) return;
        GetOutputStream() << "  " << std::left << std::setw(48) << what << std::right
                          << std::setw(8) << a->second / b->second << "\n";
    }

    std::map<std::string, double> seconds_;
    std::map<std::string, double> bytesPerSecond_;
};

// The module's traces go to descriptor 1, so that becomes the null device, and the benchmark
// reports to a copy of what it was.
std::ofstream TakeStandardOutput() {
    const int kept = dup(STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    return std::ofstream("/dev/fd/" + std::to_string(kept), std::ios::app);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    std::ofstream out = TakeStandardOutput();
    RegisterAll();
    RatioReporter reporter;
    reporter.SetOutputStream(&out);
    reporter.SetErrorStream(&std::cerr);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::filesystem::remove_all(std::filesystem::temp_directory_path() / "plugincs-bench");
}
