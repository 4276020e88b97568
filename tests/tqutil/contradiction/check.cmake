# cmake [-D emulator=COMMAND] -D program=FILE -P check.cmake
# The program must end before main, complaining about both tags.

execute_process(
  COMMAND ${emulator} "${program}"
  RESULT_VARIABLE result
  OUTPUT_VARIABLE output
  ERROR_VARIABLE complaint)
if(result STREQUAL "0"
   OR NOT output STREQUAL ""
   OR NOT complaint MATCHES "'there'.*'here'")
  message(FATAL_ERROR "result: ${result}\noutput: ${output}\ncomplaint: ${complaint}")
endif()
