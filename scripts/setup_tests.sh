#!/usr/bin/env bash
# Tests of what the commands do by themselves before they do anything else: scripts/setup.sh mends folders
# that were made for less than is needed now, and scripts/fresh.sh tries all of it on a bare machine.
# Wine itself is run for the last part alone; before that a stand-in makes its folders.
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root" || exit 2
work=$(mktemp -d)
chmod 755 "$work"
wine=$work/wine/folder # a folder of our own, whatever happens in the other one
end() {
  if [ -e "$work/real/folder" ]; then stop_real; fi
  rm -rf "$work"
}
trap end EXIT
stop_real() { # and removes where its server stood, which belongs to one user for good
  local server
  WINEPREFIX=$work/real/folder wineserver -k 2>/dev/null
  server=$(cat "$work/real/folder/wineserver" 2>/dev/null)
  case $server in wine-*) rm -rf "/tmp/$server" "$work/real/folder/wineserver" ;; esac
}

passed=0
failed=0
is() { # NAME EXPECTED ACTUAL
  if [ "$2" = "$3" ]; then passed=$((passed + 1)); return; fi
  failed=$((failed + 1))
  printf 'FAILED %s\n  expected: %s\n  got:      %s\n' "$1" "$2" "$3"
}
contains() { # NAME PART TEXT
  case $3 in *"$2"*) is "$1" "" "" ;; *) is "$1" "a text with '$2'" "$3" ;; esac
}

# ---- what is asked for

