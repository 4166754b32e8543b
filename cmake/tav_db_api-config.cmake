# SPDX-License-Identifier: Apache-2.0
include("${CMAKE_CURRENT_LIST_DIR}/tav_db_api_targets.cmake")
# Not there when the library was built for a device.
include("${CMAKE_CURRENT_LIST_DIR}/TavSandboxedTest.cmake" OPTIONAL)
