#include "core/ArrowStream.h"

#include <array>
#include <cerrno>
#include <exception>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "rows/Declaration.h"
#include "tree/ObjectBranch.h"

namespace plugincs {

namespace {

constexpr const char* kText = "u";
constexpr const char* kNumber = "i";  // of 32 bits
constexpr const char* kSmall = "c";   // of 8

struct Field {
    const char* name;
    const char* format;
    bool isWord = false;  // a number of a dictionary
    bool nullable = false;
};

// In the order of the members in JSON lines.
constexpr std::array kFields{
    Field{"file", kNumber, true},
    Field{"id", kNumber},
    Field{"parent", kNumber},
    Field{"last", kNumber},
    Field{"depth", kNumber},
    Field{"kind", kSmall, true},
    Field{"declares", kSmall, true},
    Field{"name", kText},
    Field{"scope", kNumber, true},
    Field{"modifiers", kNumber, true},
    Field{"attributes", kText},
    Field{"line", kNumber, false, true},
    Field{"column", kNumber, false, true},
    Field{"endLine", kNumber, false, true},
    Field{"endColumn", kNumber, false, true},
    Field{"text", kText},
};

// What Arrow's structs point to. Children and dictionaries are released by themselves, as receivers
// may take them out.
template <typename Struct>
struct Held {
    Held() = default;
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() {
        for (Struct& part : parts) {
            if (part.release != nullptr) part.release(&part);
        }
    }

    std::vector<Struct> parts;      // the children, and the dictionary behind them
    std::vector<Struct*> pointers;  // to these
    std::vector<const void*> buffers;
    std::string metadata;
    std::shared_ptr<const void> owner;  // of what buffers point to
};

template <typename Struct>
void Release(Struct* that) {
    delete static_cast<Held<Struct>*>(that->private_data);
    that->release = nullptr;
}

template <typename Struct>
void Hold(Struct& that, std::unique_ptr<Held<Struct>> held, bool hasDictionary) {
    for (Struct& part : held->parts) held->pointers.push_back(&part);
    if (hasDictionary) that.dictionary = held->pointers.back();
    that.n_children = static_cast<std::int64_t>(held->parts.size()) - (hasDictionary ? 1 : 0);
    that.children = held->pointers.data();
    that.release = Release<Struct>;
    that.private_data = held.release();
}

using HeldSchema = Held<ArrowSchema>;
using HeldArray = Held<ArrowArray>;

// Arrow's form of names and values: each behind its length, and before all how many there are.
std::string Metadata() {
    const auto number = [](std::size_t value) {
        const auto small = static_cast<std::int32_t>(value);
        return std::string(reinterpret_cast<const char*>(&small), sizeof small);
    };
    std::string metadata = number(2);
    for (const std::string_view text : {"format", "parsecs-rows", "version", "2"}) {
        metadata.append(number(text.size())).append(text);
    }
    return metadata;
}

ArrowSchema SchemaOf(const Field& field) {
    auto held = std::make_unique<HeldSchema>();
    if (field.isWord) held->parts.push_back(SchemaOf({"", kText}));
    ArrowSchema schema{};
    schema.format = field.format;
    schema.name = field.name;
    schema.flags = field.nullable ? kArrowFlagNullable : 0;
    Hold(schema, std::move(held), field.isWord);
    return schema;
}

ArrowSchema SchemaOfRows() {
    auto held = std::make_unique<HeldSchema>();
    for (const Field& field : kFields) held->parts.push_back(SchemaOf(field));
    held->metadata = Metadata();
    ArrowSchema schema{};
    schema.format = "+s";
    schema.name = "";
    schema.metadata = held->metadata.data();
    Hold(schema, std::move(held), false);
    return schema;
}

// Makes the arrays of the columns.
class Exporter {
  public:
    explicit Exporter(std::shared_ptr<const Columns> columns) : columns_(std::move(columns)) {}

