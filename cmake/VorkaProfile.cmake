# Profile-guided optimisation, in one build: the twins of the layers (see VorkaLayer.cmake) are linked into a bench that
# counts, it runs, and the layers are compiled with its counts. What the bench never enters is compiled as ever.

set(VORKA_TRAINED_LAYERS base chess tables bitbases evaluation search)
set(VORKA_PROFILE_DIRECTORY "${PROJECT_BINARY_DIR}/profile")

# vorka_use_profile(<target>): compiles it with the counts of its twin, after they were taken.
function(vorka_use_profile target)
  # No warnings: that a function has no counts is one that no option of its own turns off, and the other presets show
  # all that matter.
  target_compile_options(
    ${target} PRIVATE "-fprofile-use=${VORKA_PROFILE_DIRECTORY}" -fprofile-partial-training -Wno-missing-profile -w)
  add_dependencies(${target} vorka_profile)
endfunction()

# vorka_train(<bench source>..): the bench on the twins, and its runs. Both searches take about half of the work.
function(vorka_train)
  add_executable(bench_training ${ARGN})
  target_include_directories(bench_training PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(bench_training PRIVATE vorka_search_training)
  target_link_options(bench_training PRIVATE -fprofile-generate)
  set(stamp "${VORKA_PROFILE_DIRECTORY}/taken")
  add_custom_command(
    OUTPUT "${stamp}"
    COMMAND "${CMAKE_COMMAND}" -DBENCH=$<TARGET_FILE:bench_training> -DBUILD=${PROJECT_BINARY_DIR}
            -DPROFILE=${VORKA_PROFILE_DIRECTORY} -P "${PROJECT_SOURCE_DIR}/cmake/take_profile.cmake"
    DEPENDS bench_training "${PROJECT_SOURCE_DIR}/cmake/take_profile.cmake"
    COMMENT "Training: the bench, with each search"
    VERBATIM)
  add_custom_target(vorka_profile DEPENDS "${stamp}")
endfunction()
