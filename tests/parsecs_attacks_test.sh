#!/usr/bin/env bash
# parsecs_attacks_test.sh PARSECS: faults, kills and rivals. Whatever happens, each output file is the
# old one or the new one, and exit code 0 means that all of them are new.
set -u
cd "$(mktemp -d)" || exit 1
trap 'rm -rf "$PWD"' EXIT
ln -s "$1" parsecs
parsecs=$PWD/parsecs
# What the sanitizers look for at the end cannot be found by a process that is traced.
export ASAN_OPTIONS=detect_leaks=0
ulimit -n 64 # a descriptor for each of many files would be noticed
failures=0
fail() { echo "FAILED: $*" && failures=$((failures + 1)); }

# sources FOLDER COUNT: files of several sizes.
sources() {
    mkdir -p "$1/sub"
    awk -v folder="$1" -v count="$2" 'BEGIN {
        for (n = 0; n < count; ++n) {
            file = folder (n % 3 ? "/" : "/sub/") n ".cs"
            for (i = 0; i <= n % 50; ++i) print "class A" i " { int f() { return " n "; } }" >file
            close(file)
        }
    }'
}

# make_expected FOLDER: what the outputs shall be, in `new`, and other files of their names in `old`.
make_expected() {
    rm -rf new old
    "$parsecs" --strict --into new "$1" 2>err || fail "$(cat err)"
    cp -r new old
    find old -type f -exec sed -i 1iold {} +
}

# Files below `out` that the folder does not have like that.
unlike() { diff -rq "$1" out | grep -v "^Only in $1" | sort -k 4; }

# check_outputs NAME: each file below `out` is the new one or the old one; none is temporary.
check_outputs() {
    [ -d out ] || return
    local wrong
    wrong=$(join -1 4 -2 4 <(unlike new) <(unlike old))
    [ -z "$wrong" ] || fail "$1: $wrong"
}

begin() {
    rm -rf out
    [ "$1" = 0 ] || cp -r old out
}

sources few 20
make_expected few
if ! strace -e trace=none true 2>err; then
    echo "no faults: strace is missing or may not trace"
    calls=
fi
for call in ${calls-openat read write rename mkdir newfstatat getdents64}; do
    for fault in "EIO:when=1" "ENOSPC:when=3" "EINTR:when=2+3" EIO:when={4,7,12,20,25,30}; do
        begin $((RANDOM % 2))
        timeout 20 strace -f -qq -o trace -e trace=$call -e inject=$call:error=$fault \
            "$parsecs" -j2 --strict --into out few 2>err
        code=$?
        if grep -q 'CHECK failed' err; then continue; fi # the sanitizers end with 0 then
        [ $code != 124 ] || fail "$call $fault: endless"
        [ $code != 0 ] || diff -rq new out || fail "$call $fault: exit code 0"
        check_outputs "$call $fault: $code"
        [ $code != 3 ] || grep -q '^parsecs: out' err || fail "$call $fault: $(cat err)"
    done
done

# A file that becomes something else between the walk and the reading: nobody waits for it, or reads
# it for ever.
for swap in "mkfifo few/7.cs" "ln -s /dev/zero few/7.cs"; do
    [ "${calls-strace}" ] || break
    cp few/7.cs kept
    timeout 20 strace -f -qq -o trace -P few/7.cs -e trace=openat -e inject=openat:delay_enter=1s \
        "$parsecs" -j2 --jsonl few >rest 2>err &
    sleep 0.5
    rm few/7.cs && $swap
    wait $!
    [ "$? $(grep -c '"id":0,' rest)" = "1 19" ] && grep -q 'few/7.cs: is no file any more' err || fail "$swap: $(cat err)"
    rm few/7.cs && mv kept few/7.cs
done

# Each moment of a run is as good as another to end it. All sizes of a disk are those of a file here.
sources many 300
make_expected many
for round in {1..50}; do
    signal=$(echo TERM HUP INT KILL QUIT | cut -d' ' -f$((round % 5 + 1)))
    begin $((round % 3))
    timeout --foreground -s $signal 0.$((RANDOM % 20 + 100)) "$parsecs" -j2 --strict --into out many 2>err
    [ $signal != KILL ] || find out -name '.parsecs-*' -delete 2>err
    check_outputs "$signal"
done
begin 1
(ulimit -f 32 && "$parsecs" --strict --into out many 2>err)
[ $? = 3 ] && grep -q '^parsecs: out/many/.*: File too large$' err || fail "full disk: $(tail -n 1 err)"
check_outputs "full disk"

# Rivals, and more threads than files are ready for.
rm -rf out
"$parsecs" --strict --into out many 2>err & "$parsecs" -j1 --strict --into out many 2>err2
wait $! && diff -rq new out || fail "two runs: $(cat err err2)"
sources more 1000
"$parsecs" -j 1 --jsonl more >one 2>err && "$parsecs" -j 8 --jsonl more 2>err | cmp - one || fail "$(cat err)"

# Not enough threads, and not enough memory for one file.
(ulimit -u 1 && "$parsecs" -j 8 --jsonl more 2>err) | cmp - one || fail "no threads: $(cat err)"
huge=$(mktemp -p /dev/shm)
if truncate -s 9223372036854775807 "$huge" 2>err; then
    (setsid --wait "$parsecs" -j2 --jsonl more/499.cs "$huge" more/502.cs >rest 2>err)
    [ "$? $(grep -c '"id":0,' rest)" = "1 2" ] && grep -q "^parsecs: $huge: given up: out of memory$" err ||
        fail "a huge file: $(cat err)"
fi
rm -f "$huge"

# A run whose output fails does not wait for a file that never ends.
mkfifo never
timeout 20 "$parsecs" -j2 --jsonl few never >/dev/full 2>err
[ $? = 3 ] || fail "an output that fails: $(cat err)"

# Whatever ends a program from outside, its temporary files go with it.
for signal in HUP TERM USR1 USR2 ALRM XCPU VTALRM PROF RTMIN RTMAX; do
    "$parsecs" -j2 --jsonl -o late few never 2>err &
    until compgen -G '.parsecs-*' >rest; do sleep 0.02; done
    kill -$signal $!
    wait $! 2>err
    [ $? = $((128 + $(kill -l $signal))) ] && ! compgen -G '.parsecs-*' || fail "SIG$signal: $(cat err)"
done
exit $((failures > 0))
