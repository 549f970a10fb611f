# The libraries of the command-line program: headers alone, so that those of the system serve every compiler.
# The folder that they stand in holds the system's own C library, too, which another compiler must not find;
# it gets to see links to the three.
set(QEL_TOOL_HEADERS /usr/include CACHE PATH "the folder with CLI/CLI.hpp, nlohmann/json.hpp and fmt/format.h")

set(QEL_TOOL_LIBRARIES CLI/CLI.hpp nlohmann/json.hpp fmt/format.h)

# Those that are not there. Only qel needs them: without them it is left out, and the rest is built.
function(qel_missing_tool_libraries out)
  set(missing "")
  foreach(header IN LISTS QEL_TOOL_LIBRARIES)
    if(NOT EXISTS ${QEL_TOOL_HEADERS}/${header})
      list(APPEND missing ${QEL_TOOL_HEADERS}/${header})
    endif()
  endforeach()
  set(${out} ${missing} PARENT_SCOPE)
endfunction()

function(qel_tool_libraries target)
  set(links ${CMAKE_BINARY_DIR}/headers)
  file(MAKE_DIRECTORY ${links})
  foreach(header IN LISTS QEL_TOOL_LIBRARIES)
    get_filename_component(folder ${header} DIRECTORY)
    file(CREATE_LINK ${QEL_TOOL_HEADERS}/${folder} ${links}/${folder} SYMBOLIC COPY_ON_ERROR)
  endforeach()
  target_include_directories(${target} SYSTEM PRIVATE ${links})
  target_compile_definitions(${target} PRIVATE FMT_HEADER_ONLY)
endfunction()
