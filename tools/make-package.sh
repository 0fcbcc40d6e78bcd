#!/usr/bin/env bash
# Builds the Debian source package and the binary package in build/package, from the files that git knows.
# usage: tools/make-package.sh      DEB_BUILD_OPTIONS counts as it does for every Debian package
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LANG=C.UTF-8 LC_ALL=C.UTF-8

tools/install-packages.sh run package

version=$(dpkg-parsechangelog --show-field Version)
folder=build/package
tree=$folder/orvanten-manager-$version
sources=$(mktemp)
trap 'rm -f "$sources"' EXIT
# The checkout may belong to another user. What cannot be gathered leaves the older packages.
git -c "safe.directory=$PWD" ls-files -z | tar --create --null --files-from=- --file="$sources"
rm -rf "$folder"
mkdir -p "$tree"
tar --extract --directory="$tree" --file="$sources"

# Precompiled headers and a compiler cache do not go together.
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER
export DEB_BUILD_OPTIONS=${DEB_BUILD_OPTIONS:-noautodbgsym parallel=$(nproc)}
(cd "$tree" && dpkg-buildpackage --unsigned-source --unsigned-changes)
rm -rf "$tree"
ls -l "$folder"
