#!/usr/bin/env bash
# Whether a build is what NETPUBLIC_HARDENING promises: its compiler and linker lines, as distributions check them in
# their build logs, and the library, once it is built.
#   hardening.sh BUILD_DIR [armhf]
set -euo pipefail
build=$1
architecture=${2:-$(dpkg --print-architecture)}
log=$(mktemp)
trap 'rm -f "$log"' EXIT

{
    # Two lines by which the tool knows a build log.
    echo "dpkg-buildpackage: info: host architecture $architecture"
    echo "dpkg-buildpackage: info: host architecture $architecture"
    ninja -C "$build" -t commands netpublic netpublic_host netparam
} >"$log"
# How much is optimised is the preset's choice.
blhc --all --ignore-flag -g --ignore-flag -O2 "$log"
[ ! -f "$build/libnetpublic.so" ] || hardening-check --nocfprotection "$build/libnetpublic.so"
