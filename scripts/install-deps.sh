#!/usr/bin/env bash
# Installs the Debian 12 packages VendimarBI needs to build, run and test.
# Safe to run again: it only asks apt for what is missing.
set -euo pipefail

packages=(
  build-essential cmake pkg-config
  qt6-base-dev qt6-declarative-dev qt6-tools-dev-tools
  libqt6sql6-sqlite libqt6sql6-psql libqt6sql6-odbc
  qt6-translations-l10n qt6-qpa-plugins
  libgl1-mesa-dev libxkbcommon-dev
  postgresql sqlite3 libpq-dev
  xvfb xauth fonts-dejavu-core fonts-dejavu-extra
  libbenchmark-dev
  qt6-charts-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
