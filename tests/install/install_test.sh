#!/usr/bin/env bash
# install_test.sh BUILD-FOLDER: builds hosts outside our source tree, in a path with a blank: with
# our sources as a subfolder, and against an installed tree that was moved. The hosts are those of the
# documents.
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

# code_of DOCUMENT LANGUAGE: its first block in that.
code_of() { awk -v fence='```' '$0 == fence language { on = 1; next } $0 == fence { if (on) exit } on' language="$2" "$source/$1"; }
cp "$here/CMakeLists.txt" "$here/host.cpp" "$scratch"
code_of README.md c >"$scratch/host.c"

# check_hosts NAME CMAKE-OPTION...: configures, builds and runs both hosts.
check_hosts() {
    local hosts="$scratch/$1 hosts"
    cmake -G Ninja -S "$scratch" -B "$hosts" "${@:2}" >"$log" 2>&1 || fail "$1: configure"
    cmake --build "$hosts" --target host_c host_cpp >>"$log" 2>&1 || fail "$1: build"
    for host in c cpp; do
        "$hosts/host_$host" "$sample" | cmp - "$scratch/expected" || fail "$1: host_$host"
        if "$hosts/host_$host" "$sample" >/dev/full; then fail "$1: host_$host on a full disk"; fi
    done
}
check_hosts subfolder "-DPLUGINCS_SOURCE=$source"
grep -A2 '^build .*Pipeline.cpp.o:' "$scratch/subfolder hosts/build.ninja" -A9 | grep -q 'FLAGS = .*-O2' ||
    fail "not optimised without a build type"
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
version=$(pc --modversion)
cat >"$scratch/version.c" <<'SOURCE'
#include <PluginCS.h>
#include <stdio.h>
int main(void) {
    return printf("%d.%d.%d %s\n", PLUGINCS_VERSION_MAJOR, PLUGINCS_VERSION_MINOR,
                  PLUGINCS_VERSION_PATCH, PLUGINCS_VERSION) < 0;
}
SOURCE
eval "cc $(pc --cflags) '$scratch/version.c' -o '$scratch/version'"
[ "$("$scratch/version")" = "$version $version" ] && grep -q "PluginCS version $version" "$module" &&
    grep -q "set(PACKAGE_VERSION \"$version\")" "$package/../cmake/PluginCS/PluginCSConfigVersion.cmake" ||
    fail "versions: $version, header $("$scratch/version")"

if ! command -v python3 >/dev/null; then echo "no host in Python: python3 is missing" && exit; fi
code_of docs/ctypes.md python >"$scratch/records.py"
python3 -B "$scratch/records.py" "$module" "$sample" >"$scratch/records" || fail "a host in Python"
[ "$(wc -l <"$scratch/records")" = "$(grep -c nodeID "$scratch/expected")" ] ||
    fail "a host in Python: $(head "$scratch/records")"
