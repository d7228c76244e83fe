#!/usr/bin/env bash
# SPDX-FileCopyrightText: The project's authors
# SPDX-License-Identifier: MIT
#
# tst_dev.sh SCRIPT FOLDER: runs the entry script in FOLDER on a machine that has nothing but what is
# made here. The programs that install, configure and build only note how they were called.

set -euo pipefail

script=$1
folder=$2
failures=0
test_name=

# The machine: a checkout in a folder with a blank and a quote, and programs that take notes.
setUp() {
    test_name=$1
    rm -rf "$folder"
    mkdir -p "$folder/bin" "$folder/home" "$folder/elsewhere" "$folder/a b'c/build"
    checkout="$folder/a b'c"
    calls="$folder/calls"
    notes=$(printf '%q' "$calls")
    : >"$calls"
    cp "$script" "$checkout/dev"
    printf '{}\n' >"$checkout/CMakePresets.json"

    local tool
    for tool in bash env dirname basename sed grep sort find xargs mkdir rm cat touch; do
        ln -s "$(command -v "$tool")" "$folder/bin/$tool"
    done
    for tool in apt-get cmake ctest dpkg; do
        program "$tool" "echo $tool \"\$@\" >>$notes"
    done
    program nproc 'echo 2'
    program id 'echo 0'
    installs_all
}

program() {
    printf '#!/usr/bin/env bash\n%s\n' "$2" >"$folder/bin/$1"
    chmod +x "$folder/bin/$1"
}

