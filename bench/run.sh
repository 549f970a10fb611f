#!/usr/bin/env bash
# Builds and runs the measurements.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/setup.sh"
qel_need_tools
qel_install && qel_make_prefix && qel_build i686 qel_bench QELEngine || exit 2
cd "$QEL_ROOT/build/i686" && exec "${QEL_WINE[@]}" bin/qel_bench.exe
