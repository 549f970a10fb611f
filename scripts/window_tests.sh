#!/usr/bin/env bash
# Runs the tests that have a window, in both word sizes, on a display that nobody sees.
#   scripts/window_tests.sh [PRESET...]    of these presets alone; they have to be built
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 2
source scripts/setup.sh
[ $# -gt 0 ] || set -- i686 x86_64
qel_need_host_tools
qel_install && qel_make_prefix || exit 2
for preset in "$@"; do qel_build "$preset" QELEngine qel_window_tests || exit 2; done

work=$(mktemp -d)
display_server=
trap '[ -z "$display_server" ] || kill "$display_server" 2>/dev/null; rm -rf "$work"' EXIT
mkfifo "$work/display"
Xvfb -displayfd 7 -screen 0 1024x768x24 -nolisten tcp 7>"$work/display" >/dev/null 2>&1 &
display_server=$!
read -r number <"$work/display"
export DISPLAY=:$number

status=0
for preset in "$@"; do
  folder=$work/$preset
  mkdir "$folder"
  cp "build/$preset/bin/QELEngine.dll" "build/$preset/bin/qel_window_tests.exe" "$folder"
  printf 'qel_window_tests.exe --gtest_brief=1 >says.txt 2>&1\r\necho %%errorlevel%% >ended.txt\r\n' >"$folder/run.bat"
  # A desktop of its own: the one that all programs share may have been set up without a display.
  (cd "$folder" && exec "${QEL_WINE[@]}" explorer "/desktop=qel$$-$preset,1024x768" cmd /c run.bat) \
    >/dev/null 2>&1 </dev/null &
  wine=$!
  for _ in $(seq 480); do # a busy machine takes its time
    [ -s "$folder/ended.txt" ] && break
    sleep 0.25
  done
  kill "$wine" 2>/dev/null
  wait "$wine" 2>/dev/null
  cat "$folder/says.txt"
  [ "$(tr -d ' \r\n' <"$folder/ended.txt")" = 0 ] || { echo "windows, $preset: FAILED"; status=1; }
done
exit $status
