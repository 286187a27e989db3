#!/usr/bin/env bash
# Writes docs/functions.md, from what vorn-cli tells of its functions:
#     scripts/make-function-docs.sh VORN-CLI > docs/functions.md
# A test compares the page with what this writes.
set -euo pipefail
cli=${1:?usage: make-function-docs.sh VORN-CLI}

cat <<'END'
# The functions of formulas

This page is written by `scripts/make-function-docs.sh` from the program's own table; `vorn-cli functions NAME`
prints one row of it. Names are found in any case. *Row* is the number that stands for the function in byte code
and in files. What some functions do otherwise than their name lets one expect is told in
[formulas.md](formulas.md).
END
"$cli" functions | LC_ALL=C sort -t $'\t' -s -k 4,4 -k 2,2 | awk -F '\t' '
    $4 != category {
        category = $4
        printf "\n## %s\n\n| function | arguments | row | what it does |\n|---|---|---|---|\n", category
    }
    {
        sub(/ +$/, "", $6)
        printf "| `%s(%s)` | %s | %s | %s |\n", $2, $5, $3, $1, $6
    }'
