# Installs the library, builds examples/embed against it through find_package, runs it and looks at what it says.
#   cmake -DSOURCE=... -DWORK=... -DCOMPILER=... -DLIBRARY=static -DBUILT=<build folder> -P tests/embed.cmake
#   cmake -DSOURCE=... -DWORK=... -DCOMPILER=... -DLIBRARY=shared -P tests/embed.cmake
cmake_minimum_required(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGV}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

set(generate -G Ninja "-DCMAKE_CXX_COMPILER=${COMPILER}")
if(LIBRARY STREQUAL shared)
  # With the tool, a client that may use exported classes only. Not optimised, to be quick.
  set(BUILT "${WORK}/library")
  run("${CMAKE_COMMAND}" -S "${SOURCE}" -B "${BUILT}" ${generate} -DCMAKE_BUILD_TYPE=Debug
    -DBUILD_SHARED_LIBS=ON -DTROVENU_WERROR=ON -DTROVENU_BUILD_TESTS=OFF -DTROVENU_BUILD_BENCH=OFF)
  run("${CMAKE_COMMAND}" --build "${BUILT}")
endif()

file(REMOVE_RECURSE "${WORK}/prefix" "${WORK}/embed")
run("${CMAKE_COMMAND}" --install "${BUILT}" --prefix "${WORK}/prefix")
file(GLOB_RECURSE installed RELATIVE "${WORK}/prefix" "${WORK}/prefix/*")
string(REGEX MATCHALL "libtrovenu\\.(a|so|dll\\.a)" libraries "${installed}")
if(LIBRARY STREQUAL static AND NOT libraries STREQUAL "libtrovenu.a")
  message(FATAL_ERROR "a static build installed: ${installed}")
elseif(LIBRARY STREQUAL shared AND "libtrovenu.a" IN_LIST libraries)
  message(FATAL_ERROR "a shared build installed: ${installed}")
endif()

run("${CMAKE_COMMAND}" -S "${SOURCE}/examples/embed" -B "${WORK}/embed" ${generate}
  -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_PREFIX_PATH=${WORK}/prefix")
run("${CMAKE_COMMAND}" --build "${WORK}/embed")
run("${WORK}/embed/embed")
foreach(expected
    "avg\\(c,3\\), valid from bar 2: 101 102\\.667 104\\.333 106 105\\.667 106 107\\.667 109\\.667 111\\.333 112\\.667\n"
    "avg\\(c,3 has 1 fault")
  if(NOT output MATCHES "${expected}")
    message(FATAL_ERROR "embed printed\n${output}instead of ${expected}")
  endif()
endforeach()
