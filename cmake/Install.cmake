# What `cmake --install` lays out, and the Debian packages made of it:
#   bin/      oxlrt31.dll (Windows) and the oxl tool
#   lib/      liboxlrt31.so with its soname links, or the import library and
#             the export list (.def) on Windows; cmake/oxlrt31/ (the package,
#             target oxlrt31::oxlrt31) and, on Linux, pkgconfig/oxlrt31.pc
#   include/  oxlrt31/*.h: the public C headers, nothing else
include(CMakePackageConfigHelpers)

install(TARGETS oxlrt31 EXPORT oxlrt31Targets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(TARGETS oxl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
install(DIRECTORY include/oxlrt31 DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
if(WIN32)
  install(FILES ${OXL_DEF} DESTINATION ${CMAKE_INSTALL_LIBDIR} RENAME oxlrt31.def COMPONENT development)
endif()

set(OXL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/oxlrt31)
install(EXPORT oxlrt31Targets NAMESPACE oxlrt31:: DESTINATION ${OXL_CMAKE_DIR} COMPONENT development)
configure_package_config_file(cmake/oxlrt31Config.cmake.in ${PROJECT_BINARY_DIR}/oxlrt31Config.cmake
  INSTALL_DESTINATION ${OXL_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/oxlrt31ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/oxlrt31Config.cmake ${PROJECT_BINARY_DIR}/oxlrt31ConfigVersion.cmake
  DESTINATION ${OXL_CMAKE_DIR} COMPONENT development)

if(NOT WIN32)
  # The prefix as seen from the .pc file's own folder, so that the packages
  # and a scratch root work as well as the configured prefix.
  string(REGEX REPLACE "[^/]+" ".." OXL_PC_UP "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
  configure_file(cmake/oxlrt31.pc.in ${PROJECT_BINARY_DIR}/oxlrt31.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/oxlrt31.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

  # Debian packages: the library (with the tool), and the development files.
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGE_NAME oxlrt31)
  set(CPACK_PACKAGE_VENDOR "oxlrt31 developers")
  set(CPACK_PACKAGE_CONTACT "oxlrt31 developers <oxlrt31@localhost>")
  set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "run-time library: exact decimals, double-byte-safe strings, heaps")
  set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_COMPONENTS_GROUPING IGNORE)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME liboxlrt31-3)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS OFF)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6, libstdc++6")
  set(CPACK_DEBIAN_TOOL_PACKAGE_NAME oxlrt31-tools)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liboxlrt31-dev)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
  set(CPACK_COMPONENT_TOOL_DEPENDS runtime)
  set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
  set(CPACK_COMPONENTS_ALL runtime tool development)
  include(CPack)
endif()
