// What a file declares, for reading: a line for each declaration, without its body.
//
//   src/Till.cs
//     1-9 namespace Shop
//       3-8 public class Till
//         6 public decimal? Price(decimal? start)
//
// The lines are nested as the declarations are, types before members. What stands in functions and
// accessors is left out.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "rows/FileRows.h"

namespace plugincs {

class Skeleton {
  public:
    /// How much is shown, from most to least: each leaves out what the one before does, and more.
    enum class Detail : std::uint8_t {
        All,
        NoPrivate,  ///< Private members, and types, with all that is in them.
        OnlyPublic,
        NoMembers,
        NoNested,  ///< No types in types.
        OnlyPath,
    };
    static constexpr std::size_t kDetails = static_cast<std::size_t>(Detail::OnlyPath) + 1;

    explicit Skeleton(const FileRows& file);

    /// Where something is left out, a line says how much: "... 14 more".
    void Append(Detail detail, std::string& out) const;

    /// How many declarations the file has.
    std::size_t Count() const { return lines_.size(); }

  private:
    struct Line {
        std::size_t begin;  // in `text_`
        std::size_t size;
        std::size_t depth;  // 1 below the file
        Detail last;        // that shows it
    };

    std::string path_;
    std::string text_;
    std::vector<Line> lines_;
};

}  // namespace plugincs
