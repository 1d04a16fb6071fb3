# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# Runs one program and stands for it: source this file, then run_child PROGRAM ARGUMENTS….

child_pid=
child_signalled=

# Starts the program, passes TERM and HUP on to it (INT as TERM) and gives its exit status. A signal to this script so
# ends the program, and the script goes on to clean up.
run_child() {
    local status
    child_pid=
    child_signalled=
    # They stand before the program starts: it may be told to end as soon as it can be heard of.
    trap 'pass_to_child TERM' TERM INT
    trap 'pass_to_child HUP' HUP
    "$@" &
    child_pid=$!
    [ -z "$child_signalled" ] || pass_to_child "$child_signalled"
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

pass_to_child() {
    child_signalled=$1
    [ -z "$child_pid" ] || kill -"$1" "$child_pid" 2>/dev/null || true
}
