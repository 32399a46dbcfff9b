# A program gets its arguments as they were given and in UTF-8, and so are its names of files, as elsewhere.
function(trovenu_take_plain_arguments target)
  if(MINGW)
    enable_language(RC)
    target_sources(${target} PRIVATE
      "${PROJECT_SOURCE_DIR}/cmake/windows/arguments.cpp" "${PROJECT_SOURCE_DIR}/cmake/windows/utf8.rc")
  endif()
endfunction()
