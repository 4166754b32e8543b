# SPDX-License-Identifier: Apache-2.0
# Chooses the six platform libraries and gathers them in one target, tav::platform.
set(TAV_PLATFORM_MODULES dlog vconf libtzplatform-config capi-system-info pkgmgr-info
                         capi-appfw-app-control)

function(tav_choose_platform)
  add_library(tav_platform INTERFACE)
  add_library(tav::platform ALIAS tav_platform)

  set(choice ${TAV_PLATFORM})
  if(choice STREQUAL "auto")
    pkg_check_modules(tav_device_platform QUIET IMPORTED_TARGET ${TAV_PLATFORM_MODULES})
    if(tav_device_platform_FOUND)
      set(choice device)
    else()
      set(choice host)
    endif()
  endif()

  if(choice STREQUAL "device")
    pkg_check_modules(tav_device_platform REQUIRED IMPORTED_TARGET ${TAV_PLATFORM_MODULES})
    target_link_libraries(tav_platform INTERFACE PkgConfig::tav_device_platform)
  elseif(choice STREQUAL "host")
    add_subdirectory(platform/host)
    target_link_libraries(tav_platform INTERFACE tav_host_dlog tav_host_vconf
                          tav_host_tzplatform_config tav_host_system_info tav_host_pkgmgr_info
                          tav_host_app_control)
  else()
    message(FATAL_ERROR "TAV_PLATFORM is '${TAV_PLATFORM}'; it must be auto, device or host")
  endif()
  set(TAV_PLATFORM_CHOSEN ${choice} PARENT_SCOPE)
  message(STATUS "Platform libraries: ${choice}")
endfunction()
