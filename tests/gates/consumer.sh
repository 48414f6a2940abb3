#!/usr/bin/env bash
# Installs a build into a temporary directory and runs the consumer projects against it.
#   consumer.sh BUILD_DIR [armhf]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/gates/consume.sh
. "$here/consume.sh"
build=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

consumer_target "${2:-}"
DESTDIR=$tmp cmake --install "$build" --prefix /usr >/dev/null
consume_headers "$tmp/usr"
consume_cmake "$tmp/usr" "$tmp/cmake"
consume_pkgconfig "$tmp/usr" "$tmp/pkgconfig"
