#!/usr/bin/env bash
# Everything that has to hold before a change lands; sets up and builds what is missing or stale first.
#   ./test.sh           all
#   ./test.sh --quick   without format and lint
set -u
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 2
source scripts/setup.sh
quick=0
[ "${1:-}" = --quick ] && quick=1

qel_need_test_tools
qel_install && qel_make_prefix || exit 2

passed=0
failed=()
step() { # NAME COMMAND...
  local name=$1 start=$SECONDS log
  shift
  log=$(mktemp)
  printf '%-44s' "$name"
  if "$@" >"$log" 2>&1 </dev/null; then
    printf 'passed  (%d s)\n' $((SECONDS - start))
    passed=$((passed + 1))
  else
    printf 'FAILED  (%d s)\n' $((SECONDS - start))
    failed+=("$name")
    tail -n 60 "$log"
  fi
  # The runners' own counts are worth a line.
  grep -hE '^\[  PASSED  \]|^\[  FAILED  \] [0-9]+ test|tests passed|^[0-9]+ passed' "$log" | sed 's/^/    /'
  rm -f "$log"
}

sources() { git ls-files -co --exclude-standard '*.cpp' '*.h' '*.c'; }
format_holds() { sources | xargs clang-format --dry-run -Werror; }
build_all() { qel_build "$1"; }
run_tests() { ctest --test-dir "build/$1" --output-on-failure --verbose; }
tool_tests() { QEL="$PWD/scripts/wine.sh $PWD/build/i686/bin/qel.exe" bash tests/tool_tests.sh; }
drawings_are_clean() { ./qel check examples/*.qel examples/gallery/*.qel; }
docs_are_current() { scripts/docs.sh --check; }
c_compilers_take_the_header() { scripts/header.sh; }
both_families_link() { scripts/abi.sh; }
package_serves_hosts() { scripts/package.sh; }
other_languages_call() { scripts/hosts.sh; }

for preset in i686 x86_64; do step "build $preset" build_all "$preset"; done
if [ $quick = 0 ]; then
  step "format" format_holds
  step "lint" scripts/tidy.sh
fi
step "header as C and C++, old and new" c_compilers_take_the_header
for preset in i686 x86_64; do step "tests $preset" run_tests "$preset"; done
step "hosts of both C++ families" both_families_link
step "the installed package" package_serves_hosts
step "hosts in other languages" other_languages_call
step "qel, the command-line program" tool_tests
step "examples are clean" drawings_are_clean
step "documentation is current" docs_are_current

[ ${#failed[@]} -eq 0 ] || printf 'failed: %s\n' "${failed[@]}"
printf '%d passed, %d failed\n' "$passed" "${#failed[@]}"
[ ${#failed[@]} -eq 0 ]
