# SPDX-License-Identifier: BSD-3-Clause
# shellcheck shell=bash
#
# For scripts that do one thing after another and end at the first that fails. To be sourced.
set -euo pipefail

cd "$(dirname "$(realpath "$0")")/.."
current=
# phase NAME: begins a phase with this name.
phase()
{
    current=$1
    printf '\n== %s (after %d min %d s)\n' "$current" $((SECONDS / 60)) $((SECONDS % 60))
}
trap 'status=$?; ((status == 0)) || [[ -z $current ]] || echo "== failed: $current" >&2' EXIT
