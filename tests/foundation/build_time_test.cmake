# cmake -D script=WriteRelease.cmake -D output=FILE -P build_time_test.cmake
# What the build records: the time as asctime gives it, in UTC, and four numbers.

function(expect_recorded epoch release expected_time expected_release)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env "SOURCE_DATE_EPOCH=${epoch}" TZ=Asia/Kolkata LC_ALL=C
            "${CMAKE_COMMAND}" -D "output=${output}" -D "release=${release}" -P "${script}"
    COMMAND_ERROR_IS_FATAL ANY)
  file(READ "${output}" header)
  foreach(expected IN ITEMS "TQXML_BUILD_TIME \"${expected_time}\"\n"
                            "TQXML_RELEASE \"${expected_release}\"\n")
    string(FIND "${header}" "${expected}" found)
    if(found EQUAL -1)
      message(SEND_ERROR "expected ${expected}in\n${header}")
    endif()
  endforeach()
endfunction()

expect_recorded(0 1.0.0.0 "Thu Jan  1 00:00:00 1970" 1.0.0.0)
expect_recorded(951782399 1.2.3.4 "Mon Feb 28 23:59:59 2000" 1.2.3.4)
expect_recorded(951782400 10.20.30.40 "Tue Feb 29 00:00:00 2000" 10.20.30.40)
expect_recorded(1762300985 1.2 "Wed Nov  5 00:03:05 2025" 1.2.0.0)
expect_recorded(1767225599 3 "Wed Dec 31 23:59:59 2025" 3.0.0.0)
expect_recorded(1770595200 1.0.0.0 "Mon Feb  9 00:00:00 2026" 1.0.0.0)
expect_recorded(1770681600 1.0.0.0 "Tue Feb 10 00:00:00 2026" 1.0.0.0)
