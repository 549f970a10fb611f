#!/usr/bin/env bash
# Makes what is made of the documentation: docs/interface.md from the exported header, the tables in
# docs/format.md, docs/live-values.md and docs/embedding.md from the engine's tables, the pictures in docs/pictures from
# docs/drawings and examples, and docs/gallery.md with its pictures from examples/gallery.txt. With
# --check nothing is written: it tells what is not current.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$QEL_ROOT" || exit 2
qel_need_doc_tools
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

python3 scripts/directions.py --picture >"$new/folders.svg" || exit 1
place "$new/folders.svg" docs/pictures/folders.svg

python3 scripts/interface_doc.py >"$new/interface.md" || exit 1
place "$new/interface.md" docs/interface.md

"${QEL_WINE[@]}" build/i686/bin/docgen.exe | tr -d '\r' >"$new/tables" || exit 1
pages="format live-values embedding"
# shellcheck disable=SC2086
(cd docs && python3 - "$new" "$new/tables" $pages) <<'PYTHON' || exit 1
import re, sys
out, tables, names = sys.argv[1], open(sys.argv[2], encoding="utf-8").read(), sys.argv[3:]
pages = {name: open(name + ".md", encoding="utf-8").read() for name in names}
for block in re.findall(r"<!-- table .*?<!-- end -->", tables, re.S):
    begin = block.split("\n")[0]
    homes = [name for name in names if begin in pages[name]]
    if not homes:
        sys.exit("no page has a place for " + begin)
    for name in homes:
        pages[name] = re.sub(re.escape(begin) + r".*?<!-- end -->", lambda _: block, pages[name], flags=re.S)
# The header says of each code what the engine does.
header = open("../include/QELEngine.h", encoding="ascii").read()
told = {name: (number, " ".join(words.split()).replace("<", "&lt;")) for name, number, words in
        re.findall(r"^    (QEL_ERROR_\w+) = (\d+),?\s*/\* (.*?) \*/", header, re.M | re.S)}
for number, name, sentence in re.findall(r"^\| (\d+) \| `(QEL_ERROR_\w+)` \| (.*) \|$", tables, re.M):
    if told.pop(name, None) != (number, sentence):
        sys.exit("include/QELEngine.h does not say of " + name + ": " + sentence)
if set(told) != {"QEL_ERROR_XML"}:
    sys.exit("engine/Errors.cpp has no sentence for " + " ".join(sorted(told)))
for name in names:
    open(out + "/" + name + ".md", "w", encoding="utf-8", newline="\n").write(pages[name])
PYTHON
for page in $pages; do place "$new/$page.md" "docs/$page.md"; done

picture() { # DRAWING TARGET [OPTION...]
  local drawing=$1 target=$2
  shift 2
  "${QEL_WINE[@]}" build/i686/bin/qel.exe render "$drawing" "$new/picture.png" "$@" || { status=1; return; }
  place "$new/picture.png" "$target"
}
for drawing in docs/drawings/*.qel; do
  [ -e "$drawing" ] && picture "$drawing" "docs/pictures/$(basename "$drawing" .qel).png" --size 160x120
done
# How scale, smoothness and transparency look, for docs/crisp.md.
station=docs/drawings/crisp/station.qel
crisp() { picture "$1" "docs/pictures/crisp/$2.png" "${@:3}"; } # DRAWING NAME OPTION...
crisp $station small --size 200x130 --smooth 0
crisp $station large --size 400x260 --smooth 0
crisp $station scaled --size 400x260 --scale 200 --smooth 0
crisp $station smooth-small --size 200x130
crisp $station smooth --size 400x260 --scale 200
crisp examples/gallery/round.qel transparent --size 240x240 --transparent --value 0=140
for drawing in examples/*.qel; do
  grep -q "| $drawing |" examples/gallery.txt && continue # shown with values below
  picture "$drawing" "docs/pictures/examples/$(basename "$drawing" .qel).png"
done

# The gallery: each picture with the options that made it, which the page shows as well.
python3 scripts/gallery_doc.py examples/gallery.txt >"$new/gallery.md" || exit 1
place "$new/gallery.md" docs/gallery.md
while IFS=$'\t' read -r name drawing options; do
  # shellcheck disable=SC2086
  picture "$drawing" "docs/pictures/gallery/$name.png" $options
done < <(python3 scripts/gallery_doc.py --pictures examples/gallery.txt)
exit $status
