include(CMakePackageConfigHelpers)

# tq_public_headers(target files...): the headers that are installed, by their paths from the root.
function(tq_public_headers target)
  list(TRANSFORM ARGN PREPEND "${TQ_INCLUDE_ROOT}/")
  target_sources(
    ${target}
    PUBLIC FILE_SET
           HEADERS
           BASE_DIRS
           "${TQ_INCLUDE_ROOT}"
           FILES
           ${ARGN})
endfunction()

# tq_install_library(target description [package that its headers need]): the library, its
# headers, its CMake package and its pkg-config file.
function(tq_install_library target description)
  set(dependency "${ARGN}")
  tq_install_files(${target})
  tq_install_cmake_package(${target} "${dependency}")
  tq_install_pkg_config(${target} "${description}" "${dependency}")
endfunction()

function(tq_install_files target)
  install(
    TARGETS ${target}
    EXPORT ${target}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
            COMPONENT runtime
            NAMELINK_COMPONENT development
    FILE_SET HEADERS
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    COMPONENT development)
endfunction()

function(tq_install_cmake_package target dependency)
  set(destination "${CMAKE_INSTALL_LIBDIR}/cmake/${target}")
  set(find_dependency "")
  if(dependency)
    set(find_dependency "include(CMakeFindDependencyMacro)\nfind_dependency(${dependency})")
  endif()
  configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/Config.cmake.in"
                                "${PROJECT_BINARY_DIR}/${target}Config.cmake"
                                INSTALL_DESTINATION "${destination}")
  write_basic_package_version_file("${PROJECT_BINARY_DIR}/${target}ConfigVersion.cmake"
                                   COMPATIBILITY SameMajorVersion)
  install(
    FILES "${PROJECT_BINARY_DIR}/${target}Config.cmake"
          "${PROJECT_BINARY_DIR}/${target}ConfigVersion.cmake"
    DESTINATION "${destination}"
    COMPONENT development)
  install(
    EXPORT ${target}Targets
    NAMESPACE ${target}::
    DESTINATION "${destination}"
    COMPONENT development)
  export(EXPORT ${target}Targets NAMESPACE ${target}:: FILE "${PROJECT_BINARY_DIR}/${target}Targets.cmake")
endfunction()

# Xerces-C++ and ICU are not named, not even as private: pkg-config would then refuse to tell the
# flags where their development packages are missing, and a program needs nothing of those.
function(tq_install_pkg_config target description dependency)
  set(pkg_config_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
  set(requires "")
  if(dependency)
    set(requires "Requires: ${dependency}\n")
  endif()
  tq_pkg_config_prefix("${pkg_config_dir}" prefix)
  tq_below_prefix("${CMAKE_INSTALL_LIBDIR}" libdir)
  tq_below_prefix("${CMAKE_INSTALL_INCLUDEDIR}" includedir)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" "${PROJECT_BINARY_DIR}/${target}.pc" @ONLY)
  install(
    FILES "${PROJECT_BINARY_DIR}/${target}.pc"
    DESTINATION "${pkg_config_dir}"
    COMPONENT development)
endfunction()

# The prefix as a .pc file in that folder sees it: found from the file itself, so that the
# installed tree can be moved, unless the folder is a fixed place.
function(tq_pkg_config_prefix pkg_config_dir result)
  if(IS_ABSOLUTE "${pkg_config_dir}")
    set(${result} "${CMAKE_INSTALL_PREFIX}" PARENT_SCOPE)
    return()
  endif()
  file(RELATIVE_PATH up "/prefix/${pkg_config_dir}" "/prefix")
  string(REGEX REPLACE "/$" "" up "${up}")
  set(${result} "\${pcfiledir}/${up}" PARENT_SCOPE)
endfunction()

function(tq_below_prefix dir result)
  if(IS_ABSOLUTE "${dir}")
    set(${result} "${dir}" PARENT_SCOPE)
  else()
    set(${result} "\${prefix}/${dir}" PARENT_SCOPE)
  endif()
endfunction()
