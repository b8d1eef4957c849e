import os
import pathlib
import subprocess

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
COLUMNS = (
    "file id parent last depth kind declares name scope modifiers attributes line column endLine"
    " endColumn text"
).split()


def real_files():
    """Samples and cases, and with PARSE_CORPUS in the environment 2,000 files below that folder."""
    files = sorted(ROOT.glob("samples/**/*.cs")) + sorted(ROOT.glob("tests/cases/*.cs"))
    if "PARSE_CORPUS" in os.environ:
        files += sorted(pathlib.Path(os.environ["PARSE_CORPUS"]).glob("**/*.cs"))[:2000]
    return [file for file in files if file.is_file()]


@pytest.fixture(scope="session")
def parsecs():
    program = os.environ.get("PARSECS", ROOT / "build/release/parsecs")
    if not pathlib.Path(program).exists():
        pytest.skip("there is no program to compare with: scripts/run builds it")
    return lambda *arguments: subprocess.run(
        [program, *map(str, arguments)], capture_output=True, check=False
    ).stdout
