#!/usr/bin/env bash
# Everything that has to hold before a change lands; sets up and builds what is missing or stale first.
#   ./test.sh           all
#   ./test.sh --quick   without format and lint
# The long runs are apart: fuzz.sh, endurance.sh, coverage.sh, bench.sh.
set -u
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 2
source scripts/setup.sh
quick=0
[ "${1:-}" = --quick ] && quick=1

qel_need_test_tools
qel_install && qel_make_prefix || exit 2

passed=0
failed=()
logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT

# Steps that use one core run two at a time: begin starts one, finish waits for all and reports them.
begun=()
begin() { # NAME COMMAND...
  local name=$1 log=$logs/${#begun[@]}
  shift
  begun+=("$name")
  {
    start=$SECONDS
    "$@" >"$log" 2>&1 </dev/null
    echo "$? $((SECONDS - start))" >"$log.result"
  } &
}
finish() {
  local n code seconds
  wait
  for n in "${!begun[@]}"; do
    read -r code seconds <"$logs/$n.result"
    if [ "$code" = 0 ]; then
      printf '%-44s%s  (%d s)\n' "${begun[$n]}" passed "$seconds"
      passed=$((passed + 1))
    else
      printf '%-44s%s  (%d s)\n' "${begun[$n]}" FAILED "$seconds"
      failed+=("${begun[$n]}")
      tail -n 60 "$logs/$n"
    fi
    # The runners' own counts are worth a line.
    grep -hE '^\[  PASSED  \]|^\[  FAILED  \] [0-9]+ test|tests passed|^[0-9]+ (passed|failed)|^[0-9]+ errors?' "$logs/$n" | sed 's/^/    /'
  done
  begun=()
}
step() {
  begin "$@"
  finish
}

sources() { git ls-files -co --exclude-standard '*.cpp' '*.h' '*.c'; }
tables_are_whole() { python3 scripts/rows.py; }
folders_go_one_way() { python3 scripts/directions.py; }
format_holds() { sources | xargs clang-format --dry-run -Werror; }
build_all() { qel_build "$1"; }
run_tests() { ctest --test-dir "build/$1" --output-on-failure --verbose; }
# Debian's own Python: another one that comes first in PATH has no pytest.
tool_tests() {
  QEL="$PWD/scripts/wine.sh $PWD/build/i686/bin/qel.exe" PYTHONDONTWRITEBYTECODE=1 \
    /usr/bin/python3 -m pytest -q --tb=short --basetemp="$logs/tool" tests/tool
}
drawings_are_clean() { ./qel check examples/*.qel examples/gallery/*.qel; }
docs_are_current() { scripts/docs.sh --check; }
dictionary_is_current() { fuzz/dictionary.sh --check; }
c_compilers_take_the_header() { scripts/header.sh; }
both_families_link() { scripts/abi.sh; }
package_serves_hosts() { scripts/package.sh; }
other_languages_call() { scripts/hosts.sh; }

for preset in i686 x86_64 native; do step "build $preset" build_all "$preset"; done
if [ $quick = 0 ]; then
  step "format" format_holds
  begin "includes go one way" folders_go_one_way
  begin "a table without a row does not compile" tables_are_whole
  finish
  step "lint" scripts/tidy.sh
fi
for preset in i686 x86_64; do begin "tests $preset" run_tests "$preset"; done
finish
begin "sanitizers, faults and the fuzzers' corpus" ./native.sh
begin "qel, the command-line program" tool_tests
finish
begin "endurance, a hundredth of it" ./endurance.sh --quick
begin "hosts in other languages" other_languages_call
finish
begin "header as C and C++, old and new" c_compilers_take_the_header
begin "the installed package" package_serves_hosts
finish
step "hosts of both C++ families" both_families_link
begin "examples are clean" drawings_are_clean
begin "documentation is current" docs_are_current
begin "dictionary of the fuzzers is current" dictionary_is_current
finish

[ ${#failed[@]} -eq 0 ] || printf 'failed: %s\n' "${failed[@]}"
printf '%d passed, %d failed\n' "$passed" "${#failed[@]}"
[ ${#failed[@]} -eq 0 ]
