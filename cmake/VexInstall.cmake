# The install tree: headers by room, libraries, a CMake package with components, a pkg-config file.

include(CMakePackageConfigHelpers)

set(VEX_COMPONENTS Kernel Core)
if(VEX_WITH_QT)
    list(APPEND VEX_COMPONENTS Qt)
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VexDbLib)
foreach(component IN LISTS VEX_COMPONENTS)
    get_property(targets GLOBAL PROPERTY VEX_COMPONENT_${component})
    get_property(headers GLOBAL PROPERTY VEX_HEADERS_${component})
    install(
        TARGETS ${targets}
        EXPORT VexDbLib${component}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(
        EXPORT VexDbLib${component}
        NAMESPACE VexDbLib::
        DESTINATION ${package_dir})
    foreach(header IN LISTS headers)
        cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE inside)
        cmake_path(GET inside PARENT_PATH folder)
        install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vexdblib/${folder})
    endforeach()
endforeach()

configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/VexDbLibConfig.cmake.in ${PROJECT_BINARY_DIR}/VexDbLibConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/VexDbLibConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VexDbLibConfig.cmake
              ${PROJECT_BINARY_DIR}/VexDbLibConfigVersion.cmake DESTINATION ${package_dir})

# The file finds the tree from where it stands itself, so an installed tree may be moved.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir}
           OUTPUT_VARIABLE prefix_from_pkgconfig)
configure_file(${CMAKE_CURRENT_LIST_DIR}/vexdblib.pc.in ${PROJECT_BINARY_DIR}/vexdblib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vexdblib.pc DESTINATION ${pkgconfig_dir})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/vexdblib)
