# Fails if a header with exported names is missing from trovenu/trovenu.h.
#   cmake -DSOURCE=... -P tests/umbrella.cmake
cmake_minimum_required(VERSION 3.25)

file(READ "${SOURCE}/trovenu/trovenu.h" umbrella)
file(GLOB_RECURSE headers RELATIVE "${SOURCE}" "${SOURCE}/trovenu/*.h")
foreach(header IN LISTS headers)
  file(STRINGS "${SOURCE}/${header}" exported REGEX "TROVENU_API" LIMIT_COUNT 1)
  string(FIND "${umbrella}" "#include \"${header}\"" place)
  if(exported AND place EQUAL -1 AND NOT header STREQUAL "trovenu/trovenu.h")
    message(SEND_ERROR "${header} exports names but is not in trovenu/trovenu.h")
  endif()
endforeach()
