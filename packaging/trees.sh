# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# Clean trees of Debian, for tests of packages and with other releases. Needs fail(), PROJECT, and root
# rights.

# The release that the packages are for, if the script has named no other.
readonly RELEASE=${RELEASE:-bookworm}

# Sets sources to the machine's own package sources, of which mmdebstrap makes those of a tree. For
# another release than the machine's, these are copies in $place/lists.
find_sources()
{
    local file codename copy
    sources=()
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
        if [[ -s $file ]] && grep -qE '^(deb |URIs:)' "$file"; then
            sources+=("$file")
        fi
    done
    ((${#sources[@]} > 0)) || fail "this machine has no package sources"
    codename=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    if [[ $codename != "$RELEASE" ]]; then
        local -a own=("${sources[@]}")
        mkdir -p "$place/lists"
        sources=()
        for file in "${own[@]}"; do
            copy=$place/lists/${file##*/}
            sed "s/\b$codename\b/$RELEASE/g" "$file" >"$copy"
            sources+=("$copy")
        done
    fi
}

# make_tree TARGET LOG ARGUMENT...: has mmdebstrap make a tree. TARGET is a directory, or "none" if only
# what the hooks do is of interest.
make_tree()
{
    local target=$1 log=$2 format=directory
    shift 2
    if [[ $target == none ]]; then
        target=- format=null
    fi
    mmdebstrap --mode=root --format="$format" --aptopt='APT::Install-Recommends "false"' \
        "$@" "$RELEASE" "$target" "${sources[@]}" >"$log" 2>&1 \
        || { tail -n 30 "$log" >&2; fail "the tree could not be made, or a check in it failed; see $log"; }
}

step()
{
    printf '== %s (after %d min %d s)\n' "$1" $((SECONDS / 60)) $((SECONDS % 60))
}
