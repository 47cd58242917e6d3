# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# What ./run shows: chooses and checks the folder or picture. Needs fail() and PROJECT.

# The user's pictures folder, as the desktop has it. Empty if there is none: a setting that is the
# home folder itself means so.
user_pictures_folder()
{
    local settings=${XDG_CONFIG_HOME:-$HOME/.config}/user-dirs.dirs folder=$HOME/Pictures line=''
    if [[ -r $settings ]]; then
        line=$(grep '^[[:space:]]*XDG_PICTURES_DIR="' "$settings" | tail -n 1) || true
    fi
    if [[ $line =~ \"(.*)\" ]]; then
        # shellcheck disable=SC2001 # a backslash stands before any character that the shell would read
        folder=$(sed 's/\\\(.\)/\1/g' <<<"${BASH_REMATCH[1]}")
        folder=${folder/#\$HOME/$HOME}
    fi
    if [[ $folder == /* && ! $folder -ef $HOME ]]; then
        printf '%s\n' "$folder"
    fi
}

# Whether a folder holds files that the daemon would list: hidden ones it passes by.
has_files()
{
    [[ -n $(find "$1" -mindepth 1 -name '.*' -prune -o -type f -print -quit 2>/dev/null) ]]
}

# Sets target to the absolute path of what the user has named.
resolve_target()
{
    local given=$1
    [[ -e $given ]] || fail "$given: no such file or folder, or no right to reach it"
    # Links are followed here, since the daemon does not follow a link to a folder.
    IFS= read -r -d '' target < <(realpath -z -- "$given")
    [[ $target != *$'\n'* ]] \
        || fail "${target//$'\n'/\\n}: a path with a line break cannot be shown"
    iconv -f "$(locale charmap)" -t UTF-8 <<<"$target" >/dev/null 2>&1 \
        || fail "$given: the path is not valid text in $(locale charmap)"
    if [[ -d $target ]]; then
        [[ -r $target && -x $target ]] || fail "$given: no right to read this folder"
        # The daemon takes no new files in there, whatever else it is told of the folder.
        [[ $target/ != /usr/share/@(moodset|sounds)/?(+([^/])/) ]] \
            || fail "$given: a folder of bundles, not of pictures"
    elif [[ -f $target ]]; then
        [[ -r $target ]] || fail "$given: no right to read this file"
    else
        fail "$given: neither a folder nor a picture"
    fi
}

# Sets target when the user has named nothing.
choose_target()
{
    [[ -n ${HOME-} && -d $HOME && -r $HOME && -x $HOME ]] \
        || fail "your home folder ${HOME-} cannot be read"
    local folder
    folder=$(user_pictures_folder)
    if [[ -n $folder && -e $folder ]]; then
        resolve_target "$folder"
        has_files "$target" && return
    fi
    echo "You have no pictures in ${folder:-a folder for them}; here are the sample pictures."
    resolve_target "$PROJECT/data/pictures"
}
