#!/usr/bin/env bash
# What faults of the disk do to a user's files: in each command that rewrites something, calls that change the disk are
# the last one, are cut short or fail, once or from then on, and so do those of the start behind it. Afterwards every
# file must be as before the command or as after it. Prints one table: kind, points, bad ones, minutes.
# usage: tools/prove.sh FIXTURE [--step N] [--nested N] [--commands a,b]
#        FIXTURE is build/dev/bin/orvantine-crash-fixture; without a step all calls are tried, which takes hours.
set -euo pipefail
fixture=$(realpath "$1")
shift
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")/faults

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cc -O1 -Wall -Wextra -shared -fPIC -o "$work/faulty-calls.so" "$here/FaultyCalls.c"
python3 "$here/prove.py" "$fixture" "$work/faulty-calls.so" "$work" "$@"
