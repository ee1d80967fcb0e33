# The Debian packages: the libraries, what building against them needs, and the tool with the sample
# board. scripts/package makes them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR nvrhw)
set(CPACK_PACKAGE_CONTACT "nvrhw maintainers <maintainers@nvrhw.example>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/packages)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own: its description's first line
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# The architecture is the one that the compiler compiles for, however it was chosen.
find_program(DPKG_ARCHITECTURE dpkg-architecture)
if(DPKG_ARCHITECTURE AND CMAKE_LIBRARY_ARCHITECTURE)
    execute_process(
        COMMAND ${DPKG_ARCHITECTURE} -t ${CMAKE_LIBRARY_ARCHITECTURE} -q DEB_HOST_ARCH
        OUTPUT_VARIABLE CPACK_DEBIAN_PACKAGE_ARCHITECTURE
        OUTPUT_STRIP_TRAILING_WHITESPACE
        ERROR_QUIET)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL lib dev)
if(NVRHW_APPS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_COMPONENT_DEV_DEPENDS lib)
set(CPACK_COMPONENT_TOOLS_DEPENDS lib)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# Our own libraries are not installed while packages are made: they are found here, and whoever
# needs them has the component's dependency above.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)

set(CPACK_DEBIAN_LIB_PACKAGE_NAME libnvrhw${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIB_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIB_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_COMPONENT_LIB_DESCRIPTION
"hardware services of a network video recorder
The services through which a recorder's application sees its board: machine
configuration and abilities, alarm inputs and outputs over GPIO lines, monitor
parameters, and the I2C, network and clock controllers.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libnvrhw-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEV_DESCRIPTION
"hardware services of a network video recorder (development files)
The headers of the library, and the files with which CMake and pkg-config
find it: in CMake the package nvrhw with the target nvrhw::nvrhw.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME nvrhw-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
"hardware services of a network video recorder (tools)
The program nvrhw, with which one looks at a recorder's board at the shell,
and a sample board, which is a directory, to try it on any machine.")

# What every package has to say of itself.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(changelog ${PROJECT_BINARY_DIR}/changelog.gz)
set(write_changelog ${PROJECT_SOURCE_DIR}/cmake/debian/changelog.py)
add_custom_command(OUTPUT ${changelog}
    COMMAND ${Python3_EXECUTABLE} ${write_changelog} ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        ${CPACK_PACKAGE_CONTACT} > changelog
    COMMAND gzip -9nf changelog
    DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${write_changelog}
    VERBATIM)
add_custom_target(nvrhw-changelog ALL DEPENDS ${changelog})
foreach(component ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${component} name)
    install(FILES ${changelog} cmake/debian/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}
        COMPONENT ${component})
endforeach()

include(CPack)
