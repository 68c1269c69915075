# Computes tables for tests: the list MATERIALS, by BUILDER, into FOLDER. Those that are older than it are computed anew.
file(MAKE_DIRECTORY "${FOLDER}")
file(GLOB tables "${FOLDER}/*.vdm")
foreach(table IN LISTS tables)
  if("${BUILDER}" IS_NEWER_THAN "${table}")
    file(REMOVE "${table}")
  endif()
endforeach()
execute_process(COMMAND "${BUILDER}" --output "${FOLDER}" ${MATERIALS} COMMAND_ERROR_IS_FATAL ANY)
