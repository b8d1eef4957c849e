#!/usr/bin/env bash
# golden_test.sh PARSECS SAMPLES GOLDEN: what is published is what it was. A file in GOLDEN changes
# with the number of its format, and then the old one stays for those who read it.
set -u
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
parsecs=$1
cp "$2/Inventory.cs" "$3"/* "$folder"
cd "$folder" || exit 1
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

"$parsecs" --jsonl Inventory.cs | diff rows.jsonl - || fail "rows"

# A database of an earlier release, made in the folder /golden, is updated by this one and reads the
# same; its numbers of kinds and declarations are those of today.
gunzip index.db.gz
touch -d '2026-01-02 03:04:05.678901234' Inventory.cs
ask() { sqlite3 index.db "$@"; }
"$parsecs" --db index.db "$PWD/Inventory.cs" || fail "an earlier database is refused"
of() {
    ask "SELECT line, endLine, kind, declares, outline FROM outline WHERE path = '$1' ORDER BY id" \
        "SELECT line, name, declares, scope, modifiers, attributes, text FROM definitions
            WHERE path = '$1' ORDER BY id" \
        "SELECT bytes, mtime, hash, branches FROM file WHERE path = '$1'"
}
diff <(of /golden/Inventory.cs) <(of "$PWD/Inventory.cs") || fail "an earlier database reads otherwise"
[ "$(of /golden/Inventory.cs | wc -l)" -gt 90 ] || fail "an earlier database is empty"
"$parsecs" --db new.db Inventory.cs
for table in kind declares; do
    [ "$(ask "SELECT * FROM $table")" = "$(sqlite3 new.db "SELECT * FROM $table")" ] || fail "$table"
done
for pragma in application_id user_version; do
    [ "$(ask "PRAGMA $pragma")" = "$(sqlite3 new.db "PRAGMA $pragma")" ] || fail "$pragma"
done
ask "PRAGMA user_version = 1"
"$parsecs" --db index.db "$PWD/Inventory.cs" 2>err
[ "$? $(cat err)" = "3 parsecs: index.db: has format 1 and not 2: delete it, and it will be built anew" ] ||
    fail "an older format: $(cat err)"
exit $((failures > 0))
