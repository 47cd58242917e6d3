// SPDX-License-Identifier: BSD-3-Clause
#include "shellscript.h"

namespace {

const char* const BashScript = R"shell(# bash completion of moodsetctl
_moodsetctl()
{
    local typed=${COMP_WORDS[COMP_CWORD]} kind line word
    local words=() lines=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        eval "words+=($word)" 2>/dev/null || words+=("$word")
    done
    typed=${typed#[\"\']}
    mapfile -t lines < <(moodsetctl completion --words -- "${words[@]}" "${typed//\\/}" 2>/dev/null)
    kind=${lines[0]-}
    COMPREPLY=()
    for line in "${lines[@]:1}"; do
        printf -v word %q "${line%%$'\t'*}"
        COMPREPLY+=("$word")
    done
    [[ ${COMPREPLY[0]-} != *= ]] || compopt -o nospace
    case $kind in
    files)
        compopt -o filenames
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$typed") ;;
    folders)
        compopt -o filenames
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -d -- "$typed") ;;
    esac
}
complete -F _moodsetctl moodsetctl
)shell";

const char* const ZshScript = R"shell(#compdef moodsetctl
# zsh completion of moodsetctl
_moodsetctl()
{
    local -a lines described
    local line word kind
    lines=("${(@f)$(moodsetctl completion --words -- "${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null)}")
    kind=$lines[1]
    for line in "${(@)lines[2,-1]}"; do
        word=${${line%%$'\t'*}//:/\\:}
        described+=("$word${${(M)line:#*$'\t'*}:+:${line#*$'\t'}}")
    done
    if (( $#described )); then
        if [[ $described[1] == *= ]]; then
            _describe -V moodsetctl described -S ''
        else
            _describe -V moodsetctl described
        fi
    fi
    case $kind in
    files) _files ;;
    folders) _files -/ ;;
    esac
}
if [[ $funcstack[1] == _moodsetctl ]]; then
    _moodsetctl "$@"
else
    compdef _moodsetctl moodsetctl
fi
)shell";

const char* const FishScript = R"shell(# fish completion of moodsetctl
function __moodsetctl_complete
    set -l words (commandline -opc)
    set -l lines (moodsetctl completion --words -- $words[2..-1] (commandline -ct | string unescape) 2>/dev/null)
    switch $lines[1]
        case files
            __fish_complete_path (commandline -ct)
        case folders
            __fish_complete_directories (commandline -ct)
    end
    test (count $lines) -gt 1; and printf '%s\n' $lines[2..-1]
end
complete -c moodsetctl -f -a '(__moodsetctl_complete)'
)shell";

} // namespace

QString completionScript(const QString& shell)
{
    if (shell == QLatin1String("bash")) {
        return QLatin1String(BashScript);
    }
    if (shell == QLatin1String("zsh")) {
        return QLatin1String(ZshScript);
    }
    return shell == QLatin1String("fish") ? QLatin1String(FishScript) : QString();
}
