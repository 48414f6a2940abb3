# Run by CPack before it packs: compares the staged library's symbols with the list in the tree, and
# writes the form of it that goes into the package. A symbol too few or too many ends the packaging.
file(GLOB_RECURSE libraries ${CPACK_TEMPORARY_DIRECTORY}/runtime/*.so.*)
list(FILTER libraries EXCLUDE REGEX "/libnetpublic\\.so\\.[0-9]+$")
if(CPACK_DEBIAN_PACKAGE_ARCHITECTURE)
    set(architecture -a${CPACK_DEBIAN_PACKAGE_ARCHITECTURE})
endif()
cmake_path(GET CPACK_NETPUBLIC_SYMBOLS_OUT PARENT_PATH directory)
file(MAKE_DIRECTORY ${directory})
file(REMOVE ${CPACK_NETPUBLIC_SYMBOLS_OUT})
execute_process(
    COMMAND dpkg-gensymbols -c4 -plibnetpublic1 -v${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE} ${architecture}
        -I${CPACK_NETPUBLIC_SYMBOLS} -e${libraries} -O${CPACK_NETPUBLIC_SYMBOLS_OUT}
    WORKING_DIRECTORY ${directory}
    OUTPUT_VARIABLE difference ERROR_VARIABLE difference RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The library's symbols are not those of ${CPACK_NETPUBLIC_SYMBOLS}:\n${difference}")
endif()
