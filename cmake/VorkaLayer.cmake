# vorka_layer(<name> SOURCES <file>.. [USES <layer>..])
#
# Adds one layer of the engine as the static library vorka_<name>. A layer links only what USES names, and the layers
# stand in one row (base, chess, tables, bitbases, evaluation, search, game, interfaces, shell): each uses layers to its
# left only, so an arrow the wrong way fails to link.
function(vorka_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "SOURCES;USES")
  add_library(vorka_${name} STATIC ${layer_SOURCES})
  target_include_directories(vorka_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(vorka_${name} PUBLIC vorka_compile_options)
  foreach(used IN LISTS layer_USES)
    target_link_libraries(vorka_${name} PUBLIC vorka_${used})
  endforeach()
endfunction()
