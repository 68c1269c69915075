# One package for all x86-64 machines. With VORKA_LEVELS a program is built once for each level of the architecture, as
# <name>-x86-64, <name>-x86-64-v2 and <name>-x86-64-v3, and <name> itself is the launcher, which starts the best of them
# that the processor can run (src/frame/launcher). The layers as they are make the lowest level, their twins the others.
# Where the compiler can't ask a processor for its level, as on every other architecture, there are plain programs only.
include(CheckCXXSourceCompiles)

check_cxx_source_compiles("int main() { return __builtin_cpu_supports(\"x86-64-v3\"); }" VORKA_KNOWS_LEVELS)
set(VORKA_HIGHER_LEVELS "")
if(VORKA_LEVELS)
  if(VORKA_NATIVE OR VORKA_PGO)
    message(FATAL_ERROR "VORKA_LEVELS is for all machines; VORKA_NATIVE and VORKA_PGO are for this one.")
  endif()
  if(VORKA_KNOWS_LEVELS)
    set(VORKA_HIGHER_LEVELS x86-64-v2 x86-64-v3)
  else()
    message(STATUS "No levels: plain programs only.")
  endif()
endif()

# vorka_program(<name> SOURCES <file>.. USES <layer>..)
#
# Adds a program that is built for each level, or plain.
function(vorka_program name)
  cmake_parse_arguments(PARSE_ARGV 1 program "" "" "SOURCES;USES")
  if(NOT VORKA_HIGHER_LEVELS)
    vorka_program_on(${name} "" ${ARGN})
    return()
  endif()
  vorka_program_on(${name}-x86-64 "" ${ARGN})
  foreach(level IN LISTS VORKA_HIGHER_LEVELS)
    vorka_program_on(${name}-${level} "_${level}" ${ARGN})
    target_compile_options(${name}-${level} PRIVATE -march=${level})
  endforeach()
  vorka_launcher(${name})
  foreach(level IN ITEMS x86-64 ${VORKA_HIGHER_LEVELS})
    add_dependencies(${name} ${name}-${level})
  endforeach()
endfunction()

function(vorka_program_on name suffix)
  cmake_parse_arguments(PARSE_ARGV 2 program "" "" "SOURCES;USES")
  add_executable(${name} ${program_SOURCES})
  foreach(used IN LISTS program_USES)
    target_link_libraries(${name} PRIVATE vorka_${used}${suffix})
  endforeach()
endfunction()

# vorka_launcher(<name>): the launcher of the programs <name>-x86-64 and so on. It is to start at once, so it takes
# along what it needs of the library of C++.
function(vorka_launcher name)
  add_executable(${name} "${PROJECT_SOURCE_DIR}/src/frame/launcher/main.cpp")
  target_link_libraries(${name} PRIVATE vorka_launcher_choice)
  target_link_options(${name} PRIVATE -static-libstdc++ -static-libgcc)
endfunction()
