# The libraries that the benchmarks put beside this one, as far as they are there. Each that is found
# has its source in TQXML_BENCH_PEER_SOURCES, its target in TQXML_BENCH_PEER_LIBRARIES and a
# definition such as TQXML_BENCH_QT=1 in TQXML_BENCH_PEER_DEFINITIONS.

find_package(LibXml2 QUIET)
find_package(EXPAT QUIET)
find_package(pugixml QUIET)
find_package(tinyxml2 QUIET)
find_package(Qt6 QUIET COMPONENTS Core)
# Only headers, of which no package tells CMake.
find_path(TQXML_RAPIDXML_INCLUDE_DIR rapidxml/rapidxml_print.hpp)
mark_as_advanced(TQXML_RAPIDXML_INCLUDE_DIR)
if(TQXML_RAPIDXML_INCLUDE_DIR)
  add_library(rapidxml::rapidxml INTERFACE IMPORTED)
  target_include_directories(rapidxml::rapidxml INTERFACE "${TQXML_RAPIDXML_INCLUDE_DIR}")
endif()

set(TQXML_BENCH_PEER_SOURCES "")
set(TQXML_BENCH_PEER_LIBRARIES "")
set(TQXML_BENCH_PEER_DEFINITIONS "")
set(peers_found "")
set(peers_missing "")

# A peer by the name of its source, and the target that there is if the library was found.
macro(tq_add_peer peer target)
  if(TARGET ${target})
    string(TOUPPER ${peer} upper_peer)
    list(APPEND TQXML_BENCH_PEER_SOURCES "${CMAKE_CURRENT_LIST_DIR}/${peer}.cpp")
    list(APPEND TQXML_BENCH_PEER_LIBRARIES ${target})
    list(APPEND TQXML_BENCH_PEER_DEFINITIONS TQXML_BENCH_${upper_peer}=1)
    list(APPEND peers_found ${peer})
  else()
    list(APPEND peers_missing ${peer})
  endif()
endmacro()

tq_add_peer(libxml2 LibXml2::LibXml2)
tq_add_peer(expat EXPAT::EXPAT)
tq_add_peer(pugixml pugixml::pugixml)
tq_add_peer(tinyxml2 tinyxml2::tinyxml2)
tq_add_peer(rapidxml rapidxml::rapidxml)
tq_add_peer(qt Qt6::Core)

list(JOIN peers_found " " peers_found)
list(JOIN peers_missing " " peers_missing)
message(STATUS "Peers of the benchmarks: found [${peers_found}], not found [${peers_missing}]")
