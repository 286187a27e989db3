#!/usr/bin/env bash
# Makes the pictures of the window in docs/pictures from the documents of examples/:
#     scripts/make-pictures.sh VORN [FOLDER]
# into docs/pictures or another folder. How texts look depends on the fonts of the machine.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
vorn=$(realpath "${1:?usage: make-pictures.sh VORN [FOLDER]}")
folder=${2:-$top/docs/pictures}
mkdir -p "$folder"

# Paints the window with a document: picture NAME WIDTH HEIGHT DOCUMENT.
picture() {
    "$vorn" --picture "$folder/$1.png" --size "$2" "$3" --locale en_US --now 2025-03-31T12:00:00 \
        "$top/examples/$4.vn"
}

picture handheld 240 320 loan-plan
picture desktop 720 400 household-budget
picture inventory 720 360 inventory
