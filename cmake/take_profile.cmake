# Runs the counting bench and hands its counts from the twins to the layers. cmake -DBENCH= -DBUILD= -DPROFILE= -P
# take_profile.cmake
#
# g++ looks for the counts of an object under the name of that object with its whole path, slashes as #.

file(GLOB_RECURSE old "${BUILD}/src/*.gcda")
file(REMOVE_RECURSE ${old} "${PROFILE}")
file(MAKE_DIRECTORY "${PROFILE}")
# To depths at which both searches visit about as many nodes; the counts of the runs add up.
execute_process(COMMAND "${BENCH}" --depth 4 --quiet COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${BENCH}" --depth 10 --set search=tournament --quiet COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE counts "${BUILD}/src/*.gcda")
if(NOT counts)
  message(FATAL_ERROR "The training left no counts below ${BUILD}/src.")
endif()
foreach(count IN LISTS counts)
  string(REPLACE "_training.dir/" ".dir/" object "${count}")
  string(REPLACE "/" "#" name "${object}")
  file(COPY_FILE "${count}" "${PROFILE}/${name}")
endforeach()
file(WRITE "${PROFILE}/taken" "")
