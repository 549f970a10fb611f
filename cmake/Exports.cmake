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
  QELSetScaleStatusf:12 QELGetVersion:0
  QELSetValue:16 QELGetValue:12 QELSetPin:20 QELGetPin:16 QELSetSelector:20 QELGetSelector:16
  QELSetText:12 QELSetVisible:12 QELSetColor:16 QELResetLive:8 QELSetQuality:12 QELSetEasing:12
  QELAdvance:8 QELGetLiveId:20
  QELGetDirtyRect:8 QELGetDirtyRegion:8 QELInvalidate:8 QELValidate:4 QELUpdate:12
  QELGetError:8 QELOpenFileW:8 QELSaveFileW:8 QELOpenMemory:12 QELSaveMemory:12 QELIsModified:4
  QELSetPixelScale:8 QELGetPixelScale:8 QELSetSmooth:8 QELGetSmooth:4 QELRenderBitmap:24 QELSetFontFace:8
  QELGetElemDrawRect:12 QELGetIdDrawRect:12 QELElemFromPoint:8 QELIdFromPoint:16 QELFindElem:8
  QELElemToDevice:12 QELDeviceToElem:12
  QELSetTextCodePage:8 QELGetTextCodePage:8 QELNewFileEx:8 QELSetElemTextW:12 QELGetElemTextW:16 QELSetTextW:12)
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

# The class for the other compiler family: its names on 32 and on 64 bits, and what they stand for.
# Member functions are the same in both families; constructors and the virtual table are not.
set(QEL_MS_EXPORTS_32
  "??0CQELDraft@@QAE@XZ=QELDraftConstruct"
  "??0CQELDraft@@QAE@W4tagDRAFTSTYLE@@@Z=QELDraftConstructStyle"
  "??0CQELDraft@@QAE@ABV0@@Z=QELDraftConstructCopy"
  "??1CQELDraft@@UAE@XZ=_ZN9CQELDraftD1Ev"
  "??4CQELDraft@@QAEAAV0@ABV0@@Z=_ZN9CQELDraftaSERKS_"
  "?GetDraftBrush@CQELDraft@@QAEHAAPAUHBRUSH__@@PAUtagRECT@@KK@Z=_ZN9CQELDraft13GetDraftBrushERP8HBRUSH__P7tagRECTmm"
  "?SetDraft@CQELDraft@@AAEHW4tagDRAFTSTYLE@@@Z=_ZN9CQELDraft8SetDraftE13tagDRAFTSTYLE")
set(QEL_MS_EXPORTS_64
  "??0CQELDraft@@QEAA@XZ=QELDraftConstruct"
  "??0CQELDraft@@QEAA@W4tagDRAFTSTYLE@@@Z=QELDraftConstructStyle"
  "??0CQELDraft@@QEAA@AEBV0@@Z=QELDraftConstructCopy"
  "??1CQELDraft@@UEAA@XZ=_ZN9CQELDraftD1Ev"
  "??4CQELDraft@@QEAAAEAV0@AEBV0@@Z=_ZN9CQELDraftaSERKS_"
  "?GetDraftBrush@CQELDraft@@QEAAHAEAPEAUHBRUSH__@@PEAUtagRECT@@KK@Z=_ZN9CQELDraft13GetDraftBrushERP8HBRUSH__P7tagRECTmm"
  "?SetDraft@CQELDraft@@AEAAHW4tagDRAFTSTYLE@@@Z=_ZN9CQELDraft8SetDraftE13tagDRAFTSTYLE")
set(QEL_MS_DATA
  "?m_byColorsBits@CQELDraft@@2QAY07$$CBGA=_ZN9CQELDraft14m_byColorsBitsE"
  "?m_nDefDraft@CQELDraft@@2W4tagDRAFTSTYLE@@B=_ZN9CQELDraft11m_nDefDraftE"
  "??_7CQELDraft@@6B@=QELDraftTable")

# Writes the table of exports for the linker, and makes the import library QELEngine for hosts: the
# linker's own would not know the functions by the names that compilers ask for.
function(qel_export_functions target)
  set(exports "EXPORTS\n")
  set(imports "LIBRARY QELEngine.dll\nEXPORTS\n")
  set(names "LIBRARY QELEngine.dll\nEXPORTS\n")
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
        string(APPEND names "  ${name}\n")
      else()
        set(exported ${name})
        if(decorated)
          set(exported "_${name}@${bytes}")
        endif()
        string(APPEND exports "  \"${exported}\" = ${name}@${bytes}\n")
        string(APPEND names "  \"${exported}\"\n")
        string(APPEND imports "  \"${name}@${bytes}\" == \"${exported}\"\n")
      endif()
    endforeach()
  endforeach()
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(ms_functions ${QEL_MS_EXPORTS_64})
  else()
    set(ms_functions ${QEL_MS_EXPORTS_32})
  endif()
  foreach(entry IN LISTS ms_functions QEL_MS_DATA)
    string(REGEX REPLACE "^(.*)=([^=]*)$" "  \"\\1\" = \\2" line "${entry}")
    if(entry IN_LIST QEL_MS_DATA)
      string(APPEND line " DATA")
    endif()
    string(APPEND exports "${line}\n")
    string(REGEX REPLACE " = [^ ]*" "" line "${line}")
    string(APPEND names "${line}\n")
  endforeach()
  foreach(name IN LISTS QEL_CLASS_FUNCTIONS)
    string(APPEND exports "  ${name}\n")
    string(APPEND imports "  ${name}\n")
    string(APPEND names "  ${name}\n")
  endforeach()
  foreach(name IN LISTS QEL_CLASS_DATA)
    string(APPEND exports "  ${name} DATA\n")
    string(APPEND imports "  ${name} DATA\n")
    string(APPEND names "  ${name} DATA\n")
  endforeach()
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/exports.def CONTENT "${exports}") # not CONFIGURE: names hold "@"
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/imports.def CONTENT "${imports}") # not CONFIGURE: names hold "@"
  # The names alone, for hosts that make an import library of their own.
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/QELEngine.def CONTENT "${names}")
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
