#!/usr/bin/env bash
# tags_test.sh PARSECS: tags as they are written, and as readtags and Vim take them where they are.
set -u
here=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
parsecs=$1
cd "$folder" || exit 1
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

# The published format.
cp "$here/golden/editors.cs" .
"$parsecs" --tags tags editors.cs || fail "editors.cs"
grep -v '^!_TAG_PROGRAM_VERSION' tags | diff - "$here/golden/tags" >&2 || fail "the format has changed"
"$parsecs" --tags - editors.cs | cmp - tags || fail "standard output differs"

# Line ends and bytes that editors take in different ways.
mkdir -p src/sub out
printf '\xEF\xBB\xBFclass Mark {\r\n  int same;\r\n}\r\nclass Pair {\r\n  int same; // gr\xC3\xB6\xC3\x9Fe\r\n}' >src/pairs.cs
printf 'class Mixed {\r\n  int pair;\r\n  int feed;\n  int pair2;\r\n}\n' >src/mixed.cs
printf 'class Old {\n  int cost; // 5 \xA3\n  int\x0C paid;\n}\n' >src/sub/old.cs
printf 'class Return {\r  int lone;\r}\n' >src/sub/return.cs
printf 'class Odd {\n  string a = "x;\\"", b = "?", c = "^$";\n\n\tint tab;\n  int tab2;\n}' >'src/a b.cs'
"$parsecs" --tags tags editors.cs src 2>err || fail "$(cat err)"
LC_ALL=C sort -c tags || fail "not sorted by bytes"
while read -r name address; do
    grep -q "^$name	[^	]*	$address;\"" tags || fail "$name: $(grep "^$name	" tags)"
done <<'TABLE'
Mark	/^class Mark {$/
Mixed	0;/^class Mixed {/
feed	/^  int feed;$/
pair2	3;/^  int pair2;/
cost	2
paid	3
lone	2
tab	/^	int tab;$/
TABLE

# Where an editor finds the sources.
paths() { grep -v '^!' "$1" | cut -f2 | sort -u | xargs; }
ln -s out link
while IFS='|' read -r place arguments wanted; do
    "$parsecs" --tags "$place" $arguments 2>err || fail "$arguments: $(cat err)"
    [ "$(paths "$place")" = "$wanted" ] || fail "$place, $arguments: $(paths "$place")"
done <<TABLE
out/tags|src/mixed.cs ./src//sub/../pairs.cs|../src/mixed.cs ../src/pairs.cs
link/tags|src/mixed.cs|../src/mixed.cs
tags.all|$folder/src/mixed.cs|src/mixed.cs
src/tags|src/mixed.cs $folder/editors.cs|$folder/editors.cs mixed.cs
TABLE

# A slip must not cost a source.
"$parsecs" --tags editors.cs src/mixed.cs 2>err
[ $? -eq 2 ] && cmp -s editors.cs "$here/golden/editors.cs" || fail "a source was replaced"
grep -q 'is no tags file' err || fail "$(cat err)"
touch fresh && "$parsecs" --tags fresh src/mixed.cs 2>err && grep -q '^Mixed' fresh || fail "an empty file"

if command -v readtags >/dev/null; then
    got=$(readtags -t tags -e Same | cut -f5- | sort | xargs -d'\n')
    [[ $got == *"class:Shop.Till.Other"*"signature:()"*"interface:Shop.Till.Till.IDesk"* ]] || fail "readtags: $got"
    [ "$(readtags -t tags -l | wc -l)" = "$(grep -vc '^!' tags)" ] || fail "readtags reads other tags"
    [ "$(readtags -t tags 'operator int' | wc -l)" = 1 ] || fail "readtags: a name with a blank"
else
    echo "skipped: readtags, which is not here"
fi

# To each tag, and it must be on its line.
if ! vim --version 2>/dev/null | grep -q +eval; then
    echo "skipped: Vim, which is not here"
    exit $((failures > 0))
fi
cat >jumps.vim <<'VIM'
set tags=tags encoding=utf-8 fileencodings=ucs-bom,utf-8,latin1 noswapfile
let told = []
for name in uniq(map(filter(readfile('tags'), 'v:val !~ "^!"'), 'split(v:val, "\t")[0]'))
    let pattern = '^' . escape(name, '\.*[]~^$') . '$'
    let tags = taglist(pattern)
    for i in range(len(tags))
        if tags[i].filename =~ 'return.cs' | continue | endif
        enew!
        silent execute (i + 1) . 'tag /' . pattern
        let right = line('.') == tags[i].line && expand('%:t') == fnamemodify(tags[i].filename, ':t')
        call add(told, (right ? 'right ' : 'wrong ') . name . ' ' . expand('%') . ' ' . line('.'))
    endfor
endfor
call writefile(told, 'told')
quitall!
VIM
timeout 60 vim -N -u NONE -i NONE -es -S jumps.vim </dev/null >log 2>&1
[ "$(grep -c ^right told)" = "$(grep -v '^!' tags | grep -vc return.cs)" ] ||
    fail "Vim: $(grep -v ^right told) $(wc -l <told) jumps $(cat log)"
exit $((failures > 0))
