# q1_add_library(<name> SOURCES <files...> [DEPENDS <libraries...>] [PRIVATE_DEPENDS <libraries...>])
#
# Declares the static library of one top-level folder. Its headers are reachable only as
# "<name>/Header.h" and only by targets that link the library: each library publishes an include
# folder of its own that holds nothing but a link to its source folder. An include of a subsystem
# that is not among a target's dependencies therefore fails to compile, which keeps the
# dependencies between subsystems one-way.
function(q1_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  set(stage ${CMAKE_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${stage})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${stage}/${name} SYMBOLIC)
  target_include_directories(${name} PUBLIC ${stage})
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS})
endfunction()
