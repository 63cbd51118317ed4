# Installation: headers under include/nr_mod_lib, so that #include "config/cfg_nr_waveform.h" works for hosts,
# the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS nr_mod_lib EXPORT nr_mod_lib
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nr_mod_lib
  FILES_MATCHING PATTERN "*.h")
install(FILES ${NR_MOD_LIB_EXPORT_HEADER} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nr_mod_lib/common)
install(EXPORT nr_mod_lib NAMESPACE vek:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nr_mod_lib
  FILE nr_mod_lib_targets.cmake)

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/nr_mod_lib-config.cmake.in ${PROJECT_BINARY_DIR}/nr_mod_lib-config.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nr_mod_lib)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/nr_mod_lib-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/nr_mod_lib-config.cmake ${PROJECT_BINARY_DIR}/nr_mod_lib-config-version.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nr_mod_lib)

configure_file(${PROJECT_SOURCE_DIR}/cmake/nr_mod_lib.pc.in ${PROJECT_BINARY_DIR}/nr_mod_lib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nr_mod_lib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
