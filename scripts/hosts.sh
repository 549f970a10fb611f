#!/usr/bin/env bash
# Builds the sample hosts of examples/hosts, runs them and compares what they draw with the pictures of
# `qel render`; checks the declarations of scripts/bindings with the compilers and runtimes they are for.
# C, C++ and Pascal run under Wine, in both word sizes, and the samples with a window on a display of their
# own. There is no .NET and no Python for Windows here: these two run on Linux against a stand-in of the DLL
# that records what arrives. The window of Qt is a Linux program whose pictures come from Wine.
# QEL_BUILD=DIR takes DLLs and qel from DIR/i686 and DIR/x86_64 as they are, instead of building in build.
# The host of the Microsoft ABI is run by scripts/abi.sh.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$QEL_ROOT" || exit 2

FPC_HOME=${XDG_CACHE_HOME:-$HOME/.cache}/qelengine/fpc-$QEL_FPC_VERSION
FONT="WenQuanYi Zen Hei Mono"

qel_need_host_tools
qel_install && qel_make_prefix || exit 2

build=${QEL_BUILD:-}
if [ -z "$build" ]; then
  build=$QEL_ROOT/build
  for arch in i686 x86_64; do
    qel_build $arch QELEngine QELEngineImportLibrary QELEngineMsLibrary QELEnginePackage qel || exit 2
  done
fi

passed=0
failed=0
pass() { passed=$((passed + 1)); }
fail() { failed=$((failed + 1)); printf 'FAILED %s\n' "$1"; }
does() { # NAME COMMAND...
  local name=$1
  shift
  if "$@"; then pass; else fail "$name"; fi
}
same() { # NAME FILE FILE
  if [ -s "$2" ] && cmp "$2" "$3"; then pass; else fail "$1: $2 and $3 differ"; fi
}
differ() { # NAME FILE FILE
  if [ -s "$2" ] && [ -s "$3" ] && ! cmp -s "$2" "$3"; then pass; else fail "$1: $2 and $3 are the same"; fi
}

work=$(mktemp -d)
display_server=
end() {
  [ -z "$display_server" ] || kill "$display_server" 2>/dev/null
  rm -rf "$work"
}
trap end EXIT

# ---- Free Pascal for Windows. Debian has the compiler for Linux and all sources: from these come the
# compiler for 32-bit x86 and the runtime units of both Windows targets, once, in about 20 seconds.

