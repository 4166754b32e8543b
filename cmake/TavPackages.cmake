# SPDX-License-Identifier: Apache-2.0
# The Debian packages, which `cpack -G DEB` makes of a build; scripts/package makes both.
# packaging/files.txt says what each of them holds.
set(CPACK_PACKAGE_NAME tav-db-api)
set(CPACK_PACKAGE_VENDOR "libtav_db_api")
set(CPACK_PACKAGE_CONTACT "libtav_db_api developers <libtav-db-api@lists.invalid>"
    CACHE STRING "Who looks after the packages: name and address")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime dev tools)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
    GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/TavDebianDocuments.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The libraries that the tools link lie in the runtime package, on which they depend by name.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src
    ${PROJECT_BINARY_DIR}/platform/host)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(same_version "libtav-db-api (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libtav-db-api)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "client library of the TV's web-app service
Looks up the apps that are installed on the TV and changes their state
through the service.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libtav-db-api-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS ${same_version})
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS tav-db-api-tools)
set(CPACK_COMPONENT_DEV_DESCRIPTION "client library of the TV's web-app service - headers
What is needed to compile programs that link libtav_db_api: headers, and
files for pkg-config and CMake.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME tav-db-api-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS ${same_version})
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "client library of the TV's web-app service - tools
tavctl shows and changes on the command line what the library does for
programs.")
if(TAV_PLATFORM_CHOSEN STREQUAL "host")
  string(APPEND CPACK_COMPONENT_RUNTIME_DESCRIPTION "

This package is for a PC: six small libraries that stand for the TV's
platform are part of it.")
  string(APPEND CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS ", dbus-daemon")
  string(APPEND CPACK_COMPONENT_TOOLS_DESCRIPTION "

tav-sandbox runs a command in a throw-away TV, with a bus and with the
reference service, tavcore-sim.")
endif()

set(CPACK_TAV_SOURCE_DIR ${PROJECT_SOURCE_DIR})
include(CPack)
