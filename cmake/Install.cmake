# Install rules and the CMake package that integrators find with
# find_package(ztodpds CONFIG REQUIRED): imported targets ztodpds::<host library> and
# ztodpds::ztodpds (the plug-in module), and the version file.
include(CMakePackageConfigHelpers)

get_property(host_libraries GLOBAL PROPERTY ZTODPDS_HOST_LIBRARIES)
install(TARGETS pdsreview pdscheck RUNTIME DESTINATION ${ZTODPDS_INSTALL_BINDIR})
install(TARGETS ${host_libraries} ztodpds EXPORT ztodpdsTargets
        LIBRARY DESTINATION ${ZTODPDS_INSTALL_LIBDIR})
foreach(library ${host_libraries})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/${library}
            DESTINATION ${ZTODPDS_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
endforeach()

install(DIRECTORY examples/plant DESTINATION ${ZTODPDS_INSTALL_DATADIR}/examples)
install(FILES README.md CHANGELOG.md LICENSE docs/formats.md
        DESTINATION ${ZTODPDS_INSTALL_DOCDIR})
if(NOT WIN32)
    # Debian's two documents of a package: the machine-readable copyright file and the
    # changelog, made from CHANGELOG.md.
    configure_file(cmake/copyright.in ${PROJECT_BINARY_DIR}/copyright @ONLY)
    set(changelog ${PROJECT_BINARY_DIR}/debian/changelog.gz)
    add_custom_command(OUTPUT ${changelog}
        COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR}/CHANGELOG.md
                -DOUTPUT=${changelog} -DVERSION=${PROJECT_VERSION}
                "-DMAINTAINER=${ZTODPDS_MAINTAINER}"
                -P ${PROJECT_SOURCE_DIR}/cmake/DebianChangelog.cmake
        DEPENDS CHANGELOG.md cmake/DebianChangelog.cmake
        COMMENT "Debian changelog from CHANGELOG.md" VERBATIM)
    add_custom_target(ztodpds_debian_changelog ALL DEPENDS ${changelog})
    install(FILES ${PROJECT_BINARY_DIR}/copyright ${changelog}
            DESTINATION ${ZTODPDS_INSTALL_DOCDIR})
endif()

install(EXPORT ztodpdsTargets NAMESPACE ztodpds:: DESTINATION ${ZTODPDS_INSTALL_CMAKEDIR})
configure_package_config_file(cmake/ztodpdsConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/ztodpdsConfig.cmake
                              INSTALL_DESTINATION ${ZTODPDS_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ztodpdsConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ztodpdsConfig.cmake
              ${PROJECT_BINARY_DIR}/ztodpdsConfigVersion.cmake
        DESTINATION ${ZTODPDS_INSTALL_CMAKEDIR})
