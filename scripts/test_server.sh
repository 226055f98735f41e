#!/usr/bin/env bash
# A PostgreSQL server for the tests, by itself in one folder: a socket there and no network. Its administrator
# katsudo_admin needs no password, everybody else does.
#
#   scripts/test_server.sh start FOLDER   makes it anew and starts it; writes the folder of its socket to standard output
#   scripts/test_server.sh stop FOLDER    stops it and takes the folder away
#   scripts/test_server.sh down FOLDER    stops it as a crash would; "up" starts it again
set -euo pipefail

command=$1
folder=$(realpath -m "$2")
# A socket's path can't be long, and the server's user has to reach it.
reachable() { ((EUID != 0)) || runuser -u postgres -- test -x "$(dirname "$folder")" 2>/dev/null; }
if ((${#folder} > 80)) || ! { mkdir -p "$(dirname "$folder")" && reachable; }; then
    folder=/tmp/katsudo-server-$EUID-$(cksum <<<"$folder" | cut -d' ' -f1)
fi
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)

# The server refuses to run as root.
as_user() {
    if ((EUID == 0)); then
        (cd / && runuser -u postgres -- "$@")
    else
        "$@"
    fi
}

control() {
    as_user "$bin/pg_ctl" -D "$folder/data" -l "$folder/log" -s "$@" >/dev/null
}

make() {
    rm -rf "$folder"
    mkdir -p "$folder"
    ((EUID != 0)) || chown postgres "$folder"
    as_user "$bin/initdb" -D "$folder/data" -U katsudo_admin -A trust -E UTF8 --locale=C.UTF-8 -N >"$folder/initdb.log"
    as_user tee "$folder/data/pg_hba.conf" >/dev/null <<<"local all katsudo_admin trust
local all all scram-sha-256"
    # What a power cut would lose is of no worth here.
    as_user tee -a "$folder/data/postgresql.conf" >/dev/null <<<"listen_addresses = ''
unix_socket_directories = '$folder'
max_connections = 150
shared_buffers = 256MB
fsync = off
synchronous_commit = off
full_page_writes = off"
}

case $command in
    start)
        [[ -n $bin ]] || { echo "test_server.sh: there is no PostgreSQL server" >&2; exit 1; }
        [[ ! -e $folder/data/postmaster.pid ]] || control stop -m immediate || true
        make
        control start -w
        echo "$folder"
        ;;
    up) control start -w ;;
    down) control stop -m immediate ;;
    stop)
        control stop -m immediate || true
        rm -rf "$folder"
        ;;
    *)
        echo "test_server.sh: start, stop, down or up" >&2
        exit 2
        ;;
esac
