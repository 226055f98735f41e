#!/usr/bin/env bash
# A PostgreSQL server for the tests, by itself in one folder: a socket there and no network. Its administrator
# katsudo_admin needs no password, everybody else does.
#
#   scripts/test_server.sh start FOLDER [OPTION…]  makes it anew and starts it; writes the folder of its socket to
#                                                  standard output
#   scripts/test_server.sh stop FOLDER             stops it and takes the folder away
#   scripts/test_server.sh down FOLDER             stops it as a crash would; "up" starts it again
#   scripts/test_server.sh serve FOLDER [OPTION…]  as start, but what was committed outlives a crash; stops it when its
#                                                  own input ends, so that no test leaves one behind
#
#   network  it listens on 127.0.0.1 too, on a free port, which stands behind the folder then ("FOLDER:PORT"). TLS is on,
#            by a certificate for "localhost" of the authority FOLDER/authority.crt; all but the administrator must use it
#   small    it has a tablespace katsudo_small on a disk of 2 MB, unless nothing may be mounted here; "down" empties it
set -euo pipefail

command=$1
folder=$(realpath -m "$2")
shift 2
options=" $* "
# A socket's path can't be long, and the server's user has to reach it.
reachable() { ((EUID != 0)) || runuser -u postgres -- test -x "$(dirname "$folder")" 2>/dev/null; }
if ((${#folder} > 80)) || ! { mkdir -p "$(dirname "$folder")" && reachable; }; then
    folder=/tmp/katsudo-server-$EUID-$(cksum <<<"$folder" | cut -d' ' -f1)
fi
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)

has() { [[ $options == *" $1 "* ]]; }

# The server refuses to run as root.
as_user() {
    if ((EUID == 0)); then
        (cd / && runuser -u postgres -- "$@")
    else
        "$@"
    fi
}

# Runs a command where FOLDER/small is a small disk that nobody else sees; it goes with the last process there.
beside_small_disk() {
    # shellcheck disable=SC2016 # the shell inside expands them
    as_user unshare -Urm sh -c 'mount -t tmpfs -o size=2m,mode=700 tmpfs "$1" && shift &&
        exec unshare -U --map-user="$1" --map-group="$2" -- sh -c "shift 2; exec \"\$@\"" sh "$@"' \
        sh "$folder/small" "$(as_user id -u)" "$(as_user id -g)" "$@"
}

control() {
    local where=as_user
    [[ ! -d $folder/small ]] || where=beside_small_disk
    "$where" "$bin/pg_ctl" -D "$folder/data" -l "$folder/log" -s "$@" >/dev/null
}

set_to() {
    as_user tee -a "$folder/data/postgresql.conf" >/dev/null
}

make() {
    rm -rf "$folder"
    mkdir -p "$folder"
    ((EUID != 0)) || chown postgres "$folder"
    as_user "$bin/initdb" -D "$folder/data" -U katsudo_admin -A trust -E UTF8 --locale=C.UTF-8 -N >"$folder/initdb.log"
    as_user tee "$folder/data/pg_hba.conf" >/dev/null <<<"local all katsudo_admin trust
local all all scram-sha-256
host all katsudo_admin 127.0.0.1/32 trust
hostssl all all 127.0.0.1/32 scram-sha-256"
    # What a power cut would lose is of no worth here.
    set_to <<<"listen_addresses = ''
unix_socket_directories = '$folder'
max_connections = 150
shared_buffers = 256MB
fsync = off
synchronous_commit = $([[ $command == serve ]] && echo on || echo off)
full_page_writes = off"
}

# An authority of its own, and a certificate by it for the name "localhost".
certify() {
    local key=(req -x509 -days 2 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes)
    as_user openssl "${key[@]}" -subj "/CN=katsudo authority" -keyout "$folder/authority.key" \
        -out "$folder/authority.crt" 2>/dev/null
    as_user openssl "${key[@]}" -subj "/CN=katsudo server" -addext subjectAltName=DNS:localhost \
        -addext basicConstraints=CA:FALSE -CA "$folder/authority.crt" -CAkey "$folder/authority.key" \
        -keyout "$folder/server.key" -out "$folder/server.crt" 2>/dev/null
}

# Another process may take a port between the choice and the start.
start_on_free_port() {
    certify
    set_to <<<"ssl = on
ssl_cert_file = '$folder/server.crt'
ssl_key_file = '$folder/server.key'
listen_addresses = '127.0.0.1'"
    for _ in {1..20}; do
        port=$((20000 + RANDOM % 12000))
        set_to <<<"port = $port"
        ! control start -w 2>/dev/null || return 0
    done
    cat "$folder/log" >&2
    return 1
}

start() {
    port=5432
    [[ ! -e $folder/data/postmaster.pid ]] || control stop -m immediate || true
    make
    ! has small || { as_user mkdir -m 700 "$folder/small" && beside_small_disk true; } 2>/dev/null ||
        rmdir "$folder/small"
    if has network; then start_on_free_port; else control start -w; fi
    [[ ! -d $folder/small ]] ||
        as_user "$bin/psql" -qXh "$folder" -p "$port" -U katsudo_admin postgres \
            -c "CREATE TABLESPACE katsudo_small LOCATION '$folder/small'"
    if has network; then echo "$folder:$port"; else echo "$folder"; fi
}

stop() {
    control stop -m immediate 2>/dev/null || true
    rm -rf "$folder"
}

case $command in
    start | serve)
        [[ -n $bin ]] || { echo "test_server.sh: there is no PostgreSQL server" >&2; exit 3; }
        if [[ $command == serve ]]; then trap stop EXIT; fi
        start
        [[ $command == start ]] || cat >/dev/null
        ;;
    up) control start -w ;;
    down) control stop -m immediate ;;
    stop) stop ;;
    *)
        echo "test_server.sh: start, serve, stop, down or up" >&2
        exit 2
        ;;
esac
