SUMMARY = "Device-control protocol messages: XML to fixed-layout structures and back"
SECTION = "libs"
# @LICENCE@
LICENSE = "LicenseRef-netpublic"
LIC_FILES_CHKSUM = "file://packaging/licence.txt;md5=@LICENCE_MD5@"
NO_GENERIC_LICENSE[LicenseRef-netpublic] = "packaging/licence.txt"

# In the folder netpublic beside this recipe. It unpacks into the folder that is looked for by default.
SRC_URI = "file://netpublic-${PV}.tar.gz"
SRC_URI[sha256sum] = "@ARCHIVE_SHA256@"

DEPENDS = "libtinyxml"

inherit cmake pkgconfig

# Hardening is the distribution's choice (security_flags.inc).
EXTRA_OECMAKE = "\
    -DNETPUBLIC_BUILD_TESTS=OFF \
    -DNETPUBLIC_BUILD_TOOLS=OFF \
    -DNETPUBLIC_BUILD_BENCH=OFF \
"
