#include "parsecs/rows/JsonLines.h"

#include <charconv>

#include "parsecs/strict/JsonString.h"

namespace {

// Puts one line together at a time, in room that is enough for the longest of it.
class LineWriter {
  public:
    explicit LineWriter(std::string_view path) {
        head_.append("{\"file\":").append(JsonString(path)).append(",\"id\":");
    }

    std::string_view Line(const Row& row) {
        MakeRoom(row);
        Put(head_);
        PutNumber(row.id);
        PutMember(",\"parent\":", row.parent);
        PutMember(",\"last\":", row.last);
        PutMember(",\"depth\":", row.depth);
        Put(",\"kind\":\"");
        Put(row.kind);
        Put("\",\"name\":\"");
        end_ = WriteJsonString(row.name, end_);
        PutPlaces(row);
        end_ = WriteJsonString(row.text, end_);
        Put("\"}\n");
        return {line_.data(), static_cast<std::size_t>(end_ - line_.data())};
    }

  private:
    void MakeRoom(const Row& row) {
        constexpr std::size_t kConstantPieces = 256;  // with the numbers
        const std::size_t room = kConstantPieces + head_.size() + row.kind.size() +
                                 JsonStringRoom(row.name.size() + row.text.size());
        if (line_.size() < room) line_.resize(2 * room);
        end_ = line_.data();
    }

    void Put(std::string_view piece) { end_ += piece.copy(end_, piece.size()); }
    void PutNumber(std::int32_t value) {
        constexpr std::ptrdiff_t kMostDigits = 11;  // with the sign
        end_ = std::to_chars(end_, end_ + kMostDigits, value).ptr;
    }
    void PutMember(std::string_view name, std::int32_t value) {
        Put(name);
        PutNumber(value);
    }

    void PutPlaces(const Row& row) {
        if (row.begin.line == 0) {
            Put("\",\"line\":null,\"column\":null,\"endLine\":null,\"endColumn\":null,\"text\":\"");
            return;
        }
        PutMember("\",\"line\":", row.begin.line);
        PutMember(",\"column\":", row.begin.column);
        PutMember(",\"endLine\":", row.end.line);
        PutMember(",\"endColumn\":", row.end.column);
        Put(",\"text\":\"");
    }

    std::string head_;  // up to the id, the same in all rows of a file
    std::string line_;
    char* end_ = nullptr;
};

}  // namespace

void AppendJsonLines(const ParsedFile& file, std::string& out) {
    LineWriter writer(file.path());
    for (const Row& row : file.rows()) out += writer.Line(row);
}
