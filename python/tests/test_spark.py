"""The Spark job on a cluster of two worker processes: what it writes is what one machine makes."""

import os
import pathlib
import signal
import sys
import threading
import time

import pyarrow as pa
import pyarrow.parquet as pq
import pytest
from conftest import COLUMNS, ROOT, real_files

import plugincs

pytest.importorskip("pyspark")
sys.path.append(str(ROOT / "examples"))
import spark_rows

HOSTILE = {
    "null.cs": None,
    "bytes.cs": b"class \xff\xfe { }",
    "braces.cs": b"{" * 1_000_000,  # so many rows, which are counted only
    "closed.cs": b"class A { }\n}\n}\n}",
}


@pytest.fixture(scope="module")
def spark():
    os.environ["PYSPARK_PYTHON"] = sys.executable
    spark = (
        spark_rows.SparkSession.builder.master("local-cluster[2,1,1024]")
        .config("spark.ui.enabled", False)
        .config("spark.sql.shuffle.partitions", 2)
    )
    spark = spark_rows.session(spark)
    spark.sparkContext.setLogLevel("OFF")
    spark.sparkContext.addPyFile(str(ROOT / "examples/spark_rows.py"))
    yield spark
    spark.stop()


def by_place(row):
    return [str(row[name]).zfill(9) for name in ("repository", "file", "id")] + [row["problem"]]


def written(spark, rows, folder):
    spark_rows.write(rows, str(folder))
    table = spark.read.parquet(str(folder)).where("file <> 'braces.cs'")
    return table.toArrow().to_pylist()


def made_here(repository, texts):
    scan = plugincs.scan_texts(texts)
    rows = pa.RecordBatchReader.from_stream(scan).read_all().to_pylist()
    return [dict(row, repository=repository, problem=None) for row in rows]


def same(rows, expected):
    rows = [row for row in rows if row["problem"] is None]
    return sorted(rows, key=by_place) == sorted(expected, key=by_place)


def test_a_table(spark, tmp_path):
    texts = [(file.name, file.read_bytes()) for file in real_files()]
    sound = [(name, HOSTILE[name]) for name in ("bytes.cs", "closed.cs")]
    rows = [("one", *text) for text in texts] + [("two", *text) for text in texts[:5]]
    rows += [("two", *row) for row in HOSTILE.items()] + [(None, None, b"class A { }")]
    names = ("repository", "path", "content")
    pq.write_table(pa.Table.from_pylist([dict(zip(names, row)) for row in rows]), tmp_path / "t")

    found = written(spark, spark_rows.rows_of_table(spark.read.parquet(str(tmp_path / "t"))),
                    tmp_path / "rows")
    expected = made_here("one", texts) + made_here("two", texts[:5] + sound)
    # To Parquet a partition without a name is one of null.
    assert same(found, expected + made_here(None, [("", b"class A { }")]))
    problems = {(row["file"], row["problem"]) for row in found if row["problem"]}
    assert {("null.cs", "NULL"), ("closed.cs", "stopped early in line 3")} <= problems
    table = spark.read.parquet(str(tmp_path / "rows"))
    assert table.where("file = 'braces.cs'").count() == len(plugincs.rows(HOSTILE["braces.cs"]))
    # What is too large is looked at by nobody.
    table = spark.createDataFrame([("a.cs", "class A { }")], "path string, content string")
    rows = spark_rows.rows_of_table(table, most_bytes=10).collect()
    assert [(row.file, row.problem) for row in rows] == [("a.cs", "too large")]


def test_folders(spark, tmp_path):
    for name in ("first", "second/sub"):
        (tmp_path / "in" / name).mkdir(parents=True)
        (tmp_path / "in" / name / "a.cs").write_text("class A : B<int>, IC { void F() { } }")
    with open(tmp_path / "in/first/large.cs", "wb") as file:
        file.truncate(3_000_000_000)
    found = written(spark, spark_rows.rows_of_folders(spark, str(tmp_path / "in")),
                    tmp_path / "rows")
    expected = []
    for repository in ("first", "second"):
        for file in (tmp_path / "in" / repository).glob("**/a.cs"):
            expected += made_here(repository, [(file, file.read_bytes())])
    assert same(found, expected)
    assert [pathlib.Path(row["file"]).name for row in found if row["problem"]] == ["large.cs"]

    spark_rows.view_of(spark, str(tmp_path / "rows"))
    answers = [
        [tuple(row) for row in spark.sql(sql).collect()] for sql in spark_rows.QUESTIONS.values()
    ]
    assert answers[0][0][:3] == (0, "F", "first")
    assert answers[1:] == [[("B", 2), ("IC", 2)], [("A", 2, 2)]]


def executors():
    """The processes of executors that this one's Spark has started."""
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            command = (folder / "cmdline").read_bytes()
            parents = (folder / "status").read_text()
        except OSError:
            continue
        if b"CoarseGrainedExecutorBackend" in command and driver() in parents.split():
            yield int(folder.name)


def driver():
    from pyspark import SparkContext

    return str(SparkContext._gateway.proc.pid)


def test_an_executor_that_dies_costs_nothing(spark, tmp_path):
    text = b"class A { int x; void F() { G(); } }\n" * 2000
    texts = [(f"{number:03}.cs", text) for number in range(60)]
    table = spark.createDataFrame(texts, "path string, content binary").repartition(20)
    found = []

    def job():
        found.extend(written(spark, spark_rows.rows_of_table(table), tmp_path / "rows"))

    thread = threading.Thread(target=job)
    thread.start()
    parts = tmp_path / "rows/_temporary"
    while not list(parts.glob("0/task*")):  # until some of it is done
        assert thread.is_alive()
        time.sleep(0.01)
    os.kill(next(executors()), signal.SIGKILL)
    assert thread.is_alive() and not (tmp_path / "rows/_SUCCESS").exists()
    thread.join()
    assert [row["name"] for row in found].count("F") == 60 * 2000
    assert same(found, made_here(None, texts))
    assert set(COLUMNS) < set(found[0])
