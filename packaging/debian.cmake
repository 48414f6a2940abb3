# Debian packages of a build:  cpack --config build/armhf/CPackConfig.cmake -B build/packages
# They hold what "cmake --install" installs, stripped; packaging/test_packages.sh compares.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME netpublic)
set(CPACK_PACKAGE_VENDOR netpublic)
set(CPACK_PACKAGE_CONTACT "netpublic maintainers")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# The packaging's own number behind the version. It also lets a symbol that is gone be noticed: only those
# older than the package count as lost.
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_STRIP_FILES ON)
# CPack takes the build machine's architecture unless told otherwise.
if(CMAKE_LIBRARY_ARCHITECTURE STREQUAL arm-linux-gnueabihf)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
endif()
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET netparam)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

set(about "Turns the XML messages of networked video devices into fixed-layout structures, and back.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libnetpublic1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "device-control protocol messages: library
${about}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libnetpublic-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libnetpublic1 (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), libtinyxml-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "device-control protocol messages: development files
${about}

Headers, CMake package, pkg-config file and the stand-in host services.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME netparam)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "device-control protocol messages: inspector
${about}

netparam shows messages field by field and says why one is refused.")
# The dependency that programs linked with the library get, its exported symbols, and the loader's cache.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/symbols.cmake)
set(CPACK_NETPUBLIC_SYMBOLS ${PROJECT_SOURCE_DIR}/packaging/debian/libnetpublic1.symbols)
set(CPACK_NETPUBLIC_SYMBOLS_OUT ${PROJECT_BINARY_DIR}/packaging/symbols)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CPACK_NETPUBLIC_SYMBOLS_OUT})
# The host services are whoever links the library's to supply, so only packaged libraries are looked up.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)

include(CPack)
