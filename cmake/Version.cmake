# The version: for the exported function, and as a resource of the DLL.
set_source_files_properties(${CMAKE_SOURCE_DIR}/engine/Exports.cpp PROPERTIES COMPILE_DEFINITIONS
  "QEL_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}UL;QEL_VERSION_MINOR=${PROJECT_VERSION_MINOR}UL;QEL_VERSION_PATCH=${PROJECT_VERSION_PATCH}UL")

function(qel_version_resource target)
  enable_language(RC)
  configure_file(${CMAKE_SOURCE_DIR}/engine/Version.rc.in ${CMAKE_BINARY_DIR}/Version.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_BINARY_DIR}/Version.rc)
endfunction()
