# Compiler options: qel_options for everything of this project, qel_engine_options for the engine.

function(qel_options target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /utf-8)
    target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -Wshadow -Wconversion
      -Wno-cast-function-type -Wno-missing-field-initializers
      -Wno-restrict # false alarms of this compiler: on joined strings, and on a class's own new and delete
      $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-mismatched-new-delete>)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
      # Real numbers are rounded at every step, as on 64 bits, and not when a register runs out.
      target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse -mstackrealign)
    endif()
    if(WIN32)
      target_link_options(${target} PRIVATE -static)
    else()
      # Only here is a long longer than 32 bits, which the Windows headers' types are not.
      target_compile_options(${target} PRIVATE -Wno-conversion -Wno-format -Wno-narrowing)
    endif()
  endif()
  target_compile_definitions(${target} PRIVATE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601
    WINVER=0x0601)
endfunction()

function(qel_engine_options target)
  qel_options(${target})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Hosts call with a stack aligned to 4 bytes: kept so, and aligned only where a function needs it.
    # What nobody unwinds needs no tables for it, which are a fifth of the library here.
    target_compile_options(${target} PRIVATE -mno-stackrealign -mpreferred-stack-boundary=2
      -mincoming-stack-boundary=2 -fno-unwind-tables -fno-asynchronous-unwind-tables)
  endif()
  if(NOT MSVC)
    # Nothing of the engine throws; allocations that fail are answered with null. Only the exported
    # class keeps its type information, for hosts that derive from it.
    target_compile_options(${target} PRIVATE -fno-exceptions -fno-threadsafe-statics)
    if(WIN32) # elsewhere the sanitizers want it, for their check of virtual calls
      target_compile_options(${target} PRIVATE -fno-rtti)
      set_source_files_properties(${CMAKE_SOURCE_DIR}/brush/QELDraft.cpp PROPERTIES COMPILE_OPTIONS
        -frtti)
    endif()
  endif()
endfunction()
