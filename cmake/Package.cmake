# `cpack -G TGZ` and `cpack -G DEB` package the install tree. The .deb depends on the C++
# runtime and on the libraries of the attribute sources, SQLite and libpq: the host's own
# libraries travel in it.
set(CPACK_PACKAGE_NAME ztodpds)
set(CPACK_PACKAGE_VENDOR "ztodpds developers")
set(CPACK_PACKAGE_CONTACT "ztodpds developers <ztodpds@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "Plant design review plug-in library, stand-in host and pdsreview")
set(CPACK_PACKAGE_DESCRIPTION
    "Brings a plant design system's review data (control files, display sets, review\n\
tags) into a 3D design-review host; with a stand-in host, its DGN V7 loader, the\n\
command-line host pdsreview, and a CMake package for integrators.")
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME})
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES OFF)

set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libstdc++6, libgcc-s1, libsqlite3-0, libpq5")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

include(CPack)
