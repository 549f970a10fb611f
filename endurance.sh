#!/usr/bin/env bash
# Works the engine for as long as a host would in months and fails when anything of it grew: memory, GDI
# objects, handles. Both word sizes run at once, each on a core, and after them the Studio plays for an hour;
# it takes about an hour and a half.
#   ./endurance.sh           all of it
#   ./endurance.sh --quick   a hundredth, to see that it works, without the Studio, whose tests have it
set -u
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 2
source scripts/setup.sh
if [ $# -gt 1 ] || { [ $# = 1 ] && [ "$1" != --quick ]; }; then
  sed -n '2,6s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
  exit 2
fi

qel_need_test_tools
qel_install && qel_make_prefix || exit 2
presets=(i686 x86_64)
for preset in "${presets[@]}"; do
  qel_build "$preset" QELEngine qel_endurance || exit 2
done

pids=()
stop() { [ ${#pids[@]} -eq 0 ] || kill "${pids[@]}" 2>/dev/null; }
trap 'stop; exit 130' INT TERM
for preset in "${presets[@]}"; do
  "${QEL_WINE[@]}" "$QEL_ROOT/build/$preset/bin/qel_endurance.exe" "$@" </dev/null &
  pids+=($!)
done
status=0
for pid in "${pids[@]}"; do
  wait "$pid" || status=1
done
if [ $# = 0 ]; then
  STUDIO_PLAY_SECONDS=3600 scripts/studio_tests.sh i686 -s -k test_memory_and_objects_stay || status=1
fi
[ $status = 0 ] && echo 'endurance: passed' || echo 'endurance: FAILED'
exit $status
