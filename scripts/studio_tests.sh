#!/usr/bin/env bash
# Drives the Studio in a window, by keys, mouse and files, on a display that nobody sees.
#   scripts/studio_tests.sh [PRESET] [ARGUMENT OF PYTEST...]    of this preset, i686 unless told
set -u
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 2
source scripts/setup.sh
preset=i686
case ${1:-} in i686 | x86_64) preset=$1; shift ;; esac
qel_need_studio_tools
qel_install && qel_make_prefix || exit 2
qel_build "$preset" QELEngine qel QELStudio qel_studio_probe || exit 2

work=$(mktemp -d)
display_server=
trap '[ -z "$display_server" ] || kill "$display_server" 2>/dev/null; rm -rf "$work" 2>/dev/null || { sleep 2; rm -rf "$work"; }' EXIT
mkfifo "$work/display"
Xvfb -displayfd 7 -screen 0 1280x800x24 -nolisten tcp 7>"$work/display" >/dev/null 2>&1 &
display_server=$!
read -r number <"$work/display"
export DISPLAY=:$number

# Debian's own Python: another one that comes first in PATH has no pytest.
STUDIO_PRESET=$preset STUDIO_WINE="${QEL_WINE_PLAIN[*]}" PYTHONDONTWRITEBYTECODE=1 \
  /usr/bin/python3 -m pytest -q --tb=short -p no:cacheprovider --basetemp="$work/tests" tests/studio "$@"
