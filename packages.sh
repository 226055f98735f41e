#!/usr/bin/env bash
# Installs the Debian packages that the build, the tests and the demo need. Does nothing, and needs no rights, when all
# of them are there. This is the only list of them.
set -euo pipefail

packages=(
    g++ cmake ninja-build ccache pkg-config  # build
    qt6-base-dev libqt6sql6-sqlite           # Qt, and its SQLite driver
    libqt6sql6-psql                          # its driver for a PostgreSQL server
    libqt6sql6-odbc                          # its driver for every other engine
    libsqlite3-dev                           # the engine itself, for the LIKE that finds however a text is written
    libsodium-dev                            # stored PINs
    libgtest-dev libgmock-dev                # tests
    postgresql openssl                       # a server for the tests, which start their own, and its certificate
    unixodbc odbc-postgresql libsqliteodbc   # ODBC drivers, to test that way with engines that are known
    sqlite3 skkdic-extra                     # a look at the stored rows; the postcodes of the demo data
    fonts-noto-cjk                           # a font with every Japanese glyph
    xvfb imagemagick                         # a display where there is none, and its screenshot
)

is_installed() {
    [[ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}

if ! command -v apt-get >/dev/null; then
    echo "packages.sh: not a Debian system; these have to be there already: ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
done
((${#missing[@]})) || exit 0

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "packages.sh: run it as root, or install: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
    [[ -t 0 ]] || as_root+=(-n)  # nobody there to type a password
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
quietly() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive "$@" </dev/null >>"$log" 2>&1
}

echo "Installing: ${missing[*]}"
# An update that fails in part (a source of another program's) doesn't matter when the packages can be had all the same.
quietly apt-get -q update || echo "packages.sh: apt-get update failed, going on with the lists at hand" >&2
if ! quietly apt-get -q -y --no-install-recommends -o DPkg::Lock::Timeout=300 install "${missing[@]}"; then
    cat "$log" >&2
    echo "packages.sh: could not install: ${missing[*]}" >&2
    exit 1
fi
