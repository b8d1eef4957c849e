// Rows as bytes: what a worker process hands to the parent about a file.
//
// Some eleven bytes a row and its texts: numbers take as many bytes as they need, as differences to
// what came before them. The bytes live no longer than the run, so they bear no version.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "parsecs/rows/ParsedFile.h"

/// All kinds that a row may have, each at its number.
inline constexpr std::array kRowKinds{
    KindName::kFilepath,     KindName::kInclude,         KindName::kContainer, KindName::kLine,
    KindName::kDefine,       KindName::kLogic,           KindName::kFunction,  KindName::kClass,
    KindName::kNamespace,    KindName::kSymbol,          KindName::kLoop,      KindName::kClassVar,
    KindName::kPreprocessor, KindName::kNullParentError,
};

/// The place of the kind in `kRowKinds`.
std::uint8_t KindNumber(std::string_view kind);

/// Appends the file's rows to `out`. Throws std::bad_alloc.
void EncodeRows(const ParsedFile& file, std::string& out);

/// Reads what EncodeRows wrote. Bytes that it did not write give wrong rows, and no harm.
class RowReader {
  public:
    explicit RowReader(std::string_view bytes) : rest_(bytes) {}

    /// False after the last row. The row's views are valid as long as the bytes are.
    bool Next(Row& row);

  private:
    std::uint32_t Number();
    std::int32_t NumberFrom(std::int32_t base);
    std::string_view Text();

    std::string_view rest_;
    std::int32_t id_ = 0;    // of the row before
    std::int32_t line_ = 0;  // where it begins
};
