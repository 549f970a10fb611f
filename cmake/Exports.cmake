# The exported functions. 32 bits: plain names, and six under decorated names that hosts have always
# asked for. 64 bits: plain names all.

# name:bytes of arguments on 32 bits
set(QEL_EXPORTS
  CreateQELEngine:0 DestroyQELEngine:4 QELShowOnly:4 QELNewFile:4 QELOpenFile:8 QELSaveFile:8
  QELCloseFile:4 QELGetName:4 QELGetType:4 QELGetRootElem:4 QELCreateElem:16 QELDeleteElem:8
  QELMoveElem:16 QELCopyElem:8 QELGetParentElem:8 QELGetFirstChild:8 QELGetLastChild:8
  QELGetNextElem:8 QELGetPrevElem:8 QELGetElemType:8 QELGetElemId:8 QELSetElemId:12
  QELGetElemAttr:16 QELSetElemAttr:16 QELGetElemRect:12 QELSetElemRect:12 QELGetRefSize:8
  QELSetRefSize:8 QELGetQELRect:8 QELSetQELRect:8 QELGetDrawGraphRect:8 QELDraw:16 QELRotate:8
  QELSetBlinkState:8 QELGetStatus:8 QELSetStatus:8 QELGetParam:12 QELSetParam:12
  QELParamsSupported:4 QELGetScaleParam:16 QELSetScaleParam:16 QELGetScaleParamf:16
  QELSetScaleParamf:16 QELGetScaleStatus:12 QELSetScaleStatus:12 QELGetScaleStatusf:12
  QELSetScaleStatusf:12)
set(QEL_DECORATED_EXPORTS
  QELOpenFileU:8 QELCreateGradientDescriptor:16 QELCloseGradientDescriptor:4 QELGetGradientBrush:4
  QELDrawBezier:12 QELDrawCurve:12)

# The class, by the names of the compiler that this build is made with.
set(QEL_CLASS_FUNCTIONS
  _ZN9CQELDraft8SetDraftE13tagDRAFTSTYLE _ZN9CQELDraftC1E13tagDRAFTSTYLE _ZN9CQELDraftC1ERKS_
  _ZN9CQELDraftC1Ev _ZN9CQELDraftC2E13tagDRAFTSTYLE _ZN9CQELDraftC2ERKS_ _ZN9CQELDraftC2Ev
  _ZN9CQELDraftD0Ev _ZN9CQELDraftD1Ev _ZN9CQELDraftD2Ev _ZN9CQELDraftaSERKS_
  _ZN9CQELDraft13GetDraftBrushERP8HBRUSH__P7tagRECTmm)
set(QEL_CLASS_DATA _ZN9CQELDraft11m_nDefDraftE _ZN9CQELDraft14m_byColorsBitsE _ZTI9CQELDraft
  _ZTV9CQELDraft)

# Writes the table of exports for the linker, and makes the import library QELEngine for hosts: the
# linker's own would not know the functions by the names that compilers ask for.
function(qel_export_functions target)
  set(exports "EXPORTS\n")
  set(imports "LIBRARY QELEngine.dll\nEXPORTS\n")
  foreach(decorated IN ITEMS OFF ON)
    if(decorated)
      set(list ${QEL_DECORATED_EXPORTS})
    else()
      set(list ${QEL_EXPORTS})
    endif()
    foreach(entry IN LISTS list)
      string(REPLACE ":" ";" pair ${entry})
      list(GET pair 0 name)
      list(GET pair 1 bytes)
      if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        string(APPEND exports "  ${name}\n")
        string(APPEND imports "  ${name}\n")
      else()
        set(exported ${name})
        if(decorated)
          set(exported "_${name}@${bytes}")
        endif()
        string(APPEND exports "  \"${exported}\" = ${name}@${bytes}\n")
        string(APPEND imports "  \"${name}@${bytes}\" == \"${exported}\"\n")
      endif()
    endforeach()
  endforeach()
  foreach(name IN LISTS QEL_CLASS_FUNCTIONS)
    string(APPEND imports "  ${name}\n")
  endforeach()
  foreach(name IN LISTS QEL_CLASS_DATA)
    string(APPEND imports "  ${name} DATA\n")
  endforeach()
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/exports.def CONTENT "${exports}" @ONLY)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/imports.def CONTENT "${imports}" @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_BINARY_DIR}/exports.def)

  set(library ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/libQELEngine.a)
  add_custom_command(OUTPUT ${library}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}
    COMMAND ${CMAKE_DLLTOOL} -d ${CMAKE_BINARY_DIR}/imports.def -l ${library}
    DEPENDS ${CMAKE_BINARY_DIR}/imports.def VERBATIM)
  add_custom_target(QELEngineImportLibrary ALL DEPENDS ${library})

  # What a program links with to use the DLL.
  add_library(QELEngineHost INTERFACE)
  target_include_directories(QELEngineHost INTERFACE ${CMAKE_SOURCE_DIR})
  target_link_libraries(QELEngineHost INTERFACE ${library})
  add_dependencies(QELEngineHost ${target} QELEngineImportLibrary)
endfunction()
