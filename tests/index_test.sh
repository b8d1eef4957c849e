#!/usr/bin/env bash
# index_test.sh PARSECS SAMPLES QUESTIONS: databases, as they are made, asked and brought up to date.
set -u
folder=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$folder"' EXIT
parsecs=$1
cp -r "$2/shop" "$folder/shop"
cp "$3" "$folder/questions.md"
cd "$folder" || exit 1
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }
ask() { sqlite3 -cmd '.timeout 5000' "$@" 2>&1; }

# Each piece of SQL in the document, and behind it the answer.
"$parsecs" --db shop.db shop 2>err || fail "first run: $(cat err)"
awk '/^```/ { inside = !inside; if (inside) { ++n; sql = /sql/; if (!sql) printf "" >("answer" n - 1) } next }
    inside && sql { print >("question" n); print n >"questions" }
    inside && !sql { print >("answer" n - 1) }' questions.md
for n in $(sort -u questions); do
    ask shop.db <"question$n" | diff - "answer$n" >&2 || fail "$(cat "question$n")"
done
[ "$(sort -u questions | wc -l)" -ge 25 ] || fail "questions are missing"

cat >shop/types.cs <<'SOURCE'
class D<T>(int d = a ? b : c, string e = "\"):") : global::N.E<F, G>(d), H where T : I {}
enum J : byte {}
class K<T> where T : L {}
class M { void N() { while (a) { int O() { for (;;) { if (b) c(); } } } d(); } }
SOURCE

# What a database says, whatever its ids are.
cat >all.sql <<'SQL'
SELECT path, line, column, kind, function, text FROM uses
WHERE word = 'shop OR cs OR public OR return OR if OR f' ORDER BY path, id;
SELECT path, bytes, mtime, hash, stopped, last - first FROM file ORDER BY path;
SELECT path, branches, cut, lastComment - firstComment FROM file ORDER BY path;
SELECT path, line, endLine, kind, declares, outline FROM outline ORDER BY path, id;
SELECT name, declares, scope, modifiers, attributes, path, line, text FROM definitions
ORDER BY path, id;
SELECT path, line, text FROM comments WHERE word = 'a OR the OR is' ORDER BY path, id;
SELECT name FROM definitions WHERE name IN
    (SELECT name FROM name_fts WHERE name MATCH 'ers OR ock') ORDER BY path, id;
SELECT name, path, size, branches, parameters FROM biggest ORDER BY path, id;
SELECT path, line, body FROM function JOIN node USING (id) JOIN file ON file.id = node.file
ORDER BY path, id;
SELECT base, name, path FROM derived ORDER BY path, id, base;
SELECT name FROM name ORDER BY name;
SELECT count(*) FROM function UNION ALL SELECT count(*) FROM base;
SELECT count(rowid) FROM text_fts WHERE text_fts = 'class'; -- whatever rows are there
SELECT count(rowid) FROM comment_fts WHERE comment_fts = 'is';
SELECT count(rowid) FROM name_fts WHERE name_fts = 'ote';
SQL
says() { ask "$1" <all.sql; }
same_as_anew() {
    rm -f anew.db
    "$parsecs" --db anew.db shop 2>/dev/null
    [ "$(ask shop.db "INSERT INTO text_fts(text_fts) VALUES ('integrity-check');
        INSERT INTO comment_fts(comment_fts) VALUES ('integrity-check');
        INSERT INTO name_fts(name_fts) VALUES ('integrity-check'); PRAGMA integrity_check")" = ok ] ||
        fail "$1: the database is not sound"
    [ "$(says shop.db)" = "$(says anew.db)" ] || fail "$1: $(diff <(says shop.db) <(says anew.db))"
}

# Changed, new, vanished, touched, moved to another folder, and as they were.
before=$(ask shop.db "SELECT first FROM file WHERE path = 'shop/Money.cs'")
sed -i 's/Promote/Demote/' shop/Customer.cs
rm shop/Stock.cs
mkdir shop/sub
mv shop/Documents.cs shop/sub
touch shop/Money.cs
printf 'a;\n}\nc;' >shop/early.cs
"$parsecs" --db shop.db ./shop/ shop/types.cs 2>err
grep -q 'early.cs:3: stopped early' err || fail "update: $(cat err)"
grep -q '4 files parsed, .* 3 unchanged$' err || fail "a touched file counts: $(cat err)"
same_as_anew "update"
[ "$(ask shop.db "SELECT first FROM file WHERE path = 'shop/Money.cs'")" = "$before" ] ||
    fail "a touched file's rows were made anew"
