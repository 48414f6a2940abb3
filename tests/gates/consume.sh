# shellcheck shell=bash
# Sourced by the gates that use an installed tree: what a user of the library does with it.
consumer=$(cd "$(dirname "${BASH_SOURCE[0]}")/../consumer" && pwd)

# Chooses the compiler, and the emulator of a cross build.
consumer_target() { # [armhf]
    export CC=cc CXX=c++
    consumer_configure=()
    consumer_run=
    if [ "${1:-}" = armhf ]; then
        CC=arm-linux-gnueabihf-gcc CXX=arm-linux-gnueabihf-g++
        consumer_configure=(-DCMAKE_TOOLCHAIN_FILE="$consumer/../../cmake/armhf.cmake")
        consumer_run=qemu-arm
        export PKG_CONFIG_LIBDIR=/usr/lib/arm-linux-gnueabihf/pkgconfig
    fi
}

# Each header compiles on its own.
consume_headers() { # PREFIX
    local header
    for header in "$1"/include/netpublic/*.h; do
        "$CXX" -std=c++17 -Wall -Wextra -Werror -I"$1/include/netpublic" -fsyntax-only -include "$header" -x c++ /dev/null
    done
}

consume_cmake() { # PREFIX BUILD_DIR
    cmake -S "$consumer/cmake" -B "$2" -G Ninja -DCMAKE_PREFIX_PATH="$1" "${consumer_configure[@]}" >/dev/null
    cmake --build "$2"
    ctest --test-dir "$2" --output-on-failure
}

consume_pkgconfig() { # PREFIX BUILD_DIR
    mkdir "$2"
    PKG_CONFIG_PATH=$1/lib/pkgconfig:$(echo "$1"/lib/*/pkgconfig) make -C "$consumer/pkgconfig" OUT="$2" RUN="$consumer_run" check
}
