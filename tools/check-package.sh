#!/usr/bin/env bash
# Checks what tools/make-package.sh has built: every file by the validator of its kind, the packages by lintian, and the
# binary package in a clean Debian 12, where it is installed, started and removed again.
# usage: tools/check-package.sh [--without-root]      --without-root leaves out the clean Debian
# Where no clean Debian can be had, says so and starts the unpacked program.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LANG=C.UTF-8 LC_ALL=C.UTF-8

without_root=no
[[ ${1:-} != --without-root ]] || without_root=yes

tools/install-packages.sh package

version=$(dpkg-parsechangelog --show-field Version)
machine=$(dpkg --print-architecture)
changes=build/package/orvanten-manager_${version}_$machine.changes
package=build/package/orvanten-manager_${version}_$machine.deb
scratch=$(mktemp --directory)
trap 'rm -rf "$scratch"' EXIT

echo "-- What the package holds"
dpkg-deb --extract "$package" "$scratch/tree"
# What package managers write down must be what the program says of itself.
said=$("$scratch/tree/usr/lib/orvanten-manager/Orvantine" --version)
if [[ $said != "Orvanten Manager $version" ]]; then
    echo "The package is of version $version, but the program says: $said" >&2
    exit 1
fi
share=$scratch/tree/usr/share
desktop-file-validate "$share/applications/orvanten-manager.desktop"
appstreamcli validate --pedantic --no-net "$share/metainfo/example.orvanten.manager.metainfo.xml"
appstreamcli validate-tree --no-net "$scratch/tree"
xmllint --noout "$share"/mime/packages/*.xml "$share"/metainfo/*.xml \
    "$share"/icons/hicolor/{scalable,symbolic}/apps/*.svg
for page in "$share"/man/man1/orvanten-manager.1.gz "$share"/man/de/man1/orvanten-manager.1.gz; do
    gzip --decompress --stdout "$page" >"$scratch/page.1"
    mandoc -T lint "$scratch/page.1"
    warnings=$(man --warnings --encoding=UTF-8 --local-file "$scratch/page.1" 2>&1 >/dev/null)
    if [[ -n $warnings ]]; then
        echo "$warnings" >&2
        exit 1
    fi
done
for side in 16 22 24 32 48 64 128 256 512; do
    read -r _ _ size _ < <(file --brief "$share/icons/hicolor/${side}x$side/apps/orvanten-manager.png" |
        sed 's/^PNG image data, /PNG image /; s/ x /x/; s/,.*//')
    if [[ $size != "${side}x$side" ]]; then
        echo "The icon of $side points is $size." >&2
        exit 1
    fi
done

echo "-- lintian"
as_root=()
[[ $(id -u) -ne 0 ]] || as_root=(--allow-root)
lintian "${as_root[@]}" -EvIL +pedantic --fail-on error,warning "$changes"

[[ $without_root == no ]] || exit 0
echo "-- A clean Debian 12"
# The mirror is the one that this machine gets its packages from.
sources=(/etc/apt/sources.list.d/debian.sources)
[[ -f ${sources[0]} ]] || sources=(/etc/apt/sources.list)
if mmdebstrap --quiet --format=null --variant=apt --dpkgopt=force-unsafe-io \
    --include=dbus,shared-mime-info,xdotool,xvfb \
    --customize-hook="touch $scratch/made" \
    --customize-hook="copy-in $package tools/in-clean-root.sh /tmp" \
    --customize-hook="chroot \"\$1\" bash /tmp/in-clean-root.sh /tmp/$(basename "$package")" \
    --customize-hook="download /tmp/screen.xwd build/package/screen.xwd" \
    bookworm /dev/null "${sources[@]}"; then
    if command -v convert >/dev/null; then
        convert build/package/screen.xwd build/package/screen.png
        echo "A picture of the window: build/package/screen.png"
    fi
    exit 0
fi
[[ ! -e $scratch/made ]] || exit 1

echo "No clean Debian can be made here: installing and removing are NOT checked. The program is started as unpacked." >&2
tools/install-packages.sh run display
for name in home config data state cache; do
    mkdir "$scratch/$name"
done
HOME=$scratch/home XDG_CONFIG_HOME=$scratch/config XDG_DATA_HOME=$scratch/data XDG_STATE_HOME=$scratch/state \
    XDG_CACHE_HOME=$scratch/cache \
    tools/on-virtual-display.sh --picture-only build/package/screen.png "$scratch/tree/usr/lib/orvanten-manager/Orvantine"
