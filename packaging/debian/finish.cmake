# Makes a Debian package of what is installed in the staging folder, before cpack packs it.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(root "${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}")
set(documents "${root}/share/doc/vorka")
if(NOT EXISTS "${root}/share/games/vorka/kp_kp.vbb" OR NOT EXISTS "${root}/share/games/vorka/kpp_kp_ram.vbb")
  message(FATAL_ERROR "A package has bitbases: cmake --build <build folder> --target bitbases")
endif()

# The licence is one of those that every Debian has.
file(REMOVE "${documents}/LICENSE")
file(COPY_FILE "${CMAKE_CURRENT_LIST_DIR}/copyright" "${documents}/copyright")
file(RENAME "${documents}/CHANGELOG.md" "${documents}/changelog")
file(COPY_FILE "${CMAKE_CURRENT_LIST_DIR}/changelog" "${documents}/changelog.Debian")
file(MAKE_DIRECTORY "${root}/share/lintian/overrides")
file(COPY_FILE "${CMAKE_CURRENT_LIST_DIR}/lintian-overrides" "${root}/share/lintian/overrides/vorka")

file(GLOB manuals "${root}/share/man/man6/*.6")
execute_process(COMMAND gzip -9 -n "${documents}/changelog" "${documents}/changelog.Debian" ${manuals}
                COMMAND_ERROR_IS_FATAL ANY)
