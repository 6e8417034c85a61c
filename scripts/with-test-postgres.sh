#!/usr/bin/env bash
# Runs a command with a throwaway PostgreSQL server on a free loopback port,
# its URL in VBI_TEST_PG_URL. The server and its folder go away afterwards,
# also when the command fails. PostgreSQL refuses to run as root, so as root
# the server runs as the `postgres` user.
set -euo pipefail

bindir=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
if [ -z "$bindir" ] || [ ! -x "$bindir/initdb" ]; then
  echo "with-test-postgres: PostgreSQL server binaries not found (install the postgresql package)" >&2
  exit 1
fi

as_server_user() {
  if [ "$(id -u)" -eq 0 ]; then
    runuser -u postgres -- "$@"
  else
    "$@"
  fi
}

folder=$(mktemp -d /tmp/vbi-pg.XXXXXX)
chmod 755 "$folder"
if [ "$(id -u)" -eq 0 ]; then chown postgres "$folder"; fi

stop_server() {
  if [ -f "$folder/data/postmaster.pid" ]; then
    as_server_user "$bindir/pg_ctl" -D "$folder/data" -m immediate -w stop >/dev/null 2>&1 || true
  fi
  rm -rf "$folder"
}
trap stop_server EXIT INT TERM

as_server_user "$bindir/initdb" -D "$folder/data" -U postgres --auth=trust -E UTF8 --locale=C.UTF-8 >"$folder/initdb.log" 2>&1 \
  || { cat "$folder/initdb.log" >&2; exit 1; }

started=""
for attempt in $(seq 1 20); do
  port=$(( 20000 + (RANDOM % 30000) ))
  if as_server_user "$bindir/pg_ctl" -D "$folder/data" -l "$folder/server.log" -w -t 30 \
       -o "-p $port -k $folder -c listen_addresses=127.0.0.1 -c fsync=off -c max_connections=100" start >/dev/null 2>&1; then
    started=yes
    break
  fi
done
if [ -z "$started" ]; then
  echo "with-test-postgres: the test server did not start" >&2
  cat "$folder/server.log" >&2 || true
  exit 1
fi

export VBI_TEST_PG_URL="postgresql://postgres@127.0.0.1:$port/postgres"
echo "Test PostgreSQL server on 127.0.0.1:$port"
set +e
"$@"
status=$?
set -e
exit $status