    ArrowArray Rows() const {
        const Columns& c = *columns_;
        auto held = std::make_unique<HeldArray>();
        held->buffers = {nullptr};
        held->parts.reserve(kFields.size());
        const auto add = [&held](ArrowArray array) { held->parts.push_back(array); };
        add(Words(c.file.numbers, c.file.words));
        for (const auto* tree : {&c.id, &c.parent, &c.last, &c.depth}) add(Numbers(*tree));
        add(Words(c.kind, KindWords()));
        add(Words(c.declares, DeclaresWords()));
        add(Text(c.name));
        add(Words(c.scope.numbers, c.scope.words));
        add(Words(c.modifiers.numbers, c.modifiers.words));
        add(Text(c.attributes));
        for (const auto* p : {&c.line, &c.column, &c.endLine, &c.endColumn}) add(Place(*p));
        add(Text(c.text));
        return Array(c.size(), std::move(held));
    }

  private:
    static ArrowArray Array(std::size_t length, std::unique_ptr<HeldArray> held,
                            bool hasDictionary = false) {
        ArrowArray array{};
        array.length = static_cast<std::int64_t>(length);
        array.n_buffers = static_cast<std::int64_t>(held->buffers.size());
        array.buffers = held->buffers.data();
        Hold(array, std::move(held), hasDictionary);
        return array;
    }

    std::unique_ptr<HeldArray> Buffers(std::vector<const void*> buffers) const {
        auto held = std::make_unique<HeldArray>();
        held->buffers = std::move(buffers);
        held->owner = columns_;
        return held;
    }

    ArrowArray Numbers(const std::vector<std::int32_t>& column) const {
        return Array(column.size(), Buffers({nullptr, column.data()}));
    }
    ArrowArray Place(const std::vector<std::int32_t>& column) const {
        const auto& bits = columns_->hasPlace;
        ArrowArray array =
            Array(column.size(), Buffers({bits.empty() ? nullptr : bits.data(), column.data()}));
        array.null_count = columns_->withoutPlace;
        return array;
    }
    ArrowArray Text(const TextColumn& column) const {
        return Array(column.offsets.size() - 1,
                     Buffers({nullptr, column.offsets.data(), column.bytes.data()}));
    }
    template <typename Number>
    ArrowArray Words(const std::vector<Number>& numbers, const TextColumn& words) const {
        auto held = Buffers({nullptr, numbers.data()});
        held->parts.push_back(Text(words));
        return Array(numbers.size(), std::move(held), true);
    }

    static const TextColumn& KindWords() {
        static const TextColumn words = [] {
            TextColumn made;
            for (const std::string_view kind : KindName::kAll) made.Append(kind, true);
            return made;
        }();
        return words;
    }
    static const TextColumn& DeclaresWords() {
        static const TextColumn words = [] {
            TextColumn made;
            for (std::size_t i = 0; i < kDeclaresCount; ++i) {
                made.Append(NameOf(static_cast<Declares>(i)), true);
            }
            return made;
        }();
        return words;
    }

    std::shared_ptr<const Columns> columns_;
};

struct Stream {
    NextColumns next;
    std::string error;
};

Stream& StreamOf(ArrowArrayStream* that) { return *static_cast<Stream*>(that->private_data); }

// Nothing may be thrown to a receiver, which may be C. Returns what Arrow wants: 0 or an errno.
template <typename Do>
int Guarded(ArrowArrayStream* that, Do act) noexcept {
    try {
        act();
        return 0;
    } catch (const std::bad_alloc&) {
        StreamOf(that).error = "out of memory";  // short enough to need none
        return ENOMEM;
    } catch (const std::exception& failure) {
        StreamOf(that).error = failure.what();
        return EIO;
    }
}

int GetSchema(ArrowArrayStream* that, ArrowSchema* out) noexcept {
    return Guarded(that, [out] { *out = SchemaOfRows(); });
}

int GetNext(ArrowArrayStream* that, ArrowArray* out) noexcept {
    return Guarded(that, [that, out] {
        std::shared_ptr<const Columns> columns = StreamOf(that).next();
        *out = columns ? Exporter(std::move(columns)).Rows() : ArrowArray{};
    });
}

const char* GetLastError(ArrowArrayStream* that) noexcept { return StreamOf(that).error.c_str(); }

void ReleaseStream(ArrowArrayStream* that) noexcept {
    delete &StreamOf(that);
    that->release = nullptr;
}

}  // namespace

ArrowArrayStream MakeStream(NextColumns next) {
    auto stream = std::make_unique<Stream>(Stream{std::move(next), {}});
    return {GetSchema, GetNext, GetLastError, ReleaseStream, stream.release()};
}

}  // namespace plugincs
