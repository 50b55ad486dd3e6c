# Install rules and package files: headers, the shared libraries (with their
# SONAME links), the static libraries, zylccConfig.cmake (exporting
# zylcc::zylcc and zylcc::zylcc_static) and zylcc.pc.
include(CMakePackageConfigHelpers)

set(ZYL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zylcc)
set(ZYL_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# zylcore is exported too: zylcc::zylcc records it as a link dependency
# (it is private, so consumers only need it at link/run time), and
# zylcc::zylcc_static links zylcore_static publicly.
install(TARGETS zylcc zylcc_static zylcore zylcore_static
        EXPORT zylccTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime
                NAMELINK_COMPONENT Development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES include/zylcc.h include/zylcore.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)

# A relocated libzylcc still finds the libzylcore installed beside it.
if(NOT APPLE AND NOT WIN32)
  set_target_properties(zylcc PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()

install(EXPORT zylccTargets
        NAMESPACE zylcc::
        DESTINATION ${ZYL_CMAKE_DIR} COMPONENT Development)
configure_package_config_file(cmake/zylccConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/zylccConfig.cmake
                              INSTALL_DESTINATION ${ZYL_CMAKE_DIR})
# The SONAME carries the major version only, so any 2021.x satisfies 2021.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zylccConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zylccConfig.cmake
              ${PROJECT_BINARY_DIR}/zylccConfigVersion.cmake
        DESTINATION ${ZYL_CMAKE_DIR} COMPONENT Development)

# zylcc.pc locates the prefix from its own directory, so `cmake --install
# --prefix` anywhere gives a working file.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(ZYL_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
else()
  set(ZYL_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(ZYL_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(ZYL_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
file(RELATIVE_PATH _zyl_pc_up "/p/${ZYL_PKGCONFIG_DIR}" "/p")
string(REGEX REPLACE "/$" "" _zyl_pc_up "${_zyl_pc_up}")
set(ZYL_PC_PREFIX "\${pcfiledir}/${_zyl_pc_up}")
configure_file(cmake/zylcc.pc.in ${PROJECT_BINARY_DIR}/zylcc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zylcc.pc
        DESTINATION ${ZYL_PKGCONFIG_DIR} COMPONENT Development)
