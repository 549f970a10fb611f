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

# Steps run two at a time, each on its half of the cores: `step` says what there is to do and after which
# other steps, `run_steps` does it, in the order of saying as far as that allows. One that waits more than it
# works runs beside them: `step_aside`.
QEL_JOBS=$((($(nproc) + 1) / 2))
export QEL_JOBS
names=() needs=() commands=() states=() lanes=()
step() { # NAME NEEDED-NAME,... COMMAND...
  names+=("$1")
  needs+=("$2")
  commands+=("${*:3}")
  states+=(waiting)
  lanes+=(1)
}
step_aside() {
  step "$@"
  lanes[-1]=0
}
begin() { # NUMBER
  local log=$logs/$1 start=$SECONDS
  states[$1]=running
  {
    ${commands[$1]} >"$log" 2>&1 </dev/null
    echo "$? $((SECONDS - start))" >"$log.new" && mv "$log.new" "$log.result"
  } &
}
finish() { # NUMBER
  local code seconds name=${names[$1]} log=$logs/$1
  read -r code seconds <"$log.result"
  states[$1]=ended
  if [ "$code" = 0 ]; then
    printf '%-44s%s  (%d s)\n' "$name" passed "$seconds"
    passed=$((passed + 1))
  else
    printf '%-44s%s  (%d s)\n' "$name" FAILED "$seconds"
    failed+=("$name")
    tail -n 60 "$log"
  fi
  # The runners' own counts are worth a line.
  grep -hE '^\[  PASSED  \]|^\[  FAILED  \] [0-9]+ test|tests passed|^[0-9]+ (passed|failed)|^[0-9]+ errors?' "$log" | sed 's/^/    /'
}
may_begin() { # NUMBER
  local other
  [ "${states[$1]}" = waiting ] || return 1
  for other in "${!names[@]}"; do
    case ",${needs[$1]}," in *",${names[$other]},"*) [ "${states[$other]}" = ended ] || return 1 ;; esac
  done
}
run_steps() {
  local n left running=0 finished=0
  while [ $finished -lt ${#names[@]} ]; do
    for n in "${!names[@]}"; do
      [ $((running + lanes[n])) -le 2 ] && may_begin "$n" && begin "$n" && running=$((running + lanes[n]))
    done
    wait -n
    left=$?
    for n in "${!names[@]}"; do
      [ "${states[$n]}" = running ] && [ -e "$logs/$n.result" ] || continue
      finish "$n"
      running=$((running - lanes[n]))
      finished=$((finished + 1))
      left=0
    done
    # No process is left, and its result neither: no room for it.
    [ $left != 127 ] || { failed+=("the steps themselves"); return; }
  done
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
package_serves_hosts() { scripts/package_tests.sh; }
other_languages_call() { scripts/hosts.sh; }
windows_are_updated() { scripts/window_tests.sh; }
studio_is_driven() { scripts/studio_tests.sh; }
setup_mends_itself() { scripts/setup_tests.sh; }

for preset in i686 x86_64 native; do step "build $preset" "" build_all "$preset"; done
step_aside "the Studio in a window" "build i686" studio_is_driven
if [ $quick = 0 ]; then
  step "lint" "build i686" scripts/tidy.sh
  step "format" "" format_holds
  step "includes go one way" "" folders_go_one_way
  step "a table without a row does not compile" "build i686" tables_are_whole
fi
step "sanitizers, faults and the fuzzers' corpus" "build native" ./native.sh
for preset in i686 x86_64; do step "tests $preset" "build $preset" run_tests "$preset"; done
step "hosts in other languages" "build i686,build x86_64" other_languages_call
step "updates of a window" "build i686,build x86_64" windows_are_updated
step "qel, the command-line program" "build i686" tool_tests
step "set-up" "build i686,build x86_64" setup_mends_itself
step "endurance, a hundredth of it" "build i686,build x86_64" ./endurance.sh --quick
step "the installed package" "build i686,build x86_64" package_serves_hosts
step "hosts of both C++ families" "build i686,build x86_64" both_families_link
step "documentation is current" "build i686" docs_are_current
step "header as C and C++, old and new" "" c_compilers_take_the_header
step "examples are clean" "build i686" drawings_are_clean
step "dictionary of the fuzzers is current" "build native" dictionary_is_current
run_steps

[ ${#failed[@]} -eq 0 ] || printf 'failed: %s\n' "${failed[@]}"
printf '%d passed, %d failed\n' "$passed" "${#failed[@]}"
[ ${#failed[@]} -eq 0 ]
