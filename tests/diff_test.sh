#!/usr/bin/env bash
# diff_test.sh PARSECS SAMPLES DOCUMENT: what has changed, between files, folders and revisions.
set -u
here=$(cd "$(dirname "$0")" && pwd)
parsecs=$(realpath "$1")
samples=$(cd "$2" && pwd)
document=$(cd "$(dirname "$3")" && pwd)/${3##*/}
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
mkdir bin
ln -s "$parsecs" bin/parsecs
PATH=$PWD/bin:$PATH
export GIT_CONFIG_GLOBAL=$PWD/gitconfig GIT_CONFIG_NOSYSTEM=1
git config --global user.name n
git config --global user.email n@example.org
git config --global init.defaultBranch main
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

# Two releases of the shop, and work on the next one.
repository() {
    mkdir "$1" && cd "$1" && git init -q && cp -r "$samples/shop" . && git add . && git commit -qm 1 && git tag v1
    sed -i 's/count -= 1;/--count;/; /public/s/int count)/int count, bool now = false)/' shop/Stock.cs
    sed -i 's/Promote/Advance/; s/Rank { New,/Rank { New, Lapsed,/' shop/Customer.cs
    sed -i 's/one + one/one + one + one/' shop/MoneyTests.cs
    sed -i 's/long cents, string/in long cents, string/; s/^using System;/&\n\n\/\/ Cents.\n/' shop/Money.cs
    git mv shop/Documents.cs shop/Papers.cs
    sed -i '/Obsolete("Take/,/^    }/d' shop/Shipping.cs
    git add . && git commit -qm 2 && git tag v2
    sed -i 's/--count/count--/' shop/Stock.cs
    cd ..
}
repository shop

# Each command in the document, and behind it the answer.
awk '/^```/ { inside = !inside; if (inside) { ++n; command = /sh/; if (!command) printf "" >("answer" n - 1) } next }
    inside && command { print >("question" n); print n >"questions" }
    inside && !command { print >("answer" n - 1) }' "$document"
for n in $(sort -u questions); do
    (cd shop && bash "../question$n") 2>&1 | diff - "answer$n" >&2 || fail "$(cat "question$n")"
done
[ "$(sort -u questions | wc -l)" -ge 5 ] || fail "examples are missing"

# The rows of a published format: its version changes with them.
(cd shop && parsecs --diff --git v1 v2 --jsonl) | diff - "$here/golden/diff.jsonl" >&2 || fail "the rows differ"

mkdir -p old/sub new/sub
echo 'class A { void F() { a(); } }' | tee old/a.cs >new/a.cs
echo 'class B { void G() { a(); } }' >old/sub/b.cs
echo 'class B { void G() { b(); } }' >new/sub/b.cs
echo 'class C { int c = 1; }' | tee old/c.cs >new/sub/c.cs
echo 'class E { } } } class F { }' >old/e.cs
echo 'class E { } } } class G { }' >new/e.cs
mkdir same && cp old/a.cs same && ln old/a.cs same/linked.cs
cp -r shop odd
odd=$'q\"\n \xFF.cs'
(cd odd && cp shop/Money.cs "$odd" && ln -s shop/Money.cs link.cs && git add . && git commit -qm odd &&
    sed -i 's/Compare/Contrast/' "$odd" && rm link.cs && echo 'class L { }' >link.cs &&
    git -c protocol.file.allow=always submodule add -q "$PWD/../shop" sub.cs 2>/dev/null)
conflict() { (cd conflict && git checkout -q -b "$1" v2 && sed -i "s/taken = \[\]/taken = new $1()/" shop/Shipping.cs && git commit -qam "$1"); }
cp -r shop conflict && git -C conflict checkout -qf v2 && conflict one && conflict two
git -C conflict merge -q one >/dev/null 2>&1

# Exit code | arguments | all lines of the standard error, joined by blanks: a pattern | what of
# the standard output is looked for; ! for nothing there.
while IFS='|' read -r code arguments pattern wanted; do
    timeout 20 bash -c "$arguments" >stdout 2>err
    got=$?
    [ "$got" -eq "$code" ] || fail "$arguments: exit code $got: $(cat err)"
    [[ $(xargs -d'\n' <err) =~ ^$pattern$ ]] || fail "$arguments: $(cat err)"
    case $wanted in
        !) [ ! -s stdout ] || fail "$arguments: $(cat stdout)" ;;
        ?*) grep -q -- "$wanted" stdout || fail "$arguments: $(cat stdout)" ;;
    esac
