#!/usr/bin/env python3
"""Rows of code on a Spark cluster, for what outgrows a machine.

    spark-submit spark_rows.py --table code.parquet --into rows     # columns path and content
    spark-submit spark_rows.py --folders repositories --into rows   # a repository each folder in it
    spark-submit spark_rows.py --ask rows                           # questions to what was written

Writes a Parquet table of rows, partitioned by repository, with two columns of its own: `repository`,
and `problem`, which is null but in one more row for each source that is not there as a whole: too
large, NULL, stopped early. The executors need the packages plugincs, pyarrow and pandas.
"""

import argparse
import os
from itertools import groupby

import pyarrow as pa
from pyspark.sql import DataFrame, SparkSession
from pyspark.sql import functions as F

import plugincs

SCHEMA = """repository string, file string, id int, parent int, last int, depth int, kind string,
    declares string, name string, scope string, modifiers string, attributes string, line int,
    column int, endLine int, endColumn int, text string, problem string"""
COLUMNS = [column.split()[0] for column in SCHEMA.split(",")]

QUESTIONS = {
    "The biggest functions": """
        SELECT last - id AS size, name, repository, file, line FROM code
        WHERE declares IN ('method', 'constructor', 'local', 'operator')
        ORDER BY size DESC, repository, file, id LIMIT 10""",
    "Types by base": """
        SELECT base, count(*) AS types FROM (
            SELECT explode(split(regexp_extract(
                -- without type parameters, those in others too, and parameters of a constructor
                regexp_replace(regexp_replace(regexp_replace(text,
                    '<[^<>]*>', ''), '<[^<>]*>', ''), '<[^<>]*>|\\\\([^()]*\\\\)', ''),
                ': *(.*?)( where |$)', 1), ' *, *')) AS base
            FROM code WHERE declares IN ('class', 'struct', 'interface', 'record'))
        WHERE trim(base) <> '' GROUP BY base ORDER BY types DESC, base LIMIT 10""",
    "The same name defined twice": """
        SELECT concat_ws('.', nullif(scope, ''), name) AS type, count(*) AS times,
            count(DISTINCT repository) AS repositories
        FROM code WHERE declares IN ('class', 'struct', 'interface', 'enum', 'record', 'delegate')
            AND modifiers NOT LIKE '%partial%'
        GROUP BY type HAVING times > 1 ORDER BY times DESC, type LIMIT 10""",
}


def rows_of_table(table: DataFrame, most_bytes: int = 256 << 20) -> DataFrame:
    """`table` has `path`, `content` (a string or binary), and perhaps `repository`."""
    if "repository" not in table.columns:
        table = table.withColumn("repository", F.lit(""))
    # As bytes, since a string may hold what is no UTF-8. What is too large is left where it is.
    fits = F.octet_length("content") <= most_bytes
    sources = table.select(
        F.coalesce("repository", F.lit("")).alias("repository"),
        F.coalesce(F.col("path").cast("binary"), F.lit(b"")).alias("path"),
        F.when(fits, F.col("content").cast("binary")).alias("content"),
        F.when(F.col("content").isNull(), "NULL").when(~fits, "too large").alias("problem"),
    )
    return sources.mapInArrow(_parse_table, SCHEMA)


