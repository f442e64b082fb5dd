# The Debian packages that `cpack --preset package` makes: the library, the files for developing with it, the tool,
# the Python module, and the GStreamer element.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "LmImagingLib maintainers <lmimaginglib@example.org>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE lmimaginglib)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

# The project's description is the synopsis of each.
set(about "LmImagingLib turns the raw frames of machine-vision cameras into pictures. It
knows 155 pixel formats, balances white, and uses the vector units of
processors.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME liblmimaginglib${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "${about}
.
This package contains the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liblmimaginglib-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${about}
.
This package contains what programs that use the library are compiled with: its
headers, and files for CMake and pkg-config.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME lmimaging)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_COMPONENT_TOOLS_DEPENDS library)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "${about}
.
This package contains the command-line tool, which converts files, and makes
test frames in every format.")

# A compiled module is for one version of Python.
if(TARGET lm_python)
  math(EXPR next_minor "${Python_VERSION_MINOR} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-lmimaging)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
      "python3 (>= 3.${Python_VERSION_MINOR}), python3 (<< 3.${next_minor}), python3-numpy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/python/postinst
                                                ${PROJECT_SOURCE_DIR}/packaging/python/prerm)
  set(CPACK_COMPONENT_PYTHON_DEPENDS library)
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION "${about}
.
This package contains the Python module lmimaging, which converts between
buffers and NumPy arrays.")
endif()

if(TARGET lm_gst)
  set(CPACK_DEBIAN_GSTREAMER_PACKAGE_NAME gstreamer1.0-lmimaging)
  set(CPACK_DEBIAN_GSTREAMER_PACKAGE_SECTION video)
  set(CPACK_COMPONENT_GSTREAMER_DEPENDS library)
  set(CPACK_COMPONENT_GSTREAMER_DESCRIPTION "${about}
.
This package contains the GStreamer element lmimagingconvert, which makes
pictures of raw frames in pipelines.")
endif()

# Debian wants these two in each package.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog ${PROJECT_BINARY_DIR}/packaging/changelog.Debian)
configure_file(packaging/changelog.in ${changelog} @ONLY)
file(ARCHIVE_CREATE OUTPUT ${changelog}.gz PATHS ${changelog} FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
set(CPACK_COMPONENTS_ALL library development tools)
if(TARGET lm_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
if(TARGET lm_gst)
  list(APPEND CPACK_COMPONENTS_ALL gstreamer)
endif()
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} COMPONENT)
  install(FILES packaging/copyright ${changelog}.gz COMPONENT ${component} EXCLUDE_FROM_ALL
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME})
endforeach()

include(CPack)
