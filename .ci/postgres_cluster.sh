#!/usr/bin/env bash
# A throwaway PostgreSQL cluster for the tests, in a folder of its own: its data, its log
# and its socket, no TCP port. Run as root it runs as the postgres user.
#
#   postgres_cluster.sh start DIR   starts it and prints the URI of its superuser
#   postgres_cluster.sh stop DIR    stops it and removes DIR
#
# The superuser is trusted on the socket; every other role must give its password, so
# that the tests can check a wrong one.
set -euo pipefail
command=${1:-}
dir=${2:-}
if [ -z "$dir" ] || { [ "$command" != start ] && [ "$command" != stop ]; }; then
    echo "usage: $0 start|stop DIR" >&2
    exit 2
fi
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
if [ -z "$bin" ]; then
    echo "$0: no PostgreSQL server is installed (Debian's postgresql)" >&2
    exit 1
fi
as_owner() {
    if [ "$(id -u)" = 0 ]; then
        runuser -u postgres -- "$@"
    else
        "$@"
    fi
}

if [ "$command" = stop ]; then
    if [ -f "$dir/data/postmaster.pid" ]; then
        as_owner "$bin/pg_ctl" -D "$dir/data" -m immediate -w stop >/dev/null || true
    fi
    rm -rf "$dir"
    exit 0
fi

mkdir -p "$dir"
if [ "$(id -u)" = 0 ]; then
    chown postgres: "$dir"
fi
as_owner "$bin/initdb" -D "$dir/data" -U postgres --auth-local=trust --no-sync \
    >"$dir/initdb.log" 2>&1 || { cat "$dir/initdb.log" >&2; exit 1; }
cat >"$dir/data/pg_hba.conf" <<HBA
local all postgres trust
local all all scram-sha-256
HBA
as_owner "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w \
    -o "-c listen_addresses='' -k $dir -c fsync=off" start >/dev/null ||
    { cat "$dir/server.log" >&2; exit 1; }
echo "postgresql:///postgres?host=$dir&user=postgres"
