# What a host needs, laid out for installation: bin, lib, include and share, a CMake package and a
# pkg-config file; and the archive made of it.
include(CMakePackageConfigHelpers)

# The import library for linkers of the Microsoft family, by tools that building the engine does not need.
find_program(QEL_LLVM_DLLTOOL llvm-dlltool)
find_program(QEL_PYTHON python3)
set(ms_library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/QELEngine.lib)
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(ms_machine i386:x86-64)
else()
  set(ms_machine i386)
endif()
if(QEL_LLVM_DLLTOOL AND QEL_PYTHON)
  add_custom_command(OUTPUT ${ms_library}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}
    COMMAND ${QEL_PYTHON} ${CMAKE_SOURCE_DIR}/scripts/ms_import_lib.py ${CMAKE_BINARY_DIR}/exports.def
      ${ms_machine} ${ms_library} ${QEL_LLVM_DLLTOOL}
    DEPENDS ${CMAKE_BINARY_DIR}/exports.def ${CMAKE_SOURCE_DIR}/scripts/ms_import_lib.py VERBATIM)
  add_custom_target(QELEngineMsLibrary ALL DEPENDS ${ms_library})
  install(FILES ${ms_library} DESTINATION lib)
else()
  message(WARNING "The package will lack lib/QELEngine.lib, the import library for Visual Studio: that needs "
    "llvm-dlltool and python3 (on Debian: apt-get install llvm python3).")
endif()

# What is shipped is stripped; the symbols stand beside it in a file of their own, which a debugger finds by
# the name that is left inside.
set(shipped ${CMAKE_BINARY_DIR}/package)
set(shipped_files "")
set(shipped_targets QELEngine)
foreach(program qel QELStudio)
  if(TARGET ${program})
    list(APPEND shipped_targets ${program})
  endif()
endforeach()
foreach(target IN LISTS shipped_targets)
  set(file ${shipped}/$<TARGET_FILE_NAME:${target}>)
  add_custom_command(OUTPUT ${shipped}/${target}.stamp
    COMMAND ${CMAKE_COMMAND} -E make_directory ${shipped}
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> ${file}.debug
    COMMAND ${CMAKE_STRIP} -o ${file} $<TARGET_FILE:${target}>
    COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=${file}.debug ${file}
    COMMAND ${CMAKE_COMMAND} -E touch ${shipped}/${target}.stamp
    DEPENDS ${target} VERBATIM)
  list(APPEND shipped_files ${shipped}/${target}.stamp)
  install(PROGRAMS ${file} DESTINATION bin)
  install(FILES ${file}.debug DESTINATION bin)
endforeach()
add_custom_target(QELEnginePackage ALL DEPENDS ${shipped_files})

install(FILES ${CMAKE_SOURCE_DIR}/include/QELEngine.h DESTINATION include)
install(FILES ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/libQELEngine.a ${CMAKE_BINARY_DIR}/QELEngine.def
  DESTINATION lib)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/examples ${CMAKE_SOURCE_DIR}/docs DESTINATION share/QELEngine
  PATTERN examples/hosts EXCLUDE)
install(FILES ${CMAKE_SOURCE_DIR}/README.md ${CMAKE_SOURCE_DIR}/CHANGELOG.md
  ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION share/QELEngine)

# The sample hosts: each is built by the line that stands in it, so that line names the package's own folders
# and word size there.
file(GLOB hosts CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR} examples/hosts/*/*)
foreach(host IN LISTS hosts)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${host})
  file(READ ${CMAKE_SOURCE_DIR}/${host} text)
  string(REPLACE "../../../build/i686/lib" "../../../../../lib" text "${text}")
  string(REPLACE "../../../include" "../../../../../include" text "${text}")
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    string(REPLACE "i686-w64-mingw32-" "x86_64-w64-mingw32-" text "${text}")
    string(REPLACE "fpc -Twin32" "fpc -Twin64" text "${text}")
    string(REPLACE "-platform:x86" "-platform:x64" text "${text}")
  endif()
  file(GENERATE OUTPUT ${shipped}/${host} CONTENT "${text}") # not CONFIGURE: the text is no template
  get_filename_component(folder ${host} DIRECTORY)
  install(FILES ${shipped}/${host} DESTINATION share/QELEngine/${folder})
endforeach()

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
