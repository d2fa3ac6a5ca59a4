include(CMakePackageConfigHelpers)

install(TARGETS veltrane EXPORT veltraneTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
foreach(header IN LISTS VELTRANE_PUBLIC_HEADERS)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES include/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder})
endforeach()
if(TARGET veltrane_host)
    install(TARGETS veltrane_host RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(EXPORT veltraneTargets NAMESPACE veltrane:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/veltrane)
configure_package_config_file(cmake/veltraneConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/veltraneConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/veltrane
    PATH_VARS CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/veltraneConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/veltraneConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/veltraneConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/veltrane)
# The file tells all places from its own, so that an installed copy may be moved.
file(RELATIVE_PATH VELTRANE_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" VELTRANE_PC_TO_PREFIX "${VELTRANE_PC_TO_PREFIX}")
configure_file(cmake/veltrane.pc.in ${CMAKE_CURRENT_BINARY_DIR}/veltrane.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/veltrane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