asked_by() { # FUNCTION...: the packages that it asks for, on a machine that has none
  (source scripts/setup.sh
   qel_need() { printf '%s\n' "$2"; }
   for function in "$@"; do "$function"; done) | sort -u
}
quick=$(asked_by qel_need_tools)
contains "a picture needs the 32-bit half" wine32:i386 "$quick"
is "a picture needs nothing for 64 bits" "" "$(grep -E 'wine64|x86-64' <<<"$quick")"
whole=$(asked_by qel_need_test_tools)
for script in scripts/{tidy,docs,hosts,package,package_tests,abi,header}.sh native.sh endurance.sh bench.sh fuzz/dictionary.sh; do
  mapfile -t functions < <(grep -oE '^qel_need_[a-z_]+' "$script")
  [ ${#functions[@]} -gt 0 ] || continue
  is "./test.sh asks for all that $script needs" "" "$(comm -13 <(echo "$whole") <(asked_by "${functions[@]}"))"
  is "$script asks by those functions alone" "" "$(grep -nE '^ *qel_need ' "$script")"
done
is "lint finds the header of the measurements" librapidxml-dev "$(grep rapidxml <<<"$whole")"

# ---- the Wine folder, by a stand-in that takes its time and counts

mkdir -p "$work/bin"
cat >"$work/bin/wineboot" <<'STUB'
#!/usr/bin/env bash
echo "$WINEPREFIX" >>"$STUB_CALLS"
sleep 0.3
[ -z "${STUB_DIES:-}" ] || kill -KILL $PPID
mkdir -p "$WINEPREFIX/drive_c/windows/syswow64"
echo "#arch=win${STUB_BITS:-64}" >"$WINEPREFIX/system.reg"
[ "${STUB_BITS:-64}" = 32 ] || touch "$WINEPREFIX/drive_c/windows/syswow64/kernel32.dll"
STUB
printf '#!/bin/sh\n' | tee "$work/bin/wineserver" >"$work/bin/wine"
printf '#!/bin/sh\nfor folder; do :; done; mkdir -p "$folder"; touch "$folder/LC_CTYPE"\n' >"$work/bin/localedef"
chmod +x "$work/bin/"*
export STUB_CALLS=$work/calls
make_for() { # HALVES
  QEL_WINEPREFIX=$wine PATH=$work/bin:$PATH bash -c 'source scripts/setup.sh; qel_halves=$1; qel_make_prefix' \
    _ "$1" 2>"$work/says"
}
calls() { wc -l <"$STUB_CALLS" 2>/dev/null || echo 0; }
forget() { rm -rf "$work/wine" "$STUB_CALLS"; touch "$STUB_CALLS"; }
folder() { # BITS MARK: one that stands there
  forget
  mkdir -p "$wine/drive_c/windows/syswow64"
  echo "#arch=win$1" >"$wine/system.reg"
  [ "$1" = 32 ] || touch "$wine/drive_c/windows/syswow64/kernel32.dll"
  [ "$2" = none ] || printf '%s' "$2" >"$wine/.qel-ready"
  touch "$wine/old"
}

forget
STUB_BITS=32 make_for 32
is "a folder made where there is one half remembers it" "1 32 fonts" "$(calls) $(cat "$wine/.qel-ready")"
make_for 32
is "it serves again" 1 "$(calls)"
touch "$wine/old"
make_for '32 64'
is "where the other half is needed it is made anew" "0 2 32 64 fonts" "$? $(calls) $(cat "$wine/.qel-ready")"
is "nothing of the old one is left" "drive_c system.reg" "$(cd "$wine" && echo *)"
is "nor beside it" "folder folder.lock locale" "$(cd "$work/wine" && echo *)"
make_for 32
make_for '32 64'
is "a whole one serves both" 2 "$(calls)"

folder 32 ''
make_for '32 64'
is "an empty mark of former times: one half" "1 32 64 fonts" "$(calls) $(cat "$wine/.qel-ready")"
folder 64 ''
make_for '32 64'
is "and both halves, but not the fonts" "1 32 64 fonts" "$(calls) $(cat "$wine/.qel-ready")"
folder 64 '32 64'
make_for '32 64'
is "a mark of both halves without the fonts" "1 32 64 fonts" "$(calls) $(cat "$wine/.qel-ready")"
folder 64 '32 64 fonts'
make_for '32 64'
is "a folder with all of it stays" "0 yes" "$(calls) $([ -e "$wine/old" ] && echo yes)"

forget
STUB_BITS=32 make_for '32 64'
is "a half that cannot be made is a failure" 1 $?
contains "which is said" "could not be set up" "$(cat "$work/says")"

forget
make_for '32 64' & first=$!
make_for '32 64' & second=$!
wait $first && wait $second
is "two commands at once make one folder" "0 1" "$? $(calls)"

forget
(STUB_DIES=1 make_for '32 64') 2>/dev/null
is "one that is killed leaves no folder in place" no "$([ -e "$wine" ] && echo yes || echo no)"
make_for '32 64'
is "and the next one makes it" "0 32 64 fonts" "$? $(cat "$wine/.qel-ready")"

folder 32 32
(exec 8>>"$wine.lock"; flock -s 8; touch "$work/held"; sleep 1.5; [ -e "$wine/old" ] && touch "$work/undisturbed") &
user=$!
until [ -e "$work/held" ]; do sleep 0.1; done
make_for '32 64'
wait $user
is "a folder in use is replaced afterwards" "yes 32 64 fonts" \
  "$([ -e "$work/undisturbed" ] && echo yes) $(cat "$wine/.qel-ready")"

folder 64 none
make_for '32 64'
is "the user's own folder is taken as it is" "0 0 yes" "$? $(calls) $([ -e "$wine/old" ] && echo yes)"
folder 32 none
make_for '32 64'
is "where it lacks a half it is refused, and kept" "1 0 yes" "$? $(calls) $([ -e "$wine/old" ] && echo yes)"
contains "which is said too" "lacks a half" "$(cat "$work/says")"

# ---- the build folder

configure() { # [PATH-PREFIX]
  PATH=${1:+$1:}$PATH bash -c 'source scripts/setup.sh
    QEL_LOOKED_FOR+=("$1/include/rapidxml/rapidxml.hpp")
    QEL_LOOKED_FOR+=("$1/include/"{CLI/CLI,nlohmann/json}.hpp "$1/include/fmt/format.h")
    qel_configure i686 "$1/build" "-DQEL_XML_PEER=$1/include" "-DQEL_TOOL_HEADERS=$1/include"' _ "$work" >"$work/says" 2>&1 </dev/null
}
measurements() { ninja -C "$work/build" -t targets all | grep -c '^qel_bench: '; }
built() { ninja -C "$work/build" -t targets all | grep -cE "^$1: "; }
configure
is "without its library the measurements are left out" "0 0" "$? $(measurements)"
is "without its libraries qel is left out, and the DLL is not" "0 0 1" \
  "$(built qel) $(built bin/qel.exe) $(built bin/QELEngine.dll)"
is "neither is the Studio there" 0 "$(built bin/QELStudio.exe)"
is "the package is made of the rest" 1 "$(built QELEnginePackage)"
contains "which is said" "qel, the command-line program, and the Studio are left out" "$(cat "$work/says")"
contains "with the packages" "libcli11-dev, nlohmann-json3-dev and libfmt-dev" "$(cat "$work/says")"
configure
is "nothing is configured twice" "0 0" "$? $(wc -c <"$work/says")"
mkdir -p "$work/include/rapidxml"
touch "$work/include/rapidxml/rapidxml.hpp"
configure
is "when a package comes they are there" "0 1" "$? $(measurements)"
mkdir -p "$work/include/"{CLI,nlohmann,fmt}
touch "$work/include/CLI/CLI.hpp" "$work/include/nlohmann/json.hpp"
configure
is "with two of its three libraries qel is left out" "0 0" "$? $(built qel)"
contains "the third one is named" "there is no $work/include/fmt/format.h" "$(cat "$work/says")"
touch "$work/include/fmt/format.h"
configure
is "with all three of them qel is there" "0 1" "$? $(built qel)"
compiler=i686-w64-mingw32-g++-posix
mkdir "$work/newer"
printf '#!/bin/sh\nexec %s "$@"\n' "$(type -P $compiler)" >"$work/newer/$compiler"
chmod +x "$work/newer/$compiler"
configure "$work/newer"
is "another compiler is taken over" "0 1" \
  "$? $(grep -c "set(CMAKE_CXX_COMPILER \"$work/newer/" "$work/build/CMakeFiles/"*/CMakeCXXCompiler.cmake)"

# ---- scripts/fresh.sh, where mounting is refused

mkdir -p "$work/checkout/scripts"
cp scripts/fresh.sh scripts/setup.sh "$work/checkout/scripts/"
cp README.md "$work/checkout/"
printf '#!/bin/sh\necho "draws $*"; exit ${STUB_QEL:-0}\n' >"$work/checkout/qel"
printf '#!/bin/sh\necho "0 passed, 9 failed, as a step might say"; echo "7 passed, ${STUB_TEST:-0} failed"; exit ${STUB_TEST:-0}\n' \
  >"$work/checkout/test.sh"
printf '#!/bin/sh\necho "measures $*"\n' >"$work/checkout/bench.sh"
printf '#!/bin/sh\nexit 1\n' >"$work/bin/unshare"
chmod +x "$work/checkout/"*.sh "$work/checkout/qel" "$work/bin/unshare"
fresh() { out=$(PATH=$work/bin:$PATH "$work/checkout/scripts/fresh.sh" "$@" 2>&1); status=$?; }
order() { grep -oE '^(draws|7 passed|measures)' <<<"$out" | head -n "$1" | tr -d '7 \n'; }
fresh
is "without mounts the commands run all the same" "0 drawspassed" "$status $(order 2)"
is "it is said in one line" 1 "$(grep -n . <<<"$out" | head -n 1 | grep -c 'mounting is refused')"
is "the last line is the count" "7 passed, 0 failed" "$(tail -n 1 <<<"$out")"
fresh --reverse --bench
is "the other way round, and measured" "0 passeddrawsmeasures" "$status $(order 3)"
is "the last line is the count then, too" "7 passed, 0 failed" "$(tail -n 1 <<<"$out")"
STUB_TEST=2 fresh
is "failed tests" "1 7 passed, 2 failed" "$status $(tail -n 1 <<<"$out")"
STUB_QEL=1 fresh
is "a failed picture" 1 "$status"
fresh --fast
is "an unknown option" 2 "$status"

# ---- in earnest: a folder of Wine that has one half, and who has neither rights nor a network

real=$work/real/folder
mkdir -p "$real"
echo 32 >"$real/.qel-ready"
QEL_WINEPREFIX=$real bash -c 'source scripts/setup.sh; qel_halves="32 64"; qel_make_prefix' 2>/dev/null
version=qel\ $(sed -n 's/^project(QELEngine VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
for arch in i686 x86_64; do
  is "a mended folder runs programs of $arch" "$version" \
    "$(QEL_WINEPREFIX=$real scripts/wine.sh "build/$arch/bin/qel.exe" --version | tr -d '\r')"
done
stop_real

built=$work/built
mkdir -p "$built/build/i686/bin"
git ls-files -z -co --exclude-standard | xargs -0 cp -a --parents -t "$built" 2>/dev/null
cp -a build/i686/bin/{qel.exe,QELEngine.dll} "$built/build/i686/bin/"
touch "$built/build/i686/.built"
mkdir "$work/none"
for command in apt-get dpkg; do printf '#!/bin/sh\ntouch %s\n' "$work/called" >"$work/none/$command"; done
chmod +x "$work/none/"*
without=()
if [ "$(id -u)" = 0 ]; then
  chown -R 65534:65534 "$work/real"
  ! unshare --net true 2>/dev/null || without+=(unshare --net)
  without+=(setpriv --reuid=65534 --regid=65534 --clear-groups)
fi
bare() { cd "$built" && "${without[@]}" env -i QEL_WINEPREFIX="$real" PATH="$work/none:/usr/bin:/bin" "$@" 2>&1 </dev/null | tr -d '\r'; }
is "./qel needs no network and no root" "$version" "$(bare "$built/qel" --version)"
is "and installs nothing" no "$([ -e "$work/called" ] && echo yes || echo no)"
touch "$built/xml/XmlTree.cpp"
if [ "$(id -u)" = 0 ]; then
  contains "who cannot build is told so" "has to be built by who may write" "$(bare "$built/qel" --version)"
fi

printf '%d passed, %d failed\n' "$passed" "$failed"
[ "$failed" = 0 ]
