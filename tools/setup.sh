#!/usr/bin/env bash
# Installs what this project needs on Debian 12, by apt, and only what is missing.
#
#   tools/setup.sh demo    to build the library and the command
#   tools/setup.sh test    ... and the examples, the tests and the benchmarks
#   tools/setup.sh docs    ... what `make docs` needs, apart from the tests
#   tools/setup.sh deb     ... what `make deb` needs, apart from the tests
#   tools/setup.sh ci      all of it, and the tools of .ci/run
set -euo pipefail

demo_packages=(g++ make cmake ninja-build ccache pkg-config
    libxerces-c-dev libicu-dev libcli11-dev libcsv-dev libfmt-dev nlohmann-json3-dev zlib1g-dev libzstd-dev)
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev patch python3 python3-pyelftools binutils locales mandoc zsh)
docs_packages=(doxygen graphviz)
deb_packages=(git build-essential debhelper dpkg-dev fakeroot)
ci_packages=(mmdebstrap clang clang-tidy clang-format-16 libclang-rt-14-dev lcov abigail-tools)

# The tests read numbers under a locale with a decimal comma, and text under the usual one. Those of the code pages come
# from the charmaps of the package locales, too, but into the build folder (tests/text/code_page).
test_locales=(en_US de_DE)

fail() {
    echo "setup: $*" >&2
    exit 1
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "this needs root: run it as root, or install sudo: $*"
    fi
}

installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

install_packages() {
    local missing=() package
    for package in "$@"; do
        installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "setup: installing ${missing[*]}"
    as_root apt-get update -qq || fail "apt-get update failed; is there a network and a package source?"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        fail "apt-get could not install: ${missing[*]}"
}

make_locales() {
    local name
    for name in "${test_locales[@]}"; do
        locale -a | grep -qix "$name.utf-\?8" && continue
        echo "setup: making the locale $name.UTF-8"
        as_root localedef -i "$name" -f UTF-8 "$name.UTF-8" || fail "localedef could not make $name.UTF-8"
    done
}

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    fail "this script needs apt (Debian 12); on another system install: ${demo_packages[*]} ${test_packages[*]}"
fi

case "${1:-demo}" in
demo) install_packages "${demo_packages[@]}" ;;
docs) install_packages "${demo_packages[@]}" "${docs_packages[@]}" ;;
deb) install_packages "${demo_packages[@]}" "${deb_packages[@]}" ;;
test)
    install_packages "${demo_packages[@]}" "${test_packages[@]}"
    make_locales
    ;;
ci)
    install_packages "${demo_packages[@]}" "${test_packages[@]}" "${docs_packages[@]}" "${deb_packages[@]}" \
        "${ci_packages[@]}"
    make_locales
    ;;
*) fail "unknown set \"$1\": demo, test, docs, deb or ci" ;;
esac
