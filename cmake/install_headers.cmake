# Run at installation: installs the headers that export something to hosts, and those that they include. What the
# library's own sources alone include stays here.
cmake_policy(VERSION 3.25)
set(source ${NR_MOD_LIB_SOURCE_DIR}/src)
cmake_path(ABSOLUTE_PATH NR_MOD_LIB_INCLUDEDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE place)

file(GLOB_RECURSE exporting RELATIVE ${source} ${source}/*.h)
list(FILTER exporting EXCLUDE REGEX "/tables/|/cfg_nr_leaf_text.h") # exported for the tests alone
set(waiting "")
foreach(header IN LISTS exporting)
  file(STRINGS ${source}/${header} exports REGEX "NR_MOD_LIB_EXPORT")
  if(exports)
    list(APPEND waiting ${header})
  endif()
endforeach()

set(public ${waiting})
while(waiting)
  list(POP_FRONT waiting header)
  file(STRINGS ${source}/${header} includes REGEX "^#include \"")
  foreach(line IN LISTS includes)
    string(REGEX REPLACE "^#include \"(.*)\".*" "\\1" included "${line}")
    if(EXISTS ${source}/${included} AND NOT included IN_LIST public) # the export header is a generated one
      list(APPEND public ${included})
      list(APPEND waiting ${included})
    endif()
  endforeach()
endwhile()

foreach(header IN LISTS public)
  cmake_path(GET header PARENT_PATH folder)
  file(INSTALL ${source}/${header} DESTINATION ${place}/nr_mod_lib/${folder})
endforeach()
