# SPDX-License-Identifier: Apache-2.0
# What a program needs to find the installed library: a pkg-config file and a CMake package.
include(CMakePackageConfigHelpers)

# The prefix is found from the file's own place, so that an installed tree may be moved.
file(RELATIVE_PATH TAV_PC_UP "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(${CMAKE_CURRENT_LIST_DIR}/tav_db_api.pc.in tav_db_api.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tav_db_api.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

set(TAV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tav_db_api)
write_basic_package_version_file(tav_db_api-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/tav_db_api-config.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/tav_db_api-config-version.cmake
        DESTINATION ${TAV_CMAKE_DIR} COMPONENT dev)
# A device has no sandboxes, and a library for one no tests in them.
if(TAV_PLATFORM_CHOSEN STREQUAL "host")
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/TavSandboxedTest.cmake
          DESTINATION ${TAV_CMAKE_DIR} COMPONENT dev)
endif()
install(EXPORT tav_db_api_targets NAMESPACE tav:: DESTINATION ${TAV_CMAKE_DIR} COMPONENT dev)
