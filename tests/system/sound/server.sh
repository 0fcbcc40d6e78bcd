#!/bin/bash
# A sound server of its own for tests: no card, what is played can be recorded and looked at with orvantine-tones.
#
#   server.sh start FOLDER          starts PulseAudio with a silent sink "test" and waits until it answers
#   server.sh env FOLDER            prints the variables that lead a program to it: eval "$(server.sh env FOLDER)"
#   server.sh record FOLDER FILE    starts to record what the sink plays into a WAV file, and returns when it does
#   server.sh stop-record FOLDER    ends the recording; the file is complete
#   server.sh stop FOLDER           ends the recording and the server, nothing else
#
# FOLDER is an empty or absent folder of the caller's (its path at most 80 characters); the server keeps its socket,
# its log and the numbers of its processes there. Each FOLDER is a server apart, so tests can run side by side. A whole
# round by hand:
#
#   server.sh start /tmp/sound && eval "$(server.sh env /tmp/sound)"
#   server.sh record /tmp/sound /tmp/heard.wav
#   mpv --ao=pulse a.wav b.wav
#   server.sh stop /tmp/sound
#   orvantine-tones /tmp/heard.wav --expect 440,660 --order 440,660

set -u

usage() {
    sed -n '2,/^$/s/^# \{0,1\}//p' "$0" >&2
    exit 64
}

[ $# -ge 2 ] || usage
command=$1
folder=$2

variables() {
    echo "export PULSE_SERVER=unix:$folder/native"
    echo "export PULSE_COOKIE=$folder/cookie"
    echo "export PULSE_RUNTIME_PATH=$folder/runtime"
    echo "unset PULSE_SINK PULSE_SOURCE"
}

# Asks again until the command succeeds, ten seconds at most.
await() {
    for _ in $(seq 100); do
        "$@" >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    echo "server.sh: no success with: $*" >&2
    return 1
}

# Ends the process that a file names, if it is still the program that was started, and waits until it is gone.
end() {
    local file=$1 program=$2 signal=$3 id
    [ -r "$file" ] || return 0
    id=$(cat "$file")
    rm -f "$file"
    [ "$(cat "/proc/$id/comm" 2>/dev/null)" = "$program" ] || return 0
    kill "-$signal" "$id" 2>/dev/null
    await gone "$id"
}

gone() {
    ! kill -0 "$1" 2>/dev/null || [ "$(cut -d' ' -f3 "/proc/$1/stat" 2>/dev/null)" = Z ]
}

# A sink that has just started has already worked through its first two seconds; only then it is heard.
recording() {
    [ "$(stat --format=%s "$1" 2>/dev/null || echo 0)" -gt 4096 ]
}

case $command in
start)
    mkdir -p -m 0700 "$folder" "$folder/runtime" || exit 1
    (
        export PULSE_COOKIE="$folder/cookie" PULSE_RUNTIME_PATH="$folder/runtime" XDG_CONFIG_HOME="$folder"
        exec setsid pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --disable-shm=yes \
            --log-target=file:"$folder/log" \
            -L "module-null-sink sink_name=test rate=44100 channels=2" \
            -L "module-native-protocol-unix socket=$folder/native auth-anonymous=1"
    ) </dev/null >/dev/null 2>&1 &
    echo $! >"$folder/server.pid"
    eval "$(variables)"
    await pactl info
    ;;
env)
    variables
    ;;
record)
    [ $# -eq 3 ] || usage
    eval "$(variables)"
    (
        exec setsid parec --device=test.monitor --format=s16le --rate=44100 --channels=1 --latency-msec=50 \
            --file-format=wav "$3"
    ) </dev/null >/dev/null 2>&1 &
    echo $! >"$folder/recorder.pid"
    await recording "$3"
    ;;
stop-record)
    end "$folder/recorder.pid" parec INT
    ;;
stop)
    end "$folder/recorder.pid" parec INT
    end "$folder/server.pid" pulseaudio TERM
    ;;
*)
    usage
    ;;
esac
