# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# The phone around ./run's session: a program plays the services that a phone has on its buses, the
# reader of its back cover among them. Needs fail() and session.sh.

readonly COVER_BUNDLE=coast-light # what the played store has for every cover

phone='' # the descriptor of what the phone is told to do
heard=0  # how many lines of the phone have been shown

phone_lines()
{
    tail -n +$((heard + 1)) "$session/phone.log"
}

phone_says()
{
    phone_lines | grep -q "^$1"
}

# Before the daemon, which looks for the phone's services when it starts.
start_phone()
{
    mkfifo "$session/phone"
    exec {phone}<>"$session/phone"
    input=$session/phone start "$programs/played-phone" >"$session/phone.log" 2>"$session/phone.err"
    disown "$started"
    wait_until "the phone does not start" "$started" phone_says ready
    heard=1
    # The daemon leaves covers alone until the user has gone through the first-run wizard.
    : >"$HOME/.zavro-startupwizard-usersession-done"
}

# Shows what the phone has been asked for: the sound first, since its services do not wait for each
# other.
show_phone()
{
    local kind text
    while read -r kind text; do
        heard=$((heard + 1))
        case $kind in
        sound)
            echo "  the phone plays the sound \"$text\"" ;;
        store)
            echo "  the store is told of the cover \"$text\", which no moodset belongs to" ;;
        esac
    done < <(phone_lines | sort)
}

active_moodset()
{
    client theme | sed -n 's|^/desktop/zavro/theme/active_moodset  *||p'
}

# attach_cover ID: puts a cover on, and shows what comes of it.
attach_cover()
{
    printf 'detach\nattach %s\n' "$1" >&"$phone"
    wait_until "the daemon does not notice the back cover" "$daemon" phone_says sound
    # All else comes before the daemon answers the next call.
    client wait --log "$log"
    show_phone
    echo "  the active moodset is $(active_moodset)"
}

packages_read()
{
    grep -c '^debug: InstallManager idle in ' "$log" || true
}

has_read_more_packages()
{
    (($(packages_read) > $1))
}

# install_bundle ID: the store says that it has installed the bundle of a cover.
install_bundle()
{
    local before
    before=$(packages_read)
    printf 'install /usr/share/moodset/%s %s\n' "$COVER_BUNDLE" "$1" >&"$phone"
    wait_until "the daemon does not read the bundle" "$daemon" has_read_more_packages "$before"
}

# play_cover ID: a back cover is attached. The first time, no moodset belongs to it, and the store
# installs one.
play_cover()
{
    echo "The back cover \"$1\" is attached:"
    attach_cover "$1"
    if grep -qxF -- "store $1" "$session/phone.log"; then
        echo "The store installs the bundle $COVER_BUNDLE for it. The cover is attached again:"
        install_bundle "$1"
        attach_cover "$1"
    fi
    [[ $(active_moodset) == "/usr/share/moodset/$COVER_BUNDLE/$COVER_BUNDLE.moodset" ]] \
        || fail "the back cover has not switched the moodset"
    echo
}
