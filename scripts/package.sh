#!/usr/bin/env bash
# Installs the engine into an empty folder for each word size, builds a host against the package outside
# of the tree with MinGW and with the Microsoft ABI, runs both, and makes the archives.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$QEL_ROOT" || exit 2
qel_need_test_tools
qel_install && qel_make_prefix || exit 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0

consume() { # ARCH NAME CMAKE-OPTION...: builds the host in a folder of its own, and runs it beside the DLL
  local arch=$1 name=$2
  shift 2
  cmake -G Ninja -S "$work/host" -B "$work/$arch-$name" -DCMAKE_PREFIX_PATH="$work/$arch" \
      -DQELEngine_DIR="$work/$arch/lib/cmake/QELEngine" \
      -DQEL_CONSUMER_SOURCE="$work/host/AbiHost.cpp" -DQEL_CONSUMER_INCLUDE="$work/host" "$@" &&
    cmake --build "$work/$arch-$name" || return 1
  cp "$work/$arch/bin/QELEngine.dll" "$work/$arch-$name/"
  (cd "$work/$arch-$name" && "${QEL_WINE[@]}" consumer.exe)
}

# The host's source names its headers as in this tree, so it finds copies of those beside it, and the
# engine's own one in the package alone.
mkdir -p "$work/host/tests/abi" "$work/host/include"
cp tests/package/CMakeLists.txt tests/package/ms.cmake tests/abi/AbiHost.cpp "$work/host/"
cp tests/abi/Freestanding.h "$work/host/tests/abi/"
echo '#include <QELEngine.h>' >"$work/host/include/QELEngine.h"
cp -r examples/hosts/msvc "$work/host/sdk" && rm -f "$work/host/sdk/"*.cpp

for arch in i686 x86_64; do
  mkdir -p "$work/host/sdk/lib-$arch"
  for name in kernel32 gdi32 user32; do
    cp "/usr/$arch-w64-mingw32/lib/lib$name.a" "$work/host/sdk/lib-$arch/$name.lib"
  done
  qel_build "$arch" QELEngine QELEngineImportLibrary QELEngineMsLibrary qel || exit 2
  cmake --install "build/$arch" --prefix "$work/$arch" >"$work/log" || { cat "$work/log"; exit 1; }
  for file in bin/QELEngine.dll bin/qel.exe lib/libQELEngine.a lib/QELEngine.lib lib/QELEngine.def \
      include/QELEngine.h lib/pkgconfig/qelengine.pc share/QELEngine/LICENSE \
      share/QELEngine/docs/interface.md share/QELEngine/examples/tank-farm.qel; do
    [ -s "$work/$arch/$file" ] || { echo "the package lacks $file"; status=1; }
  done
  flags=$(PKG_CONFIG_PATH=$work/$arch/lib/pkgconfig pkg-config --cflags --libs qelengine) || status=1
  # shellcheck disable=SC2086
  printf '#include <QELEngine.h>\nint main(void) { return QELGetVersion() == 0; }\n' |
    "$arch-w64-mingw32-gcc-posix" -x c - -x none $flags -o "$work/pc.exe" || status=1
  consume "$arch" mingw -DCMAKE_TOOLCHAIN_FILE="$QEL_ROOT/cmake/mingw-$arch.cmake" \
      -DCMAKE_EXE_LINKER_FLAGS=-static >"$work/log" 2>&1 || { cat "$work/log"; status=1; }
  tail -n 1 "$work/log"
  consume "$arch" ms -DCMAKE_TOOLCHAIN_FILE="$work/host/ms.cmake" -DQEL_ARCH="$arch" \
      -DQEL_STAND_IN="$work/host/sdk" -DCMAKE_CXX_STANDARD_LIBRARIES=-lkernel32 >"$work/log" 2>&1 || { cat "$work/log"; status=1; }
  tail -n 1 "$work/log"
  (cd "build/$arch" && cpack >"$work/log" 2>&1) || { cat "$work/log"; status=1; }
  ls "build/$arch/"QELEngine-*.zip || status=1
done
exit $status
