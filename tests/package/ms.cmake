# Clang with the Microsoft ABI where neither its runtime nor an SDK is installed: the program brings what
# it needs of a runtime, and the system's import libraries are those of MinGW.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${QEL_ARCH})
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET ${QEL_ARCH}-pc-windows-msvc)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QEL_ARCH QEL_STAND_IN)
set(CMAKE_CXX_FLAGS_INIT "-fno-exceptions -fno-rtti -isystem ${QEL_STAND_IN}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-nostdlib -fuse-ld=lld -Xlinker /nodefaultlib -Xlinker /entry:mainCRTStartup -Xlinker /subsystem:console -Xlinker /safeseh:no -Xlinker /libpath:${QEL_STAND_IN}/lib-${QEL_ARCH}")
