#!/usr/bin/env bash
# Runs a program on a virtual display and a session bus of its own, on which screen readers can listen.
# usage: tools/with-screen-reader-bus.sh PROGRAM [ARGUMENT…]
set -euo pipefail

launcher=/usr/libexec/at-spi-bus-launcher

if [[ ${1:-} != --inside ]]; then
    XDG_RUNTIME_DIR=$(mktemp --directory)
    export XDG_RUNTIME_DIR QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
    trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
    xvfb-run --auto-servernum dbus-run-session -- "$0" --inside "$@"
    exit
fi
shift
"$launcher" --launch-immediately &
started=$!
trap 'kill "$started" 2>/dev/null || true' EXIT
"$@"
