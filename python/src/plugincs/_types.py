"""What the functions of the package give back and raise."""

from typing import NamedTuple, Optional, Tuple


class SourceError(Exception):
    """A source cannot be read, or was given up."""

    def __init__(self, path: str, reason: str) -> None:
        super().__init__(path, reason)
        self.path = path
        self.reason = reason

    def __str__(self) -> str:
        return f"{self.path}: {self.reason}"


class Row(NamedTuple):
    """One row. The names are those of the columns."""

    file: str
    id: int
    parent: int
    last: int
    depth: int
    kind: str
    declares: str
    name: str
    scope: str
    modifiers: str
    attributes: str
    line: Optional[int]
    column: Optional[int]
    endLine: Optional[int]
    endColumn: Optional[int]
    text: str


class Outcome(NamedTuple):
    """What came of a source."""

    path: str
    rows: int
    #: The line at which its braces do not match: rows end there.
    stopped: Optional[int]
    #: The lines of each #if of which one branch is in the rows, as braces in them do not match.
    cut: Tuple[int, ...]
    #: Why there is nothing of it: it cannot be read, or is too large.
    failure: Optional[str]
