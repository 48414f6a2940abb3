################################################################################
#
# netpublic
#
################################################################################

NETPUBLIC_VERSION = @VERSION@
# The archive lies beside this file.
NETPUBLIC_SITE = $(NETPUBLIC_PKGDIR)
NETPUBLIC_SITE_METHOD = file
NETPUBLIC_LICENSE = @LICENCE@
NETPUBLIC_LICENSE_FILES = packaging/licence.txt
NETPUBLIC_REDISTRIBUTE = NO
NETPUBLIC_INSTALL_STAGING = YES
NETPUBLIC_DEPENDENCIES = host-pkgconf tinyxml
# Shared or static is Buildroot's own choice, which it passes on as
# BUILD_SHARED_LIBS, and so is hardening (BR2_SSP_*, BR2_FORTIFY_*).
NETPUBLIC_CONF_OPTS = \
	-DNETPUBLIC_BUILD_TESTS=OFF \
	-DNETPUBLIC_BUILD_TOOLS=OFF \
	-DNETPUBLIC_BUILD_BENCH=OFF

$(eval $(cmake-package))
