# What `cmake --install` puts where, by GNUInstallDirs where that has a word for it:
#
#   games/                     links to the programs in lib/vorka, where Debian keeps games
#   lib/vorka/                 the programs, side by side as in the build folder, and links to their data: the engine
#                              looks for its bitbases in the folder of its executable, after all links
#   share/games/vorka/         bitbases, if they were computed, and settings
#   share/games/plugins/       the engine file of XBoard
#   share/                     manuals, completions, menu entry, icon, documents
include(GNUInstallDirs)

set(library lib/vorka)  # the launcher knows this name too: src/frame/launcher/level.h
set(data "${CMAKE_INSTALL_DATADIR}/games/vorka")
set(links "${PROJECT_BINARY_DIR}/links")
set(installed "${PROJECT_SOURCE_DIR}/packaging")

# vorka_link(<folder> <name> <target>): a link that is made here and installed as it is.
function(vorka_link folder name target)
  file(MAKE_DIRECTORY "${links}/${folder}")
  file(CREATE_LINK "${target}" "${links}/${folder}/${name}" SYMBOLIC)
  install(FILES "${links}/${folder}/${name}" DESTINATION "${folder}")
endfunction()

foreach(program IN ITEMS vorka vorka-uci)
  install(TARGETS ${program} RUNTIME DESTINATION ${library})
  if(VORKA_HIGHER_LEVELS)
    foreach(level IN ITEMS x86-64 ${VORKA_HIGHER_LEVELS})
      install(TARGETS ${program}-${level} RUNTIME DESTINATION ${library})
    endforeach()
  endif()
endforeach()
install(PROGRAMS src/frame/shell/vorka-xboard DESTINATION ${library})
# What computes and checks tables has a developer's name beside them, and one for everybody in games.
foreach(program IN ITEMS table_builder check_tables)
  string(REPLACE "_" "-" name vorka-${program})
  install(TARGETS ${program} RUNTIME DESTINATION ${library})
  vorka_link(games ${name} ../${library}/${program})
  install(FILES ${installed}/man/${name}.6 DESTINATION "${CMAKE_INSTALL_MANDIR}/man6")
endforeach()
foreach(program IN ITEMS vorka vorka-uci vorka-xboard)
  vorka_link(games ${program} ../${library}/${program})
  install(FILES ${installed}/man/${program}.6 DESTINATION "${CMAKE_INSTALL_MANDIR}/man6")
endforeach()

# Bitbases are computed on request, so that it shows at the installation only whether there are any: beside the engine,
# or in the folder where tests have put them.
file(RELATIVE_PATH data_from_library "/${library}" "/${data}")
install(CODE "set(VORKA_BITBASE_FOLDERS \"${PROJECT_BINARY_DIR}\" \"${PROJECT_BINARY_DIR}/bitbases\")
set(VORKA_LIBRARY \"${library}\")
set(VORKA_DATA \"${data}\")
set(VORKA_DATA_FROM_LIBRARY \"${data_from_library}\")
set(VORKA_LINKS \"${links}\")")
install(SCRIPT cmake/install_bitbases.cmake)

# Of the settings those that are for a player: what a program reads, and what can be typed at the prompt.
install(DIRECTORY settings DESTINATION "${data}" FILES_MATCHING PATTERN "tuned*.txt" PATTERN "variants.txt"
        PATTERN "tuning" EXCLUDE)
vorka_link(${library} settings "${data_from_library}/settings")

install(FILES ${installed}/xboard/vorka.eng DESTINATION "${CMAKE_INSTALL_DATADIR}/games/plugins/xboard")
install(FILES ${installed}/completions/vorka ${installed}/completions/vorka-uci
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
vorka_link("${CMAKE_INSTALL_DATADIR}/bash-completion/completions" vorka-xboard vorka)
# One script for both programs: bash looks for one of the program's name.
install(FILES ${installed}/completions/vorka-tables
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME vorka-table-builder)
vorka_link("${CMAKE_INSTALL_DATADIR}/bash-completion/completions" vorka-check-tables vorka-table-builder)
install(FILES ${installed}/vorka.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES ${installed}/vorka.svg DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
# All of them, since they point to each other.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" PATTERN "*.dot" EXCLUDE)
