# vorka_layer(<name> SOURCES <file>.. [USES <layer>..] [LIBRARIES <target>..])
#
# Adds one layer of the engine as the static library vorka_<name>. A layer links only what USES names, and the layers
# stand in one row (base, chess, tables, bitbases, tablebases, evaluation, search, game, interfaces, shell): each uses
# layers to its left only, so an arrow the wrong way fails to link. uci stands beside the last three, on the search. LIBRARIES are
# those that are no layers.
#
# Some builds need the same layer once more, compiled in another way, as its twin vorka_<name>_<suffix>, which links the
# twins of what it uses:
# - with VORKA_PGO each layer that the bench runs has a twin "training", built to count what is executed;
#   VorkaProfile.cmake lets the bench run on the twins and hands the counts to the layers;
# - with VORKA_LEVELS each layer has a twin for every level above the lowest, named after it (VorkaLevels.cmake).
function(vorka_layer name)
  vorka_layer_library(${name} "" ${ARGN})
  if(VORKA_PGO AND name IN_LIST VORKA_TRAINED_LAYERS)
    vorka_layer_library(${name} "_training" ${ARGN})
    target_compile_options(vorka_${name}_training PRIVATE -fprofile-generate)
    vorka_use_profile(vorka_${name})
  endif()
  foreach(level IN LISTS VORKA_HIGHER_LEVELS)
    vorka_layer_library(${name} "_${level}" ${ARGN})
    target_compile_options(vorka_${name}_${level} PRIVATE -march=${level})
  endforeach()
endfunction()

function(vorka_layer_library name suffix)
  cmake_parse_arguments(PARSE_ARGV 2 layer "" "" "SOURCES;USES;LIBRARIES")
  set(target vorka_${name}${suffix})
  add_library(${target} STATIC ${layer_SOURCES})
  target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${target} PUBLIC vorka_compile_options ${layer_LIBRARIES})
  foreach(used IN LISTS layer_USES)
    target_link_libraries(${target} PUBLIC vorka_${used}${suffix})
  endforeach()
endfunction()
