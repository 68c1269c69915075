# vorka_layer(<name> SOURCES <file>.. [USES <layer>..])
#
# Adds one layer of the engine as the static library vorka_<name>. A layer links only what USES names, and the layers
# stand in one row (base, chess, tables, bitbases, evaluation, search, game, interfaces, shell): each uses layers to its
# left only, so an arrow the wrong way fails to link. uci stands beside the last three, on the search.
#
# With VORKA_PGO each layer that the bench runs has a twin vorka_<name>_training, built to count what is executed;
# VorkaProfile.cmake lets the bench run on the twins and hands the counts to the layers.
function(vorka_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "SOURCES;USES")
  vorka_layer_library(vorka_${name} "" SOURCES ${layer_SOURCES} USES ${layer_USES})
  if(VORKA_PGO AND name IN_LIST VORKA_TRAINED_LAYERS)
    vorka_layer_library(vorka_${name}_training "_training" SOURCES ${layer_SOURCES} USES ${layer_USES})
    target_compile_options(vorka_${name}_training PRIVATE -fprofile-generate)
    vorka_use_profile(vorka_${name})
  endif()
endfunction()

function(vorka_layer_library target suffix)
  cmake_parse_arguments(PARSE_ARGV 2 layer "" "" "SOURCES;USES")
  add_library(${target} STATIC ${layer_SOURCES})
  target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${target} PUBLIC vorka_compile_options)
  foreach(used IN LISTS layer_USES)
    target_link_libraries(${target} PUBLIC vorka_${used}${suffix})
  endforeach()
endfunction()
