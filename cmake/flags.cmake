# Compiler flags of everything built here: plain IEEE double arithmetic, warnings, sanitizers.
function(trovenu_use_flags target)
  set_target_properties(${target} PROPERTIES CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /utf-8 /fp:precise $<$<BOOL:${TROVENU_WERROR}>:/WX>)
    return()
  endif()
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<BOOL:${TROVENU_WERROR}>:-Werror>
    -ffp-contract=off)
  # The virtual table of SString holds its assignments and no destructor, so that containers of strings, which
  # destroy exactly the type they hold, draw a false warning from Clang.
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-delete-non-abstract-non-virtual-dtor>)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64|amd64")
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
    trovenu_allow_false_overlaps(${target})
  endif()
  if(TROVENU_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${TROVENU_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    # GCC reports uninitialised members in its own headers once the sanitizers have added their branches.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(${target} PRIVATE -fsanitize=${TROVENU_SANITIZE})
  endif()
endfunction()

# For code around the library (tool, tests, benchmarks), which is full of large templates and of strings put
# together from pieces.
function(trovenu_use_fewer_checks target)
  # These double the compile time, and the address sanitizer covers them anyway (null) or they find nothing here.
  if(TROVENU_SANITIZE MATCHES "undefined")
    target_compile_options(${target} PRIVATE -fno-sanitize=null,alignment,vptr)
  endif()
  trovenu_allow_false_overlaps(${target})
endfunction()

# GCC 12 takes "text" + string for a copy onto itself.
function(trovenu_allow_false_overlaps target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
endfunction()

# The inner loops are built twice, for the baseline and for AVX2; which of them runs is chosen at run time. The
# flags promise nothing about values: they let the compiler compute both sides of a choice and take square
# roots without setting errno. Fused multiplication and addition would change bits and stays off.
function(trovenu_use_kernel_flags directory)
  if(MSVC)
    return()
  endif()
  set_source_files_properties(${directory}/baseline.cpp ${directory}/avx2.cpp PROPERTIES
    COMPILE_OPTIONS "-fno-math-errno;-fno-trapping-math")
  # Checks by calls: written out they take the compiler minutes.
  if(TROVENU_SANITIZE MATCHES "address" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set_property(SOURCE ${directory}/baseline.cpp ${directory}/avx2.cpp APPEND PROPERTY
      COMPILE_OPTIONS "--param=asan-instrumentation-with-call-threshold=0")
  endif()
  if(NOT TROVENU_AVX2)
    return()
  endif()
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-mavx2 TROVENU_HAS_AVX2_FLAG)
  if(TROVENU_HAS_AVX2_FLAG)
    set_property(SOURCE ${directory}/avx2.cpp APPEND PROPERTY COMPILE_OPTIONS "-mavx2;-mno-fma")
  endif()
endfunction()
