#!/usr/bin/env bash
# Installs what is missing of the Debian packages that tools/packages/SET.txt lists.
# usage: tools/install-packages.sh SET…
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

wanted=()
for set in "$@"; do
    list=$here/packages/$set.txt
    if [[ ! -f $list ]]; then
        echo "No package set '$set' in $here/packages." >&2
        exit 2
    fi
    while read -r package _; do
        [[ -z $package || $package == \#* ]] || wanted+=("$package")
    done <"$list"
done

if ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system. Please make sure that you have what these packages hold: ${wanted[*]}" >&2
    exit 0
fi

missing=()
for package in "${wanted[@]}"; do
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $state == installed ]] || missing+=("$package")
done
if [[ ${#missing[@]} -eq 0 ]]; then
    exit 0
fi

install=(apt-get install --yes --no-install-recommends "${missing[@]}")
if [[ $(id -u) -eq 0 ]]; then
    as_root=(env)
elif command -v sudo >/dev/null && { [[ -t 0 ]] || sudo --non-interactive true 2>/dev/null; }; then
    as_root=(sudo)
else
    echo "These packages are missing: ${missing[*]}" >&2
    echo "Please have them installed, then call this again:" >&2
    echo "    apt-get update && ${install[*]}" >&2
    exit 1
fi

echo "Installing ${missing[*]}"
if ! { "${as_root[@]}" apt-get update --quiet=2 &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "${install[@]}" --quiet=2 >/dev/null; }; then
    echo "Installing failed. These packages are missing: ${missing[*]}" >&2
    exit 1
fi
