#!/usr/bin/env bash
# Tests of qel, the command-line program: QEL="COMMAND" tests/tool_tests.sh, where the command's last word
# is the program: QEL="scripts/wine.sh build/i686/bin/qel.exe", with full paths.
# Each drawing is written here, so that every line and column can be counted in the test.
set -u
QEL=${QEL:?the command that runs qel}
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 2

passed=0
failed=0
fail() { failed=$((failed + 1)); printf 'FAILED %s\n' "$1"; }
is() { # NAME EXPECTED ACTUAL
  if [ "$2" = "$3" ]; then passed=$((passed + 1)); else
    fail "$1"
    printf '  expected: %s\n  got:      %s\n' "$2" "$3"
  fi
}
contains() { # NAME PART TEXT
  # An empty part is within any text and would prove nothing.
  [ -n "$2" ] || { fail "$1: no part to look for"; return; }
  case $3 in *"$2"*) passed=$((passed + 1)) ;; *)
    fail "$1"
    printf '  expected within: %s\n  got: %s\n' "$2" "$3" ;;
  esac
}
run() { # sets out, err and status
  out=$($QEL "$@" 2>"$work/.err" | tr -d '\r'; exit "${PIPESTATUS[0]}")
  status=$?
  err=$(tr -d '\r' <"$work/.err")
}
drawing() { # NAME BODY...: a drawing of 40 by 30 units with the body's lines from line 3 on
  local name=$1
  shift
  { printf '<?xml version="1.0" encoding="gb2312" ?>\r\n<qel width="40" height="30">\r\n'
    printf '%s\r\n' "$@"
    printf '</qel>\r\n'; } >"$name"
}
differs() { # NAME FILE FILE
  if ! cmp -s "$2" "$3" && [ -s "$2" ] && [ -s "$3" ]; then passed=$((passed + 1)); else fail "$1: $2 and $3"; fi
}
same() { # NAME FILE FILE
  if cmp -s "$2" "$3"; then passed=$((passed + 1)); else fail "$1: $2 and $3 differ"; fi
}
be32() { od -An -tu1 -j"$2" -N4 "$1" | awk '{print (($1*256+$2)*256+$3)*256+$4}'; }
le32() { od -An -tu1 -j"$2" -N4 "$1" | awk '{print (($4*256+$3)*256+$2)*256+$1}'; }
hex() { od -An -v -tx1 "$@" | tr -d ' \n'; }
jpeg_size() { hex "$1" | sed 's/.*ffc0001108\(....\)\(....\).*/\1 \2/' | { read -r h w; echo "$((16#$w))x$((16#$h))"; }; }
png_size() { echo "$(be32 "$1" 16)x$(be32 "$1" 20)"; }
pixel() { # BMP X Y: rrggbb; rows from the bottom or from the top
  local start width height bits row
  start=$(le32 "$1" 10) width=$(le32 "$1" 18) height=$(le32 "$1" 22)
  bits=$(od -An -tu2 -j28 -N2 "$1" | tr -d ' ')
  if [ "$height" -gt 2147483647 ]; then row=$3; else row=$((height - 1 - $3)); fi
  local stride=$(((width * bits / 8 + 3) / 4 * 4))
  od -An -tx1 -j$((start + row * stride + $2 * bits / 8)) -N3 "$1" | awk '{print $3 $2 $1}'
}

# ---- help, version, a wrong command line
run --help
is "help ends with 0" 0 $status
contains "help lists the commands" "qel check IN..." "$out"
contains "help tells the exit status" "Exit status: 0 done" "$out"
is "help says nothing on standard error" "" "$err"
for command in render animate info check; do
  run $command --help
  is "help of $command ends with 0" 0 $status
  is "help of $command begins with its use" "qel $command IN" "$(printf '%s' "$out" | head -n 1 | cut -d' ' -f1-3 | tr -d .)"
  contains "help of $command has examples" "Examples:
  qel $command " "$out"
  contains "help of $command tells the exit status" "Exit status: 0" "$out"
done
run render --help
for option in size background rotate blink pressed font set value param status time; do
  contains "help of render tells of --$option" "  --$option " "$out"
