#!/usr/bin/env bash
# Tests of qel, the command-line program: QEL="COMMAND" tests/tool_tests.sh
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
be32() { od -An -tu1 -j"$2" -N4 "$1" | awk '{print (($1*256+$2)*256+$3)*256+$4}'; }
le32() { od -An -tu1 -j"$2" -N4 "$1" | awk '{print (($4*256+$3)*256+$2)*256+$1}'; }
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
run render --help
is "help of a command ends with 0" 0 $status
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
  contains "$name: the program's name" "qel: " "$err"
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
wrong "no picture" "wants a drawing and a picture" render plain.qel
wrong "three names" "one drawing and one picture" render plain.qel a.png b.png
wrong "unknown extension" "needs the extension" render plain.qel a.gif
wrong "missing drawing" "there is no such file" render missing.qel a.png
wrong "folder as drawing" "it is a folder" render "$work" a.png
wrong "no drawing for info" "info wants a drawing" info
wrong "two drawings for info" "info takes one drawing" info plain.qel plain.qel
wrong "no drawing for check" "check wants at least one" check
wrong "missing folder of the picture" "cannot write" render plain.qel nowhere/a.png
is "a failed render leaves no file" "" "$(find . -name '*.png*')"
printf 'no drawing' >text.qel
wrong "a file that is no drawing" "it is no drawing" render text.qel a.png

