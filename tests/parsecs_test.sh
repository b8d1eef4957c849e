#!/usr/bin/env bash
# parsecs_test.sh PARSECS BROKEN-MODULE: the program as its users call it.
set -u
parsecs=$1
broken="--module $2"
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
mkdir -p src/sub empty
echo 'a; b' >src/a.cs
echo "char c = 'x';" >src/sub/b.cs
cp src/a.cs short.cs
ln -s .. src/sub/loop
ln -s nowhere src/gone.cs
head -c 40000 /dev/zero | tr '\0' '{' >deep.cs
echo kept >kept
echo kept >kept.json
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

# Exit code | arguments | the standard error: a pattern for its only line, or nothing.
while IFS='|' read -r code arguments pattern; do
    eval "\"$parsecs\" $arguments" >out 2>err
    got=$?
    [ "$got" -eq "$code" ] || fail "$arguments: exit code $got"
    [[ $(cat err) =~ ^${pattern:+parsecs: }$pattern$ ]] || fail "$arguments: $(cat err)"
done <<TABLE
0|src/a.cs|
2||FILE is required.*
2|--strict --outline src/a.cs|.*excludes.*
2|missing.cs src/a.cs|missing.cs: No such file or directory
2|src|src: is a folder: .*
2|--module src/a.cs src/a.cs|src/a.cs: file too short
2|--module missing.so src/a.cs|missing.so: .*No such file or directory
2|-o src/a.cs src/a.cs|src/a.cs: is the input
2|-o kept src/a.cs src/sub/b.cs|kept: Not a directory
2|-o out.d/ --outline src/a.cs|out.d/: is a folder: .*
2|-o kept/x src/a.cs|kept/?x?: Not a directory
1|src/a.cs >/dev/full|standard output: No space left on device
1|src/a.cs >&-|standard output: Bad file descriptor
1|-o /dev/full src/a.cs|/dev/full: No space left on device
1|$broken src/a.cs|src/a.cs: no text came back
1|$broken -o kept.json src/a.cs|src/a.cs: no text came back
1|$broken -o kept.json short.cs|.*kept.json: could not be written to the end
TABLE
[ "$(cat kept.json)" = kept ] || fail "an output file was destroyed"

yes 'a;' | head -n 50000 >long.cs
"$parsecs" long.cs 2>err | head -n 1 >out
[ "${PIPESTATUS[0]} $(cat err)" = "1 parsecs: standard output: Broken pipe" ] || fail "closed pipe"

"$parsecs" -o tree src src/a.cs src/a.cs - <short.cs 2>err && fail "missing and colliding inputs"
[ "$(grep -c 'gone.cs: No such file\|already the output' err)" = 2 ] || fail "folder: $(cat err)"
[ "$(cd tree && find . -type f | sort | xargs)" = "./a.json ./src/a.json ./stdin.json ./sub/b.json" ] ||
    fail "folder: $(find tree)"
"$parsecs" src/sub/b.cs | cmp - tree/sub/b.json || fail "a folder's file differs"
"$parsecs" - <src/a.cs | grep -q '"filePath": "/dev/stdin"' || fail "standard input"

[ "$("$parsecs" --strict src/a.cs src/sub/b.cs | grep -c '^{"file": "src/.*]}$')" = 2 ] ||
    fail "a line for each file"
[ "$(ulimit -s 1024 && "$parsecs" --outline deep.cs | wc -l)" -gt 40000 ] || fail "deep outline"
"$parsecs" --outline src/sub/b.cs | grep -q "^     1      line  char c = 'x'$" || fail "outline"
COLUMNS=28 "$parsecs" --outline src/sub/b.cs | grep -q '^.\{25\}\.\.\.$' || fail "cut outline"
exit $((failures > 0))
