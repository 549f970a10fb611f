#!/usr/bin/env bash
# Makes the archives, installs the engine into an empty folder for each word size by the lines of
# docs/embedding.md, builds a host against the package outside of the tree with MinGW and with the
# Microsoft ABI and runs both, and drives the Studio that it holds.
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

# Symbols of its own it has none, but names the file beside it that knows the exported function.
stripped() { # ARCH FILE
  local tool=$1-w64-mingw32
  [ -z "$("$tool-nm" "$2" 2>/dev/null)" ] && "$tool-nm" "$2.debug" | grep -qE ' T _?(QELDraw@16|QELDraw|wmain|wWinMain@16|wWinMain)$' &&
    "$tool-objdump" -s -j .gnu_debuglink "$2" | grep -q "$(basename "$2" | head -c 9)"
}

# The host's source names its headers as in this tree, so it finds copies of those beside it, and the
# engine's own one in the package alone.
mkdir -p "$work/host/tests/abi" "$work/host/include"
cp tests/package/CMakeLists.txt tests/package/ms.cmake tests/abi/AbiHost.cpp "$work/host/"
cp tests/abi/Freestanding.h "$work/host/tests/abi/"
echo '#include <QELEngine.h>' >"$work/host/include/QELEngine.h"
cp -r examples/hosts/msvc "$work/host/sdk" && rm -f "$work/host/sdk/"*.cpp

# What the page says, with a folder for DIR; the last line makes both archives.
mapfile -t lines < <(sed -n '/^## Packaging/,/^## /{/^cmake\|^(cd\|^scripts/{s/ *#.*//;p}}' docs/embedding.md)
if [ ${#lines[@]} != 5 ]; then
  echo "docs/embedding.md does not tell the five lines"
  exit 1
fi

# Without what the library for Visual Studio is made of the rest is made, and a warning says what lacks.
lacking=$(cmake --preset i686 -B "$work/lacking" -DQEL_LLVM_DLLTOOL=OFF 2>&1)
for part in "will lack lib/QELEngine.lib" "llvm-dlltool and python3"; do
  grep -q "$part" <<<"$lacking" || { echo "no warning '$part': $lacking"; status=1; }
done
grep -q 'QELEngine\.lib' "$work/lacking/cmake_install.cmake" && { echo "it is to be installed all the same"; status=1; }

rm -f build/*/QELEngine-*.zip
scripts/package.sh >"$work/archives" || { echo "scripts/package.sh failed"; status=1; }
for arch in i686 x86_64; do
  grep -q "/build/$arch/QELEngine-[0-9.]*-$arch.zip$" "$work/archives" || { echo "no archive of $arch"; status=1; }
done

for arch in i686 x86_64; do
  mkdir -p "$work/host/sdk/lib-$arch"
  for name in kernel32 gdi32 user32; do
    cp "/usr/$arch-w64-mingw32/lib/lib$name.a" "$work/host/sdk/lib-$arch/$name.lib"
  done
  for line in "${lines[@]::4}"; do
    line=${line//i686/$arch}
    bash -c "${line//DIR/"$work/$arch"}" >"$work/log" 2>&1 </dev/null || { cat "$work/log"; exit 1; }
  done
  for file in bin/QELEngine.dll bin/qel.exe bin/QELStudio.exe bin/QELEngine.dll.debug bin/qel.exe.debug bin/QELStudio.exe.debug lib/libQELEngine.a lib/QELEngine.lib lib/QELEngine.def \
      include/QELEngine.h lib/pkgconfig/qelengine.pc share/QELEngine/LICENSE \
      share/QELEngine/docs/interface.md share/QELEngine/examples/tank-farm.qel; do
    [ -s "$work/$arch/$file" ] || { echo "the package lacks $file"; status=1; }
  done
  for file in QELEngine.dll qel.exe QELStudio.exe; do
    stripped "$arch" "$work/$arch/bin/$file" || { echo "$file is not stripped with its symbols beside it"; status=1; }
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
  # The Studio of the package shows a drawing, which is what qel of the package renders.
  STUDIO_BIN=$work/$arch/bin scripts/studio_tests.sh "$arch" -k test_canvas_shows_what_qel_renders >"$work/log" 2>&1 ||
    { cat "$work/log"; status=1; }
  tail -n 1 "$work/log"
  ls "build/$arch/"QELEngine-*.zip || status=1
done
exit $status
