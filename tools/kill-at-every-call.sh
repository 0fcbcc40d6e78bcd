#!/usr/bin/env bash
# Kills the program at every call that changes something on the disk, in the middle of each command that rewrites the
# catalogue or a list, and looks at what the next start finds: everything as before the command, or as after it. Where
# a command writes its list and then the catalogue, the list may be ahead; the catalogue never is.
# usage: tools/kill-at-every-call.sh FIXTURE [COMMAND…]      FIXTURE is build/dev/bin/orvantine-crash-fixture
# ORVANTINE_KILL_STEP=N tries each N-th call only.
# Without the right to trace (some containers) it says so and ends well.
set -euo pipefail
fixture=$(realpath "$1")
shift
commands=("$@")
# A list that is copied to a place of its own is copied before it is saved: see tools/prove.sh.
[[ ${#commands[@]} -gt 0 ]] || mapfile -t commands < <("$fixture" | grep -v '^local-save$')
# Between two of these calls nothing on the disk changes.
calls=(write pwrite64 ftruncate unlink rename renameat2 fsync fdatasync fchmod chmod utimensat mkdir fallocate)

if ! strace -o /dev/null true 2>/dev/null; then
    echo "kill-at-every-call: no right to trace processes here, skipped"
    exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export LC_ALL=C.UTF-8

# What a start after the kill finds, as FIXTURE's show prints it.
try_point()
{
    local lane=$1 command=$2 call=$3 number=$4
    rm -rf "$lane/there"
    FIXTURE_FOR="$command" "$fixture" prepare "$lane/there"
    local status=0
    strace -o /dev/null -e "trace=$call" -e "inject=$call:signal=KILL:when=$number" \
        "$fixture" "$command" "$lane/there" >/dev/null 2>&1 || status=$?
    if [[ $status -ne 137 ]]; then
        echo "NOT KILLED: $command at $call number $number, exit code $status"
        touch "$work/lost"
    fi
    "$fixture" show "$lane/there" | sed "s|$lane|LANE|" >"$lane/found"
    local state
    for state in before after between; do
        if [[ -e $work/$state.$command ]] && cmp -s "$lane/found" "$work/$state.$command"; then
            return
        fi
    done
    {
        echo "LOST: $command, killed at $call number $number:"
        diff "$work/before.$command" "$lane/found" | head -20 || true
        touch "$work/lost"
    }
}

# What may be found beside the states before and after a command.
between()
{
    local command=$1
    case $command in
    remove-track | remove-new-track | drop | new)
        sed '/^Index$/,$d' "$work/after.$command"
        sed -n '/^Index$/,$p' "$work/before.$command"
        ;;
    drop-folder) # its picture comes last
        grep -v '^Resource/Neue Musik.jpg' "$work/after.$command"
        ;;
    *) return ;;
    esac >"$work/between.$command"
}

lane_of_points()
{
    local lane=$1 points=$2
    while read -r command call number; do
        try_point "$lane" "$command" "$call" "$number"
    done <"$points"
}

mkdir -p "$work/plain"
for command in "${commands[@]}"; do
    rm -rf "$work/plain/there"
    FIXTURE_FOR="$command" "$fixture" prepare "$work/plain/there"
    "$fixture" show "$work/plain/there" | sed "s|$work/plain|LANE|" >"$work/before.$command"
    strace -o "$work/trace" -e "trace=$(IFS=,; echo "${calls[*]}")" "$fixture" "$command" "$work/plain/there" >/dev/null
    "$fixture" show "$work/plain/there" | sed "s|$work/plain|LANE|" >"$work/after.$command"
    if cmp -s "$work/before.$command" "$work/after.$command"; then
        echo "kill-at-every-call: $command changes nothing" >&2
        exit 1
    fi
    between "$command"
    for call in "${calls[@]}"; do
        count=$(grep -c "^$call(" "$work/trace" || true)
        for ((number = 1; number <= count; ++number)); do
            echo "$command $call $number"
        done
    done
done | awk -v step="${ORVANTINE_KILL_STEP:-1}" 'NR % step == 0' >"$work/points"

lanes=$(nproc)
split -n "r/$lanes" "$work/points" "$work/points."
for points in "$work"/points.*; do
    lane="$work/lane${points##*.}"
    mkdir -p "$lane"
    # The shell tells of each killed process; what was lost is told on the other channel.
    lane_of_points "$lane" "$points" 2>/dev/null &
done
wait

echo "kill-at-every-call: ${commands[*]}: $(wc -l <"$work/points") points, $([[ -e $work/lost ]] && echo "SOME LOST" || echo "lost = 0"), $SECONDS s"
[[ ! -e $work/lost ]]
