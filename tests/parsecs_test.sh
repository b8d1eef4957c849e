#!/usr/bin/env bash
# parsecs_test.sh PARSECS: the program as its users call it.
set -u
here=$(cd "$(dirname "$0")" && pwd)
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
ln -s "$1" parsecs # a name without blanks, whatever the build folder is called
parsecs=$PWD/parsecs
mkdir -p src/sub
echo 'a; b' >src/a.cs
echo "char c = 'x';" >src/sub/b.cs
printf 'a;\r\nb;\r\n}\r\nc;' >early.cs
cp "$here/cases/abandoned.cs" given..up.cs
printf 'a;\n#if A\nclass A {\n#else\nclass B {\n#endif\n}\n#if D\nclass C {\n#else\n class D {\n#endif\n}' >cut.cs
printf 'class D { }\n}\nint y;\nclass Lost { void F() { g(); } }\n' >renamed.cs # stops at a field
printf '#if A\n{\n#endif\n}\nint y;\nclass Lost { }\n' >records.cs             # which rows balance
mkdir taken
echo 'a;' | tee taken/a.cs >$'c1\u009Bx.cs'
ln -s .. src/sub/loop
ln -s nowhere src/gone.cs
ln -s /dev/zero src/zero.cs
mkfifo src/sub/pipe.cs
head -c 40000 /dev/zero | tr '\0' '{' >deep.cs
yes 'a;' | head -n 50000 >long.cs
odd=$'src/a\"\n\xFF.cs'
echo 'a;' >"$odd"
printf '%s\0' "$odd" early.cs >list0
printf 'early.cs\r\n\r\n\nsrc/a.cs' >list
echo kept >kept
mkdir -p sealed/early.cs.json
touch sealed/src
ln -s "$PWD/private" linked
echo old >private
chmod 600 private
name=$(printf 'n%.0s' {1..250})
mkdir -p links empty "src/folder.cs"
ln -s b links/a
ln -s ../result links/b
ln -s ../src/sub links/sub
echo 'dash;' | tee ./- >./-x
echo - >dashes
echo 'cr;' | tee $'cr\r' >cr
printf 'cr\r\0' >cr0
echo 'not taken;' >src/a.cs.orig
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

# Exit code | arguments | the standard error: a pattern for its only line, or nothing | what of the
# standard output, or of what the arguments leave in the file `result`, is looked for.
while IFS='|' read -r code arguments pattern wanted; do
    rm -rf result
    eval "timeout 20 \"$parsecs\" $arguments" >stdout 2>err
    got=$?
    [ "$got" -eq "$code" ] || fail "$arguments: exit code $got"
    [[ $(cat err) =~ ^(parsecs: )?$pattern$ ]] || fail "$arguments: $(cat err)"
    [ ! -e result ] || mv result stdout
    [ -z "$wanted" ] || grep -q -- "$wanted" stdout || fail "$arguments: $(head -c 2000 stdout)"
