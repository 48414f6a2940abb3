SUMMARY = "Device-control protocol messages: XML to fixed-layout structures and back"
SECTION = "libs"
# No licence text to point at; set what your agreement says.
LICENSE = "CLOSED"

# A tar archive of the source tree, beside this recipe in netpublic/ (or use externalsrc). It unpacks into the
# folder that is looked for by default, netpublic-${PV}.
SRC_URI = "file://netpublic-${PV}.tar.gz"

DEPENDS = "libtinyxml"

inherit cmake pkgconfig

EXTRA_OECMAKE = "\
    -DNETPUBLIC_BUILD_TESTS=OFF \
    -DNETPUBLIC_BUILD_TOOLS=OFF \
    -DNETPUBLIC_BUILD_BENCH=OFF \
"
