#!/usr/bin/env bash
# Starts VendimarBI on the default SQLite database, creating it with the
# sample library on first use.
set -euo pipefail
build=${1:-build}
vbi="$build/src/vbi"
"$vbi" init-db --demo
url=$("$vbi" default-url)
echo
echo "The designer window arrives in a later release. Meanwhile the database is ready:"
echo "  $url"
echo "Open it with: sqlite3 ${url#sqlite://}"
