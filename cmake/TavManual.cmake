# SPDX-License-Identifier: Apache-2.0
# tav_add_manual(PROGRAM [COMPLETIONS] [SOURCE…] [LIBRARIES LIBRARY…]): makes and installs the
# manual page of a program, and its completions for bash and zsh, from the sources or libraries that
# hold its options and tav_manual::DescribeProgram.
if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
  message(STATUS "Manual pages and completions: not made, their maker cannot run here")
endif()
string(TIMESTAMP TAV_MANUAL_DATE "%Y-%m-%d" UTC)  # SOURCE_DATE_EPOCH, where it is set

# The library's own page is written by hand.
configure_file(${PROJECT_SOURCE_DIR}/docs/tav_db_api.3.in
               ${PROJECT_BINARY_DIR}/tools/manual/tav_db_api.3 @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tools/manual/tav_db_api.3
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man3 COMPONENT dev)

function(tav_add_manual program)
  if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 arg "COMPLETIONS" "" "LIBRARIES")
  set(maker ${program}-manual)
  add_executable(${maker} ${PROJECT_SOURCE_DIR}/tools/manual/main.cpp ${arg_UNPARSED_ARGUMENTS})
  target_compile_definitions(${maker} PRIVATE TAV_VERSION="${PROJECT_VERSION}")
  target_link_libraries(${maker} PRIVATE tav_manual ${arg_LIBRARIES})

  set(page ${TAV_MANUALS}/${program}.1)
  set(made ${page})
  set(options --date ${TAV_MANUAL_DATE} --page ${page})
  install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  if(arg_COMPLETIONS)
    set(bash ${TAV_MANUALS}/${program}.bash)
    set(zsh ${TAV_MANUALS}/_${program})
    list(APPEND made ${bash} ${zsh})
    list(APPEND options --bash ${bash} --zsh ${zsh})
    install(FILES ${bash} RENAME ${program}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
    install(FILES ${zsh} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tools)
  endif()
  add_custom_command(OUTPUT ${made} COMMAND ${maker} ${options} DEPENDS ${maker} VERBATIM
                     COMMENT "Making the manual of ${program}")
  add_custom_target(${program}-pages ALL DEPENDS ${made})
endfunction()
