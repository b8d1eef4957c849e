#!/usr/bin/env bash
# parsecs_test.sh PARSECS: the program as its users call it.
set -u
here=$(cd "$(dirname "$0")" && pwd)
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
ln -s "$1" parsecs # a name without blanks, whatever the build folder is called
parsecs=$PWD/parsecs
mkdir -p src/sub empty
echo 'a; b' >src/a.cs
echo "char c = 'x';" >src/sub/b.cs
printf 'a;\r\nb;\r\n}\r\nc;' >early.cs
cp "$here/cases/abandoned.cs" given-up.cs
ln -s .. src/sub/loop
ln -s nowhere src/gone.cs
ln -s /dev/zero src/zero.cs
mkfifo src/sub/pipe.cs
head -c 40000 /dev/zero | tr '\0' '{' >deep.cs
echo kept >kept
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

# Exit code | arguments | the standard error: a pattern for its only line, or nothing.
while IFS='|' read -r code arguments pattern; do
    eval "timeout 10 \"$parsecs\" $arguments" >stdout 2>err
    got=$?
    [ "$got" -eq "$code" ] || fail "$arguments: exit code $got"
    [[ $(cat err) =~ ^${pattern:+parsecs: }$pattern$ ]] || fail "$arguments: $(cat err)"
done <<TABLE
0|src/a.cs|
0|early.cs|early.cs:4: stopped early, .*
1|given-up.cs|given-up.cs: given up: .*
1|missing.cs|missing.cs: No such file or directory
1|/dev/zero|/dev/zero: is a device
1|-o kept missing.cs|missing.cs: No such file or directory
1|--jsonl -o kept missing.cs|missing.cs: No such file or directory
2||nothing to parse: .*
2|--strict --outline src/a.cs|--outline and --strict are two forms: use one
2|--otline|no option --otline: did you mean --outline\?
2|-x|no option -x, see parsecs --help
2|--jobs=0 src/a.cs|--jobs takes a number from 1 to 1000, not 0
2|--strict=x|--strict takes no value
2|src/a.cs -o|-o needs a value: FILE
2|--color red|--color takes auto\|always\|never, not red
2|-0 src/a.cs|-0 needs --files-from
2|--files-from missing --jsonl|missing: No such file or directory
2|--files-from - --jsonl -|standard input cannot be both .*
2|src|src is a folder: .*: use --into DIR .*, or --jsonl
2|--strict -o kept src/a.cs src/sub/b.cs|several files .*: use --into DIR .*
2|-o src src/a.cs|-o src is a folder: use --into src
2|-o kept --into out src/a.cs|-o and --into are two places: use one
2|--into kept src/a.cs|--into kept is no folder: use -o FILE .*
2|--into out \$PWD/../src.cs ../\${PWD##*/}/early.cs -|--into: standard input .*
2|--into out /dev/null|--into: /dev/null lies outside .*
2|-o src/a.cs src/a.cs|src/a.cs: is an input, .*
3|src/a.cs >/dev/full|standard output: No space left on device
3|src/a.cs >&-|standard output: Bad file descriptor
3|-o /dev/full src/a.cs|/dev/full: No space left on device
3|-o kept/x src/a.cs|kept/x: Not a directory
TABLE
[ "$(cat kept)" = kept ] || fail "an output file was destroyed"

"$parsecs" --jsonl src early.cs early.cs given-up.cs >stdout 2>err
[ "$? $(grep -c '^{"format"' stdout) $(grep -c '"id":0,' stdout)" = "1 1 3" ] || fail "rows: $(head stdout)"
grep -q 'gone.cs: No such file' err || fail "a link that leads nowhere: $(cat err)"
tail -n 1 err | grep -q ': 3 files parsed, 1 of them stopped early, 1 could not be read, 1 given up$' ||
    fail "counts: $(cat err)"
exit $((failures > 0))
