"""python fuzz.py [SECONDS] [SEED]: any bytes, against what holds for all sources.

Sources are cases and samples with pieces cut, doubled, swapped between them and changed. A source
that breaks a promise is left in the file finding.cs.
"""

import pathlib
import random
import sys
import time

import pyarrow as pa

import plugincs

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORDS = [b"{", b"}", b"(", b")", b";", b'"', b"'", b"/*", b"*/", b"//", b"#if A\n", b"#else\n",
         b"#endif\n", b"\n#", b"@", b'$"{', b'"""', b"class ", b"\0", b"\xff", b"\xc3", b"[", b"<"]


def mutated(seeds, rng):
    text = rng.choice(seeds)
    for _ in range(rng.randint(1, 12)):
        begin = rng.randint(0, len(text))
        end = min(len(text), begin + rng.choice((0, 1, 5, 100)))
        other = rng.choice(seeds)
        at = rng.randint(0, len(other))
        noise = bytes(rng.randrange(256) for _ in range(3))
        taken = other[at:at + rng.randint(0, 200)]
        piece = rng.choice((rng.choice(WORDS), noise, taken, text[begin:end] * 2, b""))
        text = text[:begin] + piece + text[end:]
    return text


def check(text):
    rows = plugincs.rows(text, path="a.cs")
    table = pa.table(rows)
    table.validate(full=True)
    number = table.num_rows
    assert table["id"].to_pylist() == list(range(number)) and len(rows) == number
    last = table["last"].to_pylist()
    parents = table["parent"].to_pylist()
    assert all(parent < i <= last[i] <= last[parent] for i, parent in enumerate(parents) if i)
    scan = plugincs.scan_texts([("b.cs", b"class B { }"), ("a.cs", text)], threads=2)
    both = pa.RecordBatchReader.from_stream(scan).read_all().slice(4)
    assert both.to_pylist() == table.to_pylist()
    assert scan.outcomes[1][1:4] == (number, rows.stopped, rows.cut)
    try:
        plugincs.records(text, path="a.cs")
    except plugincs.SourceError:
        pass


def main(seconds=10, seed=None):
    seed = int(seed) if seed else random.randrange(10**9)
    rng = random.Random(seed)
    folders = (ROOT / "samples", ROOT / "tests/cases")
    seeds = [file.read_bytes() for folder in folders for file in folder.glob("**/*.cs")]
    end, count = time.monotonic() + float(seconds), 0
    while time.monotonic() < end:
        text = mutated(seeds, rng)
        try:
            check(text)
        except BaseException:
            pathlib.Path("finding.cs").write_bytes(text)
            raise
        count += 1
    print(f"{count} sources, none of them found anything (seed {seed})")


if __name__ == "__main__":
    main(*sys.argv[1:])
