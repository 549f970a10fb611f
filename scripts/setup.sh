# shellcheck shell=bash
# What the commands of this project need, and how it is installed; sourced by ./qel, ./test.sh and
# ./bench.sh. With nothing missing it asks for no network and no rights, and starts next to nothing but the
# build tool.

QEL_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
QEL_FONT=/usr/share/fonts/truetype/wqy/wqy-zenhei.ttc
QEL_NUMBER_FONT=/usr/share/fonts/truetype/wqy/wqy-microhei.ttc
export HOME=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}
export WINEPREFIX=${QEL_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/qelengine/wine}
export FONTCONFIG_FILE=$QEL_ROOT/scripts/fonts.conf
export WINEDEBUG=${WINEDEBUG:--all}
unset WINEARCH # it would hold the folder to one half

# For hosts that set no code page for texts 936 is to be the ANSI one, since drawings declare gb2312. Wine
# takes it from the locale, which is made beside the Wine folder and need not exist for anybody else.
QEL_LOCALES=$(dirname "$WINEPREFIX")/locale
# What Wine finds out about fonts is kept there too: not every account has a home to keep it in.
QEL_WINE=(env LOCPATH="$QEL_LOCALES" LC_ALL=zh_CN.UTF-8 XDG_CACHE_HOME="$(dirname "$WINEPREFIX")" wine)
# qel reads drawings as they declare: it needs no locale, only one that every system has for the names of
# files.
QEL_WINE_PLAIN=(env LC_ALL=C.UTF-8 XDG_CACHE_HOME="$(dirname "$WINEPREFIX")" wine)
qel_wants_locale=1 # empty for who uses the plain one

qel_say() { printf '%s\n' "$*" >&2; }

