#!/usr/bin/env bash
# Makes the documents of examples/ from the scripts beside them:
#     scripts/make-examples.sh VORN-CLI [FOLDER]
# into examples/ or another folder. A test compares what is there with what this writes.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cli=$(realpath "${1:?usage: make-examples.sh VORN-CLI [FOLDER]}")
cd "${2:-$top/examples}"

for name in household-budget loan-plan inventory; do
    rm -f "$name.vn"
    "$cli" script --locale en_US --code-page 65001 --now 2025-03-31T12:00:00 "$top/examples/$name.txt"
done
