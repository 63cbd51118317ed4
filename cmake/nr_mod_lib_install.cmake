# Installation: headers under include/nr_mod_lib, so that #include "config/cfg_nr_waveform.h" works for hosts,
# the CMake package and the pkg-config file. All of it may be moved elsewhere as a whole.
include(CMakePackageConfigHelpers)

install(TARGETS nr_mod_lib EXPORT nr_mod_lib
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(CODE "set(NR_MOD_LIB_SOURCE_DIR [[${PROJECT_SOURCE_DIR}]])
set(NR_MOD_LIB_INCLUDEDIR [[${CMAKE_INSTALL_INCLUDEDIR}]])")
install(SCRIPT ${PROJECT_SOURCE_DIR}/cmake/install_headers.cmake)
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

# The .pc file finds the rest from where it lies itself, unless the folders were given as absolute ones.
set(pc_prefix ${CMAKE_INSTALL_PREFIX})
if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  file(RELATIVE_PATH pc_up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" pc_up ${pc_up})
  set(pc_prefix "\${pcfiledir}/${pc_up}")
endif()
foreach(folder LIBDIR INCLUDEDIR)
  set(pc_${folder} "\${prefix}/${CMAKE_INSTALL_${folder}}")
  if(IS_ABSOLUTE ${CMAKE_INSTALL_${folder}})
    set(pc_${folder} ${CMAKE_INSTALL_${folder}})
  endif()
endforeach()
# Whoever links the static library links what it needs too.
set(pc_requires pugixml)
if(NR_MOD_LIB_STATIC)
  string(JOIN " " pc_requires pugixml ${NR_MOD_LIB_PC_PRIVATE})
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/nr_mod_lib.pc.in ${PROJECT_BINARY_DIR}/nr_mod_lib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nr_mod_lib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
