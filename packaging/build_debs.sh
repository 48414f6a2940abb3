#!/usr/bin/env bash
# Makes the Debian packages with debhelper, from what git knows of: .deb files, build log and the archive of the
# sources in DIRECTORY. ARCHITECTURE is the machine's own, or one that a cross compiler is there for.
# The packages name as their maintainer whoever builds them: DEBFULLNAME and DEBEMAIL, or else git's user.
#   build_debs.sh DIRECTORY [ARCHITECTURE]
set -euo pipefail
# shellcheck source=packaging/release.sh
. "$(dirname "${BASH_SOURCE[0]}")/release.sh"
mkdir -p "$1"
out=$(cd "$1" && pwd)
architecture=${2:-$(dpkg --print-architecture)}

DEBFULLNAME=${DEBFULLNAME:-$(git config user.name || true)}
DEBEMAIL=${DEBEMAIL:-$(git config user.email || true)}
if [ -z "$DEBFULLNAME" ] || [ -z "$DEBEMAIL" ]; then
    echo "Who builds the packages? Set DEBFULLNAME and DEBEMAIL, your name and address." >&2
    exit 1
fi
export MAINTAINER="$DEBFULLNAME <$DEBEMAIL>"
LICENCE_INDENTED=$(sed 's/^$/./; s/^/ /' "$packaging/licence.txt")
export LICENCE_INDENTED

source=$out/netpublic-$version
rm -rf "$out"/*.deb "$out"/*.changes "$out"/*.buildinfo "$source"
make_archive "$out/netpublic_$version.orig.tar.gz"
tar -xzf "$out/netpublic_$version.orig.tar.gz" -C "$out"
cp -r "$packaging/debian" "$source/debian"
fill_in "$source/debian" MAINTAINER LICENCE_INDENTED
python3 "$packaging/changelog.py" "$packaging/../CHANGELOG.md" "$MAINTAINER" >"$source/debian/changelog"

# For another architecture, dpkg asks for all of the distribution's cross packages, of which few are needed.
cd "$source"
check=--check-builddeps
[ "$architecture" = "$(dpkg --print-architecture)" ] || check=--no-check-builddeps
if ! dpkg-buildpackage --build=binary --unsigned-changes --unsigned-buildinfo $check \
    --host-arch "$architecture" >"$out/build.log" 2>&1; then
    cat "$out/build.log" >&2
    exit 1
fi
ls "$out"/*.deb
