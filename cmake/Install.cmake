# Install rules and the CMake package that integrators find with
# find_package(ztodpds CONFIG REQUIRED): imported targets ztodpds::<host library> and
# ztodpds::ztodpds (the plug-in module), and the version file.
include(CMakePackageConfigHelpers)

get_property(host_libraries GLOBAL PROPERTY ZTODPDS_HOST_LIBRARIES)
install(TARGETS pdsreview pdscheck RUNTIME DESTINATION bin)
install(TARGETS ${host_libraries} ztodpds EXPORT ztodpdsTargets
        LIBRARY DESTINATION lib)
foreach(library ${host_libraries})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/${library}
            DESTINATION ${ZTODPDS_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
endforeach()

install(FILES README.md DESTINATION ${ZTODPDS_INSTALL_DATADIR})
install(DIRECTORY examples/plant DESTINATION ${ZTODPDS_INSTALL_DATADIR}/examples)

install(EXPORT ztodpdsTargets NAMESPACE ztodpds:: DESTINATION ${ZTODPDS_INSTALL_CMAKEDIR})
configure_package_config_file(cmake/ztodpdsConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/ztodpdsConfig.cmake
                              INSTALL_DESTINATION ${ZTODPDS_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ztodpdsConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ztodpdsConfig.cmake
              ${PROJECT_BINARY_DIR}/ztodpdsConfigVersion.cmake
        DESTINATION ${ZTODPDS_INSTALL_CMAKEDIR})
