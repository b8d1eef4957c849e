#!/usr/bin/env bash
# parsecs_test.sh PARSECS BROKEN-MODULE: the program as its users call it.
set -u
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
# By names without blanks, whatever the build folder is called.
ln -s "$1" parsecs
ln -s "$2" broken.so
parsecs=$PWD/parsecs
broken="--module broken.so"
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
2||.*FILE is required.*
2|--strict --outline src/a.cs|.*excludes.*
2|missing.cs src/a.cs|missing.cs: No such file or directory
2|src|src: is a folder: .*
2|--module src/a.cs src/a.cs|no module: .*/src/a.cs: file too short
2|--module missing.so src/a.cs|no module: .*/missing.so: .*No such file or directory
2|-o src/a.cs src/a.cs|src/a.cs: is the input
2|-o kept src/a.cs src/sub/b.cs|kept: Not a directory
2|-o out.d/ --outline src/a.cs|out.d/: an outline needs a file
2|-o kept/x src/a.cs|kept/x.part: Not a directory
1|src/a.cs >/dev/full|standard output: No space left on device
1|src/a.cs >&-|standard output: Bad file descriptor
1|-o /dev/full src/a.cs|/dev/full: No space left on device
1|$broken src/a.cs|src/a.cs: no text came back
1|$broken -o kept.json src/a.cs|src/a.cs: no text came back
TABLE
[ "$(cat kept.json)" = kept ] || fail "an output file was destroyed"

yes 'a;' | head -n 50000 >long.cs
"$parsecs" long.cs 2>err | head -n 1 >out
[ "${PIPESTATUS[0]} $(cat err)" = "1 parsecs: standard output: Broken pipe" ] || fail "closed pipe"

"$parsecs" -o tree src src/a.cs ./src/a.cs - <short.cs 2>err
[ "$? $(grep -c 'gone.cs: No such file\|same output as\|tree: 4 parsed, 2 failed$' err)" = "2 3" ] ||
    fail "folder: $(cat err)"
[ "$(cd tree && find . -type f | sort | xargs)" = "./a.json ./src/a.json ./stdin.json ./sub/b.json" ] ||
    fail "folder: $(find tree)"
"$parsecs" src/sub/b.cs | cmp - tree/sub/b.json || fail "a folder's file differs"
"$parsecs" $broken -o broken src/a.cs short.cs 2>err
[ "$? $(grep -c 'a.cs: no text\|broken/short.json: could not be written to the end' err)" = "1 2" ] ||
    fail "broken module: $(cat err)"
[ -z "$(find broken -type f)" ] || fail "half-written: $(find broken)"
"$parsecs" --traces - <src/a.cs 2>err | grep -q '"filePath": "/dev/stdin"' || fail "standard input"
grep -q 'the final data is' err || fail "traces"

odd=$'src/a\"\n\xFF.cs'
cp src/a.cs "$odd"
"$parsecs" --strict src/a.cs "$odd" >out
[ "$(grep -c '^{"file": "src/a.*, "records": \[.*\]}$' out)" = 2 ] || fail "a line for each file"
grep -q $'^{"file": "src/a\\\\\\"\\\\u000a\xEF\xBF\xBD.cs"' out || fail "odd name: $(tail -n 1 out)"
[ "$(ulimit -s 1024 && "$parsecs" --outline deep.cs | wc -l)" -gt 40000 ] || fail "deep outline"
"$parsecs" --outline src/sub/b.cs | grep -q "^     1      line  char c = 'x'$" || fail "outline"
terminal() { script -qec "stty cols 28 && $*" /dev/null </dev/null; }
terminal "NO_COLOR=1 $parsecs --outline src/sub/b.cs" | grep -q $'^     1      line  char c \.\.\.\r$' ||
    fail "outline cut to a terminal"
terminal "$parsecs --outline src/sub/b.cs" | grep -q $'\x1B\\[36mline' || fail "colour"
terminal "$parsecs -o tree src" | grep -q $'\r3 of ' || fail "progress"
exit $((failures > 0))
