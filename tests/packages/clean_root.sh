#!/usr/bin/env bash
# Installs the Debian packages of a folder in a clean root, that is a Debian with nothing of the machine in it, uses them
# there by use_packages.sh, and removes them again. Where the system lets nobody make a root, as in many containers, or the
# mirrors don't answer, the packages are unpacked into a folder and used from there.
#
#   clean_root.sh FOLDER [unpacked]
set -euo pipefail
packages=$(realpath "$1")
way=${2:-}
project=$(realpath "$(dirname "$0")/../..")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# What goes into the root: the packages, the check, and the program that is built against the library.
mkdir "$scratch/checked"
cp "$packages"/*.deb "$project/tests/packages/use_packages.sh" "$scratch/checked"
cp -r "$project/tests/consumer" "$scratch/checked"

can_make_roots() {
    unshare --mount chroot / true 2>/dev/null || unshare --user --map-root-user --map-auto --mount true 2>/dev/null
}

# The sources of packages that this machine has, too.
mirrors() {
    local file
    for file in /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list; do
        [ ! -s "$file" ] || { echo "$file" && return; }
    done
}

in_clean_root() {
    local release
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    # shellcheck disable=SC2016,SC2046
    mmdebstrap --quiet --variant=apt --format=null --include=g++,make,cmake,pkg-config,ca-certificates \
        --dpkgopt=no-debsig --dpkgopt=force-unsafe-io --customize-hook="copy-in '$scratch/checked' /root" \
        --customize-hook="touch '$scratch/is-made'" \
        --customize-hook='chroot "$1" /root/checked/use_packages.sh' "$release" /dev/null $(mirrors)
}

# Everything is found from where it stands, so an unpacked copy serves as well; only removing it can't be tried.
unpacked() {
    local package
    for package in "$scratch/checked"/*.deb; do
        dpkg-deb --extract "$package" "$scratch/root"
    done
    "$scratch/checked/use_packages.sh" "$scratch/root/usr"
}

if [ "$way" != unpacked ] && can_make_roots; then
    echo "the packages are installed in a clean root"
    code=0
    in_clean_root || code=$?
    [ "$code" -ne 0 ] || exit 0
    [ ! -e "$scratch/is-made" ] || exit "$code"
fi
echo "no clean root can be made here: the packages are unpacked and used from there"
unpacked
if [ -n "${CI_RESULTS:-}" ]; then
    echo "1 0 1" >>"$CI_RESULTS/$CI_STEP.counts"
    echo "deb: installing in a clean root, which can't be made here" >>"$CI_RESULTS/$CI_STEP.skipped"
fi
