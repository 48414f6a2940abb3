#!/usr/bin/env bash
# Installs a build into a temporary directory and runs the consumer projects against it.
#   consumer.sh BUILD_DIR [armhf]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1
consumer=$here/../consumer
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

export CC=cc CXX=c++
configure=()
run=
if [ "${2:-}" = armhf ]; then
    CC=arm-linux-gnueabihf-gcc CXX=arm-linux-gnueabihf-g++
    configure=(-DCMAKE_TOOLCHAIN_FILE="$here/../../cmake/armhf.cmake")
    run=qemu-arm
    export PKG_CONFIG_LIBDIR=/usr/lib/arm-linux-gnueabihf/pkgconfig
fi

DESTDIR=$tmp cmake --install "$build" --prefix /usr >/dev/null
installed=$tmp/usr

for header in "$installed"/include/netpublic/*.h; do
    "$CXX" -std=c++17 -Wall -Wextra -Werror -I"$installed/include/netpublic" -fsyntax-only -include "$header" -x c++ /dev/null
done

cmake -S "$consumer/cmake" -B "$tmp/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$installed" "${configure[@]}" >/dev/null
cmake --build "$tmp/cmake"
ctest --test-dir "$tmp/cmake" --output-on-failure

mkdir "$tmp/pkgconfig"
PKG_CONFIG_PATH=$installed/lib/pkgconfig make -C "$consumer/pkgconfig" OUT="$tmp/pkgconfig" RUN="$run" check
