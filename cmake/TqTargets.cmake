# What every target of this project has in common.

# Only a top-level build may choose this for the whole process tree.
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
if(PROJECT_IS_TOP_LEVEL)
  # -O2 rather than CMake's -O3; -DNDEBUG stays.
  string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
endif()

set(TQ_SANITIZER_OPTIONS -fsanitize=address,undefined -fno-sanitize-recover=all
                         -fno-omit-frame-pointer)

function(tq_common_options target)
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(
    ${target} PROPERTIES CXX_EXTENSIONS OFF CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN
                                                                         ON)
  # Otherwise the build id of a library depends on where it was built.
  set_target_properties(${target} PROPERTIES BUILD_RPATH_USE_ORIGIN ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion
                                           $<$<BOOL:${TQXML_WERROR}>:-Werror>)
  if(TQXML_SANITIZE)
    # Optimising instrumented code takes several times as long, and makes g++ see uninitialised
    # variables where there are none; only the libraries are run often enough to need it.
    get_target_property(type ${target} TYPE)
    target_compile_options(
      ${target} PRIVATE -g $<IF:$<STREQUAL:${type},SHARED_LIBRARY>,-O1,-O0> ${TQ_SANITIZER_OPTIONS}
                        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
    target_link_options(${target} PRIVATE ${TQ_SANITIZER_OPTIONS})
  endif()
endfunction()

# A shared library of this project: tq_add_library(name sources...).
function(tq_add_library name)
  add_library(${name} SHARED ${ARGN})
  add_library(${name}::${name} ALIAS ${name})
  tq_common_options(${name})
  set_target_properties(
    ${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
                       VERIFY_INTERFACE_HEADER_SETS ON)
  target_compile_options(${name} PRIVATE -fno-semantic-interposition)
  tq_optimise_across_files(${name})
  target_link_options(${name} PRIVATE -Wl,-z,relro,-z,now)
  if(NOT TQXML_SANITIZE)
    # The sanitizers' own functions come from the executable.
    target_link_options(${name} PRIVATE -Wl,--no-undefined)
  endif()
  tq_export_only_own_symbols(${name})
  if(TQXML_FUZZ STREQUAL "libfuzzer")
    # The fuzzer sees by this where an input leads. What the targets themselves do is of no interest.
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# Each file is one idea; what is called for every name and text should not cost a call for that.
function(tq_optimise_across_files name)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT supported LANGUAGES CXX)
  if(supported)
    set_property(TARGET ${name} PROPERTY INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)
  endif()
endfunction()

# Visibility alone leaves the standard library's template instances exported, for their namespace
# is declared with default visibility.
function(tq_export_only_own_symbols name)
  set(script "${PROJECT_SOURCE_DIR}/cmake/exported-symbols.map")
  target_link_options(${name} PRIVATE "LINKER:--version-script=${script}")
  set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

# ICU's character type, chosen to be the code unit of UString.
function(tq_use_icu target)
  target_link_libraries(${target} PRIVATE ICU::uc)
  target_compile_definitions(${target} PRIVATE UCHAR_TYPE=uint16_t)
endfunction()
