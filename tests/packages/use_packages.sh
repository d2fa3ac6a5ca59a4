#!/usr/bin/env bash
# Uses what the Debian packages beside this script hold, once they are there: scores, reads the man page and the
# completions, builds a program against the library by pkg-config and by CMake. Without an argument it installs them with
# apt, whose dependencies have to be enough, and purges them at the end, which has to leave nothing; the argument is a
# folder that has the content of /usr instead.
set -euo pipefail
cd "$(dirname "$0")"
usr=${1:-/usr}
export LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive

fail() {
    echo "packages: $*" >&2
    exit 1
}

# Each package with those that it needs and no others.
add() {
    [ "$usr" = /usr ] || return 0
    apt-get install -y -qq --no-install-recommends "$@" >apt.log 2>&1 || {
        cat apt.log >&2
        fail "apt does not install $*"
    }
}

use_library() {
    add ./libveltrane9_*.deb
    ldd "$usr"/lib/*/libveltrane.so.9 >libraries
    ! grep "not found" libraries || fail "the library's package lacks a dependency"
}

use_command() {
    local code=0 loan=$usr/share/doc/veltrane/examples/loan
    add ./veltrane_*.deb ./veltrane-plugins_*.deb
    "$usr/bin/veltrane" score "$loan/default.pmml" "$loan/applicants.csv" --missing NA --quiet >scores.csv 2>/dev/null || code=$?
    [ "$code" -eq 3 ] || fail "score ended with $code"
    cmp scores.csv "$loan/default.expected.csv"
}

use_pages() {
    gzip -dc "$usr/share/man/man1/veltrane.1.gz" | grep -qF 'max\-errors' || fail "the man page lacks options"
    bash -c '. "$1" && complete -p veltrane' - "$usr/share/bash-completion/completions/veltrane" >/dev/null
    grep -q '^#compdef veltrane$' "$usr/share/zsh/vendor-completions/_veltrane"
}

# What the program of the consumer prints, with the list of plug-ins that both ways of building it tell of.
use_development_files() {
    local pc
    add ./libveltrane-dev_*.deb
    pc=$(dirname "$(find "$usr" -name veltrane.pc)")
    # shellcheck disable=SC2046
    PKG_CONFIG_PATH=$pc g++ -std=c++20 consumer/main.cpp -o by_pkg_config $(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs veltrane)
    cmake -S consumer -B by_cmake -DCMAKE_PREFIX_PATH="$usr" >/dev/null
    cmake --build by_cmake >/dev/null
    LD_LIBRARY_PATH=$(dirname "$pc") ./by_pkg_config "$(PKG_CONFIG_PATH=$pc pkg-config --variable=modellist veltrane)" >first
    by_cmake/consumer "$(cat by_cmake/model_list)" >second
    grep -q '^price = ' first || fail "the program says nothing"
    cmp first second
}

remove() {
    local left
    rm -f ./*.deb
    apt-get purge -y -qq libveltrane9 libveltrane-dev veltrane veltrane-plugins >apt.log 2>&1
    left=$(find / -xdev -iname '*veltrane*')
    [ -z "$left" ] || fail "purging leaves: $left"
}

checks=(use_library use_command use_pages use_development_files)
[ "$usr" != /usr ] || checks+=(remove)
for check in "${checks[@]}"; do
    "$check"
    echo "packages: $check passed"
done
