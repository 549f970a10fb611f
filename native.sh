#!/usr/bin/env bash
# Builds the engine for this machine with AddressSanitizer, UndefinedBehaviorSanitizer and LeakSanitizer,
# over a stand-in for the system that reports every misuse and fails where it is told to, and runs the
# tests on it.
#   ./native.sh              all of what follows
#   ./native.sh sanitizers   the engine's unit tests
#   ./native.sh faults       memory, GDI objects, disks and power that fail, each at every place
#   ./native.sh corpus       the inputs that fuzzers have found worth keeping
#   ./native.sh threads      engines of two threads at the same time, under ThreadSanitizer
set -u
cd "$(dirname "${BASH_SOURCE[0]}")" || exit 2
source scripts/setup.sh
case ${1:-all} in
  all) only=. ;;
  sanitizers) only=^qel_tests ;;
  faults) only=^qel_fault_tests ;;
  corpus) only=^corpus_ ;;
  threads) only=none ;;
  *) sed -n '2,9s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"; exit 2 ;;
esac
qel_need_native_tools
qel_install || exit 2
if [ "$only" = . ] || [ "$only" = none ]; then
  qel_build threads qel_thread_tests || exit 2
  ctest --test-dir build/threads --output-on-failure -R '^qel_thread_tests$' || exit 1
fi
[ "$only" != none ] || exit 0
qel_build native || exit 2
exec ctest --test-dir build/native --output-on-failure -j "${QEL_JOBS:-$(nproc)}" -R "$only"
