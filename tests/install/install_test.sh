#!/usr/bin/env bash
# install_test.sh BUILD-FOLDER: installs the build, moves the installed tree elsewhere, and builds
# and runs a C host that knows nothing but that place.
set -eu
build=$1
here=$(cd "$(dirname "$0")" && pwd)
sample=$here/../../samples/Inventory.cs
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/first" >"$scratch/log"
mv "$scratch/first" "$scratch/tree"

cmake -S "$here" -B "$scratch/host" -DCMAKE_PREFIX_PATH="$scratch/tree" >>"$scratch/log"
cmake --build "$scratch/host" >>"$scratch/log"
"$build/parsecs" "$sample" >"$scratch/expected"
"$scratch/host/host" "$sample" | cmp - "$scratch/expected"
"$scratch/tree/bin/parsecs" "$sample" | cmp - "$scratch/expected"
[ "$(head -c 1 "$scratch/expected")" = "[" ]

package=$(find "$scratch/tree" -name plugincs.pc -printf %h)
pc() { PKG_CONFIG_PATH=$package pkg-config "$@" plugincs; }
[ "$(pc --variable=module)" -ef "$scratch/tree/lib/PluginCS/PluginCS.so" ]
echo '#include <PluginCS.h>' | cc -x c -fsyntax-only $(pc --cflags) -
