find_package(benchmark REQUIRED)

# vorka_benchmark(<name> SOURCES <file>.. LINK <target>..)
#
# Adds a Google Benchmark program. LINK names the layers that it measures. A program with a main of its own names
# OWN_MAIN.
function(vorka_benchmark name)
  cmake_parse_arguments(PARSE_ARGV 1 program "OWN_MAIN" "" "SOURCES;LINK")
  add_executable(${name} ${program_SOURCES})
  target_link_libraries(${name} PRIVATE ${program_LINK} benchmark::benchmark)
  if(NOT program_OWN_MAIN)
    target_link_libraries(${name} PRIVATE benchmark::benchmark_main)
  endif()
endfunction()
