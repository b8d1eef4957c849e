#include "parsecs/forms/rows/JsonLines.h"

#include <charconv>

#include "parsecs/json/JsonString.h"

namespace plugincs {

namespace {

// Puts lines together, in room that is enough for the longest of them, and hands them on when there
// are many: to append each by itself costs as much as to write it.
class LineWriter {
  public:
    LineWriter(std::string_view path, std::string& out) : out_(out) {
        head_.append("{\"file\":").append(JsonString(path)).append(",\"id\":");
    }

    void Add(const Row& row) {
        MakeRoom(row);
        Put(head_);
        PutNumber(row.id);
        PutMember(",\"parent\":", row.parent);
        PutMember(",\"last\":", row.last);
        PutMember(",\"depth\":", row.depth);
        Put(",\"kind\":\"");
        Put(row.kind);
        Put("\",\"declares\":\"");
        Put(NameOf(row.declares));
        PutText("\",\"name\":\"", row.name, row.plain);
        PutScope(row.scope);
        PutText("\",\"modifiers\":\"", row.modifiers, true);  // of keywords
        PutText("\",\"attributes\":\"", row.attributes, row.attributes.empty());
        PutPlaces(row);
        PutText(",\"text\":\"", row.text, row.plain);
        Put("\"}\n");
    }

    void Flush() {
        out_.append(lines_.data(), end_);
        end_ = lines_.data();
    }

  private:
    void MakeRoom(const Row& row) {
        constexpr std::size_t kConstantPieces = 384;  // with the numbers and kinds
        const std::size_t texts = row.name.size() + row.scope.size() + row.modifiers.size() +
                                  row.attributes.size() + row.text.size();
        const std::size_t room = kConstantPieces + head_.size() + JsonStringRoom(texts);
        if (room <= static_cast<std::size_t>(lines_.data() + lines_.size() - end_)) return;
        Flush();
        if (lines_.size() < room) lines_.resize(2 * room);
        end_ = lines_.data();
    }

    // `plain`: the value stands in JSON as it is.
    void PutText(std::string_view name, std::string_view value, bool plain) {
        Put(name);
        if (plain) {
            Put(value);
        } else {
            end_ = WriteJsonString(value, end_);
        }
    }

    // Rows in a row have the same.
    void PutScope(std::string_view scope) {
        if (scope.data() != scope_.data() || scope.size() != scope_.size()) {
            scope_ = scope;
            scopeMember_ = ",\"scope\":" + JsonString(scope);
            scopeMember_.pop_back();
        }
        Put("\"");
        Put(scopeMember_);
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
            Put("\",\"line\":null,\"column\":null,\"endLine\":null,\"endColumn\":null");
            return;
        }
        PutMember("\",\"line\":", row.begin.line);
        PutMember(",\"column\":", row.begin.column);
        PutMember(",\"endLine\":", row.end.line);
        PutMember(",\"endColumn\":", row.end.column);
    }

    static constexpr std::size_t kAtOnce = 8192;  // bytes of lines

    std::string& out_;
    std::string head_;                           // up to the id, the same in all rows of a file
    std::string_view scope_;                     // of the last row
    std::string scopeMember_ = ",\"scope\":\"";  // the same, without the last quote
    std::string lines_ = std::string(kAtOnce, '\0');
    char* end_ = lines_.data();
};

}  // namespace

void AppendJsonLines(const FileRows& file, std::string& out) {
    LineWriter writer(file.path(), out);
    for (const Row& row : file.rows()) writer.Add(row);
    writer.Flush();
}

}  // namespace plugincs
