include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

# One interface target carries what every target of this project is compiled with.
add_library(vorka_compile_options INTERFACE)
target_compile_options(vorka_compile_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(VORKA_WARNINGS_AS_ERRORS)
  target_compile_options(vorka_compile_options INTERFACE -Werror)
endif()
if(VORKA_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # The sanitizers watch the engine in full, and tests for what they do with memory and numbers: to check each reference
  # in the assertions would take as long to compile as all the rest.
  set(unwatched_in_tests -fno-sanitize=null,alignment,object-size,vptr)
  target_compile_options(
    vorka_compile_options
    INTERFACE ${sanitizers} "$<$<BOOL:$<TARGET_PROPERTY:VORKA_IS_TEST>>:${unwatched_in_tests}>")
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With the sanitizers on, g++ 12 takes the standard library's own regex nodes for uninitialised.
    target_compile_options(vorka_compile_options INTERFACE -Wno-maybe-uninitialized)
  endif()
  target_link_options(vorka_compile_options INTERFACE ${sanitizers})
endif()
if(VORKA_SANITIZE_THREAD)
  target_compile_options(vorka_compile_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(vorka_compile_options INTERFACE -fsanitize=thread)
endif()
# What is handed out makes it hard to turn a fault into more than an end of the program: the tables of the loader can't be
# written once it is done, a frame that was written over is seen before the function returns, and so is a copy that is
# longer than what it goes to. In instructions of the bench (callgrind, bench --depth 3, link-time optimisation):
# 411,321,981 without, and with each of them alone 411,373,544 (RELRO and BIND_NOW, 0.01 %), 414,137,986 (the stack
# protector, 0.7 %) and 411,223,505 (_FORTIFY_SOURCE). What costs more than 1 % has no place here.
set(VORKA_HARDENED OFF)
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT VORKA_SANITIZE AND NOT VORKA_SANITIZE_THREAD AND NOT EMSCRIPTEN)
  check_linker_flag(CXX "LINKER:-z,relro,-z,now" VORKA_CAN_PROTECT_LOADER_TABLES)
  if(VORKA_CAN_PROTECT_LOADER_TABLES)
    set(VORKA_HARDENED ON)
    target_compile_options(
      vorka_compile_options INTERFACE -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    target_link_options(vorka_compile_options INTERFACE "LINKER:-z,relro,-z,now")
  endif()
endif()
# A product and a sum in one step round otherwise, and the blend of the evaluation has both: every machine shall search
# the same nodes.
target_compile_options(vorka_compile_options INTERFACE -ffp-contract=off)
# g++ clears a record of some hundred bytes by an instruction that takes longer to begin than plain stores to end, and
# each node of the search has one.
check_cxx_compiler_flag(-mmemset-strategy=unrolled_loop:512:noalign,libcall:-1:noalign VORKA_CAN_CLEAR_BY_STORES)
if(VORKA_CAN_CLEAR_BY_STORES)
  target_compile_options(
    vorka_compile_options INTERFACE -mmemset-strategy=unrolled_loop:512:noalign,libcall:-1:noalign)
endif()
if(VORKA_NATIVE)
  check_cxx_compiler_flag(-march=native VORKA_KNOWS_THIS_MACHINE)
  if(VORKA_KNOWS_THIS_MACHINE)
    target_compile_options(vorka_compile_options INTERFACE -march=native)
  endif()
  # What stays on this machine may lie at a fixed address: 2.5 % fewer instructions. What is handed out is as Debian
  # wants it, independent of its position.
  target_compile_options(vorka_compile_options INTERFACE -fno-pie)
  target_link_options(vorka_compile_options INTERFACE -no-pie)
endif()
if(VORKA_PGO AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  message(STATUS "No profile-guided optimisation: it needs g++.")
  set(VORKA_PGO OFF)
endif()
if(VORKA_LTO)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
endif()
