# shellcheck shell=bash
# What the commands of this project need, and how it is installed; sourced by ./qel, ./test.sh and
# ./bench.sh. With nothing missing it starts no program but the build tool.

QEL_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
QEL_FONT=/usr/share/fonts/truetype/wqy/wqy-zenhei.ttc
QEL_NUMBER_FONT=/usr/share/fonts/truetype/wqy/wqy-microhei.ttc
export WINEPREFIX=${QEL_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/qelengine/wine}
export FONTCONFIG_FILE=$QEL_ROOT/scripts/fonts.conf
export WINEDEBUG=${WINEDEBUG:--all}

# Code page 936 is to be the ANSI one, since drawings declare gb2312. Wine takes it from the locale, which
# is made beside the Wine folder and need not exist for anybody else.
QEL_LOCALES=$(dirname "$WINEPREFIX")/locale
QEL_WINE=(env LOCPATH="$QEL_LOCALES" LC_ALL=zh_CN.UTF-8 wine)

qel_say() { printf '%s\n' "$*" >&2; }

qel_missing=()
qel_need() { # FILE-OR-COMMAND PACKAGE
  case $1 in
    /*) [ -e "$1" ] || qel_missing+=("$2") ;;
    *) command -v "$1" >/dev/null 2>&1 || qel_missing+=("$2") ;;
  esac
}

qel_need_tools() {
  qel_need cmake cmake
  qel_need ninja ninja-build
  qel_need i686-w64-mingw32-g++-posix g++-mingw-w64-i686
  qel_need wine wine
  qel_need /usr/lib/wine/wine wine32:i386
  qel_need "$QEL_FONT" fonts-wqy-zenhei
  qel_need "$QEL_NUMBER_FONT" fonts-wqy-microhei
  qel_need /usr/share/i18n/locales/zh_CN locales
}

# For the build that runs here and not under Wine.
qel_need_native_tools() {
  qel_need cmake cmake
  qel_need ninja ninja-build
  qel_need g++ g++
  qel_need /usr/include/wine/wine/windows/windows.h libwine-dev
  qel_need /usr/src/googletest/CMakeLists.txt googletest
}

qel_need_test_tools() {
  qel_need_native_tools
  qel_need_tools
  qel_need x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64
  qel_need /usr/lib/wine/wine64 wine64
  qel_need /usr/src/googletest/CMakeLists.txt googletest
  qel_need clang-format clang-format
  qel_need clang-tidy clang-tidy
  qel_need clang++ clang
  qel_need lld-link lld
  qel_need llvm-dlltool llvm
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
      "threads, CMake 3.25, Ninja, Wine with its 32-bit half, the fonts WenQuanYi Zen Hei and Micro Hei, and for" \
      "the tests clang-format 14, clang-tidy 14 and the sources of GoogleTest. On Debian 12:" \
      "dpkg --add-architecture i386 && apt-get update && apt-get install --no-install-recommends" \
      "-t bookworm ${qel_missing[*]}"
    return 1
  fi
  qel_say "Installing ${qel_missing[*]} ..."
  local log
  log=$(mktemp)
  # The update may fail over a list that is not needed; what counts is the installation.
  if ! { dpkg --add-architecture i386
         apt-get update
         DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
           -t "$VERSION_CODENAME" "${qel_missing[@]}"; } >"$log" 2>&1 </dev/null; then
    tail -n 20 "$log" >&2
    qel_say "The installation failed; its whole output is in $log."
    return 1
  fi
  rm -f "$log"
}

# The numbers of scales have no face and no smoothing of their own. Wine takes what stands for Arial; the
# digits of this one keep to their cells, and are told apart in 6 x 12 and 8 x 8. Without smoothing a number
# that is painted over itself stays as it was; a smoothed one grows bolder.
qel_set_fonts() {
  [ -e "$WINEPREFIX/.qel-fonts" ] && return 0
  "${QEL_WINE[@]}" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v Arial /d 'WenQuanYi Micro Hei' /f &&
    "${QEL_WINE[@]}" reg add 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 0 /f || return 1
  wineserver -w
  touch "$WINEPREFIX/.qel-fonts"
} >/dev/null 2>&1 </dev/null

# Wine keeps its own idea of a Windows machine in a folder, made once; the locale likewise.
qel_make_prefix() {
  if [ ! -e "$QEL_LOCALES/zh_CN.UTF-8/LC_CTYPE" ]; then
    mkdir -p "$QEL_LOCALES"
    localedef -i zh_CN -f UTF-8 "$QEL_LOCALES/zh_CN.UTF-8" || return 1
  fi
  [ -e "$WINEPREFIX/.qel-ready" ] && { qel_set_fonts; return; }
  qel_say "Setting up Wine (once, about 20 seconds) ..."
  mkdir -p "$WINEPREFIX"
  LOCPATH="$QEL_LOCALES" LC_ALL=zh_CN.UTF-8 WINEDLLOVERRIDES="mscoree=;mshtml=" wineboot -i >/dev/null 2>&1 </dev/null
  wineserver -w
  [ -e "$WINEPREFIX/system.reg" ] || { qel_say "Wine could not be set up in $WINEPREFIX."; return 1; }
  touch "$WINEPREFIX/.qel-ready"
  qel_set_fonts
}

# Builds what is stale of a preset: qel_build PRESET [TARGET...]. Quiet unless something fails.
qel_build() {
  local preset=$1 dir=$QEL_ROOT/build/$1 log
  shift
  mkdir -p "$dir"
  exec 9>"$dir/.lock"
  flock 9
  log=$dir/build.log
  # A folder that was set up before the tests could be built is set up again for them.
  if [ ! -e "$dir/build.ninja" ] ||
      { [ -e /usr/src/googletest/CMakeLists.txt ] && ! grep -q qel_tests "$dir/build.ninja"; }; then
    (cd "$QEL_ROOT" && cmake --preset "$preset") >"$log" 2>&1 9>&- </dev/null || { cat "$log" >&2; return 1; }
  fi
  ninja -C "$dir" -n "$@" 2>/dev/null | grep -q Building && qel_say "Building ($preset) ..."
  ninja -C "$dir" "$@" >"$log" 2>&1 9>&- </dev/null || { cat "$log" >&2; return 1; }
  exec 9>&-
}