done <<'TABLE'
0|parsecs --diff old/a.cs new/a.cs||!
0|parsecs --diff old/a.cs old/../old/a.cs||!
0|parsecs --diff --jsonl old/a.cs same/linked.cs||^{"format":"parsecs-diff","version":1}$
1|parsecs --diff old/sub/b.cs new/sub/b.cs||^body       method       B.G  new/sub/b.cs:1  (was old/sub/b.cs:1)$
1|parsecs --diff - new/sub/b.cs <old/sub/b.cs||(was /dev/stdin:1)
1|parsecs --diff <(cat old/sub/b.cs) new/sub/b.cs||B.G
1|parsecs --diff old/a.cs /dev/null||^removed    class        A  old/a.cs:1$
1|parsecs --diff --jsonl old/a.cs /dev/null||"name":"F","file":null,"line":null,"endLine":null,"oldFile":"old/a.cs","oldLine":1,"oldEndLine":1}$
1|parsecs --diff ./old/ new|parsecs: ./old/e.cs:1: stopped early, .* parsecs: new/e.cs:1: .*|^moved      file         new/sub/c.cs:1  (was ./old/c.cs:1)$
1|parsecs --diff --color=always old/sub new/sub||36mbody 
1|parsecs --diff -o result old/sub new/sub; cat result; exit 1||B.G
2|parsecs --diff -o old/a.cs old/a.cs new/a.cs|parsecs: old/a.cs: is an input, .*|!
2|parsecs --diff old new/a.cs|parsecs: --diff takes two files or two folders: old and .*|!
2|parsecs --diff old missing.cs|parsecs: .*|!
2|parsecs --diff old/a.cs missing.cs|parsecs: missing.cs: No such file or directory|!
2|parsecs --diff old|parsecs: --diff takes two files or two folders, .*|!
2|parsecs --diff - -|parsecs: standard input cannot be both states|!
2|parsecs --diff --outline old new|parsecs: --diff goes with --jsonl, .*|!
2|parsecs --diff --into out old new|parsecs: --diff makes one output: .*|!
2|parsecs --diff --files-from old/a.cs old new|parsecs: --diff takes no list of files|!
2|parsecs --git old|parsecs: --git needs --diff|!
3|parsecs --diff old new >/dev/full|.*parsecs: standard output: No space left on device|
3|parsecs --diff old/a.cs /proc/self/mem|parsecs: /proc/self/mem: Input/output error|!
3|ln -s nowhere new/gone.cs; parsecs --diff old new|.*new/gone.cs: No such file .*|B.G
0|cd shop; parsecs --diff --git v2 v2||!
1|cd shop; parsecs --diff --git v1 v2||^moved      file         shop/Papers.cs
1|cd shop/shop; parsecs --diff --git||^body       method       Shop.Stock.Take  shop/Stock.cs:
1|cd shop; parsecs --diff --git v2||^body       method       Shop.Stock.Take  shop/Stock.cs:
1|cd shop/shop; git config diff.relative true; GIT_LITERAL_PATHSPECS=1 parsecs --diff --git v1..v2||Shop.Customer.Advance
1|cd odd; parsecs --diff --git --jsonl HEAD||"name":"ContrastTo","file":"q...u000a .*.cs"
1|cd odd; parsecs --diff --git||^added      class        L  link.cs:1$
1|cd conflict; parsecs --diff --git||^body       class        Shop.Shipping.Courier
2|cd shop; parsecs --diff --git -- --output=x|parsecs: --output=x is no revision|!
2|cd shop; parsecs --diff --git a b c|parsecs: --diff --git takes two revisions at most|!
2|cd shop; parsecs --diff --git nothing|fatal: .*parsecs: git diff failed|!
2|cd /; GIT_DIR=/nowhere parsecs --diff --git|fatal: .*parsecs: git .* failed|!
2|cd shop; PATH=../bin parsecs --diff --git|parsecs: git cannot be run: .*|!
TABLE
[ ! -e shop/x ] && [ "$(git -C shop status --porcelain)" = " M shop/Stock.cs" ] || fail "the repository was changed"

# A blob that is not there is named, and all others are compared.
git -C odd rev-parse HEAD:shop/Money.cs | sed 's|..|odd/.git/objects/&/|' | xargs rm -f
(cd odd && parsecs --diff --git v1 HEAD >../stdout 2>../err)
[ "$? $(grep -c Papers stdout)" = "3 1" ] && grep -q 'Money.cs (.*: is not in the repository' err || fail "$(cat err)"

# No number of overloads makes it slow.
seq 100000 | sed 's/.*/void F(A& a) { a(&); } void G(int a) { a(&); }/; 1i class C {' >old/many.cs
seq 100000 -1 1 | sed 's/.*/void F(A& b) { b(&); } void G(int a) { b(&); }/; 1i class C {' >new/many.cs
timeout 300 parsecs --diff old/many.cs new/many.cs >stdout
[ "$? $(wc -l <stdout)" = "1 300000" ] || fail "overloads: $(wc -l <stdout)"
exit $((failures > 0))
