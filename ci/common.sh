# shellcheck shell=bash
# SPDX-License-Identifier: Apache-2.0
#
# Sourced by the scripts: where the project is, how it is configured, and the line that each check ends with.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# What builds on several machines or in several folders shares one compiler cache, where there is one.
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1

# fail MESSAGE…: ends the script with one line.
fail() {
    echo "$(basename "$0"): $*" >&2
    exit 1
}

# configure PRESET [-DNAME=VALUE…]: makes the build folder ready. Ninja runs CMake again when a CMake file has changed, so
# one that is configured so already is left alone. In CI a warning fails the build.
configure() {
    local preset=$1 strict=OFF setting
    shift
    [ -z "${CI-}" ] || strict=ON
    local build="$root/build/$preset" settings=("-DIMAGEUTILS_WARNINGS_AS_ERRORS=$strict" "$@") ready=yes
    [ "$build/build.ninja" -nt "$root/CMakePresets.json" ] || ready=no
    [ "$build/build.ninja" -nt /var/lib/dpkg/status ] || ready=no # what was installed since is looked for
    for setting in "${settings[@]#-D}"; do
        grep -qs "^${setting%%=*}:[A-Z]*=${setting#*=}\$" "$build/CMakeCache.txt" || ready=no
    done
    [ $ready = yes ] || (cd "$root" && cmake --preset "$preset" "${settings[@]}")
}

# build PRESET [TARGET…]: configures and builds what the preset names, or only the targets.
build() {
    local preset=$1
    shift
    configure "$preset"
    (cd "$root" && cmake --build --preset "$preset" ${1+--target "$@"})
}

# run_tests PRESET: configures, builds and runs the preset's tests.
run_tests() {
    build "$1"
    (cd "$root" && ctest --preset "$1")
}

# leg: called first by each check, lets it end with a line that says how it went and how long it took, and removes the
# folder $scratch, if the check made one.
leg() {
    scratch=
    local started=$SECONDS
    # shellcheck disable=SC2064 # the start is fixed now
    trap "end_of_leg \$? $started" EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    cd "$root"
}

end_of_leg() {
    local seconds=$((SECONDS - $2)) word=passed
    [ "$1" = 0 ] || word=FAILED
    [ -z "$scratch" ] || rm -rf --one-file-system "$scratch"
    printf 'ci/%s: %s after %d.%d minutes\n' "$(basename "$0")" $word $((seconds / 60)) $((seconds % 60 / 6)) >&2
}