# Packages that are there, unless they are named with another state, as in "ccache=unpacked".
installs_all() {
    program dpkg-query "odd=' $* '
for name in \"\$@\"; do
    case \$name in -*) continue ;; esac
    state=installed
    [[ \$odd =~ \ \"\$name\"=([a-z-]+)\  ]] && state=\${BASH_REMATCH[1]}
    printf '%s=%s ' \"\$name\" \"\$state\"
done"
}

# A build tree that is up to date.
configured() {
    mkdir -p "$checkout/build/$1"
    touch -d '1 minute' "$checkout/build/$1/build.ninja"
}

# Runs the script with its arguments; notes what it says in `said` and its end in `ended`.
dev() {
    ended=0
    said=$(cd "${from:-$checkout}" &&
        env -i PATH="$folder/bin" HOME="${home-$folder/home}" ${display:+DISPLAY=$display} \
            ${wayland:+WAYLAND_DISPLAY=$wayland} "$checkout/dev" "$@" 2>&1) || ended=$?
}

check() {
    [ "$2" = "$3" ] && return
    failures=$((failures + 1))
    printf 'FAIL: %s: %s\n  got:    %s\n  wanted: %s\n' "$test_name" "$1" "$2" "$3"
}

check_says() {
    [[ $said = *"$1"* ]] && return
    failures=$((failures + 1))
    printf 'FAIL: %s: "%s" is missing in:\n%s\n' "$test_name" "$1" "$said"
}

called() { grep -E "^($1) " "$calls" || true; }

setUp "nothing is installed where all is there"
configured dev
dev build
check "end" "$ended" 0
check "calls" "$(cat "$calls")" "cmake --build --preset dev"

setUp "missing packages are installed, and it is said which"
installs_all ccache=not-installed mold=config-files ninja-build=half-configured
dev build
check "end" "$ended" 0
check_says "./dev: installing ninja-build ccache mold"
check "calls" "$(called 'apt-get|dpkg')" "dpkg --configure -a
apt-get update -qq
apt-get install -y -qq --no-install-recommends --fix-broken -o DPkg::Lock::Timeout=600\
 ninja-build ccache mold"

setUp "an interrupted installation that can't be ended alone is gone on with"
installs_all mold=unpacked
program dpkg "echo dpkg \"\$@\" >>$notes; exit 1"
dev build
check "end" "$ended" 0
check "installations" "$(called 'apt-get install' | wc -l)" 1

setUp "a failed installation ends all"
installs_all mold=not-installed
program apt-get 'exit 100'
dev build
check "end" "$ended" 100
check "builds" "$(called cmake)" ""

setUp "a user installs by sudo"
installs_all mold=not-installed
program id 'echo 1000'
program sudo "echo sudo >>$notes; \"\$@\""
dev build
check "end" "$ended" 0
check "calls as root" "$(grep -c '^sudo$' "$calls")" 3

setUp "a user without sudo is told what is missing"
installs_all mold=not-installed ccache=not-installed
program id 'echo 1000'
dev build
check "end" "$ended" 1
check_says "./dev: these packages are missing and need root or sudo: ccache mold"
check "calls" "$(cat "$calls")" ""

setUp "another system builds with what it has"
rm "$folder/bin/dpkg-query"
dev build
check "end" "$ended" 0
check "installations" "$(called apt-get)" ""

setUp "a build tree is configured once"
dev build
check "first" "$(cat "$calls")" "cmake --preset dev
cmake --build --preset dev"
configured dev
: >"$calls"
dev build
check "second" "$(cat "$calls")" "cmake --build --preset dev"

setUp "a build tree that was left half configured is configured again"
mkdir -p "$checkout/build/dev"
touch "$checkout/build/dev/CMakeCache.txt"
dev build
check "calls" "$(called 'cmake --preset')" "cmake --preset dev"

setUp "changed presets are taken over"
configured dev
touch -d '2 minutes' "$checkout/CMakePresets.json"
dev build
check "calls" "$(called 'cmake --preset')" "cmake --preset dev"

setUp "a home that can't be written leaves the compiler cache in the build tree"
program cmake "echo \"\${CCACHE_DIR-}\" >>$notes"
configured dev
home=$folder/nowhere dev build
check "without a home" "$(cat "$calls")" "$checkout/build/ccache"
: >"$calls"
dev build
check "with a home" "$(cat "$calls")" ""

setUp "without a display the session is played"
configured release
mkdir -p "$checkout/build/release/workbench"
for name in workbench workbench-session; do
    program "$name" "echo $name \"\$PWD\" \"\$@\" \"\${QT_QPA_PLATFORM-}\" >>$notes"
    ln -s "$folder/bin/$name" "$checkout/build/release/workbench/$name"
done
dev run
check "end" "$ended" 0
check "session" "$(called workbench-session)" "workbench-session $checkout build/session offscreen"

test_name="with a display the example is opened"
: >"$calls"
display=:7 dev run
check "example" "$(called workbench)" \
    "workbench $checkout --project examples/soc/soc.eda.yml examples/soc/soc.molk "

test_name="arguments are the workbench's, and name files from where it is called"
: >"$calls"
from=$folder/elsewhere dev run --top t 'rtl/a b.v'
check "end" "$ended" 0
check "workbench" "$(called workbench)" "workbench $folder/elsewhere --top t rtl/a b.v "

test_name="Qt draws on X alone"
: >"$calls"
wayland=wayland-0 dev run
check "session" "$(called workbench-session | wc -l)" 1

setUp "tests are chosen by a pattern"
configured dev
dev test view
check "calls" "$(called ctest)" "ctest --preset dev -j 3 -R view"

setUp "sources are formatted, or only looked at"
for name in plugin model view netlist ports signals hostapi standin workbench tests benchmarks fuzz; do
    mkdir "$checkout/$name"
done
touch "$checkout/model/a.h"
program clang-format "echo clang-format \"\$@\" >>$notes"
dev format
dev format --check
check "calls" "$(cat "$calls")" "clang-format -i model/a.h
clang-format --dry-run -Werror model/a.h"

test_name="what isn't known is refused"
: >"$calls"
configured dev
for command in "frobnicate" "format --chek" "bless" "fuzz" "test --steps"; do
    read -ra words <<<"$command"
    dev "${words[@]}"
    check "end of $command" "$((ended != 0))" 1
    check "calls of $command" "$(cat "$calls")" ""
done

((failures == 0)) || exit 1
echo "all is as it should be"
