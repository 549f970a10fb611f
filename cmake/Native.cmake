# The native build: the engine as a Linux library with sanitizers, on a stand-in for the system
# (tests/native). Nothing of it is shipped. Presets: native, and fuzz for a build that libFuzzer drives.

option(QEL_FUZZ "compile for libFuzzer (clang only)" OFF)
option(QEL_COVERAGE "count the lines and branches that are run" OFF)
set(QEL_SANITIZERS address,undefined,float-cast-overflow CACHE STRING "what watches the native build")
set(QEL_WINDOWS_HEADERS /usr/include/wine/wine/windows CACHE PATH "the Windows headers of Wine")

# The headers are written for a wchar_t of 16 bits, and so is the engine.
add_compile_options(-fshort-wchar -fno-omit-frame-pointer)
add_compile_definitions(WINE_UNICODE_NATIVE QEL_SEPARATE_BLOCKS)
include_directories(SYSTEM ${QEL_WINDOWS_HEADERS})
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  add_compile_options(-Wno-pragma-pack -Wno-unknown-warning-option)
endif()
if(QEL_SANITIZERS)
  add_compile_options(-fsanitize=${QEL_SANITIZERS} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QEL_SANITIZERS})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_compile_options(-Wno-maybe-uninitialized) # a false alarm over what the sanitizers insert
    # GCC 12 takes the first of an array of pointers to members, whatever the index, when it checks that.
    set_source_files_properties(render/QELView.cpp PROPERTIES COMPILE_OPTIONS -fno-sanitize=bounds)
  endif()
endif()
if(QEL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()
if(QEL_COVERAGE)
  add_compile_options(--coverage)
  add_link_options(--coverage)
endif()

# What there is beside the engine itself; called when that is declared.
macro(qel_native_build)
  enable_testing()
  add_subdirectory(tests/native)
  target_link_libraries(qelcore PUBLIC qelwindows)
  add_subdirectory(fuzz)
endmacro()
