# Where `cmake --install` puts things. Everything but the file of pkg-config finds its neighbours by relative paths, so
# that an installed tree may be moved.
include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/LmImagingLib)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(
  TARGETS LmImagingLib
  EXPORT LmImagingLibTargets
  RUNTIME COMPONENT library
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

install(EXPORT LmImagingLibTargets NAMESPACE LmImagingLib:: DESTINATION ${config_dir} COMPONENT development)
configure_package_config_file(cmake/LmImagingLibConfig.cmake.in LmImagingLibConfig.cmake
                              INSTALL_DESTINATION ${config_dir} NO_SET_AND_CHECK_MACRO
                              NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(LmImagingLibConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LmImagingLibConfig.cmake ${PROJECT_BINARY_DIR}/LmImagingLibConfigVersion.cmake
        DESTINATION ${config_dir} COMPONENT development)

# pkg-config prints paths as they are written. So the file gets the prefix when that is known, as things are installed.
# Programs find the library by it, too, unless the system looks there.
set(LM_PREFIX @LM_PREFIX@)
set(LM_RUN_PATH @LM_RUN_PATH@)
configure_file(cmake/lmimaginglib.pc.in lmimaginglib.pc.in @ONLY)
install(
  CODE "
get_filename_component(LM_PREFIX \"\${CMAKE_INSTALL_PREFIX}\" ABSOLUTE)
set(LM_RUN_PATH)
if(NOT WIN32 AND NOT LM_PREFIX STREQUAL \"/usr\")
  set(LM_RUN_PATH \" -Wl,-rpath,\\\${libdir}\")
endif()
configure_file(\"${PROJECT_BINARY_DIR}/lmimaginglib.pc.in\" \"${PROJECT_BINARY_DIR}/lmimaginglib.pc\" @ONLY)"
  COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/lmimaginglib.pc DESTINATION ${pkgconfig_dir} COMPONENT development)

if(TARGET lmimaging)
  file(RELATIVE_PATH bin_to_lib /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(lmimaging PROPERTIES INSTALL_RPATH $ORIGIN/${bin_to_lib})
  install(TARGETS lmimaging RUNTIME COMPONENT tools)
endif()
