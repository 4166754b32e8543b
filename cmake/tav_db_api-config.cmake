# SPDX-License-Identifier: Apache-2.0
include("${CMAKE_CURRENT_LIST_DIR}/tav_db_api_targets.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/TavSandboxedTest.cmake")
