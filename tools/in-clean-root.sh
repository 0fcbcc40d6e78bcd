#!/usr/bin/env bash
# Run by tools/check-package.sh inside a fresh Debian: installs the package, starts the program as a user, removes the
# package and looks for what is left.
# usage: in-clean-root.sh PACKAGE.deb
set -euo pipefail
package=$1
cd /tmp

# What still runs would hold up whoever waits for this script.
started=()
trap '[[ ${#started[@]} -eq 0 ]] || kill "${started[@]}" 2>/dev/null || true' EXIT

fail()
{
    echo "$*" >&2
    exit 1
}

# Everything but what belongs to users, to the kernel and to the package tools themselves.
files()
{
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /home -o -path /run \
        -o -path /var/log -o -path /var/lib/apt -o -path /var/cache/apt \) -prune -o -print | sort
}

# Waits up to half a minute.
await()
{
    local tenths
    for ((tenths = 0; tenths < 300; tenths++)); do
        ! "$@" || return 0
        sleep 0.1
    done
    return 1
}

# True once the window stands. Boxes on the way, as that about a missing sound card, are closed by their default button.
window_stands()
{
    ! grep -q "window visible" program.log || return 0
    local window
    for window in $(xdotool search --onlyvisible --name . 2>/dev/null); do
        xdotool windowfocus "$window" key Return 2>/dev/null || true
    done
    return 1
}

export DEBIAN_FRONTEND=noninteractive
useradd --create-home anna
apt-get satisfy --quiet=2 --yes --no-install-recommends "$(dpkg-deb --field "$package" Depends)" >/dev/null
files >before
dpkg --install "$package"

[[ $(orvanten-manager --help) == Aufruf:* ]] || fail "--help does not print the help"
grep -qx application/x-nml+xml /usr/share/mime/types || fail "NML is not known to the desktop"
complete=$(bash -c '. /usr/share/bash-completion/completions/orvanten-manager
    COMP_WORDS=(orvanten-manager --v) COMP_CWORD=1; _orvanten_manager; echo "${COMPREPLY[@]}"')
[[ $complete == --version ]] || fail "The shell completes --v to: $complete"

mkdir --mode=777 screen
Xvfb :7 -screen 0 1100x800x24 -fbdir /tmp/screen -nolisten tcp &>xvfb.log &
started+=($!)
await test -S /tmp/.X11-unix/X7 || fail "No display: $(<xvfb.log)"
# su would end before the program does; what the program writes must be readable from here.
export DISPLAY=:7
cat >/tmp/start <<'END'
export DISPLAY=:7 QT_LOGGING_RULES=orvantine.start=true
orvanten-manager 2>/tmp/program.log &
echo $! >/tmp/program.pid
wait $!
echo $? >/tmp/program.status
END
su --login anna --command "dbus-run-session -- bash /tmp/start" &
session=$!
started+=("$session")
await test -s program.pid || fail "The program does not start"
await window_stands || fail "No window came up: $(<program.log)"
sleep 2
cp screen/Xvfb_screen0 /tmp/screen.xwd
[[ -d "/home/anna/.local/share/Orvanten Manager/Playlisten" ]] || fail "The folder of the playlists is missing"
kill "$(<program.pid)"
await test -s program.status || fail "The program does not end"
wait "$session" || true
[[ $(<program.status) == 0 ]] || fail "The program ended with $(<program.status): $(<program.log)"
cat program.log

dpkg --purge orvanten-manager
files >after
diff before after || fail "The package leaves something behind"
! grep -qx application/x-nml+xml /usr/share/mime/types || fail "The desktop still knows NML"
[[ -d "/home/anna/.local/share/Orvanten Manager/Playlisten" ]] || fail "The user's files are gone"
echo "Installed, started, ended, removed: nothing is left but the user's own files."