fpc_units() { # COMPILER OS CPU UNITS: the runtime units of one target
  local compile=("$1" -n -v0 "-T$2" -O1 -Xs "-FU$4" "-FE$4" -Fi../win -Fi../inc "-Fi../$3" -Fi../objpas)
  mkdir -p "$4"
  (cd "$QEL_FPC_SOURCES/rtl/$2" && "${compile[@]}" -Us -Sg system.pp && "${compile[@]}" ../objpas/objpas.pp &&
    "${compile[@]}" -Fi../objpas/sysutils -Fi../objpas/classes -Fi../win/wininc "-Fu../$3" -Fu../win/wininc \
      -Fu../win -Fu../inc -Fu../objpas buildrtl.pp)
}
fpc_make() {
  local new=$FPC_HOME.new native=(ppcx64 -n -v0 "-Fu$QEL_FPC_HERE/units/x86_64-linux/rtl")
  rm -rf "$new"
  mkdir -p "$new/objects" "$new/messages"
  # The texts of the compiler's messages are compiled in; the sources come without this generated file.
  "${native[@]}" "-FU$new/objects" "-FE$new" "$QEL_FPC_SOURCES/compiler/utils/msg2inc.pp" &&
    (cd "$new/messages" && ../msg2inc "$QEL_FPC_HERE/msg/errore.msg" msg msg) &&
    (cd "$QEL_FPC_SOURCES/compiler" && rm -f "$new/objects"/* &&
      "${native[@]}" -di386 -dGDB -Mobjfpc -O1 -Fusystems -Fux86 -Fui386 "-Fi$new/messages" -Fii386 -Fisystems \
        "-FU$new/objects" "-FE$new" "-o$new/ppcross386" pp.pas) &&
    fpc_units "$new/ppcross386" win32 i386 "$new/i686" && fpc_units ppcx64 win64 x86_64 "$new/x86_64" &&
    rm -rf "$new/objects" "$FPC_HOME" && mv "$new" "$FPC_HOME"
}
if [ ! -e "$FPC_HOME/x86_64/system.ppu" ]; then
  qel_say "Making Free Pascal for Windows (once, about 20 seconds) ..."
  mkdir -p "$(dirname "$FPC_HOME")"
  fpc_make >"$work/fpc.log" 2>&1 </dev/null || { tail -n 20 "$work/fpc.log"; exit 2; }
fi
pascal() { # ARCH SOURCE PROGRAM
  local compiler=ppcx64 target=win64
  [ "$1" = x86_64 ] || { compiler=$FPC_HOME/ppcross386 target=win32; }
  mkdir -p "$work/$1/objects"
  "$compiler" -n "-T$target" -v0 -vew -Sew -Xs "-Fu$FPC_HOME/$1" -Fuexamples/hosts/pascal \
    "-FU$work/$1/objects" "-o$3" "$2" >"$work/pascal.log" 2>&1 </dev/null || { cat "$work/pascal.log"; return 1; }
}

# ---- declarations: current, and right about both DLLs

does "declarations" python3 scripts/bindings --check "$build"

# ---- compiling: for each architecture a folder with the DLL and the programs

strict=(-O1 -Wall -Wextra -Wpedantic -Werror -Iinclude)
for arch in i686 x86_64; do
  out=$work/$arch
  mkdir -p "$out"
  cp "$build/$arch/bin/QELEngine.dll" "$out/"
  library=("$build/$arch/lib/libQELEngine.a" -lgdi32)
  does "c/host.c, $arch" "$arch-w64-mingw32-gcc-posix" -std=c99 "${strict[@]}" examples/hosts/c/host.c \
    "${library[@]}" -o "$out/c.exe"
  does "c/window.c, $arch" "$arch-w64-mingw32-gcc-posix" -std=c99 "${strict[@]}" -mwindows \
    examples/hosts/c/window.c "${library[@]}" -o "$out/c-window.exe"
  does "cpp/host.cpp, $arch" "$arch-w64-mingw32-g++-posix" -std=c++17 "${strict[@]}" -static \
    examples/hosts/cpp/host.cpp "${library[@]}" -o "$out/cpp.exe"
  does "cpp/window.cpp, $arch" "$arch-w64-mingw32-g++-posix" -std=c++17 "${strict[@]}" -static -mwindows \
    examples/hosts/cpp/window.cpp "${library[@]}" -o "$out/cpp-window.exe"
  does "pascal/host.pas, $arch" pascal $arch examples/hosts/pascal/host.pas "$out/pascal.exe"
  does "pascal/window.pas, $arch" pascal $arch examples/hosts/pascal/window.pas "$out/pascal-window.exe"
  does "qt/painter.c, $arch" "$arch-w64-mingw32-gcc-posix" -std=c99 "${strict[@]}" -municode \
    examples/hosts/qt/painter.c "${library[@]}" -o "$out/painter.exe"
done

# ---- the line at the head of each sample builds it where it stands, in the tree and in the package

# The compilers that it names and that there are none of here: Free Pascal for Windows under its usual name,
# Mono's in place of csc, and Clang in place of Visual Studio, with what stands in for an SDK.
mkdir -p "$work/compilers"
cat >"$work/compilers/fpc" <<WRAPPER
#!/usr/bin/env bash
case \$1 in -Twin32) compiler=$FPC_HOME/ppcross386 arch=i686 ;; *) compiler=ppcx64 arch=x86_64 ;; esac
exec "\$compiler" -n -v0 -vew -Sew "-Fu$FPC_HOME/\$arch" "\$@"
WRAPPER
cat >"$work/compilers/cl" <<WRAPPER
#!/usr/bin/env bash
head=() tail=()
for argument; do
  case \$argument in /link) tail=(/link) ;; *) if [ "\${tail[*]}" ]; then tail+=("\$argument"); else head+=("\$argument"); fi ;; esac
done
exec clang --driver-mode=cl --target=\$CL_ARCH-pc-windows-msvc -fuse-ld=lld /X -imsvc $QEL_ROOT/examples/hosts/msvc \\
  -I$QEL_ROOT "\${head[@]}" /EHs-c- /GR- /GS- "\${tail[@]}" /entry:mainCRTStartup /subsystem:console /safeseh:no /nodefaultlib \\
  /libpath:$work/sdk-\$CL_ARCH kernel32.lib
WRAPPER
printf '#!/usr/bin/env bash\nexec mcs -warnaserror -nologo "$@"\n' >"$work/compilers/csc"
chmod +x "$work/compilers/"*
for arch in i686 x86_64; do
  mkdir -p "$work/sdk-$arch"
  for name in kernel32 gdi32 user32; do
    cp "/usr/$arch-w64-mingw32/lib/lib$name.a" "$work/sdk-$arch/$name.lib"
  done
  cmake --install "$build/$arch" --prefix "$work/package-$arch" >"$work/log" 2>&1 || { cat "$work/log"; exit 2; }
done
mkdir "$work/tree"
cp -r --parents include examples/hosts "$work/tree/"
ln -s "$build" "$work/tree/build"

build_by_line() { # ARCH SAMPLE: one line at its head tells how, and nothing else does
  local lines
  mapfile -t lines < <(sed -nE '1,20s#^( \*|//|)? +((i686|x86_64)-w64-mingw32-g(cc|\+\+)|fpc|csc|cl) (.*)$#\2 \5#p' "$2")
  [ ${#lines[@]} = 1 ] || { echo "$2 has ${#lines[@]} lines that build it"; return 1; }
  (cd "$(dirname "$2")" && PATH=$work/compilers:$PATH CL_ARCH=$1 bash -c "${lines[0]}") >"$work/log" 2>&1 </dev/null ||
    { echo "${lines[0]}"; cat "$work/log"; return 1; }
}
for place in "i686 $work/tree/examples/hosts" "i686 $work/package-i686/share/QELEngine/examples/hosts" \
    "x86_64 $work/package-x86_64/share/QELEngine/examples/hosts"; do
  read -r arch folder <<<"$place"
  for sample in c/host.c c/window.c cpp/host.cpp cpp/window.cpp pascal/host.pas pascal/window.pas csharp/Program.cs \
      csharp/Window.cs msvc/host.cpp qt/painter.c; do
    does "$sample is built by its line in ${folder#"$work/"}" build_by_line "$arch" "$folder/$sample"
    program=$folder/$(dirname $sample)/$(basename "${sample/Program/host}" ."${sample##*.}" | tr W w).exe
    does "what that makes is a program" test -s "$program"
  done
  # They draw what the sample in C does that was compiled above for the same word size.
  (cd "$QEL_ROOT" && "${QEL_WINE[@]}" "$work/$arch/c.exe" examples/pump.qel "$work/$arch/pump.bmp" 400 300 "$FONT" \
    </dev/null)
  for host in c cpp pascal; do
    cp "$build/$arch/bin/QELEngine.dll" "$folder/$host/"
    (cd "$QEL_ROOT" && "${QEL_WINE[@]}" "$folder/$host/host.exe" examples/pump.qel "$folder/$host/pump.bmp" 400 300 \
      "$FONT" </dev/null)
    same "a picture by $host of ${folder#"$work/"}" "$work/$arch/pump.bmp" "$folder/$host/pump.bmp"
  done
  cp "$build/$arch/bin/QELEngine.dll" "$folder/msvc/"
  does "msvc/host.cpp of ${folder#"$work/"} paints" grep -q "38 styles painted" \
    <(cd "$folder/msvc" && "${QEL_WINE[@]}" host.exe </dev/null)
done

# ---- pictures: what each host draws is what qel draws, byte for byte
# Each word size has its own qel: the system smooths letters with arithmetic of its own in each, and a pixel in
# some thousands is a 255th lighter.

run() { # ARCH HOST ARGUMENT...
  local program=$work/$1/$2.exe
  shift 2
  (cd "$QEL_ROOT" && "${QEL_WINE[@]}" "$program" "$@" </dev/null)
}
picture() { # NAME DRAWING WIDTH HEIGHT [ID=VALUE | ID.SELECTOR=VALUE]...
  local name=$1 drawing=$2 width=$3 height=$4 setting options=()
  shift 4
  for setting in "$@"; do
    case ${setting%%=*} in *.*) options+=(--set "$setting") ;; *) options+=(--value "$setting") ;; esac
  done
  for arch in i686 x86_64; do
    "${QEL_WINE[@]}" "$build/$arch/bin/qel.exe" render "$drawing" "$work/$arch/qel-$name.bmp" \
      --size "${width}x$height" --font "$FONT" "${options[@]}" </dev/null
    for host in c cpp pascal; do
      run $arch $host "$drawing" "$work/$arch/$host-$name.bmp" "$width" "$height" "$FONT" "$@"
      same "$name by $host on $arch" "$work/$arch/qel-$name.bmp" "$work/$arch/$host-$name.bmp"
    done
  done
  cp "$work/i686/qel-$name.bmp" "$work/$name.bmp"
}
picture pump examples/pump.qel 400 300
picture chinese examples/waterworks-cn.qel 500 320
picture dial examples/boiler-room.qel 640 400 0.4=100 0.13=100 0.7=15790320 0=62
picture scales examples/boiler-room.qel 500 400 41.4=120 42.4=120 42.5=-20 0=-5 42=-7 41=82.5
differ "values move things" "$work/dial.bmp" "$work/scales.bmp"

# A gradient behind the drawing: C++ has it from the class, the others from the flat functions.
for arch in i686 x86_64; do
  for host in c cpp pascal; do
    for gradient in "" gradient=3 gradient=9; do
      # shellcheck disable=SC2086
      run $arch $host examples/gallery/horz.qel "$work/$arch/$host-$gradient.bmp" 300 200 "$FONT" $gradient
    done
    same "gradient by $host on $arch" "$work/i686/c-gradient=3.bmp" "$work/$arch/$host-gradient=3.bmp"
  done
done
differ "a gradient shows" "$work/i686/c-.bmp" "$work/i686/c-gradient=3.bmp"
differ "gradients are not alike" "$work/i686/c-gradient=9.bmp" "$work/i686/c-gradient=3.bmp"

# Value after value with partial redraws, as C++ does it, ends in the picture of a full one. Without
# numbers: smoothed letters grow bolder when they are painted over themselves.
for arch in i686 x86_64; do
  run $arch cpp examples/gallery/horz.qel "$work/$arch/moved.bmp" 480 360 "$FONT" 0.4=100 0.10=0 0=20 0=80 0=62
  run $arch c examples/gallery/horz.qel "$work/$arch/whole.bmp" 480 360 "$FONT" 0.4=100 0.10=0 0=62
  run $arch c examples/gallery/horz.qel "$work/$arch/other.bmp" 480 360 "$FONT" 0.4=100 0.10=0 0=80
  same "partial redraws on $arch" "$work/$arch/whole.bmp" "$work/$arch/moved.bmp"
  differ "the bar moves on $arch" "$work/$arch/other.bmp" "$work/$arch/moved.bmp"
done

# What cannot be done ends with 1, says why, and leaves no picture.
for host in c cpp pascal; do
  run i686 $host examples/none.qel "$work/none.bmp" 40 30 "$FONT" 2>"$work/says"
  does "$host without its drawing" test $? = 1 -a ! -e "$work/none.bmp"
  does "$host says that there is no drawing" grep -q "cannot be opened" "$work/says"
  run i686 $host examples/pump.qel "$work/none.bmp" 40 30 "$FONT" 77=1 2>"$work/says"
  does "$host with a value for nothing" test $? = 1 -a ! -e "$work/none.bmp"
  does "$host says which value" grep -q "77=1" "$work/says"
done

# ---- records: the layout is that of the C header, in every language

stand_in=$work/stand-in
python3 scripts/bindings --stand-in "$stand_in" || exit 2
for arch in i686 x86_64; do
  does "layout.c, $arch" "$arch-w64-mingw32-gcc-posix" -Iinclude "$stand_in/layout.c" -o "$work/$arch/layout-c.exe"
  does "layout.pas, $arch" pascal $arch "$stand_in/layout.pas" "$work/$arch/layout-pascal.exe"
  for language in c pascal; do run $arch layout-$language | tr -d '\r' >"$work/$arch/layout-$language.txt"; done
  same "records of C on $arch" "$work/i686/layout-c.txt" "$work/$arch/layout-c.txt"
  same "records of Pascal on $arch" "$work/i686/layout-c.txt" "$work/$arch/layout-pascal.txt"
done

# ---- C# and Python, against the stand-in

does "the stand-in" gcc -std=c99 -Wall -Wextra -Werror -fshort-wchar -fPIC -shared "-I$stand_in" -Iinclude \
  "$stand_in/standin.c" -o "$stand_in/libstandin.so"
csharp() { # PROGRAM OPTION-OR-SOURCE...
  local program=$1 dll
  shift
  mcs -warnaserror -nologo "-out:$program" "$@" examples/hosts/csharp/QELEngine.cs || return 1
  { echo "<configuration>"
    for dll in QELEngine.dll gdi32.dll user32.dll; do
      echo "<dllmap dll=\"$dll\" target=\"$stand_in/libstandin.so\"/>"
    done
    echo "</configuration>"; } >"$program.config"
}
python_host() { # ARGUMENT...: as on Windows, but that there every DLL is the stand-in
  python3 - "$stand_in/libstandin.so" "$@" <<'PYTHON'
import ctypes, runpy, sys
library = sys.argv.pop(1)
sys.argv[0] = "examples/hosts/python/host.py"
sys.path.insert(0, "examples/hosts/python")
sys.dont_write_bytecode = True
ctypes.WinDLL = lambda name: ctypes.CDLL(library)
runpy.run_path(sys.argv[0], run_name="__main__")
PYTHON
}
does "C# calls" csharp "$work/calls.exe" "$stand_in/Calls.cs"
QEL_TRACE=$work/csharp.trace mono "$work/calls.exe" >"$work/csharp.printed"
QEL_TRACE=$work/python.trace python3 scripts/bindings --calls "$stand_in/libstandin.so" >"$work/python.printed"
for language in csharp python; do
  same "what arrives from $language" "$stand_in/trace.txt" "$work/$language.trace"
  same "what comes back to $language" "$stand_in/printed.txt" "$work/$language.printed"
done
mono "$work/calls.exe" layout >"$work/csharp.layout"
same "records of C#" "$work/i686/layout-c.txt" "$work/csharp.layout"
python3 scripts/bindings --layout >"$work/python.layout"
same "records of Python" "$work/i686/layout-c.txt" "$work/python.layout"

# The samples themselves: their calls of the engine, in order, and the head of the picture file.
cat >"$work/expected.calls" <<'CALLS'
CreateQELEngine
QELOpenFileU 0x7700000000 'examples/pump.qel'
QELSetQELRect 0x7700000000 0,0,400,300
QELSetScaleParam 0x7700000000 0 4 100
QELSetScaleParamf 0x7700000000 41 6 62.5
QELSetScaleParam 0x7700000000 0 6 4294967291
QELCreateGradientDescriptor 0,0,400,300 3 16777215 12632256
QELGetGradientBrush GRADIENT
QELCloseGradientDescriptor GRADIENT
QELDraw 0x7700000000 0x5500000001 0,0,400,300 1
DestroyQELEngine 0x7700000000
CALLS
arguments=(400 300 "$FONT" "0.4=100" "41=62.5" "0=-5" "gradient=3")
does "csharp/Program.cs" csharp "$work/program.exe" examples/hosts/csharp/Program.cs
does "csharp/Program.cs runs" env QEL_TRACE="$work/csharp-host.trace" mono "$work/program.exe" examples/pump.qel \
  "$work/csharp.bmp" "${arguments[@]}"
does "python/host.py runs" env QEL_TRACE="$work/python-host.trace" bash -c "$(declare -f python_host)
  stand_in=$stand_in; python_host \"\$@\"" _ QELEngine.dll examples/pump.qel "$work/python.bmp" "${arguments[@]}"
for language in csharp python; do
  grep QEL "$work/$language-host.trace" | sed -E '/Gradient(Brush|Descriptor 0x)/s/0x77000000[0-9a-f]+/GRADIENT/' \
    >"$work/$language.calls"
  same "calls of the $language host" "$work/expected.calls" "$work/$language.calls"
  for file in pump $language; do head -c 54 "$work/$file.bmp" >"$work/$file.head"; done
  same "picture file of the $language host" "$work/pump.head" "$work/$language.head"
  does "size of it" test "$(stat -c %s "$work/$language.bmp")" = "$(stat -c %s "$work/pump.bmp")"
done
same "all calls of C# and Python" "$work/csharp-host.trace" "$work/python-host.trace"

# ---- windows, on a display that nobody sees

mkfifo "$work/display"
Xvfb -displayfd 7 -screen 0 1024x768x24 -nolisten tcp 7>"$work/display" >/dev/null 2>&1 &
display_server=$!
read -r number <"$work/display"
export DISPLAY=:$number

# Asks a window from outside, when it is told to go: how it sees resolutions, and whether it takes the place
# that the system names when that changes.
cat >"$work/probe.c" <<'PROBE'
#define _WIN32_WINNT 0x0A00
#include <stdio.h>
#include <windows.h>
int main(void)
{
    HWND hwnd = FindWindowA("LiveDrawing", NULL);
    RECT rc = {0, 0, 300, 200}, *pTheirs;
    DWORD nProcess = 0;
    HANDLE hProcess;
    GetWindowThreadProcessId(hwnd, &nProcess);
    hProcess = OpenProcess(PROCESS_ALL_ACCESS, FALSE, nProcess);
    pTheirs = VirtualAllocEx(hProcess, NULL, sizeof rc, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    WriteProcessMemory(hProcess, pTheirs, &rc, sizeof rc, NULL);
    SendMessageA(hwnd, 0x02E0, MAKEWPARAM(144, 144), (LPARAM)pTheirs);
    ZeroMemory(&rc, sizeof rc);
    GetWindowRect(hwnd, &rc);
    printf("%d %d,%d,%d,%d\n", GetAwarenessFromDpiAwarenessContext(GetWindowDpiAwarenessContext(hwnd)),
           (int)rc.left, (int)rc.top, (int)rc.right, (int)rc.bottom);
    return 0;
}
PROBE
for arch in i686 x86_64; do
  "$arch-w64-mingw32-gcc-posix" "$work/probe.c" -o "$work/$arch/probe.exe" || exit 2
done
printf ':again\r\nif exist go.txt goto now\r\nping -n 2 127.0.0.1 >nul\r\ngoto again\r\n:now\r\nprobe.exe >dpi.txt\r\n' |
  tee "$work/i686/probe.bat" >"$work/x86_64/probe.bat"

# The window after 25 frames, two values and the way of the needle to the second one, half way up the scale,
# shows what the window-less host draws of that value.
sed 's/<meter /<meter id="pressure" /' examples/boiler-room.qel >"$work/boiler-room.qel"
run i686 cpp "$work/boiler-room.qel" "$work/steps.bmp" 640 400 "Courier New" 0=5.0
window() { # ARCH PROGRAM: exit status 0 when the picture came, each screen's
# resolution is heeded and a click on the title's cross ended it well
  local folder=$work/$1 status=1 wine id X=0 Y=0 WIDTH=0
  printf 'start /b cmd /c probe.bat\r\nstart /wait %s.exe %s pressure 25\r\necho %%errorlevel%% >closed.txt\r\n' "$2" \
    "$(cd "$work" && "${QEL_WINE[@]}" winepath -w "$work/boiler-room.qel" | tr -d '\r')" >"$folder/run.bat"
  rm -f "$folder/"{closed,go,dpi}.txt
  # A desktop of its own: the one that all programs share may have been set up without a display.
  (cd "$folder" && exec "${QEL_WINE[@]}" explorer "/desktop=qel$$-$1-$2,1024x768" cmd /c run.bat) \
    >/dev/null 2>&1 </dev/null &
  wine=$!
  for _ in $(seq 60); do
    sleep 0.25
    import -window root "$folder/screen.png"
    # Its inside, somewhere on the screen, is the picture.
    python3 scripts/find_picture.py "$folder/screen.png" "$work/steps.bmp" >/dev/null && { status=0; break; }
  done
  touch "$folder/go.txt"
  for _ in $(seq 40); do
    [ -s "$folder/dpi.txt" ] && break
    sleep 0.25
  done
  # 2 is: each screen for itself.
  [ "$(tr -d '\r' <"$folder/dpi.txt")" = "2 0,0,300,200" ] || { cat "$folder/dpi.txt"; status=1; }
  for id in $(xdotool search --onlyvisible --name boiler-room); do
    eval "$(xdotool getwindowgeometry --shell "$id")"
    xdotool mousemove $((X + WIDTH - 15)) $((Y + 13)) click 1
  done
  for _ in $(seq 40); do
    [ -s "$folder/closed.txt" ] && break
    sleep 0.25
  done
  [ "$(tr -d ' \r\n' <"$folder/closed.txt")" = 0 ] || status=1
  kill "$wine" 2>/dev/null
  wait "$wine" 2>/dev/null
  return $status
}
for program in cpp-window pascal-window; do
  for arch in i686 x86_64; do does "$program on $arch" window $arch $program; done
done

# A window of Qt, which runs natively and has its pictures from a painter under Wine, over its own ground. After
# 29 frames, two values, the needle has stood on the second one for a while.
# shellcheck disable=SC2046
does "qt/window.cpp" g++ -std=c++17 "${strict[@]}" -fPIC -fsyntax-only $(pkg-config --cflags Qt5Widgets) \
  examples/hosts/qt/window.cpp
does "qt/window.cpp is built by its line" bash -c 'cd "$1" && bash -c "$(sed -n "s#^//     \(g++ .*\)#\1#p" window.cpp)"' _ \
  "$work/tree/examples/hosts/qt"
sed 's/<meter /<meter id="dial" /' examples/gallery/roundUpgrade.qel >"$work/dial.qel"
qt_window() { # ARCH: exit status 0 when the window shows what qel render paints
  local status=1 pid id X=0 Y=0
  "${QEL_WINE[@]}" "$build/$1/bin/qel.exe" render "$work/dial.qel" "$work/$1/dial.png" --transparent --smooth 4 \
    --size 240x240 --font "$FONT" --value dial=50 </dev/null || return 1
  QT_QPA_PLATFORM=xcb "$work/tree/examples/hosts/qt/window" "$work/dial.qel" dial 100 "$FONT" 29 \
    "${QEL_WINE[@]}" "$work/$1/painter.exe" >"$work/log" 2>&1 </dev/null &
  pid=$!
  for _ in $(seq 60); do
    sleep 0.5
    id=$(xdotool search --onlyvisible --name dial.qel) || continue
    eval "$(xdotool getwindowgeometry --shell "$id")"
    import -window root "$work/$1/qt.png"
    python3 scripts/shown_over.py "$work/$1/qt.png" "$work/$1/dial.png" "$X" "$Y" 32 64 96 >"$work/shown" &&
      { status=0; break; }
  done
  [ $status = 0 ] || cat "$work/log" "$work/shown"
  # The painter ends with its pipe.
  kill "$pid"
  wait "$pid" 2>/dev/null
  return $status
}
for arch in i686 x86_64; do does "qt/window.cpp shows what qel paints on $arch" qt_window $arch; done

# Windows Forms on Linux with the stand-in: no picture, but the calls of a live window.
does "csharp/Window.cs" csharp "$work/window.exe" -r:System.Windows.Forms -r:System.Drawing -target:winexe \
  examples/hosts/csharp/Window.cs
touch "$work/window.trace"
QEL_TRACE=$work/window.trace mono "$work/window.exe" examples/boiler-room.qel pressure >/dev/null 2>&1 &
csharp_window=$!
for _ in $(seq 160); do # a busy machine takes its time
  [ "$(grep -c "QELAdvance .* 40$" "$work/window.trace")" -lt 32 ] || break
  sleep 0.25
done
does "the C# window runs until it is ended" kill $csharp_window
wait $csharp_window 2>/dev/null
does "the C# window asks for the pixels of each screen" grep -q "^SetProcessDpiAwarenessContext 0xf*fc$" "$work/window.trace"
does "the C# window passes the resolution on" grep -qx "QELSetPixelScale 0x7700000000 100" "$work/window.trace"
does "the C# window opens its drawing" grep -qx "QELOpenFileU 0x7700000000 'examples/boiler-room.qel'" \
  "$work/window.trace"
does "the C# window paints what is not right" grep -qx "QELUpdate 0x7700000000 0x5500000001 0x5500000004" \
  "$work/window.trace"
moved=$(grep -c "^QELSetValue 0x7700000000 'pressure' " "$work/window.trace")
does "the C# window sets its value ($moved times)" test "$moved" -ge 3
told=$(grep -A1 "^QELGetDirtyRegion 0x7700000000 0x5500000006$" "$work/window.trace" |
  grep -cx "InvalidateRgn 0x5500000006 0")
does "the C# window tells what is not right ($told times)" test "$told" -ge 10
does "the C# window copies the picture" grep -q "^BitBlt .* 0 0 321 222 0x5500000001 0 0 13369376$" "$work/window.trace"

# The window in Python makes its window by ctypes alone: a window system that sends it the messages of a short
# life stands in for the real one.
does "python/window.py runs" env QEL_TRACE="$work/python-window.trace" bash -c 'python3 scripts/python_window.py "$@"' _ \
  "$stand_in/libstandin.so" examples/boiler-room.qel pressure 100 >"$work/python-window.says"
for line in "QELOpenFileU 0x7700000000 'examples/boiler-room.qel'" "QELSetQELRect 0x7700000000 0,0,320,200" \
    "QELSetPixelScale 0x7700000000 150" "QELSetPixelScale 0x7700000000 200" \
    "QELSetValue 0x7700000000 'pressure' 25" "QELSetValue 0x7700000000 'pressure' 50" \
    "QELUpdate 0x7700000000 0x5500000001 0x5500000004" "DestroyQELEngine 0x7700000000"; do
  does "the Python window calls $line" grep -qxF "$line" "$work/python-window.trace"
done
for line in "title filled" "position 10 20 300 200 20" "code 0"; do
  does "the Python window has $line" grep -qx "$line" "$work/python-window.says"
done
does "the Python window asks what was hit" grep -q "^QELIdFromPoint 0x7700000000 12,34," "$work/python-window.trace"
does "the Python window paints when it is asked to" test \
  "$(grep -c '^BeginPaint$' "$work/python-window.says") $(grep -c '^EndPaint$' "$work/python-window.says")" = "2 2"
told=$(grep -A1 "^QELGetDirtyRegion 0x7700000000 0x5500000006$" "$work/python-window.trace" |
  grep -cx "InvalidateRgn 0x5500000006 0")
does "the Python window tells what is not right ($told times)" test "$told" = 26
made=$(grep -c "^CreateRectRgn" "$work/python-window.trace")
does "the Python window gives back its regions" test \
  "$(grep -c "^DeleteObject 0x5500000006$" "$work/python-window.trace")" = "$made"

printf '%d passed, %d failed\n' "$passed" "$failed"
[ "$failed" = 0 ]
