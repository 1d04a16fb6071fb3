# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# Runs one program and stands for it: source this file, then run_child PROGRAM ARGUMENTS….

child_pid=
child_signalled=

# Starts the program, passes TERM and HUP on to it (INT as TERM) and gives its exit status. A signal to this script so
# ends the program, and the script goes on to clean up.
run_child() {
    local status
    "$@" &
    child_pid=$!
    trap 'child_signalled=1; kill -TERM "$child_pid" 2>/dev/null || true' TERM INT
    trap 'child_signalled=1; kill -HUP "$child_pid" 2>/dev/null || true' HUP
    while :; do
        child_signalled=
        status=0
        wait "$child_pid" || status=$?
        # A signal ends the wait and not the program; waiting again gives the status even when it has ended meanwhile.
        [ -n "$child_signalled" ] || break
    done
    trap - TERM INT HUP
    child_pid=
    return "$status"
}
