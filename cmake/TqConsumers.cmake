# What tests that build programs against this build know of it, in variables of their environment.

# tq_consumer_environment(result): how this build compiles, runs and installs.
function(tq_consumer_environment result)
  set(flags ${CMAKE_CXX_FLAGS})
  if(TQXML_SANITIZE)
    list(APPEND flags ${TQ_SANITIZER_OPTIONS})
  endif()
  if(CMAKE_SYSROOT)
    list(APPEND flags "--sysroot=${CMAKE_SYSROOT}")
  endif()
  list(JOIN flags " " flags)
  list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
  set(${result}
      "TQ_ARCHITECTURE=${CMAKE_LIBRARY_ARCHITECTURE}"
      "TQ_BUILD_DIR=${PROJECT_BINARY_DIR}"
      "TQ_CMAKE=${CMAKE_COMMAND}"
      "TQ_CXX=${CMAKE_CXX_COMPILER}"
      "TQ_CXX_FLAGS=${flags}"
      "TQ_EMULATOR=${emulator}"
      "TQ_GENERATOR=${CMAKE_GENERATOR}"
      "TQ_INCLUDEDIR=${CMAKE_INSTALL_INCLUDEDIR}"
      "TQ_LIBDIR=${CMAKE_INSTALL_LIBDIR}"
      "TQ_SYSROOT=${CMAKE_SYSROOT}"
      "TQ_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE}"
      # Only when tqutil is not of this project.
      "TQ_TQUTIL_DIR=${tqutil_DIR}"
      "TQ_VERSION=${PROJECT_VERSION}"
      PARENT_SCOPE)
endfunction()
