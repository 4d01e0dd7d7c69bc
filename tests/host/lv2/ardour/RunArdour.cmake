# Kelvane's LV2 build in Ardour 7 as a CTest test (KelvaneInArdour.lua says what it checks):
#   cmake -DARDOUR_LUA=<ardour7-lua> -DSCRIPT=<KelvaneInArdour.lua> -DBUNDLES=<folder of Kelvane.lv2>
#         -DWORK=<scratch folder> -P RunArdour.cmake
# Ardour runs with the build tree's bundle and the system's plug-ins on LV2_PATH, and with a home
# folder of its own in WORK, so that neither an installed Kelvane nor the user's settings take part.

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/home)
set(session ${WORK}/session)
set(environment LV2_PATH=${BUNDLES}:/usr/lib/lv2 HOME=${WORK}/home XDG_CONFIG_HOME=${WORK}/home/.config)

function(run_ardour phase)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ${environment} ${ARDOUR_LUA} ${SCRIPT} ${phase} ${session}
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output TIMEOUT 120)
  message(STATUS "${output}")
  if(NOT status EQUAL 0 OR NOT output MATCHES "kelvane-ardour: ${phase} passed")
    message(FATAL_ERROR "Ardour's ${phase} run failed: ${status}")
  endif()
endfunction()

run_ardour(save)

# Ardour keeps Kelvane's state document beside the session, as the state extension saved it.
file(GLOB_RECURSE states ${session}/plugins/*/state.ttl)
set(found FALSE)
foreach(state IN LISTS states)
  file(READ ${state} text)
  if(text MATCHES "<https://www.morvenna-audio.com/kelvane#state> \"\"\"VkMyIQ")
    set(found TRUE)
  endif()
endforeach()
if(NOT found)
  message(FATAL_ERROR "no Kelvane state document in ${session}/plugins/: ${states}")
endif()

# The session's own value of the Gain port goes back to its default of 0 dB.
set(project ${session}/kelvane-ardour.ardour)
file(READ ${project} text)
set(saved "<Port symbol=\"gain\" value=\"-9\"/>")
string(FIND "${text}" "${saved}" position)
if(position EQUAL -1)
  message(FATAL_ERROR "the session does not hold ${saved}")
endif()
string(REPLACE "${saved}" "<Port symbol=\"gain\" value=\"0\"/>" text "${text}")
file(WRITE ${project} "${text}")

run_ardour(reload)
