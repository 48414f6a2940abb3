#!/usr/bin/env bash
# Plays the steps that Buildroot's cmake-package and Yocto's cmake class take, with what our recipes tell
# them, on the archive that comes with them and with Debian's armhf cross compiler. Neither Buildroot nor
# BitBake runs here: what is seen is that the recipes name the right things, not that they are parsed.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/gates/consume.sh
. "$here/../tests/gates/consume.sh"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
consumer_target armhf
toolchain=$here/../cmake/armhf.cmake

"$here/recipes.sh" "$tmp/recipes"
version=$(sed -n 's/^#define NETPUBLIC_VERSION_STRING "\(.*\)".*/\1/p' "$here/../netpublic/include/net_version.h")
buildroot=$tmp/recipes/buildroot/netpublic
yocto=$tmp/recipes/yocto/recipes-support/netpublic
recipe=$yocto/netpublic_$version.bb
grep -F "## [$version]" "$here/../CHANGELOG.md"
if grep -rE '@[A-Z_0-9]+@' "$buildroot" "$recipe" --include='*.in' --include='*.mk' --include='*.hash' --include='*.bb'; then
    echo "Not filled in" && exit 1
fi
grep -F "$(cat "$here/licence.txt")" "$buildroot/netpublic.mk" "$recipe"

# What the recipes' build systems unpack. The sums are those of the files that lie there.
tar -xzf "$yocto/netpublic/netpublic-$version.tar.gz" -C "$tmp"
source=$tmp/netpublic-$version
cp "$buildroot/netpublic-$version.tar.gz" "$source" # where the hash file's names are looked for
(cd "$source" && grep '^sha256' "$buildroot/netpublic.hash" | sed 's/^sha256  //' | sha256sum --check --strict)
rm "$source/netpublic-$version.tar.gz"
sha256=$(sha256sum <"$yocto/netpublic/netpublic-$version.tar.gz" | cut -d ' ' -f 1)

files() { # DIRECTORY
    (cd "$1" && find . ! -type d | LC_ALL=C sort)
}

# Ends when the build does not know an option of ours.
configure() { # OPTION...
    cmake -S "$source" -B "$tmp/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=MinSizeRel \
        -DCMAKE_INSTALL_LIBDIR=lib "$@" >"$tmp/configure.log" 2>&1 || { cat "$tmp/configure.log"; return 1; }
    if sed -n '/variables were not used/,$p' "$tmp/configure.log" | grep '^ *NETPUBLIC_'; then
        return 1
    fi
}

# Buildroot. The menu first: with its library and compiler, netpublic can be chosen, and brings TinyXML.
cat >"$tmp/Config.in" <<EOF
config BR2_INSTALL_LIBSTDCPP
	bool "C++"
config BR2_TOOLCHAIN_GCC_AT_LEAST_8
	bool
	default y
config BR2_PACKAGE_TINYXML
	bool
source "$buildroot/Config.in"
EOF
/usr/bin/python3 - "$tmp/Config.in" <<'EOF'
import sys
import kconfiglib

menu = kconfiglib.Kconfig(sys.argv[1])
chosen = menu.syms["BR2_PACKAGE_NETPUBLIC"]
chosen.set_value("y")
assert chosen.str_value == "n"
menu.syms["BR2_INSTALL_LIBSTDCPP"].set_value("y")
assert chosen.str_value == "y" and menu.syms["BR2_PACKAGE_TINYXML"].str_value == "y"
assert not menu.warnings, menu.warnings
EOF

# What Buildroot's own check of packages asks for and can be seen here: width of help, headers, fields, hash lines.
python3 - "$buildroot" <<'EOF'
import pathlib
import re
import sys

config, rules, hashes = ((pathlib.Path(sys.argv[1]) / name).read_text()
                         for name in ("Config.in", "netpublic.mk", "netpublic.hash"))
faults = [line for text in (config, rules) for line in text.splitlines() if line != line.rstrip() or len(line) > 80]
help_text = config.split("\thelp\n")[1].split("\n\n")[0].splitlines()
faults += [line for line in help_text if not re.fullmatch(r"\t  \S.{0,61}", line)]
keys = [line.split()[0] for line in config.split("\thelp\n")[0].splitlines()[1:]]
assert keys == sorted(keys, key=["bool", "depends", "select"].index), keys
assert rules.startswith("#" * 80 + "\n#\n# netpublic\n#\n" + "#" * 80 + "\n\n"), "header"
for field in ("VERSION", "SITE", "SITE_METHOD", "LICENSE", "LICENSE_FILES"):
    assert re.search(rf"^NETPUBLIC_{field} = \S", rules, re.M), field
# The legal report puts the words into quotes of the shell and into a comma-separated list.
assert not re.search("[\"',]", re.search("^NETPUBLIC_LICENSE = (.*)", rules, re.M)[1])
faults += [line for line in hashes.splitlines() if not re.fullmatch(r"#.*|sha256  [0-9a-f]{64}  \S+", line)]
assert not faults, faults
EOF

