#!/usr/bin/env bash
# Writes into DIRECTORY the recipes for Buildroot and Yocto, filled in and each with the archive of the sources beside
# it: buildroot/netpublic for the folder package/ of an external tree, yocto/recipes-support for a layer.
#   recipes.sh DIRECTORY
set -euo pipefail
# shellcheck source=packaging/release.sh
. "$(dirname "${BASH_SOURCE[0]}")/release.sh"
mkdir -p "$1"
out=$(cd "$1" && pwd)
buildroot=$out/buildroot/netpublic
yocto=$out/yocto/recipes-support/netpublic

rm -rf "$out/buildroot" "$out/yocto"
cp -r "$packaging/buildroot" "$packaging/yocto" "$out"
mv "$yocto/netpublic.bb" "$yocto/netpublic_$version.bb"
archive=$out/netpublic-$version.tar.gz
make_archive "$archive"

export VERSION=$version
LICENCE=$(cat "$packaging/licence.txt")
LICENCE_SHA256=$(sha256sum <"$packaging/licence.txt" | cut -d ' ' -f 1)
LICENCE_MD5=$(md5sum <"$packaging/licence.txt" | cut -d ' ' -f 1)
ARCHIVE_SHA256=$(sha256sum <"$archive" | cut -d ' ' -f 1)
export LICENCE LICENCE_SHA256 LICENCE_MD5 ARCHIVE_SHA256
fill_in "$out/buildroot" VERSION LICENCE LICENCE_SHA256 ARCHIVE_SHA256
fill_in "$out/yocto" LICENCE LICENCE_MD5 ARCHIVE_SHA256
mkdir "$yocto/netpublic"
cp "$archive" "$buildroot"
mv "$archive" "$yocto/netpublic"
