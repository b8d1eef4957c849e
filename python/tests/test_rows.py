"""One source: what comes of it, whatever it holds."""

import json
import pathlib
import resource
import sys
import threading

import pyarrow as pa
import pytest
from conftest import COLUMNS, ROOT, real_files

import plugincs

GIVEN_UP = (ROOT / "tests/cases/abandoned.cs").read_text()

# Each shape as large as a careless parser falls over.
HOSTILE = {
    "nothing": b"",
    "a byte": b"\xff",
    "braces": b"{" * 1_000_000,
    "closing braces": b"}" * 1_000_000,
    "parentheses": b"(" * 1_000_000,
    "a word": b"a" * 1_000_000,
    "invalid bytes": b"\xff" * 1_000_000,
    "halves of characters": "ä€😀".encode()[:-1] * 1000,
    "nulls": b"class A { }\0int x;" * 1000,
    "surrogates in bytes": b"class \xed\xa0\x80A { }",
    "conditions": b"#if A\n" * 100_000,
    "endings": b"#endif\n" * 100_000,
    "an open string": b'class A { string s = "' + b"x" * 1_000_000,
    "an open comment": b"/*" + b"*" * 1_000_000,
    "classes in classes": b"class A { " * 100_000,
    "generics": b"A" + b"<A" * 100_000 + b" x;",
}


def test_rows_are_those_of_the_program(parsecs):
    for file in real_files():
        expected = [json.loads(line) for line in parsecs("--jsonl", file).splitlines()[1:]]
        rows = plugincs.rows(file)
        assert pa.table(rows).to_pylist() == expected, file
        assert [row._asdict() for row in rows] == expected, file


def test_records_are_those_of_the_module(parsecs):
    for file in real_files():
        try:
            records = plugincs.records(file)
        except plugincs.SourceError as failure:
            assert "more sections" in failure.reason
            records = ""
        assert records.encode("utf-8", "surrogateescape") == parsecs(file), file


@pytest.mark.parametrize("name", HOSTILE)
def test_hostile_shapes(name):
    rows = plugincs.rows(HOSTILE[name], path=name)
    table = pa.table(rows)
    table.validate(full=True)
    assert table.column_names == COLUMNS
    assert table["id"].to_pylist() == list(range(len(rows)))
    assert rows[-1].id == len(rows) - 1 and rows[0].file == name
    try:
        assert plugincs.records(HOSTILE[name], path=name)
    except plugincs.SourceError as failure:
        assert failure.path == name


def test_what_a_source_may_be(tmp_path):
    text = "class Größe { }"
    file = tmp_path / "a.cs"
    file.write_text(text, encoding="utf-8")
    sources = [text, text.encode(), bytearray(text.encode()), memoryview(text.encode()), file]
    for source in sources:
        assert plugincs.rows(source, path="x.cs")[2][1:] == plugincs.rows(text)[2][1:]
        assert plugincs.records(source, path="x.cs") == plugincs.records(text, path=b"x.cs")
    assert plugincs.rows(file).path == str(file)
    # A byte in a surrogate is one byte; other surrogates are three that are no character.
    assert plugincs.rows("class \udcff { }")[2].text == "class \ufffd"
    assert plugincs.rows("class \ud800 { }")[2].text == "class " + "\ufffd" * 3
    with pytest.raises(TypeError):
        plugincs.rows(7)
    with pytest.raises(ValueError):
        plugincs.records("", path="a\0b")


def test_paths_of_any_bytes():
    assert plugincs.rows("", path=b"\xff.cs")[0].file == "\ufffd.cs"
    assert plugincs.rows("", path=b"\xff.cs").path == "\udcff.cs"
    assert '"\udcff.cs"' in plugincs.records("", path=b"\xff.cs")


def test_what_is_missing_is_told():
    rows = plugincs.rows("class A {\n#if X\n{\n#else\n{ }\n#endif\n}\n")
    assert (rows.stopped, rows.cut) == (None, (2,))
    rows = plugincs.rows("class A { }\n}\n}\n}\n")
    assert (rows.stopped, rows.cut) == (3, ())
    rows = plugincs.rows("class A { }")
    assert (rows.stopped, rows.cut) == (None, ())
    with pytest.raises(plugincs.SourceError, match="^a.cs: it closes more sections"):
        plugincs.records(GIVEN_UP, path="a.cs")


def test_errors_have_the_path(tmp_path):
    with open(tmp_path / "large.cs", "wb") as file:
        file.truncate(3_000_000_000)
    cases = {"none.cs": "No such file", ".": "is a folder"}
    for name, reason in cases.items():
        for function in (plugincs.rows, plugincs.records):
            with pytest.raises(plugincs.SourceError, match=reason) as caught:
                function(tmp_path / name)
            assert caught.value.path == str(tmp_path / name)
    with pytest.raises(plugincs.SourceError, match="large.cs: (too large|out of memory)"):
        plugincs.rows(tmp_path / "large.cs")


def test_other_threads_go_on():
    text, counted, done = b"class A { void F() { x = 1; } }\n" * 300_000, [], threading.Event()

    def count():
        while not done.wait(0.001):
            counted.append(1)

    thread = threading.Thread(target=count)
    thread.start()
    sys.setswitchinterval(1e-4)
    plugincs.rows(text)
    before_end = len(counted)
    done.set()
    thread.join()
    assert before_end > 20


def test_many_calls_leave_nothing():
    def calls(count):
        for _ in range(count):
            rows = plugincs.rows("namespace N { class A { int x; void F() { G(); } } }", path="a")
            assert rows[3].name == "A"
            pa.RecordBatchReader.from_stream(rows).read_next_batch().column(0)
            rows.__arrow_c_stream__()  # and nobody takes it
            try:
                plugincs.records(GIVEN_UP)
            except plugincs.SourceError:
                pass
        return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss

    pathlib.Path("/proc/self/clear_refs").write_text("5")  # the peak so far
    before = calls(5_000)
    assert calls(100_000) - before < 1000  # KiB
