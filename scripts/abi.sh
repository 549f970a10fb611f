#!/usr/bin/env bash
# Builds one host with MinGW and with the Microsoft ABI, in both word sizes, and runs each against the
# DLL of its size; then the sample host of the Microsoft ABI. Prints what fails.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$QEL_ROOT" || exit 2
qel_need_test_tools
qel_install && qel_make_prefix || exit 2
status=0

ms_build() { # ARCH SOURCE PROGRAM: freestanding, with the import library for Microsoft linkers
  local lib=/usr/$1-w64-mingw32/lib object
  object=${3%.exe}.obj
  clang++ --target="$1-pc-windows-msvc" -std=c++20 -fno-exceptions -fno-rtti -O1 -Wall -Wextra -Werror \
    -I"$QEL_ROOT" -I"$QEL_ROOT/include" -I"$QEL_ROOT/examples/hosts/msvc" -c "$2" -o "$object" &&
    lld-link /nologo /entry:mainCRTStartup /subsystem:console /safeseh:no "/out:$3" "$object" \
      "build/$1/lib/QELEngine.lib" "$lib/libkernel32.a" "$lib/libgdi32.a" "$lib/libuser32.a"
}

for arch in i686 x86_64; do
  qel_build "$arch" QELEngine QELEngineImportLibrary QELEngineMsLibrary || exit 2
  bin=$QEL_ROOT/build/$arch/bin
  "$arch-w64-mingw32-g++-posix" -std=c++20 -Wall -Wextra -Werror -I. tests/abi/AbiHost.cpp \
    "build/$arch/lib/libQELEngine.a" -lgdi32 -static -o "$bin/abi_mingw.exe" || status=1
  ms_build "$arch" tests/abi/AbiHost.cpp "$bin/abi_ms.exe" || status=1
  ms_build "$arch" examples/hosts/msvc/host.cpp "$bin/host_ms.exe" || status=1
  for program in abi_mingw abi_ms host_ms; do
    printf '%-7s %-10s ' "$arch" "$program"
    (cd "$bin" && "${QEL_WINE[@]}" "$program.exe") || status=1
  done
done
exit $status
