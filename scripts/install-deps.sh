#!/usr/bin/env bash
# Installs what building, running and testing Quorvane needs, if it is missing.
# Debian/Ubuntu through apt-get, macOS through Homebrew.
set -euo pipefail

debian_packages=(cmake g++ ninja-build qt6-base-dev qt6-serialport-dev qt6-charts-dev libqt6sql6-sqlite
    qt6-tools-dev qt6-l10n-tools qt6-tools-dev-tools libgl-dev socat xvfb xauth x11-apps
    imagemagick fonts-wqy-microhei librsvg2-bin xdotool qt6-translations-l10n
    desktop-file-utils appstream shared-mime-info)
brew_packages=(cmake ninja qt socat librsvg)

if [[ "$(uname -s)" == "Darwin" ]]; then
    command -v brew >/dev/null || { echo "Homebrew is needed: https://brew.sh" >&2; exit 1; }
    missing=()
    for p in "${brew_packages[@]}"; do
        brew list --versions "$p" >/dev/null 2>&1 || missing+=("$p")
    done
    if ((${#missing[@]})); then
        brew install "${missing[@]}"
    fi
    exit 0
fi

if ! command -v apt-get >/dev/null; then
    echo "No apt-get or Homebrew found; install these yourself: ${debian_packages[*]}" >&2
    exit 1
fi

missing=()
for p in "${debian_packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
    sudo_cmd=()
    [[ $(id -u) -eq 0 ]] || sudo_cmd=(sudo)
    echo "Installing: ${missing[*]}"
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq "${missing[@]}"
fi
