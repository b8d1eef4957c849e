# Compiler settings of all our own targets. Projects that include us do not inherit them.
add_library(plugincs_settings INTERFACE)
if(NOT DEFINED CMAKE_CXX_EXTENSIONS)
  set(CMAKE_CXX_EXTENSIONS OFF)
endif()
target_compile_features(plugincs_settings INTERFACE cxx_std_20 c_std_11)
target_compile_options(plugincs_settings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Sees overlaps in the sum of a literal and a string where there are none.
  target_compile_options(plugincs_settings INTERFACE
    -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
# A project around ours may have no build type, which would make us many times slower.
target_compile_options(plugincs_settings INTERFACE $<$<CONFIG:>:-O2>)
target_compile_definitions(plugincs_settings INTERFACE $<$<CONFIG:>:NDEBUG>)
if(PLUGINCS_WERROR)
  target_compile_options(plugincs_settings INTERFACE -Werror)
endif()
if(PLUGINCS_SANITIZE)
  target_compile_options(plugincs_settings INTERFACE
    -fsanitize=${PLUGINCS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(plugincs_settings INTERFACE -fsanitize=${PLUGINCS_SANITIZE})
endif()
