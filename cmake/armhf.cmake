# SPDX-License-Identifier: Apache-2.0
# Builds for 32-bit ARM on another machine; docs/cross-building.md says what it needs.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(PKG_CONFIG_EXECUTABLE arm-linux-gnueabihf-pkg-config)

# The programs of the build run under it when it is installed, so that the tests can be run.
find_program(TAV_QEMU_ARM NAMES qemu-arm-static qemu-arm)
if(TAV_QEMU_ARM)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${TAV_QEMU_ARM};-L;/usr/arm-linux-gnueabihf)
endif()
