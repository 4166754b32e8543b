# SPDX-License-Identifier: Apache-2.0
# CPack runs this between installing the components and making packages of them: what a Debian
# package has to have besides, its copyright, its changelog and its reasons for not heeding lintian,
# and the manual pages compressed.
set(packages runtime libtav-db-api dev libtav-db-api-dev tools tav-db-api-tools)
set(packaging ${CPACK_TAV_SOURCE_DIR}/packaging/debian)

# compress(<file> <compressed>), without a time, so that the same tree gives the same package.
function(compress file compressed)
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog ${CPACK_TEMPORARY_DIRECTORY}/changelog)
configure_file(${packaging}/changelog.in ${changelog} @ONLY)

while(packages)
  list(POP_FRONT packages component package)
  set(share ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share)
  set(documents ${share}/doc/${package})
  file(COPY ${packaging}/copyright DESTINATION ${documents})
  compress(${CPACK_TAV_SOURCE_DIR}/CHANGELOG.md ${documents}/changelog.gz)
  compress(${changelog} ${documents}/changelog.Debian.gz)
  file(GLOB pages ${share}/man/man*/*)
  foreach(page IN LISTS pages)
    compress(${page} ${page}.gz)
    file(REMOVE ${page})
  endforeach()
  file(READ ${packaging}/lintian-overrides overrides)
  if(EXISTS ${packaging}/${package}.lintian-overrides)
    file(READ ${packaging}/${package}.lintian-overrides more)
    string(APPEND overrides "${more}")
  endif()
  file(WRITE ${share}/lintian/overrides/${package} "${overrides}")
endwhile()