done
run --version
is "version ends with 0" 0 $status
is "version tells the project's" "qel $(sed -n 's/^project(QELEngine VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")" "$out"
wrong() { # NAME MESSAGE-PART ARGUMENT...
  local name=$1 part=$2
  shift 2
  run "$@"
  is "$name: status" 2 $status
  contains "$name: message" "$part" "$err"
  is "$name: nothing on standard output" "" "$out"
  is "$name: one line" 1 "$(printf '%s\n' "$err" | wc -l)"
  is "$name: the program's name begins it" "qel: " "${err:0:5}"
}
drawing plain.qel '<rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="10 10 30 20"/>'
wrong "no command" "command is missing"
wrong "unknown command" "unknown command 'draw'" draw x
wrong "unknown option" "unknown option '--fast'" render plain.qel a.png --fast
wrong "missing value" "value is missing after --size" render plain.qel a.png --size
wrong "size without cross" "--size wants" render plain.qel a.png --size 100
wrong "size of nothing" "--size wants" render plain.qel a.png --size 0x5
wrong "size too large" "--size wants" render plain.qel a.png --size 99999x5
wrong "colour of five digits" "--background wants" render plain.qel a.png --background FFFFF
wrong "colour of no digits" "--background wants" render plain.qel a.png --background GGGGGG
wrong "angle of words" "--rotate wants" render plain.qel a.png --rotate left
wrong "size of a word and more" "--size wants" render plain.qel a.png --size 10x10px
wrong "negative size" "--size wants" render plain.qel a.png --size -5x5
wrong "colour with a sign" "--background wants" render plain.qel a.png --background +FFFFF
wrong "angle without end" "--rotate wants" render plain.qel a.png --rotate 99999999999
wrong "angle of nothing" "--rotate wants" render plain.qel a.png --rotate ""
wrong "a font that is not there" "no scalable font 'No Such Face'" render plain.qel a.png --font "No Such Face"
wrong "a font without name" "no scalable font ''" render plain.qel a.png --font ""
wrong "a font name without end" "no scalable font" render plain.qel a.png --font "$(printf 'x%.0s' {1..40})"
wrong "unknown option of info" "unknown option '--xml'" info plain.qel --xml
wrong "unknown option of check" "unknown option '--fix'" check plain.qel --fix
wrong "no extension" "needs the extension" render plain.qel a
wrong "no picture" "wants a drawing and a picture" render plain.qel
wrong "three names" "one drawing and one picture" render plain.qel a.png b.png
wrong "unknown extension" "needs the extension" render plain.qel a.tif
wrong "a single picture as GIF" "'qel animate' makes .gif" render plain.qel a.gif
wrong "missing drawing" "there is no such file" render missing.qel a.png
wrong "folder as drawing" "it is a folder" render "$work" a.png
wrong "no drawing for info" "info wants a drawing" info
wrong "two drawings for info" "info takes one drawing" info plain.qel plain.qel
wrong "no drawing for check" "check wants at least one" check
wrong "missing folder of the picture" "cannot write" render plain.qel nowhere/a.png
wrong "a picture where no file can be made" "cannot write '/proc/a.png'" render plain.qel /proc/a.png
mkdir folder.png
wrong "a folder of the picture's name" "cannot write 'folder.png'" render plain.qel folder.png
is "a failed render leaves no file" "./folder.png" "$(find . -name '*.png*')"
wrong "missing drawing for info" "cannot open 'missing.qel': there is no such file" info missing.qel
wrong "missing drawing for check" "cannot read 'missing.qel': there is no such file" check missing.qel
wrong "folder for check" "cannot read 'folder.png': it is a folder" check folder.png
for command in info check; do
  printf '<rect/>' >rest.qel
  [ $command = info ] && cp plain.qel rest.qel
  out=$($QEL $command rest.qel 2>&1 >/dev/full | tr -d '\r'; exit "${PIPESTATUS[0]}")
  is "$command to a full disk ends with 2" "2 qel: standard output cannot be written" "$? $out"
