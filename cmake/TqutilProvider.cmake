# Makes the target tqutil::tqutil, and sets TQ_INCLUDE_ROOT: the folder from which this tree's
# headers are included.

if(TQUTIL_PROVIDER STREQUAL "bundled")
  set(TQ_INCLUDE_ROOT "${PROJECT_SOURCE_DIR}")
  add_subdirectory(tqutil)
elseif(TQUTIL_PROVIDER STREQUAL "package")
  find_package(tqutil CONFIG REQUIRED)
  # The root of the source tree would bring the bundled tqutil's headers before the package's.
  set(TQ_INCLUDE_ROOT "${PROJECT_BINARY_DIR}/include-root")
  file(MAKE_DIRECTORY "${TQ_INCLUDE_ROOT}")
  foreach(folder IN ITEMS tqxml vocabulary tests fuzz bench)
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${folder}" "${TQ_INCLUDE_ROOT}/${folder}" SYMBOLIC)
  endforeach()
else()
  message(FATAL_ERROR "TQUTIL_PROVIDER is '${TQUTIL_PROVIDER}': choose bundled or package")
endif()