# ---- render
run render plain.qel a.png
is "render ends with 0" 0 $status
is "render says nothing" "" "$out$err"
is "default size is a whole multiple of at least 800 wide" 800x600 "$(png_size a.png)"
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
run render plain.qel f.emf
is "an EMF has its signature" " EMF" "$(od -An -c -j40 -N4 f.emf | tr -d '\n' | sed 's/   / /g;s/  / /g;s/^ *//' | sed 's/^/ /;s/ \(.\) \(.\) \(.\)$/ \1\2\3/')"
run render plain.qel g.png --rotate 90
is "--rotate turns the size" 810x1080 "$(png_size g.png)"
run render plain.qel h.bmp --rotate 90 --size 30x40
# 10..30 by 10..20 of 40 by 30, counter-clockwise: x' = y, y' = 40 - x.
is "--rotate turns the drawing" ff0000 "$(pixel h.bmp 10 10)"
is "as far as it reaches" ff0000 "$(pixel h.bmp 19 29)"
is "and no farther" c0c0c0 "$(pixel h.bmp 20 29)"
drawing blink.qel '<rect style="0x1" dr="1" fg="0xff00 glt" lnwid="0" crd="0 0 40 30"/>'
run render blink.qel i.bmp --size 40x30
is "a blinking colour shows" 00ff00 "$(pixel i.bmp 5 5)"
run render blink.qel i.bmp --size 40x30 --blink
is "--blink shows black, over an older picture" 000000 "$(pixel i.bmp 5 5)"
drawing press.qel '<rect style="0x1" dr="1" fg="0xff" lnwid="0" flag="0x4000" crd="10 10 30 20"/>'
run render press.qel j.bmp --size 40x30 --pressed
is "--pressed leaves the old place" c0c0c0 "$(pixel j.bmp 11 11)"
is "--pressed moves by two pixels" ff0000 "$(pixel j.bmp 31 21)"
printf '<qel width="0" height="9"/>' >flat.qel
wrong "a drawing without size" "give one with --size" render flat.qel k.png
printf '<qel width="1" height="99999"/>' >tall.qel
wrong "a drawing out of proportion" "give a size with --size" render tall.qel k.png
drawing words.qel '<text fg="0x0" crd="0 0 40 30">Ab</text>'
run render words.qel l.png --font "DejaVu Sans"
is "--font takes a face" 0 $status
wrong "a font name without end" "at most 31" render words.qel l.png --font xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx

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
cp text.qel 水厂/坏.qel
run check 水厂/坏.qel
contains "paths are printed as they were given" "水厂/坏.qel:1:1: " "$out"

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
printf '<?xml version="1.0" encoding="gb2312" ?>\r\n<qel id="\xcb\xae\xb3\xa7" type="2"><text id="a&quot;b" crd="0 0 9 9">\xb1\xc3\\</text></qel>' >cn.qel
run info cn.qel --json
is "info --json ends with 0" 0 $status
is "JSON is valid and decoded" "水厂 2 text a\"b 泵\\" "$(printf '%s' "$out" | python3 -c '
import json, sys
d = json.load(sys.stdin)
t = d["root"]["children"][0]
print(d["name"], d["kind"], t["tag"], t["id"], t["text"])')"
run info tree.qel --json
is "JSON names what the host can set" "color,draft,text 8321" "$(printf '%s' "$out" | python3 -c '
import json, sys
d = json.load(sys.stdin)
print(",".join(d["params"]), d["paramsMask"])')"

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
finds "decimal with a tail" 3:28 error "lnwid wants decimal" "$R lnwid=\"2px\"/>"
finds "hatch out of range" 3:25 error "dr is out of range, 0 to 37: '38'" "$R dr=\"38\"/>"
finds "negative hatch" 3:25 error "dr is out of range" "$R dr=\"-1\"/>"
finds "negative line width" 3:28 error "lnwid is out of range" "$R lnwid=\"-2\"/>"
finds "too few coordinates" 3:12 error "4 numbers, not 3: the element keeps 0 0 10 10" '<rect crd="1 2 3"/>'
finds "too many coordinates" 3:12 error "4 numbers, not 5: the rest is not read" '<rect crd="1 2 9 9 5"/>'
finds "coordinates that are no numbers" 3:14 error "no number in '5 5 3 x'" '<circle crd="5 5 3 x"/>'
finds "one point of a polygon" 3:15 error "the element keeps" '<polygon crd="1 2"/>'
finds "half a point" 3:15 error "stands alone" '<polygon crd="1 2 3 4 5"/>'
finds "17 points" 3:16 error "after the 16th" "<polyline crd=\"$(printf '1 2 %.0s' {1..17})\"/>"
finds "no coordinates" 3:1 warning "no crd: the element has 0 0 10 10" '<rect/>'
finds "text on a rectangle" 3:21 warning "a text has no effect on <rect>" "$R>hello</rect>"
finds "text of 256 bytes" 3:23 error "more than 255 bytes" "<text crd=\"0 0 40 30\">$(printf 'x%.0s' {1..256})</text>"
finds "text without a text" 3:1 warning "shows nothing" '<text crd="0 0 40 30"/>'
finds "identifier of 256 bytes" 3:25 error "more than 255 bytes" "$R id=\"$(printf 'x%.0s' {1..256})\"/>"
finds "identifier twice" 4:25 warning "another element has the identifier 'a'" "$R id=\"a\"/>" "$R id=\"a\"/>"
finds "two anchors" 3:27 warning "more than one anchor" "$R flag=\"0x18000\"/>"
finds "placement without anchor" 3:27 warning "have an effect with Keep left" "$R flag=\"0x100000\"/>"
finds "keep mode on a line" 3:27 warning "no effect on <line>" '<line crd="1 1 9 9" flag="0x8000"/>'
finds "empty rectangle" 3:1 warning "the rectangle is empty" '<rect crd="5 5 5 9"/>'
finds "outside of the drawing" 3:1 warning "outside of the drawing" '<rect crd="50 5 60 9"/>'
finds "value without quotes" 3:21 warning "no quotes" "$R dr=3/>"
finds "empty value" 3:21 warning "is empty" "$R dr=\"\"/>"
finds "attribute twice" 3:28 warning "a second time" "$R dr=\"1\" dr=\"2\"/>"
finds "text twice" 3:32 warning "replaces it" '<text crd="0 0 40 30">a<!-- -->b</text>'
broken() { # NAME LINE:COLUMN TEXT-PART BYTES
  printf "$4" >x.qel
  run check x.qel
  is "$1: status" 1 $status
  contains "$1" "x.qel:$2: " "$out"
  contains "$1: text" "$3" "$out"
}
broken "empty file" 1:1 "the drawing is empty" ''
broken "other root" 1:1 "not <qel>" '<rect/>'
broken "no element" 1:1 "" 'hello'
broken "end tag of another" 2:7 "does not match" '<qel>\n<g><g></h></qel>'
broken "attribute without value" 1:7 "start tag cannot be read" '<qel a/>'
broken "value not closed" 1:6 "not closed by its quote" '<qel id="x/>'
broken "end in a start tag" 1:13 "inside a start tag" '<qel id="x" '
broken "end after a name" 1:5 "right after an element" '<qel'
broken "slash" 1:5 "not followed by" '<qel/ >'
broken "end in content" 1:9 "inside an element" '<qel><g>'
broken "second root" 1:7 "becomes the root" '<qel/><g/>'
broken "text after the root" 1:7 "reading stops here" '<qel/>bye'
broken "comment not closed" 1:7 "not closed" '<qel/><!-- x'
broken "bytes after a zero" 1:7 "zero byte" '<qel/>\0<g/>'
broken "kind of the root" 1:12 "type is out of range, 0 to 2: '5'" '<qel type="5"/>'
broken "width of the root" 1:13 "width is out of range, 1 or more" '<qel width="0"/>'
broken "513 levels" 1:1542 "512 levels" "<qel>$(printf '<g>%.0s' {1..513})"
printf '<qel/>\r\n\0' >saved.qel
run check saved.qel
is "the zero byte that ends a saved drawing is fine" "0" "$status$out"
run check plain.qel missing.qel f.qel
is "the worst status of several drawings" 2 $status
contains "the others are checked all the same" "f.qel:" "$out"

printf '%d passed, %d failed\n' "$passed" "$failed"
[ "$failed" -eq 0 ]
