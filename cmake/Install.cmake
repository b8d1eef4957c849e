# What `cmake --install` lays down. The module is a plug-in and no library to link with: it has a
# folder of its own, and CMake and pkg-config tell hosts where it is.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

if(APPLE)
  set(PLUGINCS_MODULE_FILE PluginCS.bundle/Contents/MacOS/PluginCS)
else()
  set(PLUGINCS_MODULE_FILE PluginCS.so)
endif()
set(PLUGINCS_INSTALLED_MODULE lib/PluginCS/${PLUGINCS_MODULE_FILE})
set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/PluginCS)
set(pkgconfigFolder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

add_library(pluginheader INTERFACE)
set_target_properties(pluginheader PROPERTIES EXPORT_NAME PluginCS)
target_include_directories(pluginheader INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(pluginheader INTERFACE ${CMAKE_DL_LIBS})

install(TARGETS PluginCS LIBRARY DESTINATION lib/PluginCS)
install(FILES plugin/PluginCS.h TYPE INCLUDE)
install(TARGETS pluginheader EXPORT PluginCSTargets)
install(EXPORT PluginCSTargets NAMESPACE PluginCS:: DESTINATION ${packageFolder})

configure_package_config_file(cmake/PluginCSConfig.cmake.in PluginCSConfig.cmake
  INSTALL_DESTINATION ${packageFolder} PATH_VARS PLUGINCS_INSTALLED_MODULE)
write_basic_package_version_file(PluginCSConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/PluginCSConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/PluginCSConfigVersion.cmake
  DESTINATION ${packageFolder})

# Relative, so that the installed tree can be moved as a whole.
file(RELATIVE_PATH PLUGINCS_PREFIX_FROM_PC
  ${CMAKE_INSTALL_PREFIX}/${pkgconfigFolder} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" PLUGINCS_PREFIX_FROM_PC "${PLUGINCS_PREFIX_FROM_PC}")
configure_file(cmake/plugincs.pc.in plugincs.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/plugincs.pc DESTINATION ${pkgconfigFolder})
