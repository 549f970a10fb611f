#!/usr/bin/env bash
# Makes the packages of both word sizes, and prints where the archives stand. scripts/package_tests.sh tests
# what is in them.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$QEL_ROOT" || exit 2
qel_need_package_tools
qel_install || exit 2
for preset in i686 x86_64; do
  qel_build "$preset" && rm -f "build/$preset/"QELEngine-*.zip &&
    (cd "build/$preset" && cpack >"package.log" 2>&1 || { cat package.log >&2; exit 1; }) &&
    ls "$QEL_ROOT/build/$preset/"QELEngine-*.zip || exit 1
done
