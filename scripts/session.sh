# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# The private session of ./run. Needs fail() and PROJECT. Call end_session in the end, whatever
# happens.

# shellcheck source=scripts/isolation.sh
. "$PROJECT/scripts/isolation.sh"
# shellcheck source=scripts/phone.sh
. "$PROJECT/scripts/phone.sh"

programs='' # where the daemon, the client and the played phone are
session=''  # the folder of what never outlives the session
data=''     # the folder of what can be kept
log=''      # the daemon's log
daemon=''   # its process id
display=()  # what a program needs of the user's own session to show windows, as variables
confined=() # the command that runs a program as the daemon is to run
started=''  # the process id of what was started last
groups=()   # the process groups that the session has started

make_folders()
{
    local keep=$1
    # The path of a mount point must not contain a link.
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

# Sets display. The socket of a Wayland session lies in the user's own runtime folder.
note_display()
{
    local name
    display=()
    for name in DISPLAY XAUTHORITY QT_QPA_PLATFORM QT_QUICK_BACKEND QT_SCALE_FACTOR; do
        [[ -z ${!name-} ]] || display+=("$name=${!name}")
    done
    if [[ ${WAYLAND_DISPLAY-} == /* ]]; then
        display+=("WAYLAND_DISPLAY=$WAYLAND_DISPLAY")
    elif [[ -n ${WAYLAND_DISPLAY-} ]]; then
        display+=("WAYLAND_DISPLAY=${XDG_RUNTIME_DIR-}/$WAYLAND_DISPLAY")
    fi
    # X11 programs look for their cookie in the home folder otherwise, which the session replaces.
    if [[ -n ${DISPLAY-} && -z ${XAUTHORITY-} && -e ${HOME-}/.Xauthority ]]; then
        display+=("XAUTHORITY=$HOME/.Xauthority")
    fi
}

# Turns the environment into that of the session, for all that is started from now on.
enter_session()
{
    local pictures=$1
    [[ -d $pictures ]] || pictures=$data/pictures
    note_display
    unset "${!XDG_@}" "${!DBUS_@}" "${!DCONF_@}" "${!QT_@}"
    export HOME=$data/home
    export XDG_DATA_HOME=$data/data XDG_CONFIG_HOME=$data/config XDG_CACHE_HOME=$data/cache
    export XDG_RUNTIME_DIR=$session/runtime
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$session/runtime/bus
    export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$session/runtime/system-bus
    printf 'XDG_PICTURES_DIR="%s"\n' "$pictures" >"$XDG_CONFIG_HOME/user-dirs.dirs"
}

# Starts a program in a process group of its own, so that Ctrl-C reaches this script alone, and so
# that all that the program starts ends with it. Disown what runs throughout the session: the shell
# would print a line if a signal ended it. A program that reads is given what it reads in input.
start()
{
    setsid "$@" <"${input:-/dev/null}" &
    started=$!
    groups+=("$started")
}

# wait_until FAILURE PROCESS COMMAND...: returns when COMMAND succeeds. If PROCESS ends before, or 30
# seconds have passed, FAILURE is what has gone wrong.
wait_until()
{
    local failure=$1 process=$2 deadline=$((SECONDS + 30))
    until "${@:3}"; do
        if ! kill -0 "$process" 2>/dev/null || ((SECONDS > deadline)); then
            fail "$failure"
        fi
        sleep 0.01
    done
}

# start_bus TYPE NAME SERVICES: starts a bus of the TYPE, which listens in the runtime folder.
start_bus()
{
    local socket=$session/runtime/$2
    bus_configuration "$1" "$socket" "$3" >"$session/$2.conf"
    start dbus-daemon --nofork --nopidfile --config-file="$session/$2.conf" 2>"$session/$2.log"
    disown "$started"
    wait_until "the private $1 bus does not start" "$started" test -S "$socket"
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

# The addresses that the daemon's unit lets it have, as prlimit wants them.
address_space()
{
    sed -n 's/^LimitAS=//p' "$programs/../data/systemd/moodsetd.service" | sed 's/infinity/unlimited/'
}

start_daemon()
{
    log=$data/moodsetd.log
    QT_FORCE_STDERR_LOGGING=1 QT_MESSAGE_PATTERN='%{type}: %{message}' \
        start "${confined[@]}" prlimit --as="$(address_space)" "$programs/moodsetd" 2>"$log"
    disown "$started"
    daemon=$started
    until daemon_is_on_bus; do
        kill -0 "$daemon" 2>/dev/null \
            || fail "the daemon does not start: $(grep -v '^debug: ' "$log" | tail -n 1)"
        sleep 0.01
    done
}

# Not in the foreground, where the shell would put signals off until its end.
run_program()
{
    start "$@"
    wait "$started"
}

client()
{
    run_program "$programs/moodsetctl" "$@"
}

# write_preview FILE: in the session's folder. The bundles' pictures are there only for the daemon, and
# for whoever is confined as it is.
write_preview()
{
    run_program "${confined[@]}" "$programs/moodsetctl" preview --quiet --output "$1"
}

# start_session PROGRAMS TARGET KEEP: TARGET, if it is a folder, is the session's pictures folder;
# else that is an empty one. KEEP is the folder to keep the session's data in, or empty.
start_session()
{
    programs=$1
    make_folders "$3"
    enter_session "$2"
    add_file_types
    start_bus session bus "<standard_session_servicedirs/>"
    start_bus system system-bus ""
    start_phone
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
