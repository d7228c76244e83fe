# SPDX-FileCopyrightText: The project's authors
# SPDX-License-Identifier: MIT

include_guard()
include(CMakePackageConfigHelpers)

# The workbench looks for the plug-in beside the host's library, so both lie in one folder.
set(MOLK_PLUGIN_DIR ${CMAKE_INSTALL_LIBDIR}/molk)

install(TARGETS MolkInserterPlugin LIBRARY DESTINATION ${MOLK_PLUGIN_DIR} COMPONENT plugin)

# The host: the shared library and the application around it.
set_target_properties(workbench PROPERTIES
    INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}/molk")
install(TARGETS standin LIBRARY DESTINATION ${MOLK_PLUGIN_DIR} COMPONENT workbench)
install(TARGETS workbench RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT workbench)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/molk/examples
    COMPONENT workbench)

# For other programs: the model library, and the host's interfaces for whoever writes a host.
install(TARGETS molk_model hostapi EXPORT MolkTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/molk/model)
set_target_properties(molk_model PROPERTIES EXPORT_NAME Model)
set_target_properties(hostapi PROPERTIES EXPORT_NAME HostApi)
install(DIRECTORY model/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/molk/model
    COMPONENT development FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
install(DIRECTORY hostapi/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/molk/hostapi
    COMPONENT development FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Molk)
install(EXPORT MolkTargets NAMESPACE Molk:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/MolkConfig.cmake.in ${PROJECT_BINARY_DIR}/MolkConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MolkConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/MolkConfig.cmake ${PROJECT_BINARY_DIR}/MolkConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT development)

# The same package out of the build tree, for find_package(Molk) with Molk_DIR set to it.
export(EXPORT MolkTargets NAMESPACE Molk:: FILE ${PROJECT_BINARY_DIR}/MolkTargets.cmake)
