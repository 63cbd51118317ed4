# What every target of this project is compiled with: one interface target, linked privately.
include(GNUInstallDirs)

if(PROJECT_IS_TOP_LEVEL)
  if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release)
  endif()
  find_program(NR_MOD_LIB_CCACHE ccache)
  mark_as_advanced(NR_MOD_LIB_CCACHE)
  if(NR_MOD_LIB_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${NR_MOD_LIB_CCACHE})
  endif()
endif()

add_library(nr_mod_lib_compiler INTERFACE)
target_compile_features(nr_mod_lib_compiler INTERFACE cxx_std_20)
# No fused multiply-add behind our back: results agree between machines.
target_compile_options(nr_mod_lib_compiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -ffp-contract=off
  $<$<BOOL:${NR_MOD_LIB_WERROR}>:-Werror>)
if(NR_MOD_LIB_SANITIZE)
  target_compile_options(nr_mod_lib_compiler INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(nr_mod_lib_compiler INTERFACE -fsanitize=address,undefined)
endif()
