# Runs the LV2 project's own tools on the bundle of the build tree, as a CTest test: any non-zero
# exit, and any word on standard error (where serd and lilv put their warnings), fails it.
#   cmake -DCHECK=turtle  -DSERDI=<serdi> -DBUNDLE=<folder> -P CheckBundle.cmake
#       serdi reads every Turtle file of the bundle strictly.
#   cmake -DCHECK=lv2info -DLV2INFO=<lv2info> -DBUNDLE=<folder> -DURI=<uri> -P CheckBundle.cmake
#       lv2info describes the plug-in and its user interface, with the bundle's folder and the
#       system's on LV2_PATH.

function(run_quietly description)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status EQUAL 0 OR NOT errors STREQUAL "")
    message(FATAL_ERROR "${description}: exit ${status}\n${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

if(CHECK STREQUAL "turtle")
  file(GLOB documents ${BUNDLE}/*.ttl)
  list(LENGTH documents count)
  if(count LESS 3)
    message(FATAL_ERROR "the bundle ${BUNDLE} holds ${count} Turtle files, fewer than its three")
  endif()
  foreach(document IN LISTS documents)
    run_quietly("serdi on ${document}" ${SERDI} -i turtle -o ntriples ${document})
    message(STATUS "serdi reads ${document}")
  endforeach()
elseif(CHECK STREQUAL "lv2info")
  get_filename_component(parent ${BUNDLE} DIRECTORY)
  run_quietly("lv2info ${URI}" ${CMAKE_COMMAND} -E env LV2_PATH=${parent}:/usr/lib/lv2 ${LV2INFO} ${URI})
  foreach(expected "Name:              Kelvane" "Class:             Dynamics Plugin" "Symbol:      drive_level"
                   "Punchier Kick" "Class:  http://lv2plug.in/ns/extensions/ui#X11UI")
    string(FIND "${output}" "${expected}" found)
    if(found EQUAL -1)
      message(FATAL_ERROR "lv2info does not say \"${expected}\":\n${output}")
    endif()
  endforeach()
  message(STATUS "${output}")
else()
  message(FATAL_ERROR "CheckBundle.cmake: CHECK must be turtle or lv2info")
endif()
