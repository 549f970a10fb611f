#!/usr/bin/env bash
# Measures the engine against its floor, for both word sizes, under Wine. Each line shows the measured
# figure, its floor, their ratio, the noise of the run and the bar. Ends with 1 when a bar is missed by
# more than the noise. What is measured and how: docs/performance.md
#   ./bench.sh           everything, about four minutes
#   ./bench.sh --quick   without the largest drawings and with fewer turns
set -u
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 2
source scripts/setup.sh
if [ $# -gt 1 ] || { [ $# = 1 ] && [ "$1" != --quick ]; }; then
  sed -n '2,6s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
  exit 2
fi
quick=${1:-}
turns=31
[ -z "$quick" ] || turns=11

qel_need_bench_tools
qel_install && qel_make_prefix || exit 2
presets=(i686 x86_64)
for preset in "${presets[@]}"; do
  qel_build "$preset" QELEngine qel QELStudio qel_bench qel_bench_load qel_bench_render qel_bench_start qel_bench_window ||
    exit 2
done

missed=0
UNKNOWN=999999999999 # what could not be measured is missed
# A figure that the shell measures: WHAT VALUE BAR UNIT
bar() {
  awk -v what="$1" -v value="$2" -v bar="$3" -v unit="$4" 'BEGIN {
    ok = value <= bar
    printf "%-58s | %11.0f | %11s | %8s | %7s | %7.0f | %s\n", what, value, unit, "", "", bar,
           ok ? "held" : "MISSED"
    exit !ok }' || missed=1
}

# Milliseconds of a command.
time_of() {
  local start
  start=$(date +%s%N)
  "$@" >/dev/null 2>&1 </dev/null || return 1
  echo $((($(date +%s%N) - start) / 1000000))
}

# The most megabytes that a command ever held. From outside: in Wine, /proc/self is Wine's server.
peak_of() {
  python3 -c 'import resource, subprocess, sys
subprocess.run(sys.argv[1:], check=True, stdin=subprocess.DEVNULL, stdout=sys.stderr)
print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * 1024 // 1000000)' "$@"
}

# qel render against the same calls and encoder in a bare program, by turns: the median ratio.
render_ratio() {
  local n ratios=() mine floor
  for n in $(seq 1 11); do
    mine=$(time_of "${QEL_WINE[@]}" qel.exe render qel_bench_in.qel qel_bench.png --smooth 0) || return 1
    floor=$(time_of "${QEL_WINE[@]}" qel_bench_render.exe 1000 qel_bench_floor.png) || return 1
    [ "$n" = 1 ] || ratios+=("$((1000 * mine / floor))")
  done
  printf '%s\n' "${ratios[@]}" | sort -n | sed -n 5p
}

# Both take turns in one run: the engine in a process of Wine's, the other one in a native process. What it
# draws is written by the engine's side.
against_svg() {
  # shellcheck disable=SC2046
  g++ -O2 -fPIC -std=c++17 $(pkg-config --cflags Qt5Svg) "$QEL_ROOT/bench/qt/SvgDraws.cpp" -o qel_bench_svg \
    $(pkg-config --libs Qt5Svg) || return 1
  "${QEL_WINE[@]}" qel_bench.exe --svg qel_bench_scene.svg </dev/null || return 1
  QT_QPA_PLATFORM=offscreen python3 "$QEL_ROOT/bench/qt/turns.py" "$turns" 3 qel_bench.raw \
    "${QEL_WINE[@]}" qel_bench.exe --draws -- ./qel_bench_svg qel_bench_scene.svg 1000 750
}

for preset in "${presets[@]}"; do
  echo "== $preset"
  printf '%-58s | %11s | %11s | %8s | %7s | %7s |\n' 'measured' 'figure' 'floor' 'ratio' 'noise' 'bar'
  cd "$QEL_ROOT/build/$preset/bin" || exit 2
  # shellcheck disable=SC2086
  "${QEL_WINE[@]}" qel_bench.exe $quick </dev/null || missed=1
  if [ -z "$quick" ] && [ "$preset" = i686 ]; then # a 64-bit one is not among the children
    "${QEL_WINE[@]}" qel_bench.exe --make 1000000 </dev/null
    peak=$(peak_of "${QEL_WINE[@]}" qel_bench.exe --open) || peak=$UNKNOWN
    bar 'peak of a process that opens 1000000 elements' "$peak" 600 MB
  fi
  "$QEL_ROOT/bench/empty_library.sh" "$preset" QELEngine.dll qel_bench_empty.dll &&
    "${QEL_WINE[@]}" qel_bench_load.exe QELEngine.dll qel_bench_empty.dll 1.3 </dev/null || missed=1
  [ "$preset" = i686 ] || against_svg || missed=1
  if [ "$preset" = i686 ]; then
    "${QEL_WINE[@]}" qel_bench.exe --make 1000 </dev/null
    ratio=$(render_ratio) || ratio=$UNKNOWN
    bar 'qel render of 1000 elements / the same calls (per mille)' "$ratio" 1300 ''
    "$preset-w64-mingw32-strip" -o qel_bench_stripped.dll QELEngine.dll
    bar 'size of the DLL, stripped' "$(($(stat -c %s qel_bench_stripped.dll) / 1024))" 480 KB
  fi
  python3 "$QEL_ROOT/bench/studio.py" . $((turns / 3)) 20 "${QEL_WINE_PLAIN[@]}" || missed=1
  rm -f qel_bench_in.qel qel_bench_out.qel qel_bench_empty.dll qel_bench_stripped.dll qel_bench*.png \
    qel_bench_scene.svg qel_bench_svg qel_bench.raw
  cd "$QEL_ROOT" || exit 2
done
[ $missed = 0 ] && echo 'bench: all bars held' || echo 'bench: bars were MISSED'
exit $missed
