# What a host needs, laid out for installation: bin, lib, include and share, a CMake package and a
# pkg-config file; and the archive made of it.
include(CMakePackageConfigHelpers)

# The import library for linkers of the Microsoft family. It is made by tools that building the engine
# does not need, so nothing depends on it but the installation and the tests.
set(ms_library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/QELEngine.lib)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(ms_machine i386:x86-64)
else()
  set(ms_machine i386)
endif()
add_custom_command(OUTPUT ${ms_library}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}
  COMMAND python3 ${CMAKE_SOURCE_DIR}/scripts/ms_import_lib.py ${CMAKE_BINARY_DIR}/exports.def
    ${ms_machine} ${ms_library}
  DEPENDS ${CMAKE_BINARY_DIR}/exports.def ${CMAKE_SOURCE_DIR}/scripts/ms_import_lib.py VERBATIM)
add_custom_target(QELEngineMsLibrary DEPENDS ${ms_library})

install(PROGRAMS $<TARGET_FILE:QELEngine> $<TARGET_FILE:qel> DESTINATION bin)
install(FILES ${CMAKE_SOURCE_DIR}/include/QELEngine.h DESTINATION include)
install(FILES ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/libQELEngine.a ${ms_library}
  ${CMAKE_BINARY_DIR}/QELEngine.def DESTINATION lib)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/examples ${CMAKE_SOURCE_DIR}/docs DESTINATION share/QELEngine)
install(FILES ${CMAKE_SOURCE_DIR}/README.md ${CMAKE_SOURCE_DIR}/CHANGELOG.md
  ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION share/QELEngine)

configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/QELEngineConfig.cmake.in
  ${CMAKE_BINARY_DIR}/QELEngineConfig.cmake INSTALL_DESTINATION lib/cmake/QELEngine)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/QELEngineConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/QELEngineConfig.cmake
  ${CMAKE_BINARY_DIR}/QELEngineConfigVersion.cmake DESTINATION lib/cmake/QELEngine)

configure_file(${CMAKE_SOURCE_DIR}/cmake/qelengine.pc.in ${CMAKE_BINARY_DIR}/qelengine.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/qelengine.pc DESTINATION lib/pkgconfig)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME QELEngine)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME QELEngine-${PROJECT_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
include(CPack)
