# What is installed of the library, as the component library, and how other projects find it.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# What lies beside the folders is what callers include.
file(GLOB public_headers CONFIGURE_DEPENDS jni/orvex_991/*.h)
install(FILES ${public_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvex_991 COMPONENT library)
install(TARGETS orvex_991 EXPORT orvex_991
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvex_991)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orvex_991 COMPONENT library)

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/orvex_991)
install(EXPORT orvex_991 NAMESPACE orvex_991:: FILE orvex_991Config.cmake DESTINATION ${config_folder}
    COMPONENT library)
# As long as the first number is 0, the second one counts breaking changes.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orvex_991ConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orvex_991ConfigVersion.cmake DESTINATION ${config_folder} COMPONENT library)

# An installed tree may be moved: pkg-config works out the prefix from where the file lies. Folders given as absolute
# paths stay where they are.
set(pc_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
    string(REGEX REPLACE "[^/]+" ".." up ${pc_folder})
    set(pc_prefix \${pcfiledir}/${up})
endif()
cmake_path(APPEND pc_libdir \${prefix} ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND pc_includedir \${prefix} ${CMAKE_INSTALL_INCLUDEDIR} orvex_991)
configure_file(cmake/orvex_991.pc.in orvex_991.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvex_991.pc DESTINATION ${pc_folder} COMPONENT library)
