"""The structure of C#-like source files: as tables, as rows, and as the module's own records.

    import plugincs, pyarrow as pa
    table = pa.table(plugincs.scan("src"))          # a row for each statement and block

Whatever takes a stream of Arrow's takes `rows(...)` and `scan(...)`: pyarrow, pandas, polars,
DuckDB. No source ends the process, whatever it holds.
"""

import os
from typing import Iterable, Optional, Tuple, Union

from . import _core
from ._core import Rows, Scan
from ._types import Outcome, Row, SourceError

__all__ = [
    "Outcome", "Row", "Rows", "Scan", "SourceError", "records", "rows", "scan", "scan_texts",
]
__version__ = "1.0.0"

Path = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
#: A text, its bytes, or with a path object the file that it leads to.
Source = Union[str, bytes, bytearray, memoryview, "os.PathLike[str]", "os.PathLike[bytes]"]


def records(source: Source, path: Optional[Path] = None) -> str:
    """The text that the module makes of the source, to the byte.

    Bytes of the path that are no UTF-8 are surrogates in it. Raises SourceError when the source
    cannot be read or is given up.
    """
    return _core.records(*_named(source, path, 2**64 - 1))


def rows(source: Source, path: Optional[Path] = None) -> Rows:
    """The rows of one source: a sequence of Row, and a stream of Arrow's.

    `path` is the name that they bear. Raises SourceError when the source cannot be read, is larger
    than 2 GiB or too large for the memory.
    """
    return _core.rows(*_named(source, path, 2**31 - 1))


def scan(
    paths: Union[Path, Iterable[Path]], threads: Optional[int] = None, errors: str = "raise"
) -> Scan:
    """The rows of files, and of all *.cs in folders, in their order: a stream of Arrow's.

    Nothing is parsed before the stream is read, and then only a little ahead; each reading parses
    anew. All cores work, or as many `threads` as are given. What cannot be read raises SourceError
    here, or an error in the stream's reader: with errors="tell" it is left out and named in
    `outcomes` alone. There stands too what stopped early and what was given up.
    """
    if errors not in ("raise", "tell"):
        raise ValueError("errors: is 'raise' or 'tell'")
    if isinstance(paths, (str, bytes, os.PathLike)):
        paths = [paths]
    return _core.scan([_path(path) for path in paths], _threads(threads), errors == "tell")


def scan_texts(
    texts: Iterable[Tuple[Path, Union[str, bytes, bytearray, memoryview]]],
    threads: Optional[int] = None,
) -> Scan:
    """The same for sources in memory, given as pairs of a path and a text."""
    pairs = [(_path(path), _bytes(text)) for path, text in texts]
    return _core.scan_texts(pairs, _threads(threads))


def _threads(threads: Optional[int]) -> int:
    if threads is None:
        return 0
    if threads < 1:
        raise ValueError("threads: at least 1")
    return min(threads, 1024)


def _path(path: Path) -> bytes:
    name = os.fsencode(path)
    if b"\0" in name:
        raise ValueError("a path with a null byte")
    return name


def _named(source: Source, path: Optional[Path], most: int) -> Tuple[bytes, bytes]:
    if not isinstance(source, os.PathLike):
        return _path("" if path is None else path), _bytes(source)
    file = _path(source)
    if os.path.isdir(file):
        raise SourceError(os.fsdecode(file), "is a folder")
    return (file if path is None else _path(path)), _core.read(file, most)


def _bytes(text: Union[str, bytes, bytearray, memoryview]) -> bytes:
    if not isinstance(text, str):
        return text if isinstance(text, bytes) else bytes(memoryview(text))
    try:
        return text.encode("utf-8", "surrogateescape")
    except UnicodeEncodeError:  # surrogates that stand for no byte
        return text.encode("utf-8", "surrogatepass")
