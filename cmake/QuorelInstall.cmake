# What `cmake --install` adds to the rooms' own libraries, programs and headers.

include(CMakePackageConfigHelpers)

foreach(folder IN ITEMS config samples)
    if(EXISTS "${PROJECT_SOURCE_DIR}/${folder}")
        install(DIRECTORY ${folder} DESTINATION ${CMAKE_INSTALL_DATADIR}/quorel
                USE_SOURCE_PERMISSIONS)
    endif()
endforeach()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Quorel)
install(EXPORT QuorelTargets NAMESPACE Quorel:: DESTINATION ${package_dir})
configure_package_config_file(cmake/QuorelConfig.cmake.in
    "${CMAKE_CURRENT_BINARY_DIR}/QuorelConfig.cmake" INSTALL_DESTINATION ${package_dir}
    PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/QuorelConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/QuorelConfig.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/QuorelConfigVersion.cmake"
        DESTINATION ${package_dir})
