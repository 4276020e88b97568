# 32-bit x86 with the compiler of a 64-bit Debian (g++-multilib), against the libraries that
# tools/sysroot-i386 unpacks. Another place for those: -D TQXML_SYSROOT_I386=DIR.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)

get_filename_component(TQXML_SYSROOT_I386_DEFAULT "${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-i386"
                       ABSOLUTE)
set(TQXML_SYSROOT_I386 "${TQXML_SYSROOT_I386_DEFAULT}" CACHE PATH "Unpacked i386 packages")
# try_compile() reads this file again, without the cache.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TQXML_SYSROOT_I386)
if(NOT EXISTS "${TQXML_SYSROOT_I386}/.packages")
  message(FATAL_ERROR "There is no sysroot in ${TQXML_SYSROOT_I386}: run tools/sysroot-i386")
endif()

set(CMAKE_SYSROOT "${TQXML_SYSROOT_I386}")
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_CXX_FLAGS_INIT -m32)

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The loader of the sysroot runs its programs on the system as it is.
set(CMAKE_CROSSCOMPILING_EMULATOR
    "${CMAKE_SYSROOT}/lib/ld-linux.so.2" --library-path
    "${CMAKE_SYSROOT}/lib/i386-linux-gnu:${CMAKE_SYSROOT}/usr/lib/i386-linux-gnu")
