# tq_add_test(name sources...): a GoogleTest executable whose tests are each known to ctest.
function(tq_add_test name)
  if(NOT ARGN)
    message(WARNING "${name} has no sources yet: left out")
    return()
  endif()
  add_executable(${name} ${ARGN})
  tq_test_options(${name})
  target_link_libraries(${name} PRIVATE tq_test_support GTest::gmock_main)
  tq_use_precompiled_headers(${name} ${ARGN})
  # At test time, not after the link: a test that can't start fails a test run, not the build.
  gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120)
endfunction()

function(tq_test_options target)
  tq_common_options(${target})
  # Macros of GoogleTest leave variadic arguments out, as C++20 allows.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
  # Compiling them takes longer than running them, with the sanitizers most of all. What they test is
  # optimised as ever, and has both.
  if(TQXML_SANITIZE)
    target_compile_options(${target} PRIVATE -O0 -g1 -fno-sanitize=undefined)
  else()
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
endfunction()

# GoogleTest's headers take a third of the time that it takes to compile a test. They are precompiled
# once for all programs of several files.
function(tq_use_precompiled_headers target)
  list(LENGTH ARGN count)
  if(count LESS 3)
    return()
  endif()
  if(NOT TARGET tq_precompiled)
    file(WRITE "${PROJECT_BINARY_DIR}/precompiled.cpp" "")
    add_library(tq_precompiled OBJECT "${PROJECT_BINARY_DIR}/precompiled.cpp")
    tq_test_options(tq_precompiled)
    target_link_libraries(tq_precompiled PRIVATE GTest::gmock)
    target_precompile_headers(tq_precompiled PRIVATE <gmock/gmock.h>)
  endif()
  target_precompile_headers(${target} REUSE_FROM tq_precompiled)
endfunction()
