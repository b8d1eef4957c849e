#!/usr/bin/env bash
# faults_test.sh PARSECS FAILING-MEMORY [some]: in every form and with one and two threads, each
# allocation fails once alone and once with all after it, and each system call fails; with "some"
# a sample of them, more of the first than of the last. Exit code 0 means that the output is right,
# any other that it is the old one or, where a file was given up, goes without that file; then there
# is a line that says so. Nothing is left behind, and the next run makes what is right.
set -u
RANDOM=1
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
ln -s "$1" parsecs
parsecs=$PWD/parsecs
memory=$2
# next N: the number of the next one to fail.
if [ "${3:-}" = some ]; then next() { echo $(($1 + $1 / 3 + 1 + RANDOM % 2)); }; else next() { echo $(($1 + 1)); }; fi
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }
mkdir few
for n in 1 2 3; do echo "class A$n { int F() { return $n; } } // comment $n" >few/$n.cs; done
says() {
    [ -s "$1" ] && sqlite3 -cmd '.timeout 5000' "$1" "SELECT path, line, kind, outline FROM outline ORDER BY path, id;
        SELECT path, text FROM comments ORDER BY path; SELECT path, hash FROM file ORDER BY path;
        SELECT count(rowid) FROM text_fts WHERE text_fts = 'return'; PRAGMA integrity_check" 2>&1
}
"$parsecs" --db old.db few/1.cs few/2.cs 2>err # for updates, of which each has one file more
sed -i 's/A2/B2/' few/2.cs

# is_right NAME: whether the output is.
is_right() {
    case $1 in
        *db) [ "$(says out)" = "$expected" ] ;;
        *) diff -rq out good >/dev/null 2>&1 ;;
    esac
}

begin() {
    rm -rf out out-journal mark
    case $1 in
        update-db) cp -p old.db out ;;
        into) cp -r old.into out ;;
        new-db) ;;
        *) echo old >out ;;
    esac
}

is_untouched() {
    [ ! -e out-journal ] && if [ "$1" = new-db ]; then [ ! -e out ]; else cmp -s out old.db; fi
}

# check NAME CODE FAULT [BEFORE]: whether the loader met the fault, before the program began.
check() {
    runs=$((runs + 1))
    if [ "${4:-0}" = 1 ] && [[ $2 == @(127|139) ]]; then return; fi
    case $2 in
        0) is_right "$1" || fail "$3: exit code 0, and the output is wrong" ;;
        1 | 3) grep -q '^parsecs: ' err || fail "$3: exit code $2 without a word" ;;
        *) fail "$3: exit code $2: $(tail -n 1 err)" ;;
    esac
    codes[$2]=$((${codes[$2]:-0} + 1))
    [ -z "$(compgen -G '.parsecs-*' || compgen -G 'out/.parsecs-*' || compgen -G 'out/few/.parsecs-*')" ] ||
        [[ $3 == *unlink* ]] || fail "$3: left $(find . -name '.parsecs-*')"
    rm -f .parsecs-*
    case $1 in
        *db) [ "$2" = 0 ] || is_untouched "$1" || { "$parsecs" --db out few 2>again && is_right "$1"; } ||
            fail "$3: then $(cat again)" ;;
        text)  ;; # standard output has what came so far
        into)  ;;
        *) [ "$2" != 3 ] || grep -qx old out || is_right "$1" || fail "$3: half an output" ;;
    esac
}

# What no kernel refuses, or what ends a program.
exempt='^(brk|exit|exit_group|execve|futex|arch_prctl|rt_sigreturn|set_tid_address|restart_syscall)$'
error_of() {
    case $1 in
        mmap | mprotect | munmap | madvise | clone*) echo ENOMEM ;;
        *) echo EIO ;;
    esac
}

# fail_all NAME JOBS ARGUMENTS
fail_all() {
    local command="\"$parsecs\" $2 $3" n call most before
    runs=0 codes=()
    for onwards in "" FAULT_ONWARDS=1; do
        for ((n = 1; ; n = $(next $n))); do
            begin "$1"
            eval "timeout 20 env FAULT_AT=$n FAULT_MARK=mark $onwards LD_PRELOAD=\"$memory\" $command" 2>err
            check "$1" $? "$1 $2, allocation $n $onwards"
            [ -e mark ] || break
        done
    done
    allocations=$((runs - 2))
    [ "$traced" ] || return 0
    begin "$1"
    eval "strace -f -qq -o trace $command" 2>err
    while read -r call most before; do
        for ((n = $(next 0); n <= most; n = $(next $n))); do
            begin "$1"
            eval "timeout 20 strace -f -qq -o trace -e trace=$call -e inject=$call:error=$(error_of "$call"):when=$n $command" 2>err
            check "$1" $? "$1 $2, $call $n" $((n <= before))
        done
    done < <(sed 's/^[0-9]* *//; /^[a-z0-9_]*(/!d' trace | awk -F '(' -v exempt="$exempt" '
        /^fcntl\(0,/ { began = 1 } # the first thing that the program does
        $1 !~ exempt { ++most[$1]; before[$1] += !began }
        END { for (call in most) print call, most[call], before[call] }')
}

traced=yes
strace -e trace=none true 2>err || { traced= && echo "system calls do not fail: strace is missing or may not trace"; }
while IFS='|' read -r name arguments; do
    case $name in
        into) rm -rf out old.into && "$parsecs" --strict --into out few 2>err && cp -r out old.into &&
            find old.into -type f -exec sed -i 1iold {} + ;;
        *) rm -rf out && eval "\"$parsecs\" $arguments" 2>err || fail "$name: $(cat err)" ;;
    esac
    rm -rf good && cp -r out good
    case $name in *db) expected=$(says out) ;; esac
    for jobs in -j1 -j2; do
        fail_all "$name" $jobs "$arguments"
        echo "$name $jobs: $allocations allocations, $((runs - 2 - allocations)) system calls; codes: $(
            for code in "${!codes[@]}"; do echo -n "$code: ${codes[$code]}  "; done)"
    done
done <<'TABLE'
text|few/1.cs >out
records|few/1.cs -o out
strict|--strict few/1.cs -o out
jsonl|--jsonl few -o out
outline|--outline few -o out
map|--html out few
new-db|--db out few
update-db|--db out few
into|--strict --into out few
TABLE
exit $((failures > 0))
