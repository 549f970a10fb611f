#!/usr/bin/env bash
# Makes what is made of the documentation: docs/interface.md from the exported header, the tables in
# docs/format.md from the engine's tables, and the pictures in docs/pictures from docs/drawings and
# examples. With --check nothing is written: it tells what is not current.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$QEL_ROOT" || exit 2
qel_need_tools
qel_need python3 python3
qel_install && qel_make_prefix && qel_build i686 qel QELEngine docgen || exit 2

check=0
[ "${1:-}" = --check ] && check=1
new=$(mktemp -d)
trap 'rm -rf "$new"' EXIT
status=0

place() { # NEW FILE TARGET: puts it in place, or says that it differs
  cmp -s "$1" "$2" && return 0
  if [ $check = 1 ]; then
    echo "$2 is not current: run scripts/docs.sh"
    status=1
  else
    mkdir -p "$(dirname "$2")"
    cp "$1" "$2"
    echo "$2"
  fi
}

python3 scripts/interface_doc.py >"$new/interface.md" || exit 1
place "$new/interface.md" docs/interface.md

"${QEL_WINE[@]}" build/i686/bin/docgen.exe | tr -d '\r' >"$new/tables" || exit 1
python3 - docs/format.md "$new/tables" >"$new/format.md" <<'PYTHON' || exit 1
import re, sys
page = open(sys.argv[1], encoding="utf-8").read()
for block in re.findall(r"<!-- table .*?<!-- end -->", open(sys.argv[2]).read(), re.S):
    begin = block.split("\n")[0]
    if begin not in page:
        sys.exit("docs/format.md has no place for " + begin)
    page = re.sub(re.escape(begin) + r".*?<!-- end -->", lambda _: block, page, flags=re.S)
sys.stdout.write(page)
PYTHON
place "$new/format.md" docs/format.md

picture() { # DRAWING TARGET [OPTION...]
  local drawing=$1 target=$2
  shift 2
  "${QEL_WINE[@]}" build/i686/bin/qel.exe render "$drawing" "$new/picture.png" "$@" || { status=1; return; }
  place "$new/picture.png" "$target"
}
for drawing in docs/drawings/*.qel; do
  [ -e "$drawing" ] && picture "$drawing" "docs/pictures/$(basename "$drawing" .qel).png" --size 160x120
done
for drawing in examples/*.qel; do
  [ -e "$drawing" ] && picture "$drawing" "docs/pictures/examples/$(basename "$drawing" .qel).png"
done
exit $status
