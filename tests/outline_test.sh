#!/usr/bin/env bash
# outline_test.sh PARSECS SAMPLES: outlines of declarations, whole and within a number of bytes.
set -u
here=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
parsecs=$1
cp -r "$2" "$folder/samples"
cp "$here/golden/editors.cs" "$folder/samples"
cd "$folder" || exit 1
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

(cd samples && "$parsecs" --outline --declarations editors.cs) | diff - "$here/golden/outline" >&2 ||
    fail "the format has changed"
printf 'void Top() { int In() => 1; }\nclass C { Func<int> a = () => { int G() => 2; return 1; }; int b, c; }' >top.cs
[ "$("$parsecs" --outline --declarations top.cs)" = \
    $'top.cs\n  2 class C\n    2 Func<int> a\n    2 int b\n    2 int c\n  1 void Top()' ] ||
    fail "$("$parsecs" --outline --declarations top.cs)"
head -c 30000 /dev/zero | sed 's/\x0/class A { /g' >deep.cs
(ulimit -s 1024 && "$parsecs" --outline --declarations deep.cs 2>/dev/null | wc -l) | grep -q '^30001$' ||
    fail "deep types"

# Whatever is left out is counted, in its place.
shown() { grep -cv -e '^[^ ]' -e '^ *… ' "$1"; }
left() { grep -o '^ *… [0-9]* more$' "$1" | awk '{ sum += $2 } END { print sum + 0 }'; }
"$parsecs" --outline --declarations samples >whole 2>/dev/null
all=$(shown whole)
bytes=$(stat -c %s whole)
for most in $bytes $((bytes - 1)) 5000 3000 2000 1000 800; do
    "$parsecs" -j1 --outline --max-bytes $most samples >part 2>/dev/null || fail "$most bytes"
    "$parsecs" -j3 --outline --max-bytes $most samples 2>/dev/null | cmp - part || fail "$most bytes differ"
    [ "$(stat -c %s part)" -le $most ] || fail "$(stat -c %s part) bytes, not $most"
    [ $(($(shown part) + $(left part))) = "$all" ] || fail "$most bytes: $(shown part) and $(left part) of $all"
done
"$parsecs" --outline --max-bytes "$bytes" samples 2>/dev/null | cmp - whole || fail "what fits is whole"
"$parsecs" --outline --max-bytes 100 samples >part 2>/dev/null
[ "$(stat -c %s part)" -le 100 ] && grep -q '^… 6 more files$' part || fail "$(cat part)"

# What goes first: private members, and those of the largest files.
"$parsecs" --outline --max-bytes $((bytes - 1)) samples >part 2>/dev/null
diff whole part | grep -q '^<.*private const' && ! diff whole part | grep -qE '^<.*(public|protected|internal)' ||
    fail "not only private members are gone: $(diff whole part)"
[ "$(diff <(sed '/^samples.editors/,/^samples/d' whole) <(sed '/^samples.editors/,/^samples/d' part))" = "" ] ||
    fail "members of a smaller file are gone"
exit $((failures > 0))
