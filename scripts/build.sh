#!/usr/bin/env bash
# Builds targets in a folder of their own: build.sh FOLDER TARGET... [-- CMAKE-OPTION...]. Says
# something only if that fails.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$1
shift
targets=()
while [[ $# -gt 0 && $1 != -- ]]; do
    targets+=("$1")
    shift
done
options=("${@:2}")

log=$(mktemp)
trap 'rm -f "$log"' EXIT
generator=()
if [[ ! -e $folder/CMakeCache.txt ]] && command -v ninja >/dev/null; then
    generator=(-G Ninja)
fi
if ! { cmake -S "$top" -B "$folder" "${generator[@]}" "${options[@]}" &&
       cmake --build "$folder" --parallel --target "${targets[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
