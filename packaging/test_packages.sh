#!/usr/bin/env bash
# Packs a build into Debian packages, unpacks them into an empty tree and uses the library and the tools
# from there. Compares the tree with what the build installs.
#   test_packages.sh BUILD_DIR [armhf]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/gates/consume.sh
. "$here/../tests/gates/consume.sh"
build=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

architecture=${2:-$(dpkg --print-architecture)}
consumer_target "${2:-}"

files() { # DIRECTORY; as the golden file has them
    (cd "$1" && find . ! -type d -printf '%P %y %l\n' | sed 's/ f $//; s/ l / -> /' | LC_ALL=C sort)
}

cpack --config "$build/CPackConfig.cmake" -B "$tmp/packages" >"$tmp/cpack.log" 2>&1 || { cat "$tmp/cpack.log"; exit 1; }
for package in libnetpublic1 libnetpublic-dev netparam; do
    deb=$(echo "$tmp/packages/$package"_*_"$architecture.deb")
    [ "$(dpkg-deb -f "$deb" Package Architecture | sed 's/.*: //' | xargs)" = "$package $architecture" ]
    # The same file in two packages would make the second one's installation fail.
    dpkg-deb -x "$deb" "$tmp/one"
    files "$tmp/one" >>"$tmp/all-files"
    rm -r "$tmp/one"
    dpkg-deb -x "$deb" "$tmp/root"
done
diff <(LC_ALL=C sort "$tmp/all-files") <(files "$tmp/root")

# What a program linked with the library comes to depend on.
dpkg-deb -e "$(echo "$tmp/packages/libnetpublic1"_*)" "$tmp/control"
grep -x 'libnetpublic 1 libnetpublic1 (>= [0-9.-]*)' "$tmp/control/shlibs"
grep -q '^ _Z10net_md_x2sP11net_param_tP9TiXmlNode@NETPUBLIC_1 1\.0\.0$' "$tmp/control/symbols"
for library in libtinyxml libstdc++6 libc6; do
    dpkg-deb -f "$(echo "$tmp/packages/libnetpublic1"_*)" Depends | grep -F "$library" >/dev/null
done

# The packages and the installation are the same tree; only programs and libraries are stripped.
DESTDIR=$tmp/installed cmake --install "$build" --prefix /usr >/dev/null
diff <(files "$tmp/installed") <(files "$tmp/root")
diff -r --exclude=netparam --exclude='lib*' "$tmp/installed/usr" "$tmp/root/usr"
diff -r --exclude='*.so*' --exclude='*.a' "$tmp/installed/usr/lib" "$tmp/root/usr/lib"
diff "$here/../tests/golden/installed.txt" \
    <(files "$tmp/root" | sed 's/-minsizerel\.cmake/-relwithdebinfo.cmake/' | LC_ALL=C sort)

consume_cmake "$tmp/root/usr" "$tmp/cmake"
consume_pkgconfig "$tmp/root/usr" "$tmp/pkgconfig"
$consumer_run "$tmp/root/usr/bin/netparam" exchange md "$here/../examples/motion_request.xml" \
    --ext "$here/../examples/motion_extension.xml" | grep -F '<MD version="1.1">' >/dev/null
