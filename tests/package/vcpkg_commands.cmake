# Runs a vcpkg port without vcpkg, for a Release build: what its commands do, in plain CMake.
# usage: cmake -DPORT=NAME -DPORT_FOLDER=... -DWORK=... -P vcpkg_commands.cmake     fills WORK/packages
set(CURRENT_PACKAGES_DIR ${WORK}/packages)
set(build ${WORK}/port_build)

function(plain_cmake)
    execute_process(COMMAND ${CMAKE_COMMAND} ${ARGN} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(vcpkg_check_linkage)
    cmake_parse_arguments(PARSE_ARGV 0 asked "ONLY_STATIC_LIBRARY" "" "")
endfunction()

function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 asked "" "SOURCE_PATH" "OPTIONS")
    plain_cmake(-S ${asked_SOURCE_PATH} -B ${build} -DCMAKE_BUILD_TYPE=Release
        -DCMAKE_INSTALL_PREFIX=${CURRENT_PACKAGES_DIR} -DCMAKE_INSTALL_LIBDIR=lib ${asked_OPTIONS})
endfunction()

function(vcpkg_cmake_install)
    plain_cmake(--build ${build} --parallel --target install)
endfunction()

# Config files move to share/PACKAGE_NAME, and look for the prefix from there.
function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 asked "" "PACKAGE_NAME;CONFIG_PATH" "")
    set(config ${CURRENT_PACKAGES_DIR}/share/${asked_PACKAGE_NAME})
    file(MAKE_DIRECTORY ${CURRENT_PACKAGES_DIR}/share)
    file(RENAME ${CURRENT_PACKAGES_DIR}/${asked_CONFIG_PATH} ${config})
    file(REMOVE_RECURSE ${CURRENT_PACKAGES_DIR}/lib/cmake)
    file(GLOB files ${config}/*.cmake)
    foreach(name IN LISTS files)
        file(READ ${name} text)
        string(REPLACE
            "get_filename_component(_IMPORT_PREFIX \"\${_IMPORT_PREFIX}\" PATH)\nget_filename_component"
            "get_filename_component" text "${text}")
        file(WRITE ${name} "${text}")
    endforeach()
endfunction()

function(vcpkg_fixup_pkgconfig)
    if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/lib/pkgconfig/orvex_991.pc)
        message(FATAL_ERROR "no .pc file where it is looked for")
    endif()
endfunction()

function(vcpkg_install_copyright)
    cmake_parse_arguments(PARSE_ARGV 0 asked "" "" "FILE_LIST")
    file(COPY_FILE ${asked_FILE_LIST} ${CURRENT_PACKAGES_DIR}/share/${PORT}/copyright)
endfunction()

include(${PORT_FOLDER}/portfile.cmake)
