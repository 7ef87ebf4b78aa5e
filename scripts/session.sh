# How ./run makes itself known to the session bus. Source it.
# shellcheck shell=bash

# has_session_bus: whether programs started here find one.
has_session_bus() {
    [ -n "${DBUS_SESSION_BUS_ADDRESS:-}" ] || [ -S "${XDG_RUNTIME_DIR:-/nowhere}/bus" ]
}

# has_display: whether a window can be shown: somebody listens where the environment says.
has_display() {
    local x=${DISPLAY:-} wayland=${WAYLAND_DISPLAY:-}
    case $x in
    :*)
        x=${x#:}
        x=/tmp/.X11-unix/X${x%%.*}
        { [ -S "$x" ] || grep -q "@$x\$" /proc/net/unix; } && return 0
        ;;
    ?*) return 0 ;;
    esac
    case $wayland in
    '') return 1 ;;
    /*) ;;
    *) wayland=${XDG_RUNTIME_DIR:-/nowhere}/$wayland ;;
    esac
    [ -S "$wayland" ]
}

# console_runs SERVICE-FILE: whether the program of that packaged file has its name on the bus.
console_runs() {
    has_session_bus && dbus-send --session --print-reply --dest=org.freedesktop.DBus \
        /org/freedesktop/DBus org.freedesktop.DBus.NameHasOwner \
        "string:$(basename "$1" .service)" 2>/dev/null | grep -q 'boolean true'
}

# quoted TEXT: as one word of a service file's command line, which is read twice: for the file's own
# escapes and as a shell reads words.
quoted() {
    local word="'${1//\'/\'\\\'\'}'"
    printf '%s' "${word//\\/\\\\}"
}

# announce_console SERVICE-FILE PROGRAM: lets the session bus start the program until
# withdraw_console, with this script's surroundings. SERVICE-FILE is the packaged one, which knows
# the name and the options. Without a session bus nothing happens.
announced=''
announce_console() {
    local packaged=$1 program=$2 folder=${XDG_RUNTIME_DIR:-}/dbus-1/services command name value
    if ! has_session_bus || [ -z "${XDG_RUNTIME_DIR:-}" ] || ! mkdir -p "$folder" 2>/dev/null; then
        return 0
    fi
    command=/usr/bin/env
    for name in TRELLISPORT_BASE_URL TRELLISPORT_CA_FILE UNIFIEDPUSH_DISTRIBUTOR XDG_STATE_HOME \
        DISPLAY WAYLAND_DISPLAY XAUTHORITY; do
        value=${!name:-}
        # The bus starts programs in a folder of its own.
        [ "$name" = TRELLISPORT_CA_FILE ] && [ -n "$value" ] && value=$(readlink -m "$value")
        [ -n "$value" ] && command+=" $(quoted "$name=$value")"
    done
    command+=" $(quoted "$program") $(sed -n 's/^Exec=[^ ]* *//p' "$packaged")"
    announced=$folder/$(basename "$packaged")
    {
        sed '/^Exec=/d' "$packaged"
        printf 'Exec=%s\n' "$command"
    } >"$announced"
    reload_bus
}

withdraw_console() {
    if [ -n "$announced" ]; then
        rm -f "$announced"
        announced=''
        reload_bus
    fi
}

# The bus notices new files by itself only in a folder that it saw at its start.
reload_bus() {
    dbus-send --session --type=method_call --print-reply --dest=org.freedesktop.DBus \
        /org/freedesktop/DBus org.freedesktop.DBus.ReloadConfig >/dev/null 2>&1 || true
}
