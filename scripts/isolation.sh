# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# What ./run's sessions and the tests' private machines are made of: a /usr/share and message buses
# of their own.

# private_share FOLDER...: sets share to bubblewrap's arguments for a /usr/share that shows every
# entry of the machine's, read-only, but has the FOLDERs empty and writable. A read-only root takes
# no new mount points, hence a new /usr/share with the old entries in it.
private_share()
{
    local entry name
    share=(--tmpfs /usr/share)
    for entry in /usr/share/*; do
        name=${entry##*/}
        if [[ " $* " != *" $name "* ]]; then
            share+=(--ro-bind-try "$entry" "$entry")
        fi
    done
    for name in "$@"; do
        share+=(--dir "/usr/share/$name")
    done
}

# bus_configuration TYPE SOCKET SERVICES: the configuration of a bus of TYPE (session or system)
# that listens at SOCKET, and starts the services that the element SERVICES names.
bus_configuration()
{
    cat <<END
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>$1</type>
  <listen>unix:path=$2</listen>
  <auth>EXTERNAL</auth>
  $3
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
END
}
