#!/usr/bin/env bash
# Measures which lines and branches of the engine the tests reach, on the native build, and lists those
# that they do not reach. Ends with 1 below the goal.
#   ./coverage.sh          figures by folder, and every line that is not reached
#   ./coverage.sh --html   a page for each file, in build/coverage/html
set -u
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 2
source scripts/setup.sh
LINES_GOAL=100    # per cent
BRANCHES_GOAL=97
dir=$QEL_ROOT/build/coverage

qel_need_native_tools
qel_need gcovr gcovr
qel_install || exit 2
mkdir -p "$dir/report"
log=$dir/build.log
if ! { cmake --preset native -B "$dir" -DQEL_COVERAGE=ON -DQEL_SANITIZERS= \
         -DCMAKE_CXX_FLAGS_DEBUG="-O0 -g -fprofile-update=atomic" && cmake --build "$dir"; } >"$log" 2>&1; then
  tail -n 40 "$log" >&2
  exit 2
fi
find "$dir" -name '*.gcda' -delete
ctest --test-dir "$dir" -j "$(nproc)" >"$dir/tests.log" 2>&1 || { tail -n 40 "$dir/tests.log" >&2; exit 1; }

filters=()
for folder in base engine xml document render brush dynamic meter; do filters+=(--filter "$folder/"); done
formats=(--json-summary "$dir/report/summary.json" --json "$dir/report/lines.json")
if [ "${1:-}" = --html ]; then
  mkdir -p "$dir/html"
  formats+=(--html-details "$dir/html/index.html")
fi
# A delete tests for null by itself, which no line of the sources says.
gcovr --root . --object-directory "$dir" "${filters[@]}" --exclude-throw-branches \
  --exclude-unreachable-branches --exclude-branches-by-pattern '\s*delete \w+;' "${formats[@]}" >"$dir/gcovr.log" 2>&1 || { cat "$dir/gcovr.log" >&2; exit 2; }
exec python3 scripts/coverage_report.py "$dir/report" "$LINES_GOAL" "$BRANCHES_GOAL"
