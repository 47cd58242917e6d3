# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# Needs fail(), and the checkout as the current directory.

# check_build_directory DIRECTORY: fails if it was configured for another checkout, as it is when a
# checkout is copied with its builds. It would build the other checkout, or nothing.
check_build_directory()
{
    local cache=$1/CMakeCache.txt source
    [[ -e $cache ]] || return 0
    source=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$cache")
    [[ $source -ef . ]] \
        || fail "$1 is the build of another checkout, ${source:-an unknown one}; remove it: rm -r $PWD/$1"
}
