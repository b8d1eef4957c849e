#!/usr/bin/env bash
# exclude_test.sh PARSECS: what is left out of folders; git is asked whether that is what it ignores.
set -u
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
parsecs=$1
mkdir "$folder/tree"
cd "$folder/tree" || exit 1
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

# found ARGUMENT...: the files that were parsed.
found() { "$parsecs" --jsonl "$@" 2>err | sed -n 's/^{"file":"\([^"]*\)","id":0,.*/\1/p' | sed 's|^\./||' | sort | xargs -d'\n'; }
for file in a.cs a.g.cs gen/a.cs gen/kept.cs src/a.cs src/gen/b.cs src/deep/gen/c.cs 'src/a b.cs' 'src/[z].cs' \
    'src/!n.cs' 'src/#h.cs' src/ab.cs src/B.cs src/deep/x.cs src/deep/deeper/x.cs; do
    mkdir -p "$(dirname "$file")" && echo 'a;' >"$file"
done
all=$(found --no-ignore .)

# Each line: patterns, parted by ',', of a .gitignore in the folder and of one in src, and what is left.
git init -q . 2>/dev/null
while IFS='|' read -r patterns below; do
    tr ',' '\n' <<<"$patterns" >.gitignore
    tr ',' '\n' <<<"$below" >src/.gitignore
    if [ -d .git ]; then
        wanted=$(git ls-files -zco --exclude-standard '*.cs' | tr '\0' '\n' | LC_ALL=C sort | xargs -d'\n')
        [ "$(found . | tr ' ' '\n' | LC_ALL=C sort | xargs)" = "$(tr ' ' '\n' <<<"$wanted" | LC_ALL=C sort | xargs)" ] ||
            fail "$patterns | $below: $(found .), and not $wanted"
    fi
    [ "$(found --no-ignore .)" = "$all" ] || fail "--no-ignore: $patterns"
done <<'TABLE'
*.g.cs|
gen/|
/gen/|
gen|!gen
gen/*,!gen/kept.cs|
gen/,!gen/kept.cs|
src/gen|
a.cs/|
/a.cs|a.cs
src/a.cs,!a.cs|
**/x.cs|
src/**/x.cs|
src/**|
src/deep/**/deeper/**|
src/*/x.cs|
*,!*/,!x.cs|
[a-c].cs|
[!a]*|
[[:upper:]].cs|
\[z\].cs,\!n.cs,\#h.cs|
#h.cs,!n.cs|
?b.cs,a b.cs  |a\ b.cs
ab.cs |
a*.cs|!ab.cs
[]z[]*,*[b|
TABLE
printf '\xEF\xBB\xBFa.cs\r\n\r\n#b\r\nB.cs' >.gitignore && : >src/.gitignore
[[ " $(found .) " != *[\ /][aB].cs* ]] || fail "line ends: $(found .)"
rm .gitignore src/.gitignore

# What everybody leaves out, and how to have it.
mkdir -p src/bin/obj node_modules objects .git
touch src/bin/b.cs src/bin/obj/o.cs node_modules/n.cs objects/o.cs .git/g.cs
[ "$(found . | xargs -n 1 | grep -cE 'bin/|node_modules|[.]git/')" = 0 ] && [[ $(found .) == *objects/o.cs* ]] ||
    fail "everybody's: $(found .)"
while IFS='|' read -r arguments wanted; do
    eval "got=\$(found $arguments)"
    [ "$got" = "$wanted" ] || fail "$arguments: $got $(cat err)"
done <<TABLE
src/bin|src/bin/b.cs
--exclude '!bin/' src/bin/..  --exclude '!obj/' --exclude 'src/[!b]*'|src/bin/../bin/b.cs src/bin/../bin/obj/o.cs
src/bin/obj node_modules/n.cs|node_modules/n.cs src/bin/obj/o.cs
--exclude 'a*' --exclude src/ .|gen/kept.cs objects/o.cs
--exclude /gen src/deep gen|src/deep/deeper/x.cs src/deep/gen/c.cs src/deep/x.cs
--exclude deeper --exclude c.cs src/deep src/deep/deeper/x.cs|src/deep/x.cs
--exclude /x.cs '$folder/tree/src/deep' --exclude gen|$folder/tree/src/deep/deeper/x.cs $folder/tree/src/deep/x.cs
--exclude '*.g.cs' a.g.cs a.cs|a.cs
--files-from <(printf '%s\n' a.cs gen/a.cs) --exclude gen/|a.cs
TABLE
(cd objects && got=$(found --exclude /x.cs --exclude tree/ --exclude src ../src/deep) &&
    [ "$got" = "../src/deep/deeper/x.cs ../src/deep/gen/c.cs" ]) || fail "outside of where one is"

# Files above an input are followed up to the repository's folder, and not by way of links.
printf 'x.cs\n/src/deep/gen/\n' >.gitignore
echo '*' >../.gitignore
[ "$(found src/deep)" = "" ] || fail "above: $(found src/deep)"
(cd src && [ "$(found deep)" = "" ]) || fail "above, from within"
mv .git git && [ "$(found src/deep | wc -w)" = 3 ] || fail "no repository: $(found src/deep)"
mv git .git
rm .gitignore && ln -s ../.gitignore .gitignore && [ "$(found src/deep | wc -w)" = 3 ] || fail "a link"
rm .gitignore ../.gitignore

# What is left out by now leaves a database.
rows() { sqlite3 it.db 'SELECT group_concat(path, " ") FROM (SELECT path FROM file ORDER BY path)'; }
"$parsecs" --db it.db src/deep a.cs 2>/dev/null
"$parsecs" --db it.db --exclude gen/ --exclude a.cs ./src/deep/ a.cs 2>/dev/null
[ "$(rows)" = "src/deep/deeper/x.cs src/deep/x.cs" ] || fail "database: $(rows)"
"$parsecs" --db it.db --exclude x.cs src/deep/deeper 2>/dev/null
[ "$(rows)" = "src/deep/x.cs" ] || fail "database, one folder: $(rows)"
"$parsecs" --db it.db src/deep 2>/dev/null
[ "$(rows)" = "src/deep/deeper/x.cs src/deep/gen/c.cs src/deep/x.cs" ] || fail "database, back: $(rows)"
exit $((failures > 0))
