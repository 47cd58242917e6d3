# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# The private session of ./run. Needs fail() and PROJECT. Call end_session in the end, whatever
# happens.

# shellcheck source=scripts/isolation.sh
. "$PROJECT/scripts/isolation.sh"

programs='' # where the daemon and the client are
session=''  # the folder of what never outlives the session
data=''     # the folder of what can be kept
log=''      # the daemon's log
daemon=''   # its process id
confined=() # the command that runs a program as the daemon is to run
started=''  # the process id of what was started last
groups=()   # the process groups that the session has started

make_folders()
{
    local keep=$1
    # A mount point must not lie behind a link.
    session=$(realpath -- "$(mktemp -d "${TMPDIR:-/tmp}/moodsetd-run.XXXXXX")")
    data=$session
    if [[ -n $keep ]]; then
        data=$keep
        exec {lock}>"$data/lock"
        flock --nonblock "$lock" || fail "$data: another session uses this folder"
    fi
    mkdir -m 0700 "$session/runtime"
    mkdir -p "$data"/{home,data/mime/packages,config,cache,pictures}
}

# Turns the environment into that of the session, for all that is started from now on.
enter_session()
{
    local pictures=$1
    [[ -d $pictures ]] || pictures=$data/pictures
    unset "${!XDG_@}" "${!DBUS_@}" "${!DCONF_@}" "${!QT_@}"
    export HOME=$data/home
    export XDG_DATA_HOME=$data/data XDG_CONFIG_HOME=$data/config XDG_CACHE_HOME=$data/cache
    export XDG_RUNTIME_DIR=$session/runtime
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$session/runtime/bus
    printf 'XDG_PICTURES_DIR="%s"\n' "$pictures" >"$XDG_CONFIG_HOME/user-dirs.dirs"
}

# Starts a program in a process group of its own, so that Ctrl-C reaches this script alone, and so
# that all that the program starts ends with it. Disown what runs throughout the session: the shell
# would print a line if a signal ended it.
start()
{
    setsid "$@" &
    started=$!
    groups+=("$started")
}

start_bus()
{
    bus_configuration session "$session/runtime/bus" "<standard_session_servicedirs/>" \
        >"$session/bus.conf"
    start dbus-daemon --nofork --nopidfile --config-file="$session/bus.conf" 2>"$session/bus.log"
    disown "$started"
    until [[ -S $session/runtime/bus ]]; do
        kill -0 "$started" 2>/dev/null || fail "the private message bus does not start"
        sleep 0.01
    done
}

# Without the definition, the daemon takes a bundle's files for plain text.
add_file_types()
{
    cp -f "$PROJECT/data/mime/moodsetd.xml" "$XDG_DATA_HOME/mime/packages/"
    update-mime-database "$XDG_DATA_HOME/mime" >"$session/mime.log" 2>&1 \
        || fail "the file types cannot be set up: $(tail -n 1 "$session/mime.log")"
}

# Sets confined to the command that runs a program with another view of the machine, in which only
# the session's folders can be written to, and the sample bundles are installed.
confine_daemon()
{
    local path
    private_share moodset translations
    confined=(bwrap --die-with-parent --ro-bind / / --dev-bind /dev /dev "${share[@]}")
    # In a name space of users, root could not read other users' pictures.
    if ((EUID == 0)) && ! bwrap --ro-bind / / true 2>/dev/null; then
        confined+=(--unshare-user)
    fi
    for path in /usr/share/{moodset,translations}/*; do
        confined+=(--ro-bind-try "$path" "$path")
    done
    for path in "$PROJECT"/data/moodsets/*/*.moodset; do
        path=${path%/*}
        confined+=(--ro-bind "$path" "/usr/share/moodset/${path##*/}")
    done
    for path in "$programs"/../data/*.qm; do
        confined+=(--ro-bind "$path" "/usr/share/translations/${path##*/}")
    done
    confined+=(--bind "$session" "$session" --bind "$data" "$data" --)
}

daemon_is_on_bus()
{
    dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.GetNameOwner string:com.zavro.moodsetd >/dev/null 2>&1
}

start_daemon()
{
    log=$data/moodsetd.log
    QT_FORCE_STDERR_LOGGING=1 QT_MESSAGE_PATTERN='%{type}: %{message}' \
        start "${confined[@]}" "$programs/moodsetd" 2>"$log"
    disown "$started"
    daemon=$started
    until daemon_is_on_bus; do
        kill -0 "$daemon" 2>/dev/null \
            || fail "the daemon does not start: $(grep -v '^debug: ' "$log" | tail -n 1)"
        sleep 0.01
    done
}

# Runs the client. Not in the foreground, where the shell would put signals off until its end.
client()
{
    start "$programs/moodsetctl" "$@"
    wait "$started"
}

# start_session PROGRAMS TARGET KEEP: TARGET, if it is a folder, is the session's pictures folder; else
# that is an empty one. KEEP is the folder to keep the session's data in, or empty.
start_session()
{
    programs=$1
    make_folders "$3"
    enter_session "$2"
    add_file_types
    start_bus
    confine_daemon
    start_daemon
}

end_group()
{
    local tries
    kill -TERM -- "-$1" 2>/dev/null || return 0
    # Services that the bus has started notice its end by themselves, and may still be writing.
    for ((tries = 0; tries < 100; ++tries)); do
        kill -0 -- "-$1" 2>/dev/null || return 0
        sleep 0.02
    done
    kill -KILL -- "-$1" 2>/dev/null || true
}

end_session()
{
    local index
    trap '' INT TERM HUP
    for ((index = ${#groups[@]} - 1; index >= 0; --index)); do
        end_group "${groups[index]}"
    done
    wait 2>/dev/null
    [[ -z $session ]] || rm -rf "$session"
}
