// The messages of a parse. They go through C stdio: on standard output they stay in order with the
// host's own output, and are flushed and redirected with it.
#pragma once

#include <cstdio>
#include <string_view>

namespace plugincs {

class Traces {
  public:
    /// `file` must stay open; null: the messages go nowhere.
    explicit Traces(std::FILE* file) : file_(file) {}

    /// Writes the text as it stands.
    void Write(std::string_view text) const;

    /// Whether nobody can certainly read them (there is no file, or it is the null device), so that
    /// costly ones can be skipped.
    bool AreDiscarded() const;

  private:
    std::FILE* file_;
};

}  // namespace plugincs
