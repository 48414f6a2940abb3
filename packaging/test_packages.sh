#!/usr/bin/env bash
# Makes the Debian packages below build/, holds them against what distributions ask of packages (lintian), programs
# (hardening-check) and compiler lines (blhc), unpacks them into an empty tree and uses the library and the tools from
# there. Those of a second architecture are compared with the machine's own, which must have been made before.
#   test_packages.sh [armhf]
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/gates/consume.sh
. "$here/../tests/gates/consume.sh"
native=$(dpkg --print-architecture)
architecture=${1:-$native}
triplet=$(dpkg-architecture -a "$architecture" -q DEB_HOST_MULTIARCH)
packages=$here/../build/debian-$architecture
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
consumer_target "${1:-}"

files() { # DIRECTORY; as the golden file has them
    (cd "$1" && find . ! -type d -printf '%P %y %l\n' | sed 's/ f $//; s/ l / -> /' | LC_ALL=C sort)
}

# Nobody is invented as the maintainer: without a name and an address, nothing is made.
if (cd / && env -i PATH="$PATH" GIT_CONFIG_NOSYSTEM=1 HOME="$tmp" "$here/build_debs.sh" "$tmp/nobody") 2>"$tmp/refused"; then
    exit 1
fi
grep -F DEBEMAIL "$tmp/refused"

# debhelper hides the home directory, where the compiler's cache lies. These packages never leave the machine.
! command -v ccache >/dev/null || CCACHE_DIR=$(ccache --get-config cache_dir)
export CCACHE_DIR=${CCACHE_DIR:-}
DEBFULLNAME="Test of the packages" DEBEMAIL=test@example.org "$here/build_debs.sh" "$packages" "$architecture"
# Whether it sees the misspelt words that overrides are for depends on the bytes that stand in front of them.
lintian -EvIL +pedantic --fail-on none --allow-root "$packages"/*.changes | tee "$tmp/lintian"
if grep '^[EWIP]: ' "$tmp/lintian" | grep -v ' mismatched-override spelling-error-in-binary '; then
    exit 1
fi
blhc --all "$packages/build.log"

for package in libnetpublic1 libnetpublic-dev netparam; do
    deb=$(echo "$packages/$package"_*_"$architecture.deb")
    # The same file in two packages would make the second one's installation fail.
    dpkg-deb -x "$deb" "$tmp/$package"
    files "$tmp/$package" >>"$tmp/all-files"
    dpkg-deb -x "$deb" "$tmp/root"
    # The words on the licence are those of the one place where they stand.
    diff "$here/licence.txt" <(sed -n '/^License:/,$s/^ //p' "$tmp/$package/usr/share/doc/$package/copyright" | sed 's/^\.$//')
done
diff <(LC_ALL=C sort "$tmp/all-files") <(files "$tmp/root")
grep -qxFf "$here/licence.txt" "$here/../README.md"

# What a program linked with the library comes to depend on.
dpkg-deb -e "$(echo "$packages/libnetpublic1"_*)" "$tmp/control"
grep -x 'libnetpublic 1 libnetpublic1 (>= [0-9.]*)' "$tmp/control/shlibs"
grep -q '^ _Z10net_md_x2sP11net_param_tP9TiXmlNode@NETPUBLIC_1 1\.0\.0$' "$tmp/control/symbols"
for library in libtinyxml libstdc++6 libc6; do
    dpkg-deb -f "$(echo "$packages/libnetpublic1"_*)" Depends | grep -F "$library" >/dev/null
done

# The packages hold what every installation holds, in Debian's places, and documents.
diff "$here/../tests/golden/installed.txt" <(files "$tmp/root" | grep -vP '^usr/share/(doc/(?!netparam/reference)|doc-base/|lintian/)' |
    sed "s,^usr/lib/$triplet/,usr/lib/,; s/-none\.cmake/-relwithdebinfo.cmake/; s/\.1\.gz$/.1/" | LC_ALL=C sort)

# Startup files of Debian 12 carry no marks of control-flow protection, so programs made with them do not; our objects do.
hardening-check --nocfprotection "$tmp/root/usr/bin/netparam" "$tmp/root/usr/lib/$triplet/libnetpublic.so.1"
if [ "$architecture" = amd64 ]; then
    find "$packages"/netpublic-*/obj-* -name '*.o' | while read -r object; do
        readelf -n "$object" | grep -F 'IBT, SHSTK' >/dev/null || { echo "Without control-flow protection: $object"; exit 1; }
    done
fi

# Multi-Arch: both architectures' libraries may be installed, so what they share is the same.
if [ "$architecture" != "$native" ]; then
    for package in libnetpublic1 libnetpublic-dev; do
        dpkg-deb -x "$(echo "$here/../build/debian-$native/$package"_*_"$native.deb")" "$tmp/$package-$native"
        comm -12 <(files "$tmp/$package") <(files "$tmp/$package-$native") | tee "$tmp/shared" | while read -r file; do
            cmp "$tmp/$package/$file" "$tmp/$package-$native/$file"
        done
        [ -s "$tmp/shared" ]
    done
    # Each architecture's tool writes the page itself, and says the same.
    dpkg-deb -x "$(echo "$here/../build/debian-$native/netparam"_*_"$native.deb")" "$tmp/netparam-$native"
    cmp "$tmp/root/usr/share/doc/netparam/reference.html" "$tmp/netparam-$native/usr/share/doc/netparam/reference.html"
fi

consume_cmake "$tmp/root/usr" "$tmp/cmake"
consume_pkgconfig "$tmp/root/usr" "$tmp/pkgconfig"
$consumer_run "$tmp/root/usr/bin/netparam" exchange md "$here/../examples/motion_request.xml" \
    --ext "$here/../examples/motion_extension.xml" | grep -F '<MD version="1.1">' >/dev/null
