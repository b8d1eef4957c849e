#include "core/Sources.h"

#include "parsecs/input/Inputs.h"
#include "parsecs/input/Source.h"
#include "parsecs/options/Options.h"

namespace plugincs {

namespace {

class FoundSources : public Sources {
  public:
    explicit FoundSources(Inputs inputs) : files_(std::move(inputs.files)) {
        failures = std::move(inputs.failures);
    }
    std::size_t size() const override { return files_.size(); }
    const std::string& PathOf(std::size_t index) const override { return files_[index].path; }
    std::uint64_t BytesOf(std::size_t index) const override { return files_[index].bytes; }
    ReadSource Read(std::size_t index) const override { return ReadFound(files_[index]); }

  private:
    const std::vector<FoundFile> files_;
};

class TextSources : public Sources {
  public:
    explicit TextSources(std::vector<std::pair<std::string, std::string>> texts)
        : texts_(std::move(texts)) {}
    std::size_t size() const override { return texts_.size(); }
    const std::string& PathOf(std::size_t index) const override { return texts_[index].first; }
    std::uint64_t BytesOf(std::size_t index) const override { return texts_[index].second.size(); }
    ReadSource Read(std::size_t index) const override {
        ReadSource source;
        source.path = texts_[index].first;
        source.text = texts_[index].second;
        return source;
    }

  private:
    const std::vector<std::pair<std::string, std::string>> texts_;
};

}  // namespace

std::unique_ptr<Sources> FindSources(std::vector<std::string> paths) {
    Options options;
    options.inputs = std::move(paths);
    // To the program that is standard input.
    for (std::string& path : options.inputs) {
        if (path == "-") path = "./-";
    }
    return std::make_unique<FoundSources>(FindInputs(options));
}

std::unique_ptr<Sources> SourcesOf(std::vector<std::pair<std::string, std::string>> texts) {
    return std::make_unique<TextSources>(std::move(texts));
}

}  // namespace plugincs
