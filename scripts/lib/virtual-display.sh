# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# A private X server for one script: source this file, then start_virtual_display, and stop_virtual_display at the end.

virtual_display_pid=
virtual_display_dir=

# start_virtual_display SIZE: starts Xvfb on a free display number of its own choice, open only to who holds its
# cookie, and exports DISPLAY and XAUTHORITY.
start_virtual_display() {
    local size=$1 cookie number
    command -v Xvfb >/dev/null || { echo "Xvfb is missing: scripts/setup --run installs it" >&2; return 1; }
    virtual_display_dir=$(mktemp -d)
    cookie=$(mcookie)
    # The server takes every cookie of its file, whatever display the entry names.
    xauth -q -f "$virtual_display_dir/server" add :0 . "$cookie" 2>/dev/null
    mkfifo "$virtual_display_dir/number"
    # No signal of the terminal reaches the server: the window has to close before it.
    setsid Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp -noreset -auth "$virtual_display_dir/server" \
        3<>"$virtual_display_dir/number" >/dev/null 2>"$virtual_display_dir/log" &
    virtual_display_pid=$!
    exec {virtual_display_fd}<>"$virtual_display_dir/number"
    number=
    for _ in {1..30}; do
        read -r -t 1 number <&"$virtual_display_fd" && break
        kill -0 "$virtual_display_pid" 2>/dev/null || break
    done
    if [ -z "$number" ]; then
        cat "$virtual_display_dir/log" >&2
        echo "the virtual display did not start" >&2
        stop_virtual_display
        return 1
    fi
    exec {virtual_display_fd}>&-
    xauth -q -f "$virtual_display_dir/client" add ":$number" . "$cookie" 2>/dev/null
    export DISPLAY=":$number" XAUTHORITY="$virtual_display_dir/client"
}

stop_virtual_display() {
    if [ -n "$virtual_display_pid" ]; then
        kill "$virtual_display_pid" 2>/dev/null || true
        wait "$virtual_display_pid" 2>/dev/null || true
        virtual_display_pid=
    fi
    [ -z "$virtual_display_dir" ] || rm -rf "$virtual_display_dir"
    virtual_display_dir=
}
