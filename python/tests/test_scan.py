"""Many sources, as streams."""

import gc
import json
import os
import time

import duckdb
import pandas as pd
import polars as pl
import pyarrow as pa
import pytest
from conftest import ROOT

import plugincs

SHOP = ROOT / "samples/shop"


def read(scan):
    return pa.RecordBatchReader.from_stream(scan).read_all()


def plain(table):
    return table.to_pylist()


@pytest.fixture
def folder(tmp_path):
    for number in range(1200):
        body = f"class C{number} {{ int f{number}; }}\n" * (number % 7)
        (tmp_path / f"{number:04}.cs").write_text(body)
    return tmp_path


def test_a_folder_is_that_of_the_program(parsecs, tmp_path):
    (tmp_path / "sub").mkdir()
    (tmp_path / "sub/b.cs").write_text("class B { }")
    (tmp_path / "a.cs").write_text("class A { }")
    (tmp_path / "c.txt").write_text("class C { }")
    (tmp_path / "link").symlink_to(tmp_path / "sub")
    (tmp_path / "d.cs").symlink_to(tmp_path / "c.txt")
    inputs = [tmp_path, tmp_path / "sub", tmp_path / "c.txt", SHOP]
    lines = parsecs("--jsonl", *inputs).splitlines()[1:]
    assert plain(read(plugincs.scan(inputs))) == [json.loads(line) for line in lines]


def test_threads_change_nothing(folder):
    one = plugincs.scan(folder, threads=1)
    table = read(one)
    for threads in (2, 5, None):
        scan = plugincs.scan(str(folder), threads=threads)
        assert plain(read(scan)) == plain(table)
        assert scan.outcomes == one.outcomes
    assert [outcome.path for outcome in one.outcomes] == sorted(map(str, folder.iterdir()))
    assert sum(outcome.rows for outcome in one.outcomes) == table.num_rows
    pairs = [(file, file.read_bytes()) for file in sorted(folder.iterdir())]
    assert plain(read(plugincs.scan_texts(pairs))) == plain(table)


def test_nothing_is_parsed_before_its_time(tmp_path):
    for number in range(40):
        (tmp_path / f"{number:02}.cs").write_text("class A { int x; }\n" * 20_000)
    scan = plugincs.scan(tmp_path, threads=2)
    reader = pa.RecordBatchReader.from_stream(scan)
    assert reader.schema.metadata[b"version"] == b"2" and scan.outcomes == []
    reader.read_next_batch()
    time.sleep(0.3)
    assert len(scan.outcomes) < 4
    (tmp_path / "39.cs").unlink()
    with pytest.raises(OSError, match="39.cs"):
        reader.read_all()
    reader = pa.RecordBatchReader.from_stream(scan)
    reader.read_next_batch()
    del reader  # with threads at work


def test_columns_outlive_their_scan(folder):
    column = next(iter(pa.RecordBatchReader.from_stream(plugincs.scan(folder)))).column("text")
    gc.collect()
    column.validate(full=True)
    assert column[0].as_py() == "0000.cs"


def test_other_libraries_take_it():
    scan = plugincs.scan(SHOP)
    rows = [tuple(row.values()) for row in read(scan).to_pylist()]
    assert pl.DataFrame(scan).rows() == rows
    assert duckdb.sql("SELECT * FROM scan").fetchall() == rows
    frame = read(scan).to_pandas()
    assert isinstance(frame, pd.DataFrame) and list(frame["text"]) == [row[-1] for row in rows]
    if hasattr(pd.DataFrame, "from_arrow"):
        assert list(pd.DataFrame.from_arrow(scan)["name"]) == list(frame["name"])


def test_what_fails_is_told_and_costs_nothing_else(tmp_path):
    (tmp_path / "a.cs").write_text("class A { } } } }")
    (tmp_path / "b.cs").write_text("class B { }")
    with open(tmp_path / "large.cs", "wb") as file:
        file.truncate(3_000_000_000)
    scan = plugincs.scan([tmp_path], errors="raise")
    os.remove(tmp_path / "b.cs")
    with pytest.raises(OSError, match="b.cs: No such file"):
        read(scan)
    scan = plugincs.scan([tmp_path, tmp_path / "none"], errors="tell")
    os.remove(tmp_path / "a.cs")
    (tmp_path / "a.cs").write_text("class A { } } } }")
    assert read(scan).num_rows == 5
    (a, large, none) = scan.outcomes
    assert (a.stopped, a.failure) == (1, None)
    assert large.failure in ("too large", "out of memory") and large.rows == 0
    assert none.failure == "No such file or directory"


def test_bad_arguments():
    with pytest.raises(plugincs.SourceError, match="^none: No such file"):
        plugincs.scan(["none"])
    for arguments in ({"threads": 0}, {"errors": "ignore"}):
        with pytest.raises(ValueError):
            plugincs.scan(SHOP, **arguments)
    assert read(plugincs.scan([])).num_rows == 0


def test_a_text_larger_than_a_piece():
    """300 MB of texts come in several pieces, and another file's rows behind them."""
    line = b'"' + b"x" * 99_980 + b'" + F();\n'
    scan = plugincs.scan_texts([("large", line * 3000), ("small", b"class A { }")])
    batches = list(pa.RecordBatchReader.from_stream(scan))
    assert [outcome.failure for outcome in scan.outcomes] == [None, None]
    assert len(batches) > 2 and max(batch.nbytes for batch in batches) < 300 << 20
    ids = [number for batch in batches for number in batch.column("id").to_pylist()]
    assert ids == list(range(3003)) + list(range(4))
    assert batches[0].column("file")[0].as_py() == batches[1].column("file")[0].as_py() == "large"
