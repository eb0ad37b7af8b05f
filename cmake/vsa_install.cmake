# Installs the headers, the libraries, the CMake package and the pkg-config file. tools/CMakeLists.txt has the rule for
# the command vsa.
include(CMakePackageConfigHelpers)

set(vsa_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vsa)
set(vsa_libraries vsa)
if(VSA_BUILD_SHARED)
  list(APPEND vsa_libraries vsa_shared)
endif()

install(TARGETS ${vsa_libraries} EXPORT vsa_targets)
install(EXPORT vsa_targets FILE vsa_targets.cmake NAMESPACE vsa:: DESTINATION ${vsa_package_dir})

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vsa DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/vsa_config.cmake.in vsa-config.cmake
                              INSTALL_DESTINATION ${vsa_package_dir})
write_basic_package_version_file(vsa-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vsa-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/vsa-config-version.cmake
        DESTINATION ${vsa_package_dir})

# The prefix is relative to the pkg-config file, so that an installed tree can be moved.
file(RELATIVE_PATH vsa_prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/vsa.pc.in vsa.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vsa.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
