# Finds TinyXML 2.6 (the first generation, not TinyXML-2) and defines TinyXML::TinyXML. TinyXML_USE_STL says which
# of its two layouts it has: its nodes hold a std::string, or a string class of its own. Whoever compiles its header
# must define TIXML_USE_STL, or not, as the library was compiled; the target passes the definition on.
find_path(TinyXML_INCLUDE_DIR tinyxml.h)
find_library(TinyXML_LIBRARY tinyxml)
mark_as_advanced(TinyXML_INCLUDE_DIR TinyXML_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TinyXML REQUIRED_VARS TinyXML_LIBRARY TinyXML_INCLUDE_DIR)

if(TinyXML_FOUND)
    # Read from the names in the file, so that nothing has to be compiled, linked or run for the target.
    file(STRINGS ${TinyXML_LIBRARY} TinyXML_own_string REGEX "TiXmlString" LIMIT_COUNT 1)
    # Some packagings switch the definition on in the header itself.
    file(STRINGS ${TinyXML_INCLUDE_DIR}/tinyxml.h TinyXML_header_defines REGEX "^[ \t]*#[ \t]*define[ \t]+TIXML_USE_STL" LIMIT_COUNT 1)
    if(TinyXML_own_string)
        set(TinyXML_USE_STL OFF)
    else()
        set(TinyXML_USE_STL ON)
    endif()
    if(TinyXML_header_defines)
        set(TinyXML_HEADER_DEFINES_USE_STL ON)
    else()
        set(TinyXML_HEADER_DEFINES_USE_STL OFF)
    endif()
    if(TinyXML_HEADER_DEFINES_USE_STL AND NOT TinyXML_USE_STL)
        message(FATAL_ERROR "TinyXML: ${TinyXML_LIBRARY} was compiled without TIXML_USE_STL, but "
            "${TinyXML_INCLUDE_DIR}/tinyxml.h switches it on, so that programs would see other nodes than the library's. "
            "Set TinyXML_LIBRARY and TinyXML_INCLUDE_DIR to a library and a header that belong together.")
    endif()
endif()

if(TinyXML_FOUND AND NOT TARGET TinyXML::TinyXML)
    add_library(TinyXML::TinyXML UNKNOWN IMPORTED)
    set_target_properties(TinyXML::TinyXML PROPERTIES
        IMPORTED_LOCATION ${TinyXML_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${TinyXML_INCLUDE_DIR})
    if(TinyXML_USE_STL)
        set_target_properties(TinyXML::TinyXML PROPERTIES INTERFACE_COMPILE_DEFINITIONS TIXML_USE_STL)
    endif()
endif()
