# shellcheck shell=bash
# SPDX-License-Identifier: Apache-2.0
#
# Sourced by the scripts: where the project is, how it is configured, and the line that each check ends with.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# What builds on several machines or in several folders shares one compiler cache, where there is one.
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
[ -n "${CCACHE_DIR-}" ] || [ -w "${HOME-}" ] || export CCACHE_DIR="$root/build/ccache"

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

# install_if_possible LIST…: goes on without the packages that this user may not install.
install_if_possible() {
    "$root/ci/install-packages" "$@" || [ $? = 3 ]
}

# tests_without_tools: which tests cannot run, as a regular expression of their names: each line of ci/packages/test.txt
# names the tests that need its package.
tests_without_tools() {
    local choice
    "$root/ci/install-packages" --missing test | while read -r choice; do
        sed -n "s/^${choice} *# tests: *//p" "$root/ci/packages/test.txt"
    done | sort -u | paste -sd '|'
}

# run_tests PRESET: configures, builds and runs the preset's tests, and names those that are left out.
run_tests() {
    local left_out
    build "$1"
    left_out=$(tests_without_tools)
    cd "$root"
    if [ -n "$left_out" ]; then
        echo "left out, because packages are missing ($("$root/ci/install-packages" --missing test | paste -sd ' ')):" >&2
        ctest --preset "$1" -N -R "$left_out" | sed -n 's/^ *Test *#[0-9]*:/ /p' >&2
    fi
    ctest --preset "$1" ${left_out:+-E "$left_out"}
    [ -z "${CI-}" ] || refuse_skips "$1"
}

# refuse_skips PRESET: fails if a test has skipped a case, except formats that the installed OpenImageIO does not write and
# photographs of a package that is too large for CI.
refuse_skips() {
    local skips allowed='::(formatFollowsTheContents|photographsAgreeWithExiftool)\('
    skips=$(grep '^SKIP ' "$root/build/$1/Testing/Temporary/LastTest.log" | grep -vE "$allowed" || true)
    [ -z "$skips" ] || fail "these cases were skipped: $skips"
}

# generation_store NAME: where ci/generation keeps the roots of that release.
generation_store() {
    echo "${IMAGEUTILS_GENERATIONS:-/var/cache/imageutils}/$1"
}

# debian_mirror: where apt gets Debian's packages from on this machine.
debian_mirror() {
    local mirror
    # shellcheck disable=SC2016 # apt's own variables
    mirror=$(apt-get indextargets --format '$(ORIGIN) $(LABEL) $(REPO_URI)' |
        sed -n 's|^Debian Debian \(.*[^/]\)/*$|\1|p' | sort -u | sed -n 1p)
    [ -n "$mirror" ] || fail "apt knows no Debian mirror here; apt-get update first"
    echo "$mirror"
}

# own_generation: this machine's release of Debian, 12 or 13; empty where there is no number.
own_generation() {
    (. /etc/os-release && echo "${VERSION_ID-}")
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
    case $1 in
    0) ;;
    77) word=skipped ;; # .ci/run goes on, and says so in its table
    *) word=FAILED ;;
    esac
    [ -z "$scratch" ] || rm -rf --one-file-system "$scratch"
    printf 'ci/%s: %s after %d.%d minutes\n' "$(basename "$0")" $word $((seconds / 60)) $((seconds % 60 / 6)) >&2
}
