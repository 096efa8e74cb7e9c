# Runs in CPack on the staged install tree before each package is made; what it sets
# here, the package generator sees.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)

# A Debian package names its licence in the copyright file, which points to the system's
# copy of the text (/usr/share/common-licenses): a second copy does not go in.
file(GLOB licence ${root}/share/doc/${CPACK_PACKAGE_NAME}/LICENSE)
if(NOT licence)
    message(FATAL_ERROR "no LICENSE in ${root}/share/doc/${CPACK_PACKAGE_NAME}")
endif()
file(REMOVE ${licence})

# Debian's manual pages are compressed as gzip -9n compresses them: with no name and no
# time in the header, the same page gives the same bytes.
file(GLOB pages ${root}/share/man/man*/*)
foreach(page ${pages})
    execute_process(COMMAND gzip -9nf ${page} RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "gzip ${page} failed (${status})")
    endif()
endforeach()

file(MAKE_DIRECTORY ${root}/share/lintian/overrides)
file(COPY_FILE ${CPACK_ZTODPDS_LINTIAN_OVERRIDES}
     ${root}/share/lintian/overrides/${CPACK_PACKAGE_NAME})

# The dependencies, with versions, are what dpkg-shlibdeps finds the binaries need; the
# private libraries are found by their run paths and belong to the package itself.
# CPack's own run of it would also add ldconfig calls to the maintainer scripts for
# any folder below /usr/lib, where a private folder needs none.
file(GLOB binaries ${root}/bin/* ${root}/lib/${CPACK_PACKAGE_NAME}/*.so)
set(work ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/../shlibdeps)
file(MAKE_DIRECTORY ${work}/debian)
file(WRITE ${work}/debian/control "")
execute_process(COMMAND dpkg-shlibdeps -O ${binaries} WORKING_DIRECTORY ${work}
                RESULT_VARIABLE status OUTPUT_VARIABLE substvars ERROR_VARIABLE errors)
if(NOT status EQUAL 0 OR NOT substvars MATCHES "shlibs:Depends=([^\n]+)")
    message(FATAL_ERROR "dpkg-shlibdeps failed (${status}):\n${errors}")
endif()
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${CMAKE_MATCH_1}")
file(REMOVE_RECURSE ${work})
