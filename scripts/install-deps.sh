#!/usr/bin/env bash
# Installs what building, running and testing Velmora need on Debian 12, and nothing when all is there.
set -euo pipefail

packages=(
  g++ make cmake pkg-config
  qt6-base-dev qt6-serialport-dev qt6-translations-l10n
  libsqlite3-dev sqlite3
  libxkbcommon-dev
  fonts-liberation2 fonts-dejavu-core adwaita-icon-theme
  xvfb xauth poppler-utils
  cups cups-client printer-driver-cups-pdf
  dpkg-dev file desktop-file-utils appstream
)

# `make fuzz` builds with clang's libFuzzer.
[ "${VELMORA_FUZZ:-}" = 1 ] && packages+=(clang)

missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null 2>&1 || { echo "Not root and no sudo: install ${missing[*]} by hand." >&2; exit 1; }
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