got=$(ask shop.db "SELECT name, base FROM derived WHERE path LIKE '%types.cs'" | sort | xargs)
[ "$got" = "D|E D|H J|byte" ] || fail "bases: $got"
got=$(ask shop.db "SELECT name, size, nesting, branches, loops FROM functions WHERE name IN ('N', 'O')
    ORDER BY id" | xargs)
[ "$got" = "N|5|3|3|2 O|2|1|2|1" ] || fail "functions within functions: $got"
got=$(ask shop.db "SELECT name FROM name WHERE name IN ('Promote', 'Demote', 'Stock')" | xargs)
[ "$got" = Demote ] || fail "names: $got"

cp -p shop.db kept.db
"$parsecs" --db shop.db shop 2>err
grep -q '1 file parsed, 1 of them stopped early, 6 unchanged$' err || fail "unchanged: $(cat err)"
cmp shop.db kept.db || fail "a run without changes changed the database"
ln -sf /proc/self/mem shop/early.cs # a file that can be found, and not read
rm shop/sub/Documents.cs
echo 'class P {}' >shop/still.there
"$parsecs" --db shop.db shop/early.cs shop/Money.cs shop/still.there 2>/dev/null
files() { ask shop.db "SELECT path FROM file ORDER BY path" | sed 's|shop/||' | xargs; }
[ "$(files)" = "Customer.cs Money.cs MoneyTests.cs Shipping.cs still.there sub/Documents.cs types.cs" ] || fail "some: $(files)"
"$parsecs" --db shop.db shop 2>/dev/null
[ "$(files)" = "Customer.cs Money.cs MoneyTests.cs Shipping.cs still.there types.cs" ] || fail "a folder: $(files)"

# A run that waits for its last source, until it is ended.
mkfifo never
start() {
    "$parsecs" --db "$1" shop never 2>/dev/null &
    run=$!
    for _ in $(seq 100); do compgen -G "$2" >/dev/null && break || sleep 0.05; done
}
end() { kill "-$1" $run && wait $run 2>/dev/null; }
{ echo 'class Later { void N() {' && seq -f 'Call("%.0f a text that makes the change larger than a cache");' 40000 && echo '} }'; } >shop/later.cs
old=$(says shop.db)
start shop.db shop.db-journal
[ "$(says shop.db)" = "$old" ] || fail "a reader during the run: $(says shop.db | tail -n 3)"
end KILL
[ "$(says shop.db)" = "$old" ] || fail "after a killed run: $(says shop.db | tail -n 3)"
start first.db '.parsecs-*'
end TERM
[ -z "$(find . -name 'first*' -o -name '.parsecs*')" ] || fail "an ended first run left: $(ls -A)"
(sqlite3 shop.db "PRAGMA cache_size = 1" BEGIN "UPDATE node SET text = 'x'" \
    "CREATE TABLE t AS SELECT randomblob(1000000)" ".shell kill -9 \$PPID"; true) 2>/dev/null
rm shop.db # and not its journal, which would be played back into the new one
"$parsecs" --db shop.db shop 2>/dev/null
same_as_anew "beside an old journal"

# A reader that is there when the run ends sees one state, and the run waits for it.
sqlite3 shop.db "BEGIN" "SELECT count(*) FROM node" ".shell touch reading; sleep 1" \
    "SELECT count(*) FROM node" >counts &
until [ -e reading ]; do sleep 0.02; done
echo 'class Latest {}' >shop/later.cs
"$parsecs" --db shop.db shop 2>err
wait $!
[ "$(sort -u counts | wc -l)" = 1 ] || fail "a reader saw: $(xargs <counts)"
same_as_anew "while a reader is there"

# What is refused is left as it is. File | arguments | message
echo text >text
sqlite3 other.db "CREATE TABLE t(x)"
cp shop.db format.db && sqlite3 format.db "PRAGMA user_version = 99"
head -c 30000 shop.db >short.db
cp shop.db torn.db && head -c 8192 /dev/urandom | dd of=torn.db bs=8192 seek=1 conv=notrunc status=none
: >shop/new.cs
ln -s loop loop
cp shop.db last.db && sqlite3 last.db "UPDATE node SET id = 9223372036854775807 WHERE id = (SELECT max(id) FROM node)"
for name in mine wal linked hostile; do cp shop.db $name.db; done
echo mine | tee mine.db-journal >wal.db-wal
ln -s victim linked.db-journal
echo kept >victim
# At the end of a journal may stand the name of a file that SQLite deletes with it.
{ printf '\xD9\xD5\x05\xF9\x20\xA1\x63\xD7' && head -c 504 /dev/zero && echo -n "$PWD/victim" &&
    printf '\0\0\0\x10\0\0\0\0\xD9\xD5\x05\xF9\x20\xA1\x63\xD7'; } >hostile.db-journal
long=$(printf 'n%.0s' {1..248})
while IFS='|' read -r code file arguments message; do
    cp -p "$file" before 2>/dev/null
    (cd "${folder:?}" && eval "\"$parsecs\" --db $file $arguments") 2>err
    got=$?
    [ "$got" = "$code" ] || fail "$file $arguments: exit code $got"
    grep -q "^parsecs: $message" err || fail "$file: $(cat err)"
    [ ! -f "$file" ] || cmp -s "$file" before || fail "$file was changed"
done <<TABLE
3|text|shop|text: is damaged or no database, and is left as it is
3|short.db|shop|short.db: is damaged or no database
3|torn.db|shop|torn.db: is damaged or no database
3|other.db|shop|other.db: is a database of another program, and is left as it is
3|format.db|shop|format.db: has format 99 and not 2: delete it, and it will be built anew
3|shop|shop|shop: is no file
3|loop|shop|loop: Too many levels of symbolic links
3|last.db|shop|last.db: is damaged or no database
3|mine.db|shop|mine.db-journal: is no journal of ours, and SQLite would delete it
3|wal.db|shop|wal.db-wal: is no journal of ours
3|linked.db|shop|linked.db-journal: is no journal of ours
3|hostile.db|shop|hostile.db-journal: is no journal of ours
3|$long|shop|$long: has too long a name
3|no/such.db|shop|no/such.db: No such file or directory
2|shop.db|shop -o x|--db FILE tells the place: leave out -o and --into
TABLE
[ "$(cat mine.db-journal wal.db-wal victim | xargs) $(stat -c %s hostile.db-journal)" = \
    "mine mine kept $((528 + ${#PWD} + 7))" ] || fail "files beside databases: $(ls -l)"
"$parsecs" --db "${long:1}" shop 2>/dev/null
"$parsecs" --db "${long:1}" shop 2>err
grep -q ' 7 unchanged' err || fail "the longest name: $(cat err)"

# A byte that changed by itself: refused, or without consequence.
rm -f anew.db
"$parsecs" --db anew.db shop 2>/dev/null
mv shop/new.cs newer.cs
"$parsecs" --db whole.db shop 2>/dev/null
mv newer.cs shop/new.cs
seed=${SEED:-$RANDOM}
RANDOM=$seed
size=$(stat -c %s whole.db)
refused=0
for round in {1..220}; do
    at=$(((RANDOM << 15 | RANDOM) % size))
    [ "$round" -gt 100 ] || at=$round # the header
    cp whole.db flipped.db
    byte=$(($(od -An -tu1 -j$at -N1 whole.db) ^ 1 << RANDOM % 8))
    printf "\\x$(printf %x $byte)" | dd of=flipped.db bs=1 seek=$at conv=notrunc status=none
    cp flipped.db before
    "$parsecs" --db flipped.db shop 2>err
    if [ $? = 3 ]; then
        cmp -s flipped.db before && grep -q '^parsecs: flipped.db: ' err || fail "byte $at: $(cat err)"
        refused=$((refused + 1))
    else
        [ "$(says flipped.db)" = "$(says anew.db)" ] || fail "byte $at was taken (SEED=$seed)"
    fi
done
[ $refused -gt 200 ] || fail "only $refused of 220 changed bytes were refused (SEED=$seed)"

# Absolute paths may come from anywhere; relative ones are those of the first folder for good.
mkdir elsewhere
echo 'class E {}' | tee elsewhere/e.cs >far.cs
(cd elsewhere && "$parsecs" --db ../shop.db "$folder/far.cs" && "$parsecs" --db ../shop.db .) 2>err
grep -q "was made in the folder $folder: run there, or delete it" err || fail "elsewhere: $(cat err)"
"$parsecs" --db shop.db shop 2>/dev/null
[ "$(files)" = "$folder/far.cs Customer.cs Money.cs MoneyTests.cs Shipping.cs later.cs new.cs types.cs" ] ||
    fail "elsewhere: $(files)"
# Names that the library would take for no files, and a link to what is not there yet.
ln -s behind.db link
for name in :memory: 'file:x?mode=memory' link; do
    "$parsecs" --db "$name" shop 2>/dev/null
    "$parsecs" --db "$name" shop 2>err
    grep -q ' 7 unchanged' err || fail "$name: $(cat err)"
done
[ -L link ] && [ -f behind.db ] || fail "a link was replaced"
exit $((failures > 0))
