#!/usr/bin/env bash
# Builds the Debian packages from the files that git has, as they stand in the tree, in build/deb: nothing is left among
# the sources. The packages are build/deb/*.deb.
set -euo pipefail
cd "$(dirname "$0")/.."

name=veltrane-$(dpkg-parsechangelog -S Version)
folder=$PWD/build/deb
rm -rf "$folder"
mkdir -p "$folder/$name"
git ls-files -z | while IFS= read -r -d '' path; do
    [ ! -e "$path" ] || printf '%s\0' "$path"
done | tar --null --files-from=- --create | tar --extract --directory "$folder/$name"

cd "$folder/$name"
# Without debug packages, which take as long as all the others; without debug information the folder isn't written into the
# files, so its path needs no mapping, which would keep the compiler cache from serving another checkout.
options="nocheck noautodbgsym parallel=$(nproc) reproducible=-fixfilepath"
DEB_BUILD_OPTIONS="${DEB_BUILD_OPTIONS:-$options}" DEB_CXXFLAGS_STRIP="${DEB_CXXFLAGS_STRIP:--g}" \
    dpkg-buildpackage --unsigned-source --unsigned-changes >"$folder/build.log" 2>&1 || {
    tail -n 40 "$folder/build.log" >&2
    echo "deb: the build failed; all of its output is in $folder/build.log" >&2
    exit 1
}
ls "$folder"/*.deb