done
# Drawing and listing go through the DLL, so without one there is no program.
mkdir alone
cp "${QEL##* }" "$(dirname "${QEL##* }")/QELEngine.dll" alone/
info_alone() { ${QEL% *} "$work/alone/$(basename "${QEL##* }")" info plain.qel 2>/dev/null | head -n 1 | tr -d '\r'; }
is "the program runs with the engine's DLL beside it" "size 40 x 30, kind 0" "$(info_alone)"
rm alone/QELEngine.dll
is "and not without" "" "$(info_alone)"
printf 'no drawing' >text.qel
wrong "a file that is no drawing" "it is no drawing" render text.qel a.png

# ---- render
run render plain.qel a.png
is "render ends with 0" 0 $status
is "render says nothing" "" "$out$err"
is "default size is a whole multiple of at least 800 wide" 800x600 "$(png_size a.png)"
whole() { # WIDTH HEIGHT EXPECTED
  printf '<qel width="%s" height="%s"/>' "$1" "$2" >whole.qel
  run render whole.qel whole.png
  is "default size of $1 by $2" "$3" "$(png_size whole.png)"
}
whole 300 100 900x300
whole 799 10 1598x20
whole 800 10 800x10
whole 801 10 801x10
is "a PNG is a PNG" "89504e47" "$(od -An -tx1 -N4 a.png | tr -d ' \n')"
run render plain.qel b.png --size 123x77
is "--size" 123x77 "$(png_size b.png)"
run render plain.qel c.bmp --size 40x30
is "a BMP is a BMP" "BM" "$(head -c 2 c.bmp)"
is "the default background" c0c0c0 "$(pixel c.bmp 0 0)"
is "a filled rectangle begins at its left top" ff0000 "$(pixel c.bmp 10 10)"
is "and ends before its right bottom" ff0000 "$(pixel c.bmp 29 19)"
is "nothing to its right" c0c0c0 "$(pixel c.bmp 30 19)"
run render plain.qel d.bmp --size 40x30 --background 123456
is "--background" 123456 "$(pixel d.bmp 0 0)"
run render plain.qel e.jpg --size 40x30
is "a JPEG is a JPEG" "ffd8ff" "$(od -An -tx1 -N3 e.jpg | tr -d ' \n')"
is "a JPEG has its size" 40x30 "$(jpeg_size e.jpg)"
run render plain.qel e.JPEG --size 41x31
is "extensions in capitals, and .jpeg" 41x31 "$(jpeg_size e.JPEG)"
run render plain.qel f.emf
is "an EMF has its signature" 20454d46 "$(hex -j40 -N4 f.emf)"
pixels() { # OFFSET-OF-FRAME OFFSET-OF-DEVICE OFFSET-OF-MILLIMETRES: the frame's length in device pixels
  local length=$(le32 f.emf "$1") device=$(le32 f.emf "$2") millimetres=$(le32 f.emf "$3")
  echo $(((length * device + millimetres * 50) / (millimetres * 100)))
}
is "an EMF's frame is the picture" 800x600 "$(pixels 32 72 80)x$(pixels 36 76 84)"
records() { # EMF TYPE WORD...: the words at these places of every record of the type
  od -An -v -tu4 -w4 "$1" | awk -v type="$2" -v words="${*:3}" '{ w[n++] = $1 }
    END { for (i = 0; i < n; i += w[i + 1] / 4) if (w[i] == type) {
            line = ""; k = split(words, place, " ")
            for (j = 1; j <= k; ++j) line = line (j > 1 ? " " : "") w[i + place[j]]
            print line } }'
}
EMR_CREATEBRUSHINDIRECT=39 EMR_ELLIPSE=42 EMR_BITBLT=76
run render plain.qel f.emf --background 123456
is "an EMF's first brush is the background" $((16#563412)) "$(records f.emf $EMR_CREATEBRUSHINDIRECT 4 | head -n 1)"
# The rectangle 10 10 30 20 times 20, as left, top, width and height.
is "the whole picture is filled, then the rectangle" "0 0 800 600
200 200 400 200" "$(records f.emf $EMR_BITBLT 6 7 8 9)"
drawing round.qel '<ellipse crd="10 10 30 20"/>'
run render round.qel f.emf
# The record's right and bottom are inclusive.
is "an EMF records the engine's own calls" "200 200 599 399" "$(records f.emf $EMR_ELLIPSE 2 3 4 5)"
run render plain.qel g.png --rotate 90
is "--rotate turns the size" 810x1080 "$(png_size g.png)"
run render plain.qel h.bmp --rotate 90 --size 30x40
# 10..30 by 10..20 of 40 by 30, counter-clockwise: x' = y, y' = 40 - x.
is "--rotate turns the drawing" ff0000 "$(pixel h.bmp 10 10)"
is "as far as it reaches" ff0000 "$(pixel h.bmp 19 29)"
is "and no farther" c0c0c0 "$(pixel h.bmp 20 29)"
run render plain.qel h.bmp --rotate -90 --size 30x40
# Clockwise: x' = 30 - y, y' = x.
is "--rotate turns the other way" "ff0000 c0c0c0" "$(pixel h.bmp 10 10) $(pixel h.bmp 9 10)"
is "to its far corner" "ff0000 c0c0c0" "$(pixel h.bmp 19 29) $(pixel h.bmp 19 30)"
run render plain.qel h.bmp --rotate 100 --size 30x40
is "--rotate goes by quarter turns" "ff0000 c0c0c0" "$(pixel h.bmp 10 10) $(pixel h.bmp 20 29)"
drawing blink.qel '<rect style="0x1" dr="1" fg="0xff00 glt" lnwid="0" crd="0 0 40 30"/>'
run render blink.qel i.bmp --size 40x30
is "a blinking colour shows" 00ff00 "$(pixel i.bmp 5 5)"
run render blink.qel i.bmp --size 40x30 --blink
is "--blink shows black, over an older picture" 000000 "$(pixel i.bmp 5 5)"
drawing press.qel '<rect style="0x1" dr="1" fg="0xff" lnwid="0" flag="0x4000" crd="10 10 30 20"/>'
run render press.qel j.bmp --size 40x30 --pressed
run render press.qel k.bmp --size 40x30
is "without --pressed it stays" "ff0000 c0c0c0" "$(pixel k.bmp 11 11) $(pixel k.bmp 31 21)"
is "--pressed leaves the old place" c0c0c0 "$(pixel j.bmp 11 11)"
is "--pressed moves by two pixels" ff0000 "$(pixel j.bmp 31 21)"
printf '<qel width="0" height="9"/>' >flat.qel
wrong "a drawing without size" "give one with --size" render flat.qel k.png
printf '<qel width="0" height="9"><rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="2 2 6 6"/></qel>' >flat.qel
run render flat.qel k.bmp --size 20x10
is "a drawing without size takes --size as its own" "ff0000 c0c0c0" "$(pixel k.bmp 5 5) $(pixel k.bmp 6 6)"
run render flat.qel k.bmp --size 10x20 --rotate 90
# Of 20 by 10: x' = y, y' = 20 - x.
is "lying on its side" "ff0000 c0c0c0" "$(pixel k.bmp 2 14) $(pixel k.bmp 2 13)"
printf '<qel width="1" height="99999"/>' >tall.qel
wrong "a drawing out of proportion" "give a size with --size" render tall.qel k.png
drawing words.qel '<text fg="0x0" crd="0 0 40 30">Ab</text>'
printf '<qel width="40" height="30"/>' >blank.qel
run render words.qel l.png
run render blank.qel blank.png
differs "a text shows" l.png blank.png
run render words.qel m.png --font "WenQuanYi Zen Hei Mono"
same "the default font" l.png m.png
run render words.qel m.png --font "DejaVu Sans"
is "--font takes a face" 0 $status
differs "--font draws in that face" l.png m.png
printf '<qel width="40" height="30"><text fg="0x0" crd="0 0 40 30">\xb1\xc3</text></qel>' >pump.qel
printf '<qel width="40" height="30"><text fg="0x0" crd="0 0 40 30">\xcb\xae</text></qel>' >water.qel
printf '<qel width="40" height="30"><text fg="0x0" crd="0 0 40 30">??</text></qel>' >ask.qel
for name in pump water ask; do run render $name.qel $name.png; done
differs "Chinese characters are drawn" pump.png ask.png
differs "each its own" pump.png water.png
# What is there already stays until the new picture is complete, and what is beside it always.
cp plain.qel old.png
run render flat.qel old.png
same "a failed render leaves the older picture" plain.qel old.png
run render plain.qel old.png
is "a good one replaces it" 800x600 "$(png_size old.png)"
printf mine >old.png.part
run render plain.qel old.png
is "a file of another's stays" mine "$(cat old.png.part)"
rm old.png.part
is "nothing unfinished is left" "" "$(find . -name '*.part*')"

# ---- paths
mkdir -p "a folder" 水厂
cp plain.qel "a folder/my drawing.qel"
cp plain.qel 水厂/泵.qel
run render "a folder/my drawing.qel" "a folder/my picture.png"
is "blanks in paths" 800x600 "$(png_size "a folder/my picture.png")"
run render 水厂/泵.qel 水厂/图.png
is "Chinese paths" 800x600 "$(png_size 水厂/图.png)"
run render "$work/plain.qel" "$work/abs.png"
is "absolute paths" 800x600 "$(png_size abs.png)"
cp plain.qel ./-dash.qel
run render -- -dash.qel dash.png
is "names after a lone --" 0 $status
mkdir 한국
cp plain.qel 한국/펌프.qel
run render 한국/펌프.qel 한국/그림.png
is "paths that the code page has no characters for" 800x600 "$(png_size 한국/그림.png)"
cp plain.qel "a & b's (1) %x%.qel"
run render "a & b's (1) %x%.qel" "c & d's (1) %x%.png"
is "signs in paths" 800x600 "$(png_size "c & d's (1) %x%.png")"
wrong "a Chinese path in a message" "cannot open '没有/泵.qel': there is no such file" info 没有/泵.qel
wrong "a Chinese picture's path in a message" "cannot write '没有/图.png'" render plain.qel 没有/图.png
run info "$work/水厂/泵.qel"
contains "info of an absolute Chinese path" "size 40 x 30" "$out"
cp text.qel 水厂/坏.qel
run check 水厂/坏.qel
is "paths are printed as they were given" 水厂/坏.qel:1:1 "$(printf '%s' "$out" | head -n 1 | cut -d: -f1-3)"
run check "./水厂/../水厂/坏.qel" "$work/水厂/坏.qel"
contains "also roundabout ones" "./水厂/../水厂/坏.qel:1:1: " "$out"
contains "and absolute ones" "$work/水厂/坏.qel:1:1: " "$out"

# ---- info
drawing tree.qel '<g id="pump">' '<circle crd="20 15 5" flag="0x81"/>' '</g>' '<text crd="0 0 40 10">x</text>'
run info tree.qel
is "info ends with 0" 0 $status
is "info in words" "size 40 x 30, kind 0
the host can set (mask 0x2081): parameter 0, the frame colour; parameters 1 to 3, the hatch and its colours; texts
qel  0,0..40,20
  g \"pump\"  15,10..25,20
    circle  15,10..25,20
  text  0,0..40,10" "$out"
valid_json() { # NAME TEXT
  if command -v python3 >/dev/null; then
    is "$1 is valid JSON in UTF-8" ok "$(printf '%s' "$2" | python3 -c '
import json, sys
sys.setrecursionlimit(10000)
json.loads(sys.stdin.buffer.read().decode("utf-8"))
print("ok")' 2>&1)"
  else # what is left without the strings is balanced
    local rest
    rest=$(printf '%s' "$2" | iconv -f utf-8 -t utf-8 | sed 's/\\\\//g;s/\\"//g;s/"[^"]*"//g')
    is "$1 is balanced and in UTF-8" "{$(printf '%s' "$rest" | tr -cd '{}[]' | tr '{[' '}]' | wc -c)" \
      "{$(($(printf '%s' "$rest" | tr -cd '{[' | wc -c) * 2))"
  fi
}
printf '<?xml version="1.0" encoding="gb2312" ?>\r\n<qel id="\xcb\xae\xb3\xa7" type="2"><text id="a&quot;b" crd="0 0 9 9">\xb1\xc3\\</text></qel>' >cn.qel
run info cn.qel
is "info in words is UTF-8 and quoted" 'size 50 x 50, kind 2, name "水厂"
the host can set (mask 0x2000): texts
qel "水厂"  0,0..9,9
  text "a\"b"  0,0..9,9' "$out"
run info cn.qel --json
is "info --json ends with 0" 0 $status
valid_json "a Chinese drawing" "$out"
contains "JSON: kind and name" '"kind": 2,
"name": "水厂",' "$out"
contains "JSON: an identifier" '{"type": 1, "typeName": "text", "id": "a\"b", "rect": [0, 0, 9, 9], ' "$out"
contains "JSON: a text" '"text": "泵\\"}' "$out"
run info tree.qel --json
valid_json "a tree" "$out"
contains "JSON: the size" '"width": 40,
"height": 30,' "$out"
contains "JSON names what the host can set" '"paramsMask": 8321,
"params": ["QEL_MASK_COLOR", "QEL_MASK_DRAFT", "QEL_MASK_TEXT"],' "$out"
contains "JSON: a group" '{"type": 15, "typeName": "g", "id": "pump", "rect": [15, 10, 25, 20], "children": [' "$out"
contains "JSON: a circle" '"crd": [20, 15, 5], "flags": {"value": 129, "names": ["QEL_FLAG_COLOR_PARAM", "QEL_FLAG_DRAFT_PARAM"]}}' "$out"
drawing all.qel '<polygon style="0x50003" dr="12" fg="0x123456 glt" bg="0xff" clr="0xff00" lnstyle="2" lnwid="3" crd="1 2 3 4 5 -6"/>' \
  '<rect style="0x5" flag="0x508000" crd="1 1 9 9"/>'
run info all.qel --json
valid_json "shapes" "$out"
contains "JSON: every attribute of a shape" '"attributes": {"style": {"value": 327683, "fill": true, "border": "up", "borderWidth": 5}, "draft": 12, "fg": {"rgb": "563412", "blink": true}, "bg": {"rgb": "ff0000", "blink": false}, "clr": {"rgb": "00ff00", "blink": false}, "lineStyle": 2, "lineWidth": 3, "crd": [1, 2, 3, 4, 5, -6], "flags": {"value": 0, "names": []}}' "$out"
contains "JSON: a sunken border of the usual width" '"style": {"value": 5, "fill": true, "border": "down", "borderWidth": 2}' "$out"
contains "JSON: keep modes" '"names": ["QEL_KEEP_LEFT", "QEL_ALONG_KEEP_LENGTH", "QEL_AWAY_KEEP_LENGTH"]' "$out"
printf '<qel id="\xff\xff\x81"><g id="a&#xA;b&#x9;\x01"/></qel>' >odd.qel
run info odd.qel --json
valid_json "bytes that are no characters" "$out"
contains "JSON: control characters" '"id": "a\u000ab\u0009\u0001"' "$out"
run info odd.qel
contains "an identifier of two lines stays on its line" 'g "a\u000ab\u0009\u0001"' "$out"
{ printf '<qel>'; printf '<g>%.0s' {1..512}; printf '</g>%.0s' {1..512}; printf '</qel>'; } >deep.qel
run info deep.qel --json
valid_json "512 levels" "$out"
is "all 512 groups are listed" 512 "$(printf '%s' "$out" | grep -c '"typeName": "g"')"
run render deep.qel deep.png
is "512 levels are drawn" 800x800 "$(png_size deep.png)"

# ---- check
run check plain.qel
is "a clean drawing: status" 0 $status
is "a clean drawing: nothing is said" "" "$out$err"
finds() { # NAME LINE:COLUMN KIND TEXT-PART BODY...: exactly one finding
  local name=$1 at=$2 kind=$3 part=$4
  shift 4
  drawing f.qel "$@"
  run check f.qel
  is "$name: status" 1 $status
  is "$name: one finding" 1 "$(printf '%s\n' "$out" | wc -l)"
  contains "$name" "f.qel:$at: $kind: " "$out"
  contains "$name: text" "$part" "$out"
}
R='<rect crd="1 1 9 9"'
finds "unknown element" 3:1 error "unknown element <box>" '<box><rect/></box>'
finds "known element without a class" 3:1 warning "<path> is skipped" '<path d="x"><zzz/></path>'
finds "drawing in a drawing" 3:3 error "<qel> inside" '  <qel><rect/></qel>'
finds "unknown attribute" 3:21 error "unknown attribute 'colour'" "$R colour=\"1\"/>"
finds "attribute of other elements" 3:4 warning "'crd' has no meaning on <g>" '<g crd="1 2 3 4"/>'
finds "attribute of the root on a shape" 3:21 warning "'width' has no meaning on <rect>" "$R width=\"3\"/>"
finds "style without 0x" 3:28 error "style wants 0x hexadecimal, not '12': it is ignored" "$R style=\"12\"/>"
finds "colour with another word" 3:25 error "fg wants colour" "$R fg=\"0xff blink\"/>"
finds "colour of 32 bits" 3:25 error "fg wants colour" "$R fg=\"0xff0000ff\"/>"
finds "decimal of words" 3:28 error "lnwid wants decimal, not 'thin'" "$R lnwid=\"thin\"/>"
finds "decimal with a tail" 3:28 error "lnwid wants decimal, not '2px'; it is read as 2" "$R lnwid=\"2px\"/>"
finds "decimal with a blank behind" 3:25 error "dr is out of range, 0 to 37: '38 '" "$R dr=\"38 \"/>"
finds "a style that is read in part" 3:28 error "style wants 0x hexadecimal, not '0x1z'; it is read as 0x1" "$R style=\"0x1z\"/>"
finds "decimal beyond 32 bits" 3:28 error "lnwid: the number '2147483648' does not fit 32 bits; it is read as 2147483647" "$R lnwid=\"2147483648\"/>"
finds "hexadecimal beyond 32 bits" 3:28 error "style: the number '0x100000000' does not fit 32 bits; it is read as 0xffffffff" "$R style=\"0x100000000\"/>"
finds "line style out of range" 3:30 error "lnstyle is out of range, 0 to 6: '7'" "$R lnstyle=\"7\"/>"
finds "columns count bytes, three to each of these characters" 3:16 error "unknown attribute 'x'" '<g id="水厂" x="1"/>'
finds "an attribute on a line of its own" 4:3 error "unknown attribute 'x'" '<g' '  x="1"/>'
finds "a value on a line of its own" 5:2 error "dr is out of range" "$R" ' dr =' '"99"/>'
finds "an unknown element without end is shown in part" 3:1 error "<$(printf 'x%.0s' {1..40})...>" "<$(printf 'x%.0s' {1..99})/>"
finds "a value of two lines stays on one" 3:28 error "not '2  px'" "$R lnwid=\"2" 'px"/>'
finds "a long Chinese value is not cut inside a character" 3:25 error "not 'x$(printf '水%.0s' {1..20})...'" "$R dr=\"x$(printf '\xcb\xae%.0s' {1..30})\"/>"
finds "a Chinese value" 3:25 error "dr wants decimal, not '水'" "$R dr=\"$(printf '\xcb\xae')\"/>"
finds "hatch out of range" 3:25 error "dr is out of range, 0 to 37: '38'" "$R dr=\"38\"/>"
finds "negative hatch" 3:25 error "dr is out of range" "$R dr=\"-1\"/>"
finds "negative line width" 3:28 error "lnwid is out of range" "$R lnwid=\"-2\"/>"
finds "too few coordinates" 3:12 error "4 numbers, not 3: the element keeps 0 0 10 10" '<rect crd="1 2 3"/>'
finds "too many coordinates" 3:12 error "4 numbers, not 5: the rest is not read" '<rect crd="1 2 9 9 5"/>'
finds "coordinates that are no numbers" 3:14 error "no number in '5 5 3 x'" '<circle crd="5 5 3 x"/>'
finds "one point of a polygon" 3:15 error "the element keeps" '<polygon crd="1 2"/>'
finds "half a point" 3:15 error "stands alone" '<polygon crd="1 2 3 4 5"/>'
finds "17 points" 3:16 error "after the 16th" "<polyline crd=\"$(printf '%s 2 ' {1..17})\"/>"
drawing f.qel "<polyline crd=\"$(printf '%s 2 ' {1..16})\"/>"
run check f.qel
is "16 points are fine" "0 " "$status $out"
finds "points that tabs and blanks separate" 3:16 error "not read as they stand" $'<polyline crd="1\t2\t3\t4 5 6"/>'
finds "points on two lines" 3:16 error "not read as they stand" '<polyline crd="1 2' '3 4 5 6"/>'
finds "a coordinate beyond 32 bits" 3:12 error "does not fit 32 bits" '<rect crd="1 1 9 99999999999"/>'
finds "a negative radius" 3:14 error "the radius -5 is negative" '<circle crd="9 9 -5"/>'
finds "no coordinates" 3:1 warning "no crd: the element has 0 0 10 10" '<rect/>'
finds "text on a rectangle" 3:21 warning "a text has no effect on <rect>" "$R>hello</rect>"
finds "text of 256 bytes" 3:23 error "more than 255 bytes" "<text crd=\"0 0 40 30\">$(printf 'x%.0s' {1..256})</text>"
finds "text without a text" 3:1 warning "shows nothing" '<text crd="0 0 40 30"/>'
finds "identifier of 256 bytes" 3:25 error "more than 255 bytes" "$R id=\"$(printf 'x%.0s' {1..256})\"/>"
finds "identifier twice" 4:25 warning "another element has the identifier 'a'" "$R id=\"a\"/>" "$R id=\"a\"/>"
for name in defs use; do
  finds "<$name>, known without a class" 3:1 warning "<$name> is skipped with all that is in it" "<$name id=\"a\"><zzz/></$name>"
done
finds "one anchor and Keep All" 3:27 warning "more than one anchor: the element is stretched" "$R flag=\"0x9000\"/>"
finds "away from no edge" 3:27 warning "with Keep left" "$R flag=\"0x20000\"/>"
finds "two anchors" 3:27 warning "more than one anchor" "$R flag=\"0x18000\"/>"
finds "placement without anchor" 3:27 warning "placement along and away from an edge have an effect with Keep left" "$R flag=\"0x100000\"/>"
finds "keep mode on a line" 3:27 warning "no effect on <line>" '<line crd="1 1 9 9" flag="0x8000"/>'
finds "empty rectangle" 3:1 warning "the rectangle is empty" '<rect crd="5 5 5 9"/>'
finds "an arc without width" 3:1 warning "the rectangle is empty: nothing is drawn" '<arc crd="5 5 5 9 1 1 9 9"/>'
finds "a line without length" 3:1 warning "all points are the same" '<line crd="5 5 5 5"/>'
finds "a rectangle at the right edge" 3:1 warning "outside of the drawing" '<rect crd="40 5 50 9"/>'
finds "a rectangle above" 3:1 warning "outside of the drawing" '<rect crd="5 -9 9 0"/>'
finds "a line below" 3:1 warning "outside of the drawing" '<line crd="5 31 9 35"/>'
drawing f.qel '<line crd="5 5 5 9"/>' '<line crd="40 5 40 9"/>' '<rect crd="39 29 60 60"/>' '<polyline crd="1 5 9 5"/>'
run check f.qel
is "upright lines, lines on the edge, shapes in part inside are fine" "0 " "$status $out"
finds "outside of the drawing" 3:1 warning "outside of the drawing" '<rect crd="50 5 60 9"/>'
finds "value without quotes" 3:21 warning "dr: the value has no quotes: the attribute is dropped" "$R dr=3/>"
finds "empty value" 3:21 warning "dr: the value is empty: the attribute is dropped" "$R dr=\"\"/>"
finds "attribute twice" 3:28 warning "dr: the attribute stands here a second time" "$R dr=\"1\" dr=\"2\"/>"
finds "text twice" 3:32 warning "replaces it" '<text crd="0 0 40 30">a<!-- -->b</text>'
broken() { # NAME LINE:COLUMN KIND TEXT-PART BYTES: exactly one finding
  printf "$5" >x.qel
  run check x.qel
  is "$1: status" 1 $status
  is "$1: one finding" 1 "$(printf '%s\n' "$out" | wc -l)"
  contains "$1" "x.qel:$2: $3: " "$out"
  contains "$1: text" "$4" "$out"
}
broken "empty file" 1:1 error "the drawing is empty" ''
broken "blanks only" 1:1 error "there is no element" ' \n '
broken "other root" 1:1 error "the root element is <rect>, not <qel>" '<rect/>'
broken "other root after a declaration" 2:3 error "not <qel>" '<?xml version="1.0"?>\n  <g/>'
broken "end tag of another" 2:7 error "does not match" '<qel>\n<g><g></h></qel>'
broken "attribute without value" 1:7 error "start tag cannot be read" '<qel a/>'
broken "value not closed" 1:6 error "not closed by its quote" '<qel id="x/>'
broken "end in a start tag" 1:13 error "inside a start tag" '<qel id="x" '
broken "end after a name" 1:5 error "right after an element" '<qel'
broken "slash" 1:5 error "not followed by" '<qel/ >'
broken "end in content" 1:9 error "inside an element" '<qel><g>'
broken "end in a comment" 2:12 error "inside an element's content" '<qel>\n<!-- x <g/>'
broken "second root" 1:7 warning "becomes the root's last child" '<qel/><g/>'
broken "text after the root" 1:7 warning "reading stops here" '<qel/>bye'
broken "comment not closed" 1:7 warning "not closed" '<qel/><!-- x'
broken "bytes after a zero" 1:7 warning "zero byte" '<qel/>\0<g/>'
broken "kind of the root" 1:12 error "type is out of range, 0 to 2: '5'" '<qel type="5"/>'
broken "negative kind" 1:12 error "type is out of range, 0 to 2: '-1'" '<qel type="-1"/>'
broken "kind with a blank behind" 1:12 error "type is out of range, 0 to 2: '3 '" '<qel type="3 "/>'
broken "width of the root" 1:13 error "width is out of range, 1 or more: '0'" '<qel width="0"/>'
broken "height of the root" 1:14 error "height is out of range, 1 or more: '-4'" '<qel height="-4"><rect crd="1 1 2 2"/></qel>'
broken "513 levels" 1:1542 error "512 levels" "<qel>$(printf '<g>%.0s' {1..513})"
broken "an element that is read in part" 1:36 error "inside a start tag" '<qel><rect crd="1 1 5 5" id="a"    '
broken "an element without its attributes yet" 1:19 error "start tag cannot be read" '<qel><text id="a"b"/></qel>'
printf '\xef\xbb\xbf<qel/>' >x.qel
run check x.qel
is "a byte order mark: status" 1 $status
contains "a byte order mark" "x.qel:1:1: error: a byte order mark stands before the drawing" "$out"
printf 'hello' >x.qel
run check x.qel
is "no markup: status" 1 $status
contains "no markup" "x.qel:1:1: error: there is no element: the drawing does not open" "$out"
{ printf '<qel width="40" height="30">\n'; printf '<g id="n%s"/>\n' {1..3000}; printf '<g bad="1"/></qel>'; } >many.qel
run check many.qel
is "the finding of a long file" "many.qel:3002:4: error: unknown attribute 'bad'" "$out"
drawing order.qel '<rect crd="1 1 9 9" dr="99" zz="1"/>' '<rect crd="1 1 9 9" yy="1"/>'
run check order.qel
is "findings stand in the order of the file" "3:25 3:29 4:21" "$(printf '%s\n' "$out" | cut -d: -f2,3 | tr '\n' ' ' | sed 's/ $//')"
printf '<qel/>\r\n\0' >saved.qel
run check saved.qel
is "the zero byte that ends a saved drawing is fine" "0" "$status$out"
run check plain.qel missing.qel f.qel
is "the worst status of several drawings" 2 $status
contains "the others are checked all the same" "f.qel:" "$out"

# ---- live values, with the helpers from above
source "$root/tests/live_tool_tests.sh"

printf '%d passed, %d failed\n' "$passed" "$failed"
[ "$failed" -eq 0 ]
