# Fails unless every public header compiles alone and without a warning.
#   cmake -DSOURCE=... -DWORK=... -DCOMPILER=... -P tests/headers.cmake
cmake_minimum_required(VERSION 3.25)

set(compile "${COMPILER}" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Werror "-I${SOURCE}" -x c++)
file(REMOVE_RECURSE "${WORK}")

# What must not pass: a name that is not known, and each kind of warning.
set(bad 0)
foreach(code "inline int F() { return Unknown(); }" "inline int F() { int unused; return 1; }"
    "inline int F(int unused) { return 1; }" "inline auto F(int n) { char text[n]; return sizeof text; }")
  file(WRITE "${WORK}/bad.h" "#pragma once\n${code}\n")
  file(WRITE "${WORK}/bad.cpp" "#include \"bad.h\"\n")
  execute_process(COMMAND ${compile} "${WORK}/bad.cpp" RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)
  if(result EQUAL 0 OR NOT output MATCHES "bad\\.h:2")
    message(FATAL_ERROR "${COMPILER} does not refuse: ${code}\n${output}")
  endif()
endforeach()

file(STRINGS "${SOURCE}/trovenu/trovenu.h" lines REGEX "^#include \"")
set(files "")
foreach(line IN LISTS lines ITEMS "#include \"trovenu/trovenu.h\"")
  string(REGEX MATCH "\"(.*)\"" header "${line}")
  string(MAKE_C_IDENTIFIER "${CMAKE_MATCH_1}" name)
  file(WRITE "${WORK}/${name}.cpp" "${line}\n")
  list(APPEND files "${WORK}/${name}.cpp")
endforeach()
list(LENGTH files count)
if(count LESS 50)
  message(FATAL_ERROR "trovenu/trovenu.h names only ${count} headers")
endif()
execute_process(COMMAND ${compile} ${files} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${output}")
endif()
message(STATUS "${count} public headers compile alone with ${COMPILER}")
