#!/usr/bin/env bash
# install_test.sh BUILD-FOLDER: builds hosts outside our source tree, in a path with a blank: with
# our sources as a subfolder, and against an installed tree that was moved.
set -eu
build=$1
here=$(cd "$(dirname "$0")" && pwd)
source=$(cd "$here/../.." && pwd)
sample=$source/samples/Inventory.cs
scratch="$(mktemp -d)/a place"
mkdir "$scratch"
trap 'rm -rf "$(dirname "$scratch")"' EXIT
log=$scratch/log
fail() { cat "$log" && echo "FAILED: $*" && exit 1; }
"$build/parsecs" "$sample" >"$scratch/expected"
[ "$(head -c 1 "$scratch/expected")" = "[" ] || fail "no records to compare with"

# check_hosts NAME CMAKE-OPTION...: configures, builds and runs both hosts.
check_hosts() {
    local hosts="$scratch/$1 hosts"
    cmake -G Ninja -S "$here" -B "$hosts" "${@:2}" >"$log" 2>&1 || fail "$1: configure"
    cmake --build "$hosts" >>"$log" 2>&1 || fail "$1: build"
    for host in c cpp; do
        "$hosts/host_$host" "$sample" | cmp - "$scratch/expected" || fail "$1: host_$host"
        if "$hosts/host_$host" "$sample" >/dev/full; then fail "$1: host_$host on a full disk"; fi
    done
}
check_hosts subfolder "-DPLUGINCS_SOURCE=$source"
[ ! -e "$scratch/subfolder hosts/plugincs/parsecs" ] || fail "the program came along unasked"

cmake --install "$build" --prefix "$scratch/first" >"$log"
mv "$scratch/first" "$scratch/tree"
check_hosts installed "-DCMAKE_PREFIX_PATH=$scratch/tree"
"$scratch/tree/bin/parsecs" "$sample" | cmp - "$scratch/expected"
for text in man/man1/parsecs.1 bash-completion/completions/parsecs zsh/site-functions/_parsecs \
    fish/vendor_completions.d/parsecs.fish; do
    grep -q outline "$scratch/tree/share/$text" || fail "no $text"
done

grep -q parsecs-rows "$scratch/tree/share/parsecs/rows.schema.json" || fail "no schema"

package=$(find "$scratch/tree" -name plugincs.pc -printf %h)
pc() { PKG_CONFIG_PATH=$package pkg-config "$@" plugincs; }
eval "module=$(pc --variable=module)" # pkg-config escapes blanks
[ "$module" -ef "$(find "$scratch/tree" -name PluginCS.so)" ] || fail "pkg-config: $module"
echo '#include <PluginCS.h>' >"$scratch/include.c"
eval "cc -fsyntax-only $(pc --cflags) '$scratch/include.c'"