qel_missing=()
qel_need() { # FILE-OR-COMMAND PACKAGE
  case $1 in
    /*) [ ! -e "$1" ] || return 0 ;;
    *) ! command -v "$1" >/dev/null 2>&1 || return 0 ;;
  esac
  case " ${qel_missing[*]} " in *" $2 "*) ;; *) qel_missing+=("$2") ;; esac
}

qel_need_tools() {
  qel_need cmake cmake
  qel_need ninja ninja-build
  qel_need i686-w64-mingw32-g++-posix g++-mingw-w64-i686
  qel_need /usr/include/CLI/CLI.hpp libcli11-dev
  qel_need /usr/include/nlohmann/json.hpp nlohmann-json3-dev
  qel_need /usr/include/fmt/format.h libfmt-dev
  qel_need wine wine
  qel_need /usr/lib/wine/wine wine32:i386
  qel_need "$QEL_FONT" fonts-wqy-zenhei
  qel_need "$QEL_NUMBER_FONT" fonts-wqy-microhei
  [ -z "$qel_wants_locale" ] || qel_need /usr/share/i18n/locales/zh_CN locales
}

# For what is made of the documentation.
qel_need_doc_tools() {
  qel_need_tools
  qel_need python3 python3
}

# For both word sizes; the Wine folder has to have its 64-bit half then.
qel_halves=32
qel_need_both_tools() {
  qel_halves='32 64'
  qel_need_tools
  qel_need x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64
  qel_need /usr/lib/wine/wine64 wine64
}

# For the build that runs here and not under Wine.
qel_need_native_tools() {
  qel_need cmake cmake
  qel_need ninja ninja-build
  qel_need g++ g++
  qel_need /usr/include/wine/wine/windows/windows.h libwine-dev
  qel_need /usr/src/googletest/CMakeLists.txt googletest
}

# For the package: the import library for linkers of the Microsoft family is made by these two.
qel_need_package_tools() {
  qel_need_both_tools
  qel_need llvm-dlltool llvm
  qel_need python3 python3
}

# For programs of Qt, which run natively.
QEL_QT=/usr/include/x86_64-linux-gnu/qt5
qel_need_qt_tools() {
  qel_need g++ g++
  qel_need pkg-config pkg-config
  qel_need "$QEL_QT/QtWidgets/QWidget" qtbase5-dev
}

# For the measurements.
qel_need_bench_tools() {
  qel_need_both_tools
  qel_need_qt_tools
  qel_need "$QEL_QT/QtSvg/QSvgRenderer" libqt5svg5-dev
  qel_need /usr/include/rapidxml/rapidxml.hpp librapidxml-dev
  qel_need python3 python3
  qel_need Xvfb xvfb
}

# For the sample hosts in other languages.
QEL_FPC_VERSION=3.2.2
QEL_FPC_SOURCES=/usr/share/fpcsrc/$QEL_FPC_VERSION
QEL_FPC_HERE=/usr/lib/x86_64-linux-gnu/fpc/$QEL_FPC_VERSION
qel_need_host_tools() {
  qel_need_package_tools
  qel_need_qt_tools
  qel_need gcc gcc
  qel_need ppcx64 fp-compiler-$QEL_FPC_VERSION
  qel_need "$QEL_FPC_HERE/units/x86_64-linux/rtl/system.ppu" fp-units-rtl-$QEL_FPC_VERSION
  qel_need "$QEL_FPC_SOURCES/compiler/pp.pas" fpc-source-$QEL_FPC_VERSION
  qel_need mcs mono-mcs
  qel_need mono mono-runtime
  qel_need /usr/lib/mono/4.5/System.Windows.Forms.dll libmono-system-windows-forms4.0-cil
  qel_need Xvfb xvfb
  qel_need xdotool xdotool
  qel_need import imagemagick
}

# For the tests that drive the Studio.
qel_need_studio_tools() {
  qel_need_both_tools
  qel_need Xvfb xvfb
  qel_need xdotool xdotool
  qel_need import imagemagick
  qel_need python3 python3
  qel_need /usr/lib/python3/dist-packages/pytest python3-pytest
  qel_need /usr/lib/python3/dist-packages/PIL python3-pil
  qel_need /usr/sbin/mosquitto mosquitto
  qel_need mosquitto_sub mosquitto-clients
}

# For ./test.sh as a whole: nothing that it starts has anything left to ask for. The linter reads the
# measurements as well.
qel_need_test_tools() {
  qel_need_native_tools
  qel_need_doc_tools
  qel_need_bench_tools
  qel_need_host_tools
  qel_need_studio_tools
  qel_need clang-format clang-format
  qel_need clang-tidy clang-tidy
  qel_need clang++ clang
  qel_need lld-link lld
  qel_need pkg-config pkg-config
  qel_need zip zip
  qel_need script bsdutils
  qel_need git git
  qel_need python3 python3
  qel_need /usr/lib/python3/dist-packages/pytest python3-pytest
  qel_need /usr/lib/python3/dist-packages/PIL python3-pil
}

# Installs what is missing, or says in one message what is to be installed.
qel_install() {
  [ ${#qel_missing[@]} -eq 0 ] && return 0
  local id='' VERSION_CODENAME='' ID=''
  # shellcheck disable=SC1091
  [ -r /etc/os-release ] && . /etc/os-release
  id=$ID
  if [ "$id" != debian ] || [ "$VERSION_CODENAME" != bookworm ] || [ "$(id -u)" != 0 ]; then
    qel_say "Missing: ${qel_missing[*]} (names of Debian 12 packages). Only as root on Debian 12 can" \
      "this script install them itself; elsewhere install MinGW-w64 for i686 and x86_64 with posix" \
      "threads, CMake 3.25, Ninja, the headers of CLI11, nlohmann-json and fmt, Wine with its 32-bit half," \
      "the fonts WenQuanYi Zen Hei and Micro Hei, and for the tests clang-format 14, clang-tidy 14 and the sources of GoogleTest. On Debian 12:" \
      "dpkg --add-architecture i386 && apt-get update && apt-get install --no-install-recommends" \
      "-t bookworm ${qel_missing[*]}"
    return 1
  fi
  qel_say "Installing ${qel_missing[*]} ..."
  local log
  log=$(mktemp)
  # The update may fail over a list that is not needed; what counts is the installation.
  if ! { flock 7
         dpkg --add-architecture i386
         apt-get update
         DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
           -o DPkg::Lock::Timeout=600 -t "$VERSION_CODENAME" "${qel_missing[@]}"
       } >"$log" 2>&1 </dev/null 7>/run/qelengine-install.lock; then
    tail -n 20 "$log" >&2
    qel_say "The installation failed; its whole output is in $log."
    return 1
  fi
  rm -f "$log"
}

# The numbers of scales have no face and no smoothing of their own. Wine takes what stands for Arial; the
# digits of this one keep to their cells, and are told apart in 6 x 12 and 8 x 8. Without smoothing a number
# that is painted over itself stays as it was; a smoothed one grows bolder.
qel_set_fonts() { # FOLDER
  WINEPREFIX=$1 "${QEL_WINE_PLAIN[@]}" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v Arial /d 'WenQuanYi Micro Hei' /f &&
    WINEPREFIX=$1 "${QEL_WINE_PLAIN[@]}" reg add 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 0 /f
} >/dev/null 2>&1 </dev/null 8>&-

# Wine keeps its own idea of a Windows machine in a folder, made once; the locale likewise. The folder's mark
# says which halves it was made for, and that it has the fonts. One without a half that is wanted is made anew: beside, and moved into
# place when it is whole. Whoever uses the folder holds its lock shared until the end; only who makes it holds
# it alone.
qel_make_prefix() {
  local home
  home=$(dirname "$WINEPREFIX")
  qel_locale_serves && qel_prefix_serves && [ ! -w "$home" ] && return 0
  mkdir -p "$home" && exec 8>>"$WINEPREFIX.lock" || return 1
  flock -s 8
  qel_locale_serves && qel_prefix_serves && return 0
  flock -n -x 8 || { qel_say "Waiting for other commands that use Wine ..."; flock -x 8; }
  { qel_locale_serves || qel_make_locale; } && { qel_prefix_serves || qel_replace_prefix; } && flock -s 8
}

qel_locale_serves() { [ -z "$qel_wants_locale" ] || [ -e "$QEL_LOCALES/zh_CN.UTF-8/LC_CTYPE" ]; }
qel_make_locale() {
  local place=$QEL_LOCALES/zh_CN.UTF-8
  rm -rf "$place" "$place.new"
  mkdir -p "$QEL_LOCALES" && localedef -i zh_CN -f UTF-8 "$place.new" && mv "$place.new" "$place"
}

qel_prefix_serves() {
  local held half
  [ -e "$WINEPREFIX/.qel-ready" ] || return 1
  held=$(<"$WINEPREFIX/.qel-ready")
  [ -n "$held" ] || held=$(qel_prefix_halves "$WINEPREFIX")
  for half in $qel_halves fonts; do
    case " $held " in *" $half "*) ;; *) return 1 ;; esac
  done
}
qel_prefix_halves() { # FOLDER: what there is, whatever its mark says
  if grep -qs '^#arch=win64' "$1/system.reg"; then
    [ -e "$1/drive_c/windows/syswow64/kernel32.dll" ] && echo '32 64' || echo 64
  elif [ -e "$1/system.reg" ]; then
    echo 32
  fi
}

qel_replace_prefix() {
  local new=$WINEPREFIX.new old=$WINEPREFIX.old fonts=''
  if [ -n "${QEL_WINEPREFIX:-}" ] && [ -e "$WINEPREFIX/system.reg" ] && [ ! -e "$WINEPREFIX/.qel-ready" ]; then
    qel_adopt_prefix
    return
  fi
  qel_say "Setting up Wine (once, about 20 seconds) ..."
  rm -rf "$new" "$old"
  mkdir -p "$new"
  WINEPREFIX=$new LC_ALL=C.UTF-8 WINEDLLOVERRIDES="mscoree=;mshtml=" \
    wineboot -i >/dev/null 2>&1 </dev/null 8>&-
  qel_set_fonts "$new" && fonts=fonts
  WINEPREFIX=$new wineserver -w 8>&-
  echo "$(qel_prefix_halves "$new") $fonts" >"$new/.qel-ready"
  [ ! -e "$WINEPREFIX" ] || mv "$WINEPREFIX" "$old" || return 1
  mv "$new" "$WINEPREFIX" && rm -rf "$old"
  qel_prefix_serves || { qel_say "Wine could not be set up in $WINEPREFIX."; return 1; }
}
qel_adopt_prefix() { # the user's own folder is used as it is, and never removed
  echo "$(qel_prefix_halves "$WINEPREFIX") fonts" >"$WINEPREFIX/.qel-ready"
  qel_prefix_serves && return 0
  rm -f "$WINEPREFIX/.qel-ready"
  qel_say "$WINEPREFIX was not made by this project and lacks a half of Wine that is needed;" \
    "name another folder in QEL_WINEPREFIX."
  return 1
}

# What CMake looks at when a folder is configured, beside the project's own files: the compilers of the
# preset, and what is used where it is installed. A folder that was configured over something else is
# configured again.
QEL_LOOKED_FOR=(/usr/src/googletest/CMakeLists.txt /usr/include/{rapidxml/rapidxml,CLI/CLI,nlohmann/json}.hpp
  /usr/include/fmt/format.h /usr/include/wine/wine/windows/windows.h /usr/bin/{llvm-dlltool,python3})

qel_compilers_seen() { # PRESET: and the place of this checkout, which CMake writes down too
  local name paths=()
  case $1 in
    native) set -- gcc g++ ;;
    fuzz) set -- clang clang++ ;;
    *) set -- "$1-w64-mingw32-"{gcc-posix,g++-posix,windres,dlltool} ;;
  esac
  for name in cmake "$@"; do name=$(type -P "$name") && paths+=("$name"); done
  echo "$QEL_ROOT $(stat -L -c '%n %s %Y' "${paths[@]}" | tr '\n' ' ')"
}
qel_packages_seen() {
  echo "$(stat -L -c '%n %s %Y' "${QEL_LOOKED_FOR[@]}" 2>/dev/null | tr '\n' ' ')$(cksum <"$QEL_ROOT/CMakePresets.json")"
}

qel_configure() { # PRESET FOLDER [OPTION...]: does nothing while all is as it was
  local preset=$1 dir=$2 mark=$2/.configured-for seen=() was=()
  shift 2
  seen=("$(qel_compilers_seen "$preset")" "$(qel_packages_seen)" "$*")
  [ -e "$dir/build.ninja" ] && [ -e "$mark" ] && mapfile -t was <"$mark"
  [ "${was[*]}" = "${seen[*]}" ] && return 0
  rm -f "$mark"
  # CMake keeps what it once found out about a compiler, and Ninja what that compiled.
  if [ -n "${was[0]:-}" ] && [ "${was[0]}" != "${seen[0]}" ]; then
    ninja -C "$dir" -t clean
    rm -rf "$dir/CMakeCache.txt" "$dir/CMakeFiles"
  fi
  (cd "$QEL_ROOT" && cmake --preset "$preset" -B "$dir" "$@") && printf '%s\n' "${seen[@]}" >"$mark"
}

# Builds what is stale of a preset: qel_build PRESET [TARGET...]. Quiet unless something fails.
qel_build() {
  local preset=$1 dir=$QEL_ROOT/build/$1 log=$QEL_ROOT/build/$1/build.log
  shift
  mkdir -p "$dir" 2>/dev/null
  if [ ! -w "$dir" ]; then qel_is_built "$dir"; return; fi
  exec 9>>"$dir/.lock"
  flock 9
  rm -f "$dir/.built"
  qel_configure "$preset" "$dir" >"$log" 2>&1 9>&- </dev/null || { cat "$log" >&2; return 1; }
  qel_ninja "$preset" "$dir" "$@" >"$log" 9>&- </dev/null || { cat "$log" >&2; return 1; }
  touch "$dir/.built"
  exec 9>&-
}
qel_ninja() { # PRESET FOLDER [TARGET...]: says once that there is something to wait for
  local preset=$1 dir=$2 said='' line
  shift 2
  ninja -C "$dir" ${QEL_JOBS:+"-j$QEL_JOBS"} "$@" 2>&1 | while IFS= read -r line; do
    printf '%s\n' "$line"
    case $line in *' Building '*) [ -n "$said" ] || qel_say "Building ($preset) ..."; said=1 ;; esac
  done
  return "${PIPESTATUS[0]}"
}
qel_is_built() { # FOLDER: for who may not write there, which is no hindrance when all is done
  [ -e "$1/.built" ] && [ -z "$(find "$QEL_ROOT" \( -name build -o -name .git \) -prune -o \
    \( -name '*.cpp' -o -name '*.h' -o -name 'CMake*' -o -name '*.cmake' \) -newer "$1/.built" -print -quit)" ] &&
    return 0
  qel_say "$1 has to be built by who may write to it."
  return 1
}
