# What is installed, in three components: runtime, development, tools (the inspector's own build file
# installs the latter).
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/netpublic)

install(TARGETS netpublic EXPORT netpublicTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(TARGETS netpublic_host EXPORT netpublicTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(FILES ${NETPUBLIC_HEADERS} ${PROJECT_SOURCE_DIR}/host/net_host_standin.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/netpublic COMPONENT development)
if(DEFINED TinyXML_USE_STL)
    install(FILES ${PROJECT_BINARY_DIR}/include/net_tinyxml.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/netpublic COMPONENT development)
endif()
install(EXPORT netpublicTargets NAMESPACE netpublic:: DESTINATION ${package_dir} COMPONENT development)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/netpublicConfig.cmake.in ${PROJECT_BINARY_DIR}/netpublicConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/netpublicConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/netpublicConfig.cmake
    ${PROJECT_BINARY_DIR}/netpublicConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/FindTinyXML.cmake
    DESTINATION ${package_dir} COMPONENT development)

# The package file finds its prefix from where it lies, so that the installed tree can be moved; a
# directory given as an absolute path stays absolute.
set(PC_PREFIX ${CMAKE_INSTALL_PREFIX})
if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    file(RELATIVE_PATH up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    string(REGEX REPLACE "/$" "" up ${up})
    set(PC_PREFIX "\${pcfiledir}/${up}")
endif()
foreach(dir LIBDIR INCLUDEDIR)
    set(PC_${dir} ${CMAKE_INSTALL_${dir}})
    if(NOT IS_ABSOLUTE ${PC_${dir}})
        set(PC_${dir} "\${prefix}/${PC_${dir}}")
    endif()
endforeach()
# Not every packaging of TinyXML brings a package file.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
    pkg_check_modules(NETPUBLIC_TINYXML_PC QUIET tinyxml)
endif()
if(PkgConfig_FOUND AND NOT NETPUBLIC_TINYXML_PC_FOUND)
    set(PC_REQUIRES "")
    set(PC_TINYXML " -ltinyxml")
else()
    set(PC_REQUIRES "\nRequires: tinyxml")
    set(PC_TINYXML "")
endif()
if(NETPUBLIC_BUILD_SHARED)
    set(PC_STATIC_CFLAGS "")
else()
    set(PC_STATIC_CFLAGS " -DNETPUBLIC_STATIC")
endif()
if(TinyXML_USE_STL)
    set(PC_TINYXML_CFLAGS " -DTIXML_USE_STL")
else()
    set(PC_TINYXML_CFLAGS "")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/netpublic.pc.in ${PROJECT_BINARY_DIR}/netpublic.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/netpublic.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
