# SPDX-License-Identifier: Apache-2.0
# Counts which lines and branches of the library and of the host platform run, for
# scripts/coverage. The counters are written to files when a process exits; tests/coverage has them
# written as well where it ends in another way.
option(TAV_COVERAGE "Count what runs in src/ and platform/; for the preset coverage" OFF)
if(TAV_COVERAGE)
  add_link_options(--coverage)
endif()

# tav_count_runs(<target>...): with TAV_COVERAGE, counts what runs of these targets' sources.
function(tav_count_runs)
  if(TAV_COVERAGE)
    foreach(target ${ARGN})
      target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
      target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/coverage/register.c)
    endforeach()
  endif()
endfunction()
