#!/usr/bin/env bash
# Starts the VendimarBI designer on the default SQLite database, which is
# created with the sample library on first use.
set -euo pipefail
build=${1:-build}
vbi="$build/src/vbi"
"$vbi" init-db --demo
exec "$vbi" demo
