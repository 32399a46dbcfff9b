# trovenu_tests holds every tests/**/*_test.cpp, trovenu_slow_tests every tests/**/*_slow.cpp. Each folder with
# tests is one ctest entry, so that folders run side by side without a process for every single test.
if(TROVENU_GOOGLETEST)
  block()
    set(BUILD_SHARED_LIBS OFF)
    add_subdirectory("${TROVENU_GOOGLETEST}/googletest" googletest EXCLUDE_FROM_ALL SYSTEM)
  endblock()
else()
  find_package(GTest REQUIRED)
endif()

function(trovenu_add_tests target pattern prefix)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${pattern}")
  if(NOT sources)
    return()
  endif()
  file(GLOB_RECURSE helpers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/*.cpp")
  list(FILTER helpers EXCLUDE REGEX "_(test|slow)\\.cpp$")

  add_executable(${target} ${sources} ${helpers})
  trovenu_use_flags(${target})
  trovenu_use_fewer_checks(${target})
  trovenu_take_plain_arguments(${target})
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE trovenu_objects GTest::gtest)
  target_compile_definitions(${target} PRIVATE
    "TROVENU_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\""
    "TROVENU_DATA_DIR=\"${PROJECT_SOURCE_DIR}/data\"")
  if(TARGET trovenu_tool)
    target_compile_definitions(${target} PRIVATE "TROVENU_TOOL=\"$<TARGET_FILE:trovenu_tool>\"")
    add_dependencies(${target} trovenu_tool)
  endif()

  set(folders "")
  foreach(source IN LISTS sources)
    cmake_path(GET source PARENT_PATH folder)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/tests")
    list(APPEND folders "${folder}")
  endforeach()
  list(REMOVE_DUPLICATES folders)
  # A script runs what belongs on another system: scripts/test-windows.
  if(CMAKE_CROSSCOMPILING)
    return()
  endif()
  foreach(folder IN LISTS folders)
    add_test(NAME "${prefix}${folder}" COMMAND ${target} "--folder=${folder}" --gtest_brief=1)
    if(prefix)
      set_tests_properties("${prefix}${folder}" PROPERTIES LABELS slow)
    endif()
  endforeach()
endfunction()

trovenu_add_tests(trovenu_tests "*_test.cpp" "")
trovenu_add_tests(trovenu_slow_tests "*_slow.cpp" "slow/")

add_test(NAME umbrella COMMAND "${CMAKE_COMMAND}" "-DSOURCE=${PROJECT_SOURCE_DIR}"
  -P "${PROJECT_SOURCE_DIR}/tests/umbrella.cmake")

# The public headers, each by itself, with every compiler at hand.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT TROVENU_SANITIZE)
  set(compilers "${CMAKE_CXX_COMPILER}")
  if(NOT CMAKE_CROSSCOMPILING)
    find_program(TROVENU_GCC g++)
    find_program(TROVENU_CLANG clang++)
    list(APPEND compilers ${TROVENU_GCC} ${TROVENU_CLANG})
  endif()
  foreach(compiler IN LISTS compilers)
    cmake_path(GET compiler FILENAME name)
    if(compiler AND NOT TEST "headers/${name}" AND NOT (name STREQUAL "c++" AND TROVENU_GCC))
      add_test(NAME "headers/${name}" COMMAND "${CMAKE_COMMAND}"
        "-DSOURCE=${PROJECT_SOURCE_DIR}" "-DWORK=${PROJECT_BINARY_DIR}/headers-${name}" "-DCOMPILER=${compiler}"
        -P "${PROJECT_SOURCE_DIR}/tests/headers.cmake")
    endif()
  endforeach()
endif()

# The library as another project meets it: installed, found by find_package, static and shared.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT BUILD_SHARED_LIBS AND NOT TROVENU_SANITIZE AND
    NOT CMAKE_CROSSCOMPILING)
  foreach(library static shared)
    add_test(NAME embed/${library} COMMAND "${CMAKE_COMMAND}"
      "-DSOURCE=${PROJECT_SOURCE_DIR}" "-DWORK=${PROJECT_BINARY_DIR}/embed-${library}"
      "-DCOMPILER=${CMAKE_CXX_COMPILER}" "-DLIBRARY=${library}" "-DBUILT=${PROJECT_BINARY_DIR}"
      -P "${PROJECT_SOURCE_DIR}/tests/embed.cmake")
    set_tests_properties(embed/${library} PROPERTIES RUN_SERIAL ON TIMEOUT 1800)
  endforeach()
endif()