done <<TABLE
0|src/a.cs||"contents": "a"
0|- <src/a.cs||"filePath": "/dev/stdin"
0|--strict <(cat src/sub/b.cs)||"char c = 'x'"
0|--strict - </dev/null||"contents": "namespace global"
0|--outline --color=always src/a.cs||36mline
0|--outline src/a.cs -o result||^ *1  *line  a$
0|--outline src/a.cs -o /dev/stdout||^ *1  *line  a$
0|-j1 --jsonl --files-from list|early.cs:4: .*parsecs: 2 files parsed, 1 of them stopped early|src/a.cs.,"id":2,
0|-j 9 -0 --jsonl --files-from - <list0|early.cs:4: .*parsecs: 2 files parsed, 1 .*|^{"file":"src/a...u000a.*,"id":2,
0|--strict renamed.cs|renamed.cs:3: stopped early, as .*|
0|--strict records.cs|records.cs: stopped early, as .*|
0|--outline records.cs||class Lost
0|--outline \$'c1\\u009Bx.cs'||filepath  c1 x.cs$
0|--jsonl - /dev/stdin < <(cat src/a.cs)||"text":"a"
0|early.cs|early.cs:4: stopped early, .*|"error: NULL parent branch"
0|--traces src/a.cs|the final data is a; b|"contents": "a"
0|--version||^parsecs [0-9]
0|--html - src/a.cs||^<!doctype html>
0|-o linked src/a.cs||
0|-o links/a --outline src/a.cs||line  a$
0|-o - --outline -- -x||line  dash$
0|--outline --files-from dashes </dev/null||line  dash$
0|-0 --jsonl --files-from cr0||^{"file":"cr.u000d","id":0,
0|--into fresh --outline src/a.cs && mv fresh/src/a.cs.txt result|1 file parsed|line  a$
0|--into fresh --jsonl src/a.cs && mv fresh/src/a.cs.jsonl result|1 file parsed|^{"format"
0|--into fresh --jsonl links/sub/../a.cs && mv fresh/src/a.cs.jsonl result|1 file parsed|links/sub
0|--into unused empty && test -d unused|0 files parsed|
0|--jsonl -o result empty|0 files parsed|^{"format"
0|--outline src/a.cs -o result <&- 2>&-||^ *1  *line  a$
1|--jsonl -o result missing.cs src/a.cs|missing.cs: .*: 1 file parsed, 1 could not be read|"id":2
1|--jsonl src missing.cs|src/gone.cs: .*missing.cs: .*: 3 files parsed, 2 could not be read|"id":2
0|-o $name src/a.cs && mv $name result||"contents": "a"
1|given..up.cs|given..up.cs: given up: it closes more sections than it opens|
1|missing.cs|missing.cs: No such file or directory|
1|/dev/zero|/dev/zero: is a device|
1|/proc/self/mem|/proc/self/mem: Input/output error|
1|-o kept missing.cs|missing.cs: No such file or directory|
1|--html kept missing.cs|missing.cs: No such file or directory|
1|--jsonl -o kept missing.cs /proc/self/mem|missing.cs: .*parsecs: 0 files parsed, .*|
0|--outline given..up.cs||line  #endif
0|--outline cut.cs|cut.cs:2: kept one branch of this #if, and of 1 more, as braces .*|class  class A$
0|--jsonl cut.cs src/a.cs|cut.cs:2: .*parsecs: 2 files parsed, 1 of them without some branches of #if|"C"
1|\$'a\\e\\x7F\\u009B.cs'|a\?\?\?.cs: No such file or directory|
2||nothing to parse: .*|
2|--strict --outline src/a.cs|--outline and --strict are two forms: use one|
2|--declarations src/a.cs|--declarations needs --outline|
2|--max-bytes 100 --jsonl src/a.cs|--max-bytes needs --outline|
2|--outline --max-bytes 100 --into out src/a.cs|--max-bytes is for one output .*|
2|--otline|no option --otline: did you mean --outline\?|
2|-x|no option -x, see parsecs --help|
2|--jobs=0 src/a.cs|--jobs takes a number from 1 to 1000, not 0|
2|--strict=x|--strict takes no value|
2|src/a.cs -o|-o needs a value: FILE|
2|--color red|--color takes auto.always.never, not red|
2|-0 src/a.cs|-0 needs --files-from|
2|--files-from missing --jsonl|missing: No such file or directory|
2|--files-from - --jsonl -|standard input cannot be both .*|
2|src|src is a folder: .*: use --into DIR .*, or --jsonl|
2|--strict -o kept src/a.cs src/sub/b.cs|several files .*: use --into DIR .*|
2|--strict --files-from list src/a.cs|a list of files would make .*|
2|--db new --into out src/a.cs|--db FILE tells the place: .*|
2|-o new/ src/a.cs|-o new/ is a folder: use --into new/|
2|-o src src/a.cs|-o src is a folder: use --into src|
2|-o kept --into out src/a.cs|-o and --into are two places: use one|
2|--into kept src/a.cs|--into kept is no folder: use -o FILE .*|
2|--into out -|--into: standard input .*|
2|--into out /dev/null|--into: /dev/null lies outside .*|
2|--html src/a.cs src/a.cs|src/a.cs: is an input, .*|
2|--db - src/a.cs|--db needs a file: .*|
2|--jsonl taken >>taken/a.cs|standard output: is an input, .*|
2|--outline taken/a.cs - <src/a.cs 1<>taken/a.cs|standard output: is an input, .*|
2|--html out.html -o kept src/a.cs|--html FILE tells the place: .*|
2|--link x:{path} --outline src/a.cs|--link needs --html|
2|--html new --link JavaScript:{path} src/a.cs|--link takes no addresses that begin with javascript:|
2|--html new --link \$'java\tscript:{path}' src/a.cs|--link takes a whole address, .*|
2|--html new --link {path}:{line} src/a.cs|--link takes a whole address, .*|
2|--html new --link https://host/{line} src/a.cs|--link needs a .path.|
2|--html new --link x:{path}:{row} src/a.cs|--link knows .path., .line. and .column., not .row.|
2|-o ./src/../src/a.cs src/a.cs|./src/../src/a.cs: is an input, .*|
3|src/a.cs >/dev/full|standard output: No space left on device|
3|src/a.cs >&-|standard output: Bad file descriptor|
3|--html /dev/full src/a.cs|/dev/full: No space left on device|
3|-o /dev/full src/a.cs|/dev/full: No space left on device|
3|-o kept/x src/a.cs|kept/x: Not a directory|
3|--into sealed src/a.cs early.cs|sealed/src: Not a directory.*sealed/early.cs.json: .*parsecs: 0 files parsed, 2 could not be written|
TABLE
[ "$(cat kept) $(cat taken/a.cs)" = "kept a;" ] || fail "an output file was destroyed"
[ "$(head -c 1 private) $(stat -c %a private)" = "[ 600" ] && [ -L linked ] || fail "a link's target"

# What a folder stands for, and where its outputs go.
"$parsecs" -j2 --jsonl src early.cs src/../src/a.cs ./early.cs given..up.cs ./given..up.cs >stdout 2>err
[ "$? $(grep -c '^{"format"' stdout) $(grep -o '^{"file":.*,"id":0,' stdout | cut -d'"' -f4 | xargs -d'\n')" = \
    '1 1 src/a\ src/a.cs src/sub/b.cs early.cs src/../src/a.cs given..up.cs' ] || fail "$(head stdout)"
[ "$(tail -n 1 err)" = "parsecs: 6 files parsed, 1 of them stopped early, 1 could not be read" ] &&
    grep -q '^parsecs: src/gone.cs: No such file' err || fail "counts: $(cat err)"
umask 027
"$parsecs" --into out ./early.cs src/sub "$PWD/src/a.cs" "../${PWD##*/}/deep.cs" 2>err || fail "$(cat err)"
[ "$(cd out && find . -type f | sort | xargs)" = \
    "./deep.cs.json ./early.cs.json ./src/a.cs.json ./src/sub/b.cs.json" ] || fail "$(find out)"
[ "$(stat -c %a out/early.cs.json)" = 640 ] || fail "the mode of a new file: $(ls -l out)"
"$parsecs" src/sub/b.cs | cmp - out/src/sub/b.cs.json || fail "a file in a folder differs"
echo 'a;' >early.cs.json
"$parsecs" --into . early.cs.json early.cs 2>err
[ "$? $(cat early.cs.json)" = "2 a;" ] || fail "an output replaced an input"

# Who may not keep the group of a file that is replaced gives it no rights.
if [ "$(id -u)" = 0 ]; then
    mkdir -m 777 shared && echo old >shared/out && chmod 666 shared/out && chmod 755 .
    setpriv --reuid=65534 --regid=65534 --clear-groups "$parsecs" --outline -o shared/out - <early.cs 2>err
    [ "$(stat -c '%u %a' shared/out)" = "65534 606" ] || fail "a group: $(ls -l shared) $(cat err)"
fi

# Standard output has what was there before, and closed descriptors are nobody's.
{ echo before && "$parsecs" --outline -o /dev/stdout src/a.cs; } >stdout
[ "$(head -n 1 stdout) $(wc -l <stdout)" = "before 6" ] || fail "-o /dev/stdout: $(cat stdout)"
"$parsecs" early.cs >stdout 2>err
"$parsecs" -o closed early.cs <&- 2>&-
cmp stdout closed || fail "closed descriptors"

# Who ignores a signal goes on ignoring it.
mkfifo awaited.cs
(trap '' HUP && exec "$parsecs" --outline awaited.cs >stdout) &
exec 9>awaited.cs # waits until it is being read
kill -HUP $! && echo 'a;' >&9 && exec 9>&- && wait $! || fail "nohup: exit code $?"

# What terminals show, and what pipes do.
"$parsecs" --jsonl long.cs 2>err | head -n 1 >stdout
[ "${PIPESTATUS[0]} $(cat err)" = "141 " ] || fail "closed pipe: $(cat err)"
timeout 20 env --block-signal=PIPE "$parsecs" --jsonl long.cs 2>err | head -n 1 >stdout
[ "${PIPESTATUS[0]} $(cat err)" = "141 " ] || fail "closed pipe, blocked signal: $(cat err)"
terminal() { script -qec "stty cols 28 && $*" /dev/null </dev/null; }
terminal "NO_COLOR=1 $parsecs --outline src/sub/b.cs" | grep -q $'^     1      line  char c \.\.\.\r$' ||
    fail "outline cut to a terminal"
terminal "$parsecs --outline src/sub/b.cs" | grep -q $'\x1B\\[36mline' || fail "colour"
terminal "NO_COLOR= $parsecs --outline src/a.cs" | grep -q $'\x1B' || fail "an empty NO_COLOR"
terminal "$parsecs --outline --color never src/a.cs" | grep -q $'\x1B' && fail "colour never"
terminal "$parsecs --outline -o plain src/sub/b.cs; $parsecs --outline --into plains src/sub/b.cs" >stdout
grep -q "line  char c = 'x'$" plain && cmp plain plains/src/sub/b.cs.txt || fail "a file like a terminal"
mkfifo slow.cs
for place in "--into out" "--html page.html"; do
    { sleep 1 && echo 'a;'; } >slow.cs &
    terminal "$parsecs $place src/a.cs slow.cs" | grep -q '2 of 2 files, .* MB/s, 0 s left' || fail "progress: $place"
done
[ "$(ulimit -s 1024 && "$parsecs" --outline deep.cs | wc -l)" -gt 40000 ] || fail "deep outline"

"$parsecs" --help | awk 'length > 80 { exit 1 }' || fail "help is too wide"
"$parsecs" --completion bash >completion
complete=$(. ./completion && COMP_WORDS=(parsecs --color = a) COMP_CWORD=3 && _parsecs && echo "${COMPREPLY[*]}" &&
    COMP_WORDS=(parsecs --ou) COMP_CWORD=1 && _parsecs && echo "${COMPREPLY[*]}" &&
    COMP_WORDS=(parsecs --color =) COMP_CWORD=2 && _parsecs && echo "${COMPREPLY[*]}" &&
    COMP_WORDS=(parsecs -o lo) COMP_CWORD=2 && _parsecs && echo "${COMPREPLY[*]}" &&
    COMP_WORDS=(parsecs --into l) COMP_CWORD=2 && _parsecs && echo "${COMPREPLY[*]}")
[ "$complete" = $'auto always\n--outline --output\nauto always never\nlong.cs\nlinks' ] || fail "completion: $complete"
[ -z "$(find . -name '.parsecs-*')" ] || fail "temporary files are left"
exit $((failures > 0))
