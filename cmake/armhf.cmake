# Cross build for 32-bit ARM, hard-float, with Debian's cross compiler and armhf libraries. Programs run
# under qemu-user with the loader and libraries of the installed armhf packages.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)

# Notes on a change of the calling convention in GCC 7, which nothing here crosses.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

# Libraries only from the armhf directories; headers are shared with the build machine.
set(CMAKE_SYSTEM_LIBRARY_PATH /usr/lib/arm-linux-gnueabihf)
set(CMAKE_IGNORE_PATH /usr/lib/x86_64-linux-gnu /usr/lib/x86_64-linux-gnu/cmake)

find_program(NETPUBLIC_QEMU_ARM NAMES qemu-arm qemu-arm-static)
if(NETPUBLIC_QEMU_ARM)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${NETPUBLIC_QEMU_ARM})
    # Without the armhf C library package, the cross compiler's own one has to do.
    if(NOT EXISTS /lib/ld-linux-armhf.so.3)
        list(APPEND CMAKE_CROSSCOMPILING_EMULATOR -L /usr/arm-linux-gnueabihf)
    endif()
endif()
