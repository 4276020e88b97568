# tq_add_test(name sources...): a GoogleTest executable whose tests are each known to ctest.
function(tq_add_test name)
  if(NOT ARGN)
    message(WARNING "${name} has no sources yet: left out")
    return()
  endif()
  add_executable(${name} ${ARGN})
  tq_common_options(${name})
  target_link_libraries(${name} PRIVATE tq_test_support GTest::gmock_main)
  # Macros of GoogleTest leave variadic arguments out, as C++20 allows.
  target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
  # Compiling them takes longer than running them. What they test is optimised as ever.
  target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
  # At test time, not after the link: a test that can't start fails a test run, not the build.
  gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120)
endfunction()
