# What `cmake --install` puts where, by package: lib, dev and tools (see package.cmake).
include(CMakePackageConfigHelpers)

set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/nvrhw)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

set(libraries nvrhw)
if(NVRHW_BOARD)
    list(APPEND libraries nvrhw-board)
endif()
install(TARGETS ${libraries} EXPORT nvrhwTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT lib NAMELINK_COMPONENT dev)
install(EXPORT nvrhwTargets NAMESPACE nvrhw:: DESTINATION ${cmake_dir} COMPONENT dev)

foreach(family foundation platform config ability gpio alarm service)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/${family}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nvrhw COMPONENT dev
        FILES_MATCHING PATTERN "*.h" PATTERN ConfigReading.h EXCLUDE) # that one is for our readers
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/src/nvrhw.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nvrhw COMPONENT dev)
foreach(header Board Error Input Line Moment Output Registration Service Signal) # the others are behind them
    install(FILES ${PROJECT_SOURCE_DIR}/src/application/${header}.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nvrhw/application COMPONENT dev)
endforeach()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/nvrhwConfig.cmake.in
    ${PROJECT_BINARY_DIR}/nvrhwConfig.cmake
    INSTALL_DESTINATION ${cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/nvrhwConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/nvrhwConfig.cmake ${PROJECT_BINARY_DIR}/nvrhwConfigVersion.cmake
    DESTINATION ${cmake_dir} COMPONENT dev)

# Found from where the file lies, so that the installed folder may be moved.
file(RELATIVE_PATH NVRHW_PC_PREFIX /${pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" NVRHW_PC_PREFIX "${NVRHW_PC_PREFIX}")
list(TRANSFORM libraries PREPEND "-l" OUTPUT_VARIABLE NVRHW_PC_LIBRARIES)
list(JOIN NVRHW_PC_LIBRARIES " " NVRHW_PC_LIBRARIES)
configure_file(${PROJECT_SOURCE_DIR}/cmake/nvrhw.pc.in ${PROJECT_BINARY_DIR}/nvrhw.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nvrhw.pc DESTINATION ${pkgconfig_dir} COMPONENT dev)

install(FILES README.md CHANGELOG.md CONTRIBUTING.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libnvrhw-dev COMPONENT dev)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libnvrhw-dev COMPONENT dev
    FILES_MATCHING PATTERN "*.md")
install(DIRECTORY apps/examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libnvrhw-dev COMPONENT dev
    FILES_MATCHING PATTERN "*.cpp")

if(NOT NVRHW_APPS)
    return()
endif()

install(TARGETS nvrhw-tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
get_property(tool_completion TARGET nvrhw-tool PROPERTY NVRHW_COMPLETION)
get_property(tool_manual TARGET nvrhw-tool PROPERTY NVRHW_MANUAL)
if(tool_completion)
    install(FILES ${tool_completion} RENAME nvrhw
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
endif()
if(tool_manual)
    add_custom_command(OUTPUT ${tool_manual}.gz
        COMMAND gzip -9nc ${tool_manual} > ${tool_manual}.gz
        DEPENDS nvrhw-tool-documents
        VERBATIM)
    add_custom_target(nvrhw-manual ALL DEPENDS ${tool_manual}.gz)
    install(FILES ${tool_manual}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/share/board ${PROJECT_SOURCE_DIR}/share/udev
    DESTINATION ${CMAKE_INSTALL_DATADIR}/nvrhw COMPONENT tools)
