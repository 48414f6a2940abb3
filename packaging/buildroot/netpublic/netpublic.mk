################################################################################
#
# netpublic
#
################################################################################

NETPUBLIC_VERSION = 1.0.0
NETPUBLIC_SITE = $(call qstrip,$(BR2_PACKAGE_NETPUBLIC_SOURCE))
NETPUBLIC_SITE_METHOD = local
NETPUBLIC_INSTALL_STAGING = YES
NETPUBLIC_DEPENDENCIES = host-pkgconf tinyxml
# Shared or static is Buildroot's own choice, which it passes on as BUILD_SHARED_LIBS.
NETPUBLIC_CONF_OPTS = \
	-DNETPUBLIC_BUILD_TESTS=OFF \
	-DNETPUBLIC_BUILD_TOOLS=OFF \
	-DNETPUBLIC_BUILD_BENCH=OFF

$(eval $(cmake-package))
