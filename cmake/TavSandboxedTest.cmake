# SPDX-License-Identifier: Apache-2.0
# tav_add_sandboxed_test: a test that has a device, a system bus and the reference service to
# itself. Comes with find_package(tav_db_api).

#   tav_add_sandboxed_test(NAME <name> COMMAND <command> [<argument>...]
#                          [SEED <file>] [SERVICE_OPTIONS <option>...] [TIMEOUT <seconds>]
#                          [WORKING_DIRECTORY <directory>])
#
# Adds a test, as add_test() does, that runs the command within tav-sandbox. The command may be a
# target or a program of PATH, and may have generator expressions; an empty argument is lost. SEED
# is what the device holds, relative to the current source directory (the default: the seed that
# came with the sandbox). SERVICE_OPTIONS go to the reference service. TIMEOUT, 60 unless given,
# ends the sandbox and all that runs in it; only then its directory stays in TMPDIR. The sandbox is
# looked for beside this package, then in PATH; TAV_SANDBOX names another one.
function(tav_add_sandboxed_test)
  cmake_parse_arguments(PARSE_ARGV 0 test "" "NAME;SEED;TIMEOUT;WORKING_DIRECTORY"
                        "COMMAND;SERVICE_OPTIONS")
  if(test_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR
            "tav_add_sandboxed_test: unknown arguments: ${test_UNPARSED_ARGUMENTS}")
  endif()
  foreach(argument NAME COMMAND)
    if(NOT test_${argument})
      message(FATAL_ERROR "tav_add_sandboxed_test: ${argument} is missing")
    endif()
  endforeach()

  _tav_find_sandbox()
  set(sandbox "${TAV_SANDBOX}")
  if(test_SEED)
    get_filename_component(seed "${test_SEED}" ABSOLUTE)
    if(NOT EXISTS "${seed}")
      message(FATAL_ERROR "tav_add_sandboxed_test: ${test_NAME}: there is no seed ${seed}")
    endif()
    list(APPEND sandbox --seed "${seed}")
  endif()
  foreach(option IN LISTS test_SERVICE_OPTIONS)
    list(APPEND sandbox "--service-option=${option}")
  endforeach()

  # add_test() looks for a target in the first place only. No list() here: it would split arguments
  # that have semicolons.
  string(REGEX MATCH "^[^;]+" program "${test_COMMAND}")
  if(TARGET "${program}")
    string(LENGTH "${program}" length)
    string(SUBSTRING "${test_COMMAND}" ${length} -1 arguments)
    set(test_COMMAND "$<TARGET_FILE:${program}>${arguments}")
  endif()
  set(directory)
  if(test_WORKING_DIRECTORY)
    set(directory WORKING_DIRECTORY "${test_WORKING_DIRECTORY}")
  endif()
  if(NOT test_TIMEOUT)
    set(test_TIMEOUT 60)
  endif()
  add_test(NAME "${test_NAME}" COMMAND ${sandbox} -- ${test_COMMAND} ${directory})
  set_tests_properties("${test_NAME}" PROPERTIES TIMEOUT "${test_TIMEOUT}")
endfunction()

function(_tav_find_sandbox)
  # lib/cmake/tav_db_api, or with a directory for the architecture in between.
  find_program(TAV_SANDBOX tav-sandbox
               HINTS "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../../bin"
                     "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../../../../bin"
               DOC "The program that runs a command within a device of its own")
  if(NOT TAV_SANDBOX)
    message(FATAL_ERROR "tav_add_sandboxed_test: there is no tav-sandbox; it comes with this"
                        " project's tools, on Debian in the package tav-db-api-tools")
  endif()
endfunction()
