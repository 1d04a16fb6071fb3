# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# A home directory for one run of the player: source this file, then make_throw_away_home, and
# remove_throw_away_home at the end.

throw_away_home=

# Exports HOME and the XDG directories of the new home. What belongs to the session and not to the home stays: the
# run-time directory with the sockets of the desktop and of the sound server, and the key to the display.
make_throw_away_home() {
    if [ -n "${DISPLAY:-}" ] && [ -z "${XAUTHORITY:-}" ] && [ -f "${HOME:-/nonexistent}/.Xauthority" ]; then
        export XAUTHORITY="$HOME/.Xauthority"
    fi
    throw_away_home=$(mktemp -d)
    export HOME="$throw_away_home"
    export XDG_CONFIG_HOME="$HOME/.config" XDG_DATA_HOME="$HOME/.local/share"
    export XDG_CACHE_HOME="$HOME/.cache" XDG_STATE_HOME="$HOME/.local/state"
    mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_STATE_HOME" "$HOME/Music"
    # shellcheck disable=SC2016  # the desktop expands it, not this script
    echo 'XDG_MUSIC_DIR="$HOME/Music"' >"$XDG_CONFIG_HOME/user-dirs.dirs"
    if [ ! -w "${XDG_RUNTIME_DIR:-/nonexistent}" ]; then
        export XDG_RUNTIME_DIR="$HOME/.run"
        mkdir -m 700 "$XDG_RUNTIME_DIR"
    fi
}

remove_throw_away_home() {
    [ -z "$throw_away_home" ] || rm -rf "$throw_away_home"
    throw_away_home=
}
