# What `cmake --install` installs. The module is a plug-in and no library to link with: it has a
# folder of its own, and CMake and pkg-config tell hosts where it is. The installed tree can be
# moved as a whole, unless folders were given as absolute paths.
include(CMakePackageConfigHelpers)

set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/PluginCS)
set(pkgconfigFolder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS plugincs plugincs_module EXPORT PluginCSTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/PluginCS)
install(FILES include/PluginCS.h TYPE INCLUDE)
install(EXPORT PluginCSTargets NAMESPACE PluginCS:: DESTINATION ${packageFolder})

configure_package_config_file(cmake/PluginCSConfig.cmake.in PluginCSConfig.cmake
  INSTALL_DESTINATION ${packageFolder})
write_basic_package_version_file(PluginCSConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/PluginCSConfig.cmake
  ${PROJECT_BINARY_DIR}/PluginCSConfigVersion.cmake
  DESTINATION ${packageFolder})

# Relative to ${pcfiledir}, the folder of the .pc file, unless folders were given as absolute paths.
foreach(folder INCLUDEDIR LIBDIR)
  set(PLUGINCS_PC_${folder} ${CMAKE_INSTALL_FULL_${folder}})
  if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_${folder}} AND NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    cmake_path(RELATIVE_PATH PLUGINCS_PC_${folder}
      BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
    string(PREPEND PLUGINCS_PC_${folder} "\${pcfiledir}/")
  endif()
endforeach()
set(PLUGINCS_PC_MODULE $<TARGET_FILE_NAME:plugincs_module>)
if(APPLE)
  set(PLUGINCS_PC_MODULE PluginCS.bundle/Contents/MacOS/PluginCS)
endif()
configure_file(cmake/plugincs.pc.in plugincs.pc.in @ONLY)
file(GENERATE OUTPUT plugincs.pc INPUT ${PROJECT_BINARY_DIR}/plugincs.pc.in)
install(FILES ${PROJECT_BINARY_DIR}/plugincs.pc DESTINATION ${pkgconfigFolder})
