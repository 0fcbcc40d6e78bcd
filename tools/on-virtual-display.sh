#!/usr/bin/env bash
# Runs a program on a virtual display of its own and takes a picture of it once its main window stands.
# usage: tools/on-virtual-display.sh [--picture-only] PICTURE.png PROGRAM [ARGUMENT…]
# The program runs on until it ends or is interrupted; with --picture-only it is ended after the picture.
set -euo pipefail

title="^Orvanten Manager$"
# A window narrower than this is a start picture or a message box.
narrowest=600
seconds_to_wait=40

picture_only=no
if [[ ${1:-} == --picture-only ]]; then
    picture_only=yes
    shift
fi
picture=$1
shift

scratch=$(mktemp --directory)
started=()

# Ends what was started here, last first.
clean_up()
{
    local index
    for ((index = ${#started[@]} - 1; index >= 0; index--)); do
        kill "${started[index]}" 2>/dev/null || true
        wait "${started[index]}" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

main_window()
{
    local window width
    for window in $(xdotool search --onlyvisible --name "$title" 2>/dev/null); do
        width=$(xdotool getwindowgeometry --shell "$window" 2>/dev/null | sed -n 's/^WIDTH=//p')
        if [[ ${width:-0} -ge $narrowest ]]; then
            echo "$window"
            return 0
        fi
    done
    return 1
}

# Nobody sits before this display, so a box that asks is answered by its default button.
answer_boxes()
{
    local window name
    for window in $(xdotool search --onlyvisible --name . 2>/dev/null); do
        name=$(xdotool getwindowname "$window" 2>/dev/null) || continue
        case $name in
            "" | Openbox | Orvantine | "Orvanten Manager") ;;
            *)
                timeout 2 xdotool windowactivate --sync "$window" 2>/dev/null \
                    || xdotool windowfocus "$window" 2>/dev/null || true
                xdotool key Return 2>/dev/null || true
                ;;
        esac
    done
}

# Waits up to ten seconds until a server has written its address to a file.
await_address()
{
    local tenths
    for ((tenths = 0; tenths < 100; tenths++)); do
        [[ ! -s $1 ]] || return 0
        sleep 0.1
    done
    return 1
}

# The server picks a free number itself and tells it once it is ready.
Xvfb -displayfd 3 -noreset -screen 0 1400x900x24 -nolisten tcp 3>"$scratch/display" 2>"$scratch/server" &
started+=($!)
if ! await_address "$scratch/display"; then
    echo "No virtual display came up:" >&2
    cat "$scratch/server" >&2
    exit 1
fi
DISPLAY=:$(<"$scratch/display")
export DISPLAY
unset WAYLAND_DISPLAY
if [[ -z ${XDG_RUNTIME_DIR:-} ]]; then
    export XDG_RUNTIME_DIR=$scratch/runtime
    mkdir --mode=700 "$XDG_RUNTIME_DIR"
fi

if [[ -z ${DBUS_SESSION_BUS_ADDRESS:-} ]] && command -v dbus-daemon >/dev/null; then
    dbus-daemon --session --nofork --print-address=3 3>"$scratch/bus" 2>/dev/null &
    started+=($!)
    if await_address "$scratch/bus"; then
        DBUS_SESSION_BUS_ADDRESS=$(<"$scratch/bus")
        export DBUS_SESSION_BUS_ADDRESS
    fi
fi

if command -v openbox >/dev/null; then
    openbox &>/dev/null &
    started+=($!)
    # A window that comes before its manager would get neither frame nor focus.
    for ((tenths = 0; tenths < 100; tenths++)); do
        [[ $(xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null) != *"#"* ]] || break
        sleep 0.1
    done
fi

"$@" &
program=$!
started+=("$program")

found=no
for ((tenths = 0; tenths < seconds_to_wait * 10; tenths++)); do
    kill -0 "$program" 2>/dev/null || break
    if main_window >/dev/null; then
        found=yes
        break
    fi
    answer_boxes
    sleep 0.1
done
if ! kill -0 "$program" 2>/dev/null; then
    status=0
    wait "$program" || status=$?
    echo "The program ended before its window came up (exit code $status)." >&2
    exit "$((status == 0 ? 1 : status))"
fi

# The lists fill after the window has come up.
sleep 3
answer_boxes
sleep 1
mkdir -p "$(dirname "$picture")"
import -window "$(main_window || echo root)" "$picture"
if [[ $found == yes ]]; then
    echo "The program runs on a virtual display. A picture of its window: $picture"
else
    echo "The main window has not come up in $seconds_to_wait seconds. A picture of what stands instead: $picture" >&2
fi

if [[ $picture_only == yes ]]; then
    [[ $found == yes ]]
else
    wait "$program"
fi
