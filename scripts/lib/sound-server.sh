# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# A private sound server that nobody hears: source this file, then start_sound_server, and stop_sound_server at the end.

sound_server_pid=
sound_server_dir=

# Starts PulseAudio with a null sink and exports PULSE_SERVER.
start_sound_server() {
    command -v pulseaudio >/dev/null || { echo "pulseaudio is missing: scripts/setup installs it" >&2; return 1; }
    sound_server_dir=$(mktemp -d)
    mkdir "$sound_server_dir/home"
    HOME="$sound_server_dir/home" XDG_RUNTIME_DIR="$sound_server_dir" setsid pulseaudio -n --daemonize=no \
        --exit-idle-time=-1 --use-pid-file=no -L module-null-sink \
        -L "module-native-protocol-unix auth-anonymous=1 socket=$sound_server_dir/socket" \
        >"$sound_server_dir/log" 2>&1 &
    sound_server_pid=$!
    for _ in {1..100}; do
        [ ! -S "$sound_server_dir/socket" ] || break
        kill -0 "$sound_server_pid" 2>/dev/null || break
        sleep 0.1
    done
    if [ ! -S "$sound_server_dir/socket" ]; then
        cat "$sound_server_dir/log" >&2
        echo "the sound server did not start" >&2
        stop_sound_server
        return 1
    fi
    export PULSE_SERVER="unix:$sound_server_dir/socket"
}

stop_sound_server() {
    if [ -n "$sound_server_pid" ]; then
        kill "$sound_server_pid" 2>/dev/null || true
        wait "$sound_server_pid" 2>/dev/null || true
        sound_server_pid=
    fi
    [ -z "$sound_server_dir" ] || rm -rf "$sound_server_dir"
    sound_server_dir=
}
