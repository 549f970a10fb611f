#!/usr/bin/env bash
# Makes fuzz/qel.dict, the dictionary of the fuzzers, from the engine's own tables: the program
# fuzz/Dictionary.cpp prints it. With --check nothing is written: it tells whether it is current.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/setup.sh"
cd "$QEL_ROOT" || exit 2
qel_need_native_tools
qel_install && qel_build native fuzz_dictionary || exit 2
new=$(mktemp)
trap 'rm -f "$new"' EXIT
build/native/bin/fuzz_dictionary >"$new" || exit 1
cmp -s "$new" fuzz/qel.dict && exit 0
if [ "${1:-}" = --check ]; then
  echo "fuzz/qel.dict is not current: run fuzz/dictionary.sh"
  exit 1
fi
cp "$new" fuzz/qel.dict
echo fuzz/qel.dict
