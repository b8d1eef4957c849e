// What Python sees of the core: plugincs._core. Texts and paths are bytes here: the package makes
// them of whatever it is given.
#include <nanobind/nanobind.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/shared_ptr.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/ArrowStream.h"
#include "core/Pass.h"
#include "core/Sources.h"
#include "parsecs/input/Source.h"
#include "plugin/Pipeline.h"
#include "tree/ObjectBranch.h"

namespace nb = nanobind;

namespace plugincs {

namespace {

// Libraries call streams with or without the lock.
class Unlocked {
  public:
    Unlocked() : state_(PyGILState_Check() != 0 ? PyEval_SaveThread() : nullptr) {}
    Unlocked(const Unlocked&) = delete;
    Unlocked& operator=(const Unlocked&) = delete;
    ~Unlocked() {
        if (state_ != nullptr) PyEval_RestoreThread(state_);
    }

  private:
    PyThreadState* state_;
};

std::string BytesOf(const nb::bytes& bytes) { return {bytes.c_str(), bytes.size()}; }

nb::object PathString(const std::string& path) {
    return nb::steal(
        PyUnicode_DecodeFSDefaultAndSize(path.data(), static_cast<Py_ssize_t>(path.size())));
}

nb::str TextString(std::string_view text) { return nb::str(text.data(), text.size()); }

nb::object TypeNamed(const char* name) {
    return nb::module_::import_("plugincs._types").attr(name);
}

nb::object LineOrNone(std::int32_t line) {
    if (line == 0) return nb::none();
    return nb::int_(line);
}

nb::object PathOrNone(const std::string& text) {
    if (text.empty()) return nb::none();
    return PathString(text);
}

nb::object LinesOf(const std::vector<std::int32_t>& lines) {
    nb::list list;
    for (const std::int32_t line : lines) list.append(line);
    return nb::tuple(list);
}

nb::object StreamCapsule(NextColumns next) {
    auto stream = std::make_unique<ArrowArrayStream>(MakeStream(std::move(next)));
    return nb::capsule(stream.release(), "arrow_array_stream", [](void* pointer) noexcept {
        const std::unique_ptr<ArrowArrayStream> owned(static_cast<ArrowArrayStream*>(pointer));
        if (owned->release == nullptr) return;
        const Unlocked unlocked;  // threads may have to be waited for
        owned->release(owned.get());
    });
}

// --- records

nb::object RecordsText(const CText& text) {
    const char* const begin = text.get();
    const auto size = static_cast<Py_ssize_t>(std::char_traits<char>::length(begin));
    PyObject* const made = PyUnicode_DecodeUTF8(begin, size, "surrogateescape");
    if (made == nullptr) throw nb::python_error();
    return nb::steal(made);
}

// All of it is given up, or none.
template <typename Make>
auto MadeOf(const std::string& path, Make make) {
    const Unlocked unlocked;
    try {
        return make();
    } catch (const ReadFailure& failure) {
        throw SourceFailure(path, failure.what());
    } catch (const std::bad_alloc&) {
        throw SourceFailure(path, "out of memory");
    } catch (const std::length_error&) {
        throw SourceFailure(path, "too large");
    }
}

nb::object Records(const nb::bytes& path, const nb::bytes& source) {
    const std::string name = BytesOf(path);
    const auto parse = MadeOf(name, [&] {
        auto made = std::make_unique<Parse>(name, BytesOf(source), Traces(nullptr));
        ParseSource(*made, "");
        return made;
    });
    if (parse->end == Parse::End::Abandoned) {
        throw SourceFailure(name, "it closes more sections than it opens");
    }
    return RecordsText(parse->result);
}

// The file has no more bytes than `most`.
nb::bytes ReadFile(const nb::bytes& path, std::uint64_t most) {
    const std::string name = BytesOf(path);
    const std::string text = MadeOf(name, [&] {
        const std::unique_ptr<Sources> found = FindSources({name});
        if (!found->failures.empty()) throw ReadFailure(found->failures.front().reason);
        if (found->BytesOf(0) > most) throw std::length_error("a source");
        return found->Read(0).text;
    });
    return nb::bytes(text.data(), text.size());
}

// --- rows

/// The rows of one source.
struct Rows {
    Outcome outcome;
    std::vector<std::shared_ptr<const Columns>> pieces;
};

Rows RowsOf(const nb::bytes& path, const nb::bytes& source) {
    const std::string name = BytesOf(path);
    return MadeOf(name, [&] {
        const FileRows file(name, BytesOf(source));
        ColumnsMaker maker;
        maker.Add(file);
        return Rows{OutcomeOfRows(file), maker.Made()};
    });
}

nb::object StreamOfRows(const Rows& rows, const nb::object& /*schema*/) {
    return StreamCapsule([pieces = rows.pieces, next = std::size_t{0}]() mutable {
        return next < pieces.size() ? pieces[next++] : nullptr;
    });
}

nb::object RowAt(const Columns& c, std::size_t i) {
    static const nb::object* const type = new nb::object(TypeNamed("Row"));  // outlives the module
    const auto word = [i](const WordColumn& column) {
        return TextString(column.words.At(static_cast<std::size_t>(column.numbers[i])));
    };
    const auto place = [&](const std::vector<std::int32_t>& column) {
        return LineOrNone(column[i]);
    };
    return (*type)(word(c.file), c.id[i], c.parent[i], c.last[i], c.depth[i],
                   TextString(KindName::kAll[static_cast<std::uint8_t>(c.kind[i])]),
                   TextString(NameOf(static_cast<Declares>(c.declares[i]))),
                   TextString(c.name.At(i)), word(c.scope), word(c.modifiers),
                   TextString(c.attributes.At(i)), place(c.line), place(c.column), place(c.endLine),
                   place(c.endColumn), TextString(c.text.At(i)));
}

nb::object RowOf(const Rows& rows, Py_ssize_t index) {
    const auto size = static_cast<Py_ssize_t>(rows.outcome.rows);
    if (index < 0) index += size;
    if (index < 0 || index >= size) throw nb::index_error("no such row");
    auto rest = static_cast<std::size_t>(index);
    auto piece = rows.pieces.begin();
    for (; rest >= (*piece)->size(); ++piece) rest -= (*piece)->size();
    return RowAt(**piece, rest);
}

// --- scans

std::shared_ptr<Scan> MakeScan(std::unique_ptr<Sources> sources, unsigned threads, bool goesOn) {
    if (!sources->failures.empty() && !goesOn) {
        const InputFailure& first = sources->failures.front();
        throw SourceFailure(first.path, first.reason);
    }
    return std::make_shared<Scan>(std::move(sources), threads, goesOn);
}

std::shared_ptr<Scan> ScanPaths(const nb::list& paths, unsigned threads, bool goesOn) {
    std::vector<std::string> names;
    for (const nb::handle path : paths) names.push_back(BytesOf(nb::cast<nb::bytes>(path)));
    const Unlocked unlocked;
    return MakeScan(FindSources(std::move(names)), threads, goesOn);
}

std::shared_ptr<Scan> ScanTexts(const nb::list& pairs, unsigned threads) {
    std::vector<std::pair<std::string, std::string>> texts;
    for (const nb::handle pair : pairs) {
        texts.emplace_back(BytesOf(nb::cast<nb::bytes>(pair[0])),
                           BytesOf(nb::cast<nb::bytes>(pair[1])));
    }
    return MakeScan(SourcesOf(std::move(texts)), threads, true);
}

nb::object StreamOfScan(const std::shared_ptr<Scan>& scan, const nb::object& /*schema*/) {
    // Begun when it is asked for rows: some readers look at a stream's schema alone.
    return StreamCapsule([scan, pass = std::shared_ptr<Pass>()]() mutable {
        const Unlocked unlocked;
        if (!pass) pass = std::make_shared<Pass>(scan);
        return pass->Next();
    });
}

nb::list OutcomesOf(const Scan& scan) {
    const nb::object type = TypeNamed("Outcome");
    nb::list list;
    for (const Outcome& outcome : scan.Outcomes()) {
        list.append(type(PathString(outcome.path), outcome.rows, LineOrNone(outcome.stopped),
                         LinesOf(outcome.cut), PathOrNone(outcome.failure)));
    }
    return list;
}

void ThrowToPython(const std::exception_ptr& thrown, void* /*unused*/) {
    try {
        std::rethrow_exception(thrown);
    } catch (const SourceFailure& failure) {
        const nb::object path = PathString(failure.path);
        const nb::object reason = PathString(failure.reason);
        PyErr_SetObject(TypeNamed("SourceError").ptr(), nb::make_tuple(path, reason).ptr());
    }
}

}  // namespace

}  // namespace plugincs

