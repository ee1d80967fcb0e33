include(CMakePackageConfigHelpers)

install(TARGETS nvrhw nvrhw-board EXPORT nvrhwTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT nvrhwTargets NAMESPACE nvrhw:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nvrhw)

foreach(family foundation platform config ability gpio alarm service)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/${family}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nvrhw
        FILES_MATCHING PATTERN "*.h")
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/share/board DESTINATION ${CMAKE_INSTALL_DATADIR}/nvrhw)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/nvrhwConfig.cmake.in
    ${PROJECT_BINARY_DIR}/nvrhwConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nvrhw)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/nvrhwConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/nvrhwConfig.cmake ${PROJECT_BINARY_DIR}/nvrhwConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/nvrhw)