def rows_of_folders(spark: SparkSession, root: str, files_per_task: int = 500) -> DataFrame:
    """Each folder in `root`, which all executors see at the same place, is a repository."""
    files = []
    for repository in sorted(entry.name for entry in os.scandir(root) if entry.is_dir()):
        for folder, _, names in os.walk(os.path.join(root, repository)):
            files += [(repository, os.path.join(folder, name)) for name in sorted(names)
                      if name.endswith(".cs") and os.path.isfile(os.path.join(folder, name))]
    table = spark.createDataFrame(files, "repository string, path string")
    return table.repartition(len(files) // files_per_task + 1).mapInArrow(_parse_files, SCHEMA)


def _parse_table(batches):
    for batch in batches:
        by_repository = sorted(batch.to_pylist(), key=lambda source: source["repository"])
        for repository, sources in groupby(by_repository, lambda source: source["repository"]):
            texts, problems = [], []
            for source in sources:
                if source["problem"] is None:
                    texts.append((source["path"], source["content"]))
                else:
                    path = source["path"].decode("utf-8", "replace")
                    problems.append((path, source["problem"]))
            yield from _rows(repository, plugincs.scan_texts(texts, threads=1), problems)


def _parse_files(batches):
    for batch in batches:
        files = sorted(batch.to_pylist(), key=lambda file: (file["repository"], file["path"]))
        for repository, some in groupby(files, lambda file: file["repository"]):
            scan = plugincs.scan([file["path"] for file in some], threads=1, errors="tell")
            yield from _rows(repository, scan, [])


def _rows(repository, scan, problems):
    """The scan's rows as Spark takes them: with the two columns, and without dictionaries."""
    for batch in pa.RecordBatchReader.from_stream(scan):
        named = dict(zip(batch.schema.names, batch.columns))
        named["repository"] = pa.repeat(repository, batch.num_rows)
        named["problem"] = pa.nulls(batch.num_rows, pa.string())
        columns = [named[name] for name in COLUMNS]
        yield pa.record_batch([_plain(column) for column in columns], names=COLUMNS)
    problems = problems + list(_problems(scan.outcomes))
    if problems:
        rows = [{"repository": repository, "file": file, "problem": problem}
                for file, problem in problems]
        yield pa.RecordBatch.from_pylist(rows, schema=_arrow_schema())


def _problems(outcomes):
    for outcome in outcomes:
        file = os.fsencode(outcome.path).decode("utf-8", "replace")
        if outcome.failure is not None:
            yield file, outcome.failure
        if outcome.stopped is not None:
            yield file, f"stopped early in line {outcome.stopped}"
        for line in outcome.cut:
            yield file, f"one branch kept of the #if in line {line}"


def _plain(column):
    return column.dictionary_decode() if pa.types.is_dictionary(column.type) else column


def _arrow_schema():
    types = {"int": pa.int32(), "string": pa.string()}
    return pa.schema([(column.split()[0], types[column.split()[1]]) for column in SCHEMA.split(",")])


def session(builder: SparkSession.Builder = SparkSession.builder) -> SparkSession:
    return (
        builder.appName("rows of code")
        # Contents are larger than what most tables hold.
        .config("spark.sql.execution.arrow.maxRecordsPerBatch", 256)
        .config("spark.sql.parquet.columnarReaderBatchSize", 256)
        .config("spark.sql.files.maxPartitionBytes", 32 << 20)
        .getOrCreate()
    )


def write(rows: DataFrame, folder: str) -> None:
    rows.write.partitionBy("repository").parquet(folder)
    problems = rows.sparkSession.read.parquet(folder).where("problem IS NOT NULL")
    problems.select("repository", "file", "problem").show(1000, truncate=False)


def view_of(spark: SparkSession, folder: str) -> None:
    """The rows in the folder, as the table `code`."""
    spark.read.parquet(folder).where("problem IS NULL").createOrReplaceTempView("code")


def ask(spark: SparkSession, folder: str) -> None:
    view_of(spark, folder)
    for question, sql in QUESTIONS.items():
        print(question)
        spark.sql(sql).show(truncate=60)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    source = parser.add_mutually_exclusive_group(required=True)
    source.add_argument("--table", help="a Parquet table with the columns path and content")
    source.add_argument("--folders", help="a folder of repositories")
    source.add_argument("--ask", help="a table of rows: answers questions to it")
    parser.add_argument("--into", help="the folder of the Parquet table of rows")
    options = parser.parse_args()
    if options.into is None and options.ask is None:
        parser.error("--into is missing")
    spark = session()
    if options.ask is not None:
        ask(spark, options.ask)
    elif options.table is not None:
        write(rows_of_table(spark.read.parquet(options.table)), options.into)
    else:
        write(rows_of_folders(spark, options.folders), options.into)
    spark.stop()


if __name__ == "__main__":
    main()
