# Toolchain of Debian's g++-mingw-w64-i686-posix: 32-bit Windows, cross-compiled.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

# Programs and libraries run alone: the compiler's own libraries are linked in.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# Of this machine only packages that are headers alone are of use, and of its folder for headers only theirs:
# beside them stand those of its own C library.
set(TROVENU_HEADER_PACKAGES "${CMAKE_BINARY_DIR}/header-packages")
foreach(package CLI11 nlohmann_json)
  file(MAKE_DIRECTORY "${TROVENU_HEADER_PACKAGES}/share/cmake/${package}")
  # Without the file that tells the version, which also tells of a machine of 64 bits.
  foreach(file Config Targets)
    if(EXISTS "/usr/share/cmake/${package}/${package}${file}.cmake")
      file(CREATE_LINK "/usr/share/cmake/${package}/${package}${file}.cmake"
        "${TROVENU_HEADER_PACKAGES}/share/cmake/${package}/${package}${file}.cmake" SYMBOLIC)
    endif()
  endforeach()
endforeach()
file(MAKE_DIRECTORY "${TROVENU_HEADER_PACKAGES}/include")
foreach(folder CLI nlohmann)
  file(CREATE_LINK "/usr/include/${folder}" "${TROVENU_HEADER_PACKAGES}/include/${folder}" SYMBOLIC)
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32 "${TROVENU_HEADER_PACKAGES}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
