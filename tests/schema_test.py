#!/usr/bin/env python3
"""schema_test.py PARSECS SOURCE...: rows of real sources, and rows that are wrong, against the
schema that the program shows. Skipped (exit code 77) without python3-jsonschema."""

import copy
import json
import subprocess
import sys

try:
    import jsonschema
except ImportError:
    print("skipped: python3-jsonschema is not here")
    sys.exit(77)

program, *sources = sys.argv[1:]


def output(*arguments):
    return subprocess.run([program, *arguments], capture_output=True, check=True).stdout


schema = json.loads(output("--schema"))
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)
lines = [json.loads(line) for line in output("--jsonl", *sources).splitlines()]
rows = lines[1:]
assert len(rows) > 300, len(rows)
for line in lines:
    validator.validate(line)

# The schema speaks of all members, in their order, and has no word that no row could have.
row = schema["$defs"]["row"]
assert all(list(r) == list(row["properties"]) == row["required"] for r in rows)
listed = {d for d in row["properties"]["declares"]["enum"]}
assert listed == {r["declares"] for r in rows}, listed ^ {r["declares"] for r in rows}

method = next(r for r in rows if r["declares"] == "method")
for member, value in [("id", -1), ("kind", "methods"), ("declares", "function"), ("name", ""), ("line", 0),
                      ("line", "1"), ("parent", -2), ("declares", "")]:
    wrong = copy.copy(method)
    wrong[member] = value
    assert not validator.is_valid(wrong), (member, value)
for member in method:
    wrong = copy.copy(method)
    del wrong[member]
    assert not validator.is_valid(wrong), member
assert not validator.is_valid({"format": "parsecs-rows", "version": 1})
