#!/usr/bin/env bash
# Installs what a build needs from Debian's packages, as far as it is missing: install.sh [test].
# With "test" also what the tests and the check of the formatting need.
set -euo pipefail

packages=(cmake ninja-build g++ ccache pkg-config libicu-dev libgsf-1-dev libcli11-dev qt6-base-dev
    fonts-dejavu-extra fonts-liberation)
if [[ ${1:-} == test ]]; then
    packages+=(libgtest-dev libbenchmark-dev clang-format xvfb xdotool)
elif [[ -n ${WAYLAND_DISPLAY:-} ]]; then
    packages+=(qt6-wayland)
fi

if ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system; what Vorn needs is called there: ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
    [[ $status == *' installed' ]] || missing+=("$package")
done
if [[ ${#missing[@]} -eq 0 ]]; then
    exit 0
fi

root=()
if [[ $EUID -ne 0 ]]; then
    if ! command -v sudo >/dev/null; then
        echo "Missing packages: ${missing[*]}" >&2
        echo "Install them as root with: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    root=(sudo)
fi
echo "Installing ${missing[*]}" >&2
"${root[@]}" apt-get update >&2
"${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install --yes --no-install-recommends "${missing[@]}" >&2
