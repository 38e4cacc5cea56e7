# What `cmake --install` lays down: both libraries, their public headers, the CMake package.
include(CMakePackageConfigHelpers)

install(TARGETS kodms_services kodms_desks EXPORT KodmsDesksTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kodms)
install(EXPORT KodmsDesksTargets NAMESPACE Kodms::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KodmsDesks)
install(DIRECTORY foundation desks services/api
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kodms FILES_MATCHING PATTERN "*.h")
configure_package_config_file(cmake/KodmsDesksConfig.cmake.in
  "${CMAKE_BINARY_DIR}/KodmsDesksConfig.cmake"
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KodmsDesks)
write_basic_package_version_file("${CMAKE_BINARY_DIR}/KodmsDesksConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_BINARY_DIR}/KodmsDesksConfig.cmake"
              "${CMAKE_BINARY_DIR}/KodmsDesksConfigVersion.cmake"
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KodmsDesks)