NB_MODULE(_core, module) {
    using namespace plugincs;
    nb::register_exception_translator(ThrowToPython);
    nb::class_<Rows>(module, "Rows")
        .def_prop_ro("path", [](const Rows& rows) { return PathString(rows.outcome.path); })
        .def_prop_ro("stopped", [](const Rows& rows) { return LineOrNone(rows.outcome.stopped); })
        .def_prop_ro("cut", [](const Rows& rows) { return LinesOf(rows.outcome.cut); })
        .def("__len__", [](const Rows& rows) { return rows.outcome.rows; })
        .def("__getitem__", RowOf)
        .def("__arrow_c_stream__", StreamOfRows, nb::arg("requested_schema").none() = nb::none());
    nb::class_<Scan>(module, "Scan")
        .def_prop_ro("outcomes", OutcomesOf)
        .def("__arrow_c_stream__", StreamOfScan, nb::arg("requested_schema").none() = nb::none());
    module.def("records", Records, nb::arg("path"), nb::arg("source"));
    module.def("read", ReadFile, nb::arg("path"), nb::arg("most"));
    module.def("rows", RowsOf, nb::arg("path"), nb::arg("source"));
    module.def("scan", ScanPaths, nb::arg("paths"), nb::arg("threads"), nb::arg("goes_on"));
    module.def("scan_texts", ScanTexts, nb::arg("texts"), nb::arg("threads"));
}
