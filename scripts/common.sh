# shellcheck shell=bash
# Functions for the other scripts: they install missing Debian packages, and build. Their messages
# go to standard error.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# present COMMAND-OR-PATH: an argument with a slash is a path.
present() {
    case $1 in
        */*) [ -e "$1" ] ;;
        *) command -v "$1" >/dev/null 2>&1 ;;
    esac
}

missing=()
may_install=yes

# need COMMAND-OR-PATH PACKAGE [...]: notes the packages of those that are missing.
need() {
    while [ $# -gt 0 ]; do
        present "$1" || missing+=("$2")
        shift 2
    done
}

# Says what was noted, and installs it.
install_missing() {
    [ ${#missing[@]} -gt 0 ] || return 0
    install_packages "${missing[@]}" >&2
    missing=()
}

install_packages() {
    local sudo=()
    echo "Needed and not here, as Debian packages: $*"
    if [ "$(id -u)" -ne 0 ]; then sudo=(sudo); fi
    if [ $may_install = no ] || ! present apt-get || ! present "${sudo[@]:-true}"; then
        echo "Please have them installed and try again: apt-get install $*"
        exit 1
    fi
    echo "Installing them: ${sudo[*]} apt-get install $*"
    local install=("${sudo[@]}" env DEBIAN_FRONTEND=noninteractive
        apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout=120 "$@")
    if ! "${install[@]}" && ! { "${sudo[@]}" apt-get update -qq && "${install[@]}"; }; then
        echo "That failed. Please have them installed and try again: apt-get install $*"
        exit 1
    fi
}

need_build_tools() {
    need g++ g++ cmake cmake ninja ninja-build /usr/include/hwy/foreach_target.h libhwy-dev
}

need_program_libraries() {
    need /usr/include/sqlite3.h libsqlite3-dev /usr/include/zlib.h zlib1g-dev
}

need_test_libraries() {
    need_program_libraries
    need /usr/include/gtest/gtest.h libgtest-dev /usr/include/nlohmann/json.hpp nlohmann-json3-dev \
        pkg-config pkg-config sqlite3 sqlite3 strace strace readtags universal-ctags git git jq jq \
        /usr/lib/python3/dist-packages/jsonschema python3-jsonschema
}

# For the test of the map, which is skipped without it.
need_browser() {
    need python3 python3 chromium chromium chromedriver chromium-driver
}

# build PRESET [TARGET...]: says nothing when there is nothing to do.
build() {
    install_missing
    local tree=$root/build/$1
    local ninja=(ninja -C "$tree" "${@:2}")
    if [ ! -e "$tree/build.ninja" ]; then
        (cd "$root" && cmake --preset "$1" --log-level=WARNING) >&2
    fi
    "${ninja[@]}" -n | grep -q 'no work to do' || "${ninja[@]}" >&2
}

# run_tests PRESET [CTEST-OPTION...]
run_tests() {
    (cd "$root" && ctest --preset "$@")
}
