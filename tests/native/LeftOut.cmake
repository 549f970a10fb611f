# Tests of the engine that the native build does not run, and why. All others of tests/*Tests.cpp run.

# A list of long and LONG in one, which are the same type on Windows only.
set(QEL_FILES_LEFT_OUT RootTests.cpp)

set(QEL_LEFT_OUT)
