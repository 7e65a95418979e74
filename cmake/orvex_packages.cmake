# What `cpack` makes: Debian packages, one for the library and one for docprep.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR orvex_991)
set(CPACK_PACKAGE_CONTACT "orvex_991 maintainers <maintainers@orvex-991.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

# What it needs, the C++ standard library, comes with any compiler that can use it.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME liborvex-991-dev)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SUGGESTS "cmake, pkg-config")
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION
"compact image processing for document recognition
 From a camera frame to a binary image, its components and its rows of text,
 in C++17 without dependencies. Results are the same bytes on every processor.
 .
 This package holds the headers, the static library, and what CMake and
 pkg-config need to find them.")

if(ORVEX_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL docprep)
    set(CPACK_DEBIAN_DOCPREP_PACKAGE_NAME docprep)
    set(CPACK_DEBIAN_DOCPREP_PACKAGE_SECTION graphics)
    set(CPACK_DEBIAN_DOCPREP_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_DOCPREP_DESCRIPTION
"prepares photographs of pages for text recognition
 Turns a photograph of a page upright and level, straightens its lines, evens
 the light, takes seals off, and describes each step and each row of text in
 a JSON file.")
endif()

# Where Debian looks for the licence of a package; other installations have it under their own name.
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
        RENAME copyright COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
