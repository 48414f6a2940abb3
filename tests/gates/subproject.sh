#!/usr/bin/env bash
# Builds netpublic inside another project: shared by add_subdirectory, then static by FetchContent, and
# uses the static library as it is installed from there.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/gates/consume.sh
. "$here/consume.sh"
source=$(cd "$here/../.." && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
consumer_target ""

subproject() { # NAME OPTION...
    local name=$1
    shift
    cmake -S "$consumer/subproject" -B "$tmp/$name" -G Ninja -DNETPUBLIC_SOURCE="$source" -DCMAKE_BUILD_TYPE=Debug \
        -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_INSTALL_LIBDIR=lib "$@" >/dev/null
    cmake --build "$tmp/$name"
    ctest --test-dir "$tmp/$name" --output-on-failure --no-tests=error
    [ "$(ctest --test-dir "$tmp/$name" -N | sed -n 's/Total Tests: //p')" = 2 ]
    cmake --install "$tmp/$name" --prefix "$tmp/$name-installed" >/dev/null
}

# Without the C++ library's templates, which are visible by declaration.
exports() {
    nm -D --defined-only "$1" | sed 's/.* //' | grep -Ev '^_Z+N?K?St'
}

subproject shared
# Nothing of ours is installed with the project around unless it asks for it.
[ "$(cd "$tmp/shared-installed" && find . ! -type d)" = ./bin/firmware ]
readelf -d "$tmp/shared/libplugin.so" | grep 'NEEDED.*libnetpublic\.so\.1'

subproject static -DFETCH=ON -DBUILD_SHARED_LIBS=OFF -DNETPUBLIC_INSTALL=ON
[ "$(exports "$tmp/static/libplugin.so")" = plugin_parse ]
installed=$tmp/static-installed
[ -z "$(find "$installed" -name '*.so*')" ]
consume_headers "$installed"
consume_cmake "$installed" "$tmp/cmake"
consume_pkgconfig "$installed" "$tmp/pkgconfig"
