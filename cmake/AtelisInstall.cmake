# `cmake --install` puts the programs, the libraries with their headers, and a CMake package file in place.
include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY ATELIS_LIBRARIES)
get_property(programs GLOBAL PROPERTY ATELIS_PROGRAMS)
install(TARGETS ${libraries} ${programs} EXPORT atelisTargets)
install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/atelis FILES_MATCHING PATTERN "*.h")
install(EXPORT atelisTargets NAMESPACE atelis:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/atelis)

configure_package_config_file(cmake/atelisConfig.cmake.in ${PROJECT_BINARY_DIR}/atelisConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/atelis)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/atelisConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/atelisConfig.cmake ${PROJECT_BINARY_DIR}/atelisConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/atelis)
