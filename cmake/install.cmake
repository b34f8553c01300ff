# What `cmake --install` puts where: the programs side by side, the libraries, their headers under include/zeq_api,
# and what find_package(zeq_api) and pkg-config need.
include(CMakePackageConfigHelpers)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zeq_api)

install(TARGETS zeq_api EXPORT zeq_api FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zeq_api)
install(EXPORT zeq_api NAMESPACE zeq:: FILE zeq_api-targets.cmake DESTINATION ${config_dir})
configure_package_config_file(cmake/zeq_api-config.cmake.in zeq_api-config.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(zeq_api-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zeq_api-config.cmake ${PROJECT_BINARY_DIR}/zeq_api-config-version.cmake
  DESTINATION ${config_dir})

set(pc_requires RapidJSON)
set(pc_requires_private zlib)
set(pc_cflags "")
if(ZEQ_WITH_ISAL)
  list(APPEND pc_requires_private libisal)
endif()
if(ZEQ_ACIS_DIR)
  list(APPEND pc_requires zeq_acis)
  set(pc_cflags " -DZEQ_EXTERNAL_ACIS")
endif()
if(NOT BUILD_SHARED_LIBS) # an archive brings no dependencies along: who links it needs them too
  list(APPEND pc_requires ${pc_requires_private})
endif()
list(JOIN pc_requires ", " pc_requires)
list(JOIN pc_requires_private ", " pc_requires_private)
file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/zeq_api.pc.in zeq_api.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zeq_api.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(ZEQ_BUILD_TRANSPORT)
  install(TARGETS zeq_transport EXPORT zeq_transport FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zeq_api)
  install(EXPORT zeq_transport NAMESPACE zeq:: FILE zeq_transport-targets.cmake DESTINATION ${config_dir})
  configure_file(cmake/zeq_transport.pc.in zeq_transport.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/zeq_transport.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
if(ZEQ_BUILD_TOOLS)
  file(RELATIVE_PATH bin_to_lib /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(zeq convexor PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  install(TARGETS zeq convexor)
endif()