# Then the rules, under a stand-in for the infrastructure that prints what they set.
cat >"$tmp/Makefile" <<'EOF'
NETPUBLIC_PKGDIR = $(dir $(RULES))
define cmake-package
print:
	@echo site=$$(NETPUBLIC_SITE) method=$$(NETPUBLIC_SITE_METHOD) staging=$$(NETPUBLIC_INSTALL_STAGING)
	@echo needs=$$(filter tinyxml,$$(NETPUBLIC_DEPENDENCIES))
	@echo options=$$(NETPUBLIC_CONF_OPTS)
endef
include $(RULES)
EOF
make -s --warn-undefined-variables -C "$tmp" RULES="$buildroot/netpublic.mk" print 2>"$tmp/warnings" | tee "$tmp/rules"
[ ! -s "$tmp/warnings" ]
grep -x "site=$buildroot/ method=file staging=YES" "$tmp/rules"
grep -x needs=tinyxml "$tmp/rules"
read -ra options < <(sed -n 's/^options=//p' "$tmp/rules")
configure -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_RUNSTATEDIR=/run -DCMAKE_COLOR_MAKEFILE=OFF \
    -DBUILD_DOC=OFF -DBUILD_DOCS=OFF -DBUILD_EXAMPLE=OFF -DBUILD_EXAMPLES=OFF -DBUILD_TEST=OFF -DBUILD_TESTS=OFF \
    -DBUILD_TESTING=OFF -DBUILD_SHARED_LIBS=ON "${options[@]}"
cmake --build "$tmp/build"
DESTDIR=$tmp/staging cmake --install "$tmp/build" >/dev/null
consume_cmake "$tmp/staging/usr" "$tmp/cmake"
consume_pkgconfig "$tmp/staging/usr" "$tmp/pkgconfig"

# Yocto: the same installation, and every file belongs to one of the packages that a recipe has by default.
python3 - "$recipe" "$version" "$source" "$sha256" >"$tmp/options" <<'EOF'
import hashlib
import re
import sys

text = re.sub(r"\\\n", " ", open(sys.argv[1]).read())
set_by_recipe = dict(re.findall(r'^([\w\[\]-]+) = "(.*)"$', text, re.M))
rest = re.sub(r'^([\w\[\]-]+ = ".*"|#.*|inherit [\w ]+|)$', "", text, flags=re.M).strip()
assert rest == "", rest
pv = lambda name: set_by_recipe[name].replace("${PV}", sys.argv[2])
assert pv("SRC_URI") == "file://netpublic-%s.tar.gz" % sys.argv[2]
assert re.search(r"^inherit .*\bcmake\b", text, re.M)
assert set_by_recipe["SRC_URI[sha256sum]"] == sys.argv[4]
# The licence that is named has no text of its own name in the build system, so it comes from the sources.
words, md5 = re.fullmatch(r"file://(.*);md5=(\w+)", set_by_recipe["LIC_FILES_CHKSUM"]).groups()
assert hashlib.md5(open(f"{sys.argv[3]}/{words}", "rb").read()).hexdigest() == md5
assert set_by_recipe[f"NO_GENERIC_LICENSE[{set_by_recipe['LICENSE']}]"] == words
print(set_by_recipe["EXTRA_OECMAKE"])
EOF
read -ra options <"$tmp/options"
configure -DCMAKE_INSTALL_PREFIX:PATH=/usr -DCMAKE_INSTALL_BINDIR:PATH=bin -DCMAKE_INSTALL_SBINDIR:PATH=sbin \
    -DCMAKE_INSTALL_LIBEXECDIR:PATH=libexec -DCMAKE_INSTALL_SYSCONFDIR:PATH=/etc -DCMAKE_INSTALL_LOCALSTATEDIR:PATH=/var \
    -DCMAKE_INSTALL_LIBDIR:PATH=lib -DCMAKE_INSTALL_INCLUDEDIR:PATH=include -DCMAKE_INSTALL_DATAROOTDIR:PATH=share \
    -DCMAKE_NO_SYSTEM_FROM_IMPORTED=1 -DCMAKE_EXPORT_NO_PACKAGE_REGISTRY=ON -DFETCHCONTENT_FULLY_DISCONNECTED=ON \
    "${options[@]}"
DESTDIR=$tmp/image cmake --build "$tmp/build" --target install >/dev/null
diff <(files "$tmp/staging") <(files "$tmp/image")
files "$tmp/image" | while read -r file; do
    case $file in
    ./usr/lib/lib*.so.* | ./usr/lib/lib*.so | ./usr/lib/lib*.a | ./usr/include/* | ./usr/lib/pkgconfig/* | ./usr/lib/cmake/*) ;;
    *) echo "In no package: $file" && exit 1 ;;
    esac
done
