# `cpack -G TGZ` and `cpack -G DEB` package the install tree, stripped. The .deb is one
# package for the program, its private libraries and the integrators' files: the host's
# libraries are no public shared libraries (no soname, no stable interface), so they
# live in /usr/lib/ztodpds where nothing else finds them, and need no package of their
# own. PackageStaging.cmake finishes the staged tree of the .deb: its dependencies, with
# versions, from dpkg-shlibdeps (the C and C++ runtimes, and the attribute sources'
# SQLite and libpq); its lintian overrides.
set(CPACK_PACKAGE_NAME ${PROJECT_NAME})
set(CPACK_PACKAGE_VENDOR "ztodpds developers")
set(CPACK_PACKAGE_CONTACT "${ZTODPDS_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "plant design review plug-in library, its host and checker")
set(CPACK_PACKAGE_DESCRIPTION
    "Brings the review data of a plant design system (control files, display sets\n\
and review tags) into a 3D design-review host, and writes the review tags back.\n\
The package holds the plug-in library, a stand-in for the host with its DGN V7\n\
model loader, the command-line host pdsreview, the review files' checker\n\
pdscheck, and a CMake package for integrators.")
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME})
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackageStaging.cmake)

set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PROJECT_HOMEPAGE_URL})
set(CPACK_ZTODPDS_LINTIAN_OVERRIDES ${PROJECT_SOURCE_DIR}/cmake/lintian-overrides)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

include(CPack)
