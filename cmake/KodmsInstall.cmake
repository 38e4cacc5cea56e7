# What `cmake --install` lays down: both libraries, their public headers, the CMake package.
include(CMakePackageConfigHelpers)

set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/kodms)
install(TARGETS kodms_services kodms_desks EXPORT KodmsDesksTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${include_dir})
install(EXPORT KodmsDesksTargets NAMESPACE Kodms::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/KodmsDesks)

# The public headers, at the paths under which they include each other; not those of which the
# libraries export nothing.
install(DIRECTORY foundation DESTINATION ${include_dir} FILES_MATCHING PATTERN "*.h"
        PATTERN ConditionBuilder.h EXCLUDE PATTERN FlowStatus.h EXCLUDE)
install(DIRECTORY services/api DESTINATION ${include_dir}/services
        FILES_MATCHING PATTERN "*.h" PATTERN internal EXCLUDE)
install(FILES services/notices/Outcome.h services/notices/Progress.h
        DESTINATION ${include_dir}/services/notices)
install(FILES desks/common/DesksExport.h desks/common/DMS_TurnPage_Plugin.h
              desks/common/NamedControl.h desks/common/StyleSheets.h
        DESTINATION ${include_dir}/desks/common)
install(FILES desks/export/DMS_Export_Widget.h DESTINATION ${include_dir}/desks/export)
install(FILES desks/download/DMS_Download_Widget.h DESTINATION ${include_dir}/desks/download)
install(FILES desks/modifyfile/DMS_ModifyFile_Widget.h DESTINATION ${include_dir}/desks/modifyfile)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/KodmsDesks)
configure_package_config_file(cmake/KodmsDesksConfig.cmake.in
  "${CMAKE_BINARY_DIR}/KodmsDesksConfig.cmake" INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${CMAKE_BINARY_DIR}/KodmsDesksConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_BINARY_DIR}/KodmsDesksConfig.cmake"
              "${CMAKE_BINARY_DIR}/KodmsDesksConfigVersion.cmake"
        DESTINATION ${package_dir})

# A package for Windows brings every library along (scripts/package-windows collects them).
if(KODMS_WINDOWS_LIBRARIES)
  install(DIRECTORY "${KODMS_WINDOWS_LIBRARIES}/" DESTINATION .)
  set(CPACK_PACKAGE_NAME kodms-desks)
  set(CPACK_PACKAGE_VENDOR "the KODMS desks authors")
  set(CPACK_PACKAGE_INSTALL_DIRECTORY "KODMS desks")
  set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")
  set(CPACK_PACKAGE_EXECUTABLES kodms-desk "KODMS desks")
  set(CPACK_NSIS_MODIFY_PATH OFF)
  set(CPACK_NSIS_ENABLE_UNINSTALL_BEFORE_INSTALL ON)
  include(CPack)
endif()
