# vorka_fuzz_target(<name> SOURCES <file>.. LINK <target>..)
#
# Adds a libFuzzer program. Its seeds lie in tests/fuzz/seeds/<name>.
function(vorka_fuzz_target name)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "The fuzz targets need clang: cmake --preset fuzz")
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 target "" "" "SOURCES;LINK")
  add_executable(${name} ${target_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE ${target_LINK})
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()
