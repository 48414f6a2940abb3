#!/usr/bin/env bash
# Both layouts of TinyXML's nodes (TIXML_USE_STL), and every way to mix them: each must be refused when it is configured,
# compiled or linked, with words that help. The TinyXML without TIXML_USE_STL is the packaged header less that definition,
# with a stand-in for its string class, and a library with nothing in it but the class's name.
#   tinyxml_layout.sh BUILD_DIR   of the library with the packaged TinyXML
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/gates/consume.sh
. "$here/consume.sh"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
consumer_target ""

refused() { # WORDS COMMAND...; the command must fail and say the words
    local words=$1
    shift
    if "$@" >"$tmp/said" 2>&1; then
        echo "Not refused: $*"
        return 1
    fi
    # CMake breaks its lines.
    tr -s ' \n' ' ' <"$tmp/said" | grep -F "$words" >/dev/null || {
        cat "$tmp/said"
        echo "Refused without the words: $words"
        return 1
    }
}

plain=$tmp/plain
mkdir "$plain"
sed '/^#ifndef TIXML_USE_STL/,/^#endif/d' /usr/include/tinyxml.h >"$plain/tinyxml.h"
cp "$consumer/tinyxml/tinystr.h" "$plain"
echo 'const std::size_t TiXmlString::npos = ~std::size_t{0};' |
    c++ -shared -fPIC -include "$plain/tinystr.h" -o "$plain/libtinyxml.so" -x c++ -
with_plain=(-DTinyXML_INCLUDE_DIR="$plain" -DTinyXML_LIBRARY="$plain/libtinyxml.so")

# The library builds with either, and passes on which it was.
for component in runtime development; do
    DESTDIR=$tmp/stl cmake --install "$1" --prefix /usr --component "$component" >/dev/null
done
stl=$tmp/stl/usr
cmake -S "$here/../.." -B "$tmp/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
    -DNETPUBLIC_BUILD_TESTS=OFF -DNETPUBLIC_BUILD_TOOLS=OFF -DNETPUBLIC_BUILD_BENCH=OFF -DCMAKE_INSTALL_LIBDIR=lib \
    "${with_plain[@]}" >/dev/null
cmake --build "$tmp/build"
own=$tmp/own
cmake --install "$tmp/build" --prefix "$own" >/dev/null
PKG_CONFIG_PATH=$stl/lib/pkgconfig pkg-config --cflags netpublic | grep -w -e -DTIXML_USE_STL
[ "$(PKG_CONFIG_PATH=$own/lib/pkgconfig pkg-config --cflags netpublic | grep -c TIXML_USE_STL)" = 0 ]

# Configured.
header=(-DTinyXML_INCLUDE_DIR=/usr/include -DTinyXML_LIBRARY="$plain/libtinyxml.so")
refused "was compiled without TIXML_USE_STL, but /usr/include/tinyxml.h switches it on" \
    cmake -S "$consumer/cmake" -B "$tmp/header" -DCMAKE_PREFIX_PATH="$stl" "${header[@]}"
refused "netpublic was built for a TinyXML with TIXML_USE_STL=ON, but $plain/libtinyxml.so was compiled with TIXML_USE_STL=OFF" \
    cmake -S "$consumer/cmake" -B "$tmp/stl-own" -DCMAKE_PREFIX_PATH="$stl" "${with_plain[@]}"
refused "netpublic was built for a TinyXML with TIXML_USE_STL=OFF" \
    cmake -S "$consumer/cmake" -B "$tmp/own-stl" -DCMAKE_PREFIX_PATH="$own"

# Compiled, by hand; whichever header comes first, where the definition is the compiler's line's to make.
compile() { # OPTION...
    echo '#include <net_public.h>' | c++ -std=c++17 -fsyntax-only "$@" -x c++ -
}
stl_headers=-I$stl/include/netpublic
own_headers=-I$own/include/netpublic
with_stl="netpublic was built for a TinyXML compiled with TIXML_USE_STL"
without_stl="netpublic was built for a TinyXML compiled without TIXML_USE_STL"
compile "$stl_headers" -include tinyxml.h
compile "$own_headers" -I"$plain" -include tinyxml.h
refused "$with_stl" compile "$stl_headers" -I"$plain" -include tinyxml.h
refused "$without_stl" compile "$own_headers" -I"$plain" -DTIXML_USE_STL
refused "$without_stl" compile "$own_headers" -include tinyxml.h
cmake -S "$here/../.." -B "$tmp/by-line" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DNETPUBLIC_BUILD_TESTS=OFF -DNETPUBLIC_BUILD_TOOLS=OFF \
    -DNETPUBLIC_BUILD_BENCH=OFF -DTinyXML_INCLUDE_DIR="$plain" >/dev/null
by_line=(-I"$here/../../netpublic/include" -I"$tmp/by-line/include" -I"$plain")
compile "${by_line[@]}" -DTIXML_USE_STL
refused "$with_stl" compile "${by_line[@]}"

# Linked: a TinyXML that has every name but those of its layout, and then those, too.
link() { # NAME PATTERN-OF-MISSING-SYMBOLS
    mkdir "$tmp/$1"
    nm -D --undefined-only "$stl/lib/libnetpublic.so" | sed -n 's/^ *U \(.*TiXml.*\)$/\1/p' | grep -vE "$2" |
        sed 's/.*/.globl &\n&:/' >"$tmp/$1/names.s"
    c++ -shared -nostdlib -Wl,-soname,"$(readelf -d "$stl/lib/libnetpublic.so" | sed -n 's/.*NEEDED.*\[\(libtinyxml.*\)\]/\1/p')" \
        -o "$tmp/$1/libtinyxml.so" "$tmp/$1/names.s"
    echo '#include <net_public.h>
int main() { net_param_t param{}; net_ext_t ext{}; return nets_param_md_init(&param, &ext); }' |
        c++ -std=c++17 -I"$stl/include/netpublic" -o "$tmp/$1/program" -x c++ - -x none -L"$stl/lib" -L"$tmp/$1" \
            -lnetpublic -lnetpublic_host -ltinyxml
}
link same-layout '^$'
refused "undefined reference to \`operator>>(std::istream&, TiXmlNode&)'" link other-layout '^_ZrsRSi'
