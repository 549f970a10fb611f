# Tests of what qel does with live values: render and animate with values, info and check of scales and
# meters. tests/tool_tests.sh sources this file after its own tests; run that.
# Where a picture is not worked out pixel by pixel, two ways that must agree are compared.

cat >gif.py <<'PY'
"""Reads a GIF strictly, decodes every frame, and tells about it:
   gif.py facts GIF          signature, size, loops, colours
   gif.py delays GIF         one number a frame
   gif.py rects GIF          left,top,width,height of each frame
   gif.py same GIF N BMP     whether the picture of frame N is that of the BMP: "same", or where not
   gif.py near GIF N BMP     how far a channel is off at most
   gif.py changed BMP BMP    left,top,width,height of where two pictures differ
   gif.py colours BMP        how many there are
   gif.py has BMP RRGGBB     whether there is a pixel of that colour"""
import struct
import sys


def unpack(min_bits, data, wanted):
    clear, end = 1 << min_bits, (1 << min_bits) + 1
    bits, table, out = min_bits + 1, None, bytearray()
    last, pending, count, ended = None, 0, 0, False
    for byte in data:
        assert not ended, "bytes after the end code"
        pending |= byte << count
        count += 8
        while count >= bits and not ended:
            code = pending & ((1 << bits) - 1)
            pending >>= bits
            count -= bits
            if code == clear:
                table = [bytes([n]) for n in range(clear)] + [b"", b""]
                bits, last = min_bits + 1, None
                continue
            assert table is not None, "no clear code at the start"
            if code == end:
                ended = True
                continue
            if code < len(table):
                text = table[code]
            else:
                assert code == len(table) and last is not None, "a code of no string"
                text = last + last[:1]
            out += text
            if last is not None and len(table) < 4096:
                table.append(last + text[:1])
                if len(table) == 1 << bits and bits < 12:
                    bits += 1
            last = text
    assert ended, "no end code"
    assert len(out) == wanted, "%d pixels instead of %d" % (len(out), wanted)
    return out


class Gif:
    def __init__(self, path):
        self.data = open(path, "rb").read()
        self.signature = self.data[:6].decode("latin-1")
        self.width, self.height, flags, _, _ = struct.unpack("<HHBBB", self.data[6:13])
        assert flags & 0x80, "no palette"
        self.colours = 2 << (flags & 7)
        at = 13 + 3 * self.colours
        self.palette = [tuple(self.data[n:n + 3]) for n in range(13, at, 3)]
        self.loops = None
        self.frames = []  # (delay, left, top, width, height, pixels after it)
        pixels, delay = [None] * (self.width * self.height), None
        while self.data[at] != 0x3B:
            kind, at = self.data[at], at + 1
            if kind == 0x21:
                label = self.data[at]
                blocks, at = self.blocks(at + 1)
                if label == 0xF9:
                    flags, delay, _ = struct.unpack("<BHB", blocks)
                    assert flags == 4, "a frame that is not left in place, or has transparency"
                elif label == 0xFF:
                    assert blocks[:11] == b"NETSCAPE2.0" and blocks[11] == 1 and not self.frames
                    self.loops = struct.unpack("<H", blocks[12:14])[0]
                else:
                    raise AssertionError("unknown extension")
                continue
            assert kind == 0x2C, "unknown block"
            left, top, width, height, flags = struct.unpack("<HHHHB", self.data[at:at + 9])
            assert flags == 0 and left + width <= self.width and top + height <= self.height
            packed, after = self.blocks(at + 10)
            places = unpack(self.data[at + 9], packed, width * height)
            for y in range(height):
                row = (top + y) * self.width + left
                pixels[row:row + width] = [self.palette[n] for n in places[y * width:(y + 1) * width]]
            self.frames.append((delay, left, top, width, height, list(pixels)))
            at, delay = after, None
        assert at == len(self.data) - 1, "bytes after the end"

    def blocks(self, at):
        out = b""
        while self.data[at]:
            out += self.data[at + 1:at + 1 + self.data[at]]
            at += 1 + self.data[at]
        return out, at + 1


def bitmap(path):
    data = open(path, "rb").read()
    start, = struct.unpack("<I", data[10:14])
    width, height, _, bits = struct.unpack("<iiHH", data[18:30])
    step, stride = bits // 8, (width * bits // 8 + 3) // 4 * 4
    rows = range(height - 1, -1, -1) if height > 0 else range(-height)
    pixels = []
    for row in rows:
        for x in range(width):
            n = start + row * stride + x * step
            pixels.append((data[n + 2], data[n + 1], data[n]))
    return width, abs(height), pixels


def compared(gif, number, path):
    gif = Gif(gif)
    width, height, pixels = bitmap(path)
    assert (gif.width, gif.height) == (width, height)
    return width, gif.frames[int(number)][5], pixels


def same(gif, number, path):
    width, got, wanted = compared(gif, number, path)
    for n, pair in enumerate(zip(got, wanted)):
        if pair[0] != pair[1]:
            return "%d,%d: %02x%02x%02x" % ((n % width, n // width) + pair[0]) + " not %02x%02x%02x" % pair[1]
    return "same"


def near(gif, number, path):
    _, got, wanted = compared(gif, number, path)
    return max(abs(a - b) for pair in zip(got, wanted) for a, b in zip(*pair))


def changed(one, two):
    width, height, a = bitmap(one)
    b = bitmap(two)[2]
    spots = [(n % width, n // width) for n in range(width * height) if a[n] != b[n]]
    xs, ys = [x for x, _ in spots], [y for _, y in spots]
    return "%d,%d,%d,%d" % (min(xs), min(ys), max(xs) - min(xs) + 1, max(ys) - min(ys) + 1)


def facts(path):
    gif = Gif(path)
    return "%s %dx%d loops %s frames %d" % (gif.signature, gif.width, gif.height, gif.loops, len(gif.frames))


print({"facts": facts, "same": same, "near": near, "changed": changed,
       "delays": lambda path: " ".join(str(frame[0]) for frame in Gif(path).frames),
       "rects": lambda path: " ".join("%d,%d,%d,%d" % frame[1:5] for frame in Gif(path).frames),
       "colours": lambda path: len(set(bitmap(path)[2])),
       "has": lambda path, colour: tuple(bytes.fromhex(colour)) in bitmap(path)[2]}[sys.argv[1]](*sys.argv[2:]))
PY
gif() { python3 gif.py "$@" 2>&1 | tail -n 1; }
shot() { # BMP DRAWING OPTION...: a picture of 40 by 30, one unit to a pixel
  local picture=$1 name=$2
  shift 2
  run render "$name" "$picture" --size 40x30 "$@"
  is "$picture is drawn: $*" "0 " "$status $err"
}
refuses() { # NAME MESSAGE-PART ARGUMENT...: no picture is there afterwards
  wrong "$@"
  is "$1: no picture" "" "$(find . -name 'no.*' -o -name '*.part')"
}

# ---- render: values of a scale
# The fill of a horizontal scale reaches from 10 to 10 + 20 * value / (max - min); it is white by default.
drawing scale.qel '<scale scid="7" sctype="horizdn" hidesc="1" pin="1" crd="10 10 30 20"/>'
reaches() { # NAME X OPTION...: the fill ends before column X
  local name=$1 x=$2
  shift 2
  shot v.bmp scale.qel "$@"
  # The pointer, on the column of the value, takes the upper half of the height alone.
  is "$name" "ffffff c0c0c0" "$(pixel v.bmp $((x - 1)) 18) $(pixel v.bmp "$x" 18)"
}
reaches "--value" 20 --value 7=5
reaches "a hexadecimal value" 22 --value 7=0x6
reaches "a hexadecimal id" 22 --value 0x7=6
# 10 + 20 * 2 / 7 = 15.7
reaches "the fill ends on a whole pixel" 15 --set 7.max=7 --value 7=2
reaches "a real value" 15 --value 7=2.5
reaches "a real value is not rounded to a whole one" 11 --value 7=.9
reaches "a negative value is the large number that the engine takes it for" 30 --value 7=-1
reaches "a setting by name" 15 --set 7.max=20 --value 7=5
reaches "a setting by number" 15 --set 7.4=20 --value 7=5
reaches "the value as a setting by name" 20 --set 7.value=5
reaches "the value as a setting by number" 20 --set 7.6=5
reaches "the value as a real setting" 15 --set 7.value=2.5
reaches "of two values the later one counts" 26 --value 7=2 --value 7=8
reaches "in whatever form they come" 14 --value 7=8 --set 7.value=2
reaches "a whole value after a real one" 20 --value 7=2.5 --value 7=5
reaches "a real value after a whole one" 15 --value 7=5 --value 7=2.5
shot v.bmp scale.qel --value 7=5 --param 2=0x0000ff --set 7.pin-color=0xff0000
is "--param sets the hatch's colour" ff0000 "$(pixel v.bmp 19 18)"
is "--set sets the pointer's colour" "0000ff 0000ff" "$(pixel v.bmp 20 10) $(pixel v.bmp 20 14)"
is "the pointer ends at half of the height" c0c0c0 "$(pixel v.bmp 20 15)"
shot v.bmp scale.qel --value 7=5 --param 1=1 --param 2=0x0000ff --param 3=0x00ff00
is "--param takes a hatch, and its second colour" 00ff00 "$(pixel v.bmp 19 18)"
shot v.bmp scale.qel --value 7=5 --param 2=0x0000ff --param 2=255
is "--param is carried out in order" ff0000 "$(pixel v.bmp 19 18)"
run render scale.qel v.bmp --size 30x40 --rotate 90 --value 7=5
is "values and a turn" "0 " "$status $err"

# ---- render: shapes that follow, and statuses
drawing follow.qel '<rect style="0x1" dr="1" fg="0x0" lnwid="0" flag="0x1" crd="0 0 20 30"/>' \
  '<status stx="2"><rect style="0x1" dr="1" fg="0xff00" lnwid="0" crd="20 0 30 30"/></status>' \
  '<status><rect style="0x1" dr="1" fg="0xff" lnwid="0" crd="30 0 40 30"/></status>'
shot v.bmp follow.qel --param 0=0xff0000
is "a shape takes a parameter that no frame answers for" 0000ff "$(pixel v.bmp 5 5)"
is "status 0 at first" "c0c0c0 ff0000" "$(pixel v.bmp 25 5) $(pixel v.bmp 35 5)"
shot v.bmp follow.qel --status 2
is "--status" "00ff00 c0c0c0" "$(pixel v.bmp 25 5) $(pixel v.bmp 35 5)"
shot v.bmp follow.qel --status 2 --status 0
is "--status again" "c0c0c0 ff0000" "$(pixel v.bmp 25 5) $(pixel v.bmp 35 5)"
for all in -1 0xffffffff 4294967295; do
  shot v.bmp follow.qel --status $all
  is "--status $all shows all" "00ff00 ff0000" "$(pixel v.bmp 25 5) $(pixel v.bmp 35 5)"
done

# ---- render: meters
drawing bar.qel '<rect style="0x1" dr="1" fg="0x203040" lnwid="0" crd="0 0 40 30"/>' \
  '<meter mtype="vert" crd="10 2 30 28"><rect style="0x1" lnwid="0" crd="10 2 30 28"/></meter>'
bars() { for n in "$@"; do run render bar.qel "bar$n.bmp" --size 200x150 --value "0=$n"; done; }
bars 2 3 5
differs "a meter's value shows" bar2.bmp bar5.bmp
run render bar.qel v.bmp --size 200x150 --set 0.6=5
same "selector 6 is the value" v.bmp bar5.bmp
run render bar.qel v.bmp --size 200x150 --value 0=5.0
same "a real value of a meter" v.bmp bar5.bmp
run render bar.qel v.bmp --size 200x150 --set 0.min=-7 --set 0.max=3 --value 0=-2
run render bar.qel w.bmp --size 200x150 --set 0.min=0xfffffff9 --set 0.max=3 --value 0=0xfffffffe
same "a negative number is its two's complement" v.bmp w.bmp
# The middle of -7 to 3 stands as high as that of 0 to 10; the numbers beside the bar are set apart.
same "a negative range" v.bmp bar5.bmp
run render bar.qel v.bmp --size 200x150 --set 0.use-base=1 --set 0.base=2.5 --value 0=5
is "a real base is taken" "0 " "$status $err"
run render bar.qel w.bmp --size 200x150 --set 0.use-base=1 --set 0.base=2 --value 0=5
same "and counts by its whole part" v.bmp w.bmp
differs "the base shows" v.bmp bar5.bmp
printf '<qel width="200" height="200"><meter mtype="sector" crd="100 100 90 0 0 200 200"/></qel>' >share.qel
run render share.qel s.bmp --size 200x200 --set 0.sectors=2 --value 1=10 --value 2=10
run render share.qel t.bmp --size 200x200 --set 0.sectors=2 --value 1=10 --value 2=50
differs "the ids from 1 on are sectors" s.bmp t.bmp
run render share.qel t.bmp --size 200x200 --set 32.sectors=2 --value 2=3 --value 1=3
same "equal shares are equal, and every id to 32 is that meter" s.bmp t.bmp
# A picture is of a gauge that has stood at its value: the engine colours the read-out by the value before.
printf '<qel width="200" height="200"><meter mtype="roundUpgrade" crd="100 100 90 0 0 200 200"/></qel>' >gauge.qel
gauge() { # VALUE: whether the read-out, beside a green band with blue ends, is red
  run render gauge.qel g.bmp --size 200x200 --set 0.max=100 --set 0.alarm=1 --set 0.low-limit=20 --set 0.high-limit=80 \
    --set 0.low-color=0xff0000 --set 0.high-color=0xff0000 --set 0.read-out=1 --value "0=$1"
  gif has g.bmp ff0000
}
is "a read-out is in the colour of its own value's zone" "True False True" "$(gauge 5) $(gauge 50) $(gauge 90)"

# ---- render: what is refused
drawing ids.qel '<meter mtid="5" crd="1 1 9 9"/>' '<meter mtid="40" crd="1 1 9 9"/>' '<scale scid="41" crd="1 1 9 9"/>' \
  '<meter upin="0" usc="0" crd="1 1 9 9"/>'
refuses "a setting without equals sign" "--set wants ID.SELECTOR=VALUE, not '7.max'" render scale.qel no.png --set 7.max
refuses "a setting without selector" "--set wants ID.SELECTOR=VALUE, not '7=5'" render scale.qel no.png --set 7=5
refuses "a setting without value" "--set wants ID.SELECTOR=VALUE, not '7.max='" render scale.qel no.png --set 7.max=
refuses "a value without equals sign" "--value wants ID=VALUE, not '7'" render scale.qel no.png --value 7
refuses "a value without id" "--value wants ID=VALUE, not '=7'" render scale.qel no.png --value =7
refuses "a parameter without index" "--param wants INDEX=VALUE, not '=7'" render scale.qel no.png --param =7
refuses "a selector that is none, with a hint" "--set 7.maxx=5: unknown selector 'maxx'; did you mean 'max'? (known are 0 to 33: pin-color, scale-color, ticks," render scale.qel no.png --set 7.maxx=5
refuses "a selector in capitals" "did you mean 'alarm'?" render scale.qel no.png --set 7.ALARM=1
refuses "a longer word" "did you mean 'max'?" render scale.qel no.png --set 7.maximum=1
refuses "a word that is like none" "unknown selector 'colour' (known are" render scale.qel no.png --set 7.colour=1
refuses "selector 34" "--set 7.34=1: unknown selector '34'" render scale.qel no.png --set 7.34=1
refuses "a negative id" "--value -7=1: an id is a whole number" render scale.qel no.png --value -7=1
refuses "an id of words" "--set pump.max=1: an id is a whole number" render scale.qel no.png --set pump.max=1
for number in 1e3 0x 0xg -0x5 +5 5, '5 ' ' 5' -- - . -. 1.2.3 4294967296 -2147483649 0x100000000 \
  1000000000000000000000000000000000000000.0 99999999999999999999999999999999999999999; do
  refuses "the value '$number'" "is no number of 32 bits" render scale.qel no.png --value "7=$number"
done
reaches "the largest whole number" 30 --value 7=4294967295
reaches "the smallest" 30 --value 7=-2147483648
refuses "a point in another setting" "'max' takes whole numbers only; a point is for value and base" render scale.qel no.png --set 7.max=1.5
refuses "a point in a parameter" "--param 0=1.5: wanted is a whole number" render scale.qel no.png --param 0=1.5
refuses "a point in a status" "--status 1.5: wanted is a whole number" render follow.qel no.png --status 1.5
refuses "a range" "a range is for 'qel animate'" render scale.qel no.png --value 7=1..5
refuses "parameter 4" "--param 4=1: there is no such parameter; they are 0 to 3" render scale.qel no.png --param 4=1
refuses "a hatch that there is not" "--param 1=38: a hatch style is 0 to 37" render scale.qel no.png --param 1=38
refuses "a status without status elements" "--status 1: the drawing has no status element" render scale.qel no.png --status 1
refuses "an id that nothing has" "--value 8=1: no scale or meter of the drawing has this id; scales: 7" render scale.qel no.png --value 8=1
refuses "any id of a drawing without scales and meters" "--set 0.max=1: no scale or meter of the drawing has this id" render plain.qel no.png --set 0.max=1
refuses "meters and scales are named" "has this id; scales: 41; meters: 0, 40" render ids.qel no.png --value 50=1
drawing pins.qel '<meter mtid="5" crd="1 1 9 9"/>'
refuses "a meter with the id of a pin" "--set 5.max=1: the meter with mtid 5 cannot be reached" render pins.qel no.png --set 5.max=1
refuses "a selector of meters on a scale" "--set 41.alarm=1: a scale does not know the selector 'alarm'" render ids.qel no.png --set 41.alarm=1
refuses "a selector of scales on a meter" "--set 40.start-code=1: a meter does not know the selector 'start-code'" render ids.qel no.png --set 40.start-code=1
refuses "a base on a scale" "--set 41.base=1.5: a scale does not know the selector 'base'" render ids.qel no.png --set 41.base=1.5
refuses "a value of a meter above 32" "--value 40=1: the value of a meter is set by the ids 0 to 32 alone" render ids.qel no.png --value 40=1
refuses "no ticks" "--set 40.ticks=0: 'ticks' takes 1 or more" render ids.qel no.png --set 40.ticks=0
refuses "no divisions" "--set 41.ticks=0: 'ticks' takes 1 or more" render ids.qel no.png --set 41.ticks=0
refuses "a scale that the meter has not" "--set 0.scale=1: the meter has no scale to show" render ids.qel no.png --set 0.scale=1
refuses "a pointer that the meter has not" "--set 0.pin=1: the meter has no pointer to show" render ids.qel no.png --set 0.pin=1
refuses "a full circle of 2" "'full-circle' takes 0 or 1" render ids.qel no.png --set 0.full-circle=2
refuses "the full circle that there is" "and not what it is already" render ids.qel no.png --set 0.full-circle=1 --set 0.full-circle=1
refuses "the first of two refused ones is told" "--value 50=1" render ids.qel no.png --value 50=1 --value 51=1
cp plain.qel old.png
run render ids.qel old.png --value 50=1
same "a refused value leaves the older picture" plain.qel old.png

# ---- render: the time of clocks
printf '<qel width="200" height="200"><meter upin="1" mtype="clock" crd="100 100 90 10 10 190 190"/></qel>' >clock.qel
clock() { # TIME: draws at that time, without marks and numbers
  run render clock.qel clock.bmp --size 200x200 --set 0.scale=0 --set 0.labels=0 --time "$1"
  is "a clock at $1" "0 " "$status $err"
}
hands() { # up, right, down, left: how far the longest hand there reaches, of 45, 60 and 76 pixels
  local x y r reach all=
  for direction in "0 -1" "1 0" "0 1" "-1 0"; do
    read -r x y <<<"$direction"
    reach=0
    for r in 45 60 76; do
      [ "$(pixel clock.bmp $((100 + x * r)) $((100 + y * r)))" = c0c0c0 ] || reach=$r
    done
    all="$all $reach"
  done
  echo "${all# }"
}
# Of 90 pixels the hands reach 60, 80 and 90 parts of a hundred: 54, 72, 81.
clock 06:00:00
is "at six the hour hand points down; the others up" "76 0 45 0" "$(hands)"
clock 03:00:00
is "at three to the right" "76 45 0 0" "$(hands)"
clock 21:00:00
is "at nine in the evening to the left" "76 0 0 45" "$(hands)"
# At half past three the hour hand stands between two hours.
clock 03:30:00
is "at half past the minute hand points down" "76 0 60 0" "$(hands)"
clock 15:45:00
is "at a quarter to it points to the left" "76 0 0 60" "$(hands)"
clock 12:00:30
is "the second hand" 76 "$(hands | cut -d' ' -f3)"
clock 23:59:59
cp clock.bmp late.bmp
clock 00:00:00
differs "one second makes another picture" clock.bmp late.bmp
clock 04:10:20
cp clock.bmp here.bmp
TZ=Asia/Kolkata clock 04:10:20
same "hour, minute and second agree in a time zone of half hours" here.bmp clock.bmp
for time in 24:00:00 12:60:00 12:00:60 1:02:03 12:00 12:00:00pm 12-00-00 -1:00:00 "" "12:00: 0" noon; do
  refuses "the time '$time'" "--time wants HH:MM:SS, 00:00:00 to 23:59:59, not '$time'" render clock.qel no.png --time "$time"
done
refuses "two times" "--time is given twice" render clock.qel no.png --time 12:00:00 --time 12:00:00
run render plain.qel v.png --time 12:00:00
is "a time for a drawing without a clock" "0 " "$status $err"

# ---- animate: a drawing that is drawn in full every time
# It covers the whole picture, so every frame is what render draws with those values.
drawing panel.qel '<rect style="0x1" dr="1" fg="0x203040" lnwid="0" crd="0 0 40 30"/>' \
  '<scale scid="7" sctype="horizdn" pin="1" crd="4 3 36 13"/>' '<scale scid="8" sctype="horizup" crd="4 17 36 27"/>'
frames_agree() { # NAME GIF DRAWING "OPTIONS OF FRAME 0" "OPTIONS OF FRAME 1"...; the pictures stay as f0.bmp...
  local name=$1 picture=$2 drawing=$3 n=0
  shift 3
  for options in "$@"; do
    run render "$drawing" "f$n.bmp" --size "$size" $options
    is "$name: frame $n is render's picture of $options" same "$(gif same "$picture" $n "f$n.bmp")"
    n=$((n + 1))
  done
}
size=40x30
run animate panel.qel m.gif --size 40x30 --set 7.max=8 --param 2=0x0080ff --value 7=0..8 --value 8=10..2 --frames 5
is "animate ends with 0" 0 $status
is "animate says nothing" "" "$out$err"
is "a GIF that loops for ever, in the size asked for" "GIF89a 40x30 loops 0 frames 5" "$(gif facts m.gif)"
is "ten frames a second" "10 10 10 10 10" "$(gif delays m.gif)"
o="--set 7.max=8 --param 2=0x0080ff"
frames_agree "two moving values" m.gif panel.qel "$o --value 7=0 --value 8=10" "$o --value 7=2 --value 8=8" \
  "$o --value 7=4 --value 8=6" "$o --value 7=6 --value 8=4" "$o --value 7=8 --value 8=2"
differs "the first picture is not the last" f0.bmp f4.bmp
is "only the rectangle that changed is stored" \
  "0,0,40,30 $(for n in 0 1 2 3; do gif changed f$n.bmp f$((n + 1)).bmp; done | paste -sd' ')" "$(gif rects m.gif)"
run animate panel.qel m.gif --size 40x30 --value 7=0.0..1 --value 8=3.5 --frames 3
frames_agree "real values" m.gif panel.qel "--value 8=3.5 --value 7=0.0" "--value 8=3.5 --value 7=0.5" "--value 8=3.5 --value 7=1.0"
run animate panel.qel m.gif --size 40x30 --value 7=10..0.5 --frames 2
frames_agree "a point at the other end" m.gif panel.qel "--value 7=10.0" "--value 7=0.5"
# Halves go away from zero: 0, 0.5, 1, 1.5, 2. Five frames in 5/3 seconds begin at 0, 33, 66, 100 and 133 hundredths.
run animate panel.qel m.gif --size 40x30 --value 7=0..2 --frames 5 --fps 3
frames_agree "rounded values" m.gif panel.qel "--value 7=0" "--value 7=1" "--value 7=2"
is "equal frames are one, and the times add up" "33 67 66" "$(gif delays m.gif)"
run animate panel.qel m.gif --size 40x30 --value 7=5..5
is "frames that are all equal" "GIF89a 40x30 loops 0 frames 1" "$(gif facts m.gif)"
is "three seconds by default" 300 "$(gif delays m.gif)"
run animate panel.qel m.gif --size 40x30 --value 7=5..5 --frames 1000 --fps 1
is "no time is longer than the format can say" "65500 34500" "$(gif delays m.gif)"
is "a frame that changes nothing is one pixel" "0,0,40,30 0,0,1,1" "$(gif rects m.gif)"
run animate panel.qel m.gif --value 7=0..9 --frames 2 --fps 50
is "the size is that of render" "GIF89a 800x600 loops 0 frames 2" "$(gif facts m.gif)"
is "fifty a second" "2 2" "$(gif delays m.gif)"
drawing turned.qel '<rect style="0x1" dr="1" fg="0x3040 glt" lnwid="0" crd="0 0 40 30"/>' \
  '<rect style="0x1" dr="1" fg="0xff00" lnwid="0" flag="0x4000" crd="1 1 9 9"/>' '<text fg="0xffffff" crd="8 20 38 30">abc</text>' \
  '<scale scid="7" crd="20 2 36 20"/>' '<meter mtid="40" upin="1" mtype="clock" crd="12 10 8 0 0 0 0"/>'
turned() { run "$1" turned.qel "$2" --size 60x80 --rotate 90 --blink --pressed --font "DejaVu Sans" --background 123456 --time 10:08:36 --set 40.labels=0 "${@:3}"; }
turned animate m.gif --value 7=1..9 --frames 3
for n in 0 1 2; do
  turned render f$n.bmp --value 7=$((1 + 4 * n))
  is "all options of render: frame $n" same "$(gif same m.gif $n f$n.bmp)"
done
run animate turned.qel plain.gif --size 60x80 --value 7=1..9 --frames 3
differs "and they have an effect" plain.gif m.gif
run animate follow.qel m.gif --size 40x30 --status 2 --value 7=0..1
is "a value that nothing takes" "2 qel: --value 7=0..1: no scale or meter of the drawing has this id" "$status $err"

# ---- animate: partial redraws
printf '<qel width="120" height="120"><rect style="0x1" dr="1" fg="0x203040" lnwid="0" crd="0 0 120 120"/>
<meter mtype="vert" crd="20 10 100 110"><rect style="0x1" lnwid="0" crd="20 10 100 110"/></meter></qel>' >partial.qel
size=120x120
run animate partial.qel m.gif --size 120x120 --set 0.labels=0 --value 0=-3..3 --set 0.min=-5 --set 0.max=5 --frames 7
o="--set 0.labels=0 --set 0.min=-5 --set 0.max=5"
frames_agree "a bar" m.gif partial.qel "$o --value 0=-3" "$o --value 0=-2" "$o --value 0=-1" "$o --value 0=0" \
  "$o --value 0=1" "$o --value 0=2" "$o --value 0=3"
# What stands over the bar in the drawing is not drawn again, and the bar is: after the first frame it is gone.
sed 's|</qel>|<rect style="0x1" dr="1" fg="0xff00ff" lnwid="0" crd="0 40 120 50"/></qel>|' partial.qel >over.qel
run animate over.qel m.gif --size 120x120 $o --value 0=-3..3 --frames 2
run render over.qel f0.bmp --size 120x120 $o --value 0=-3
run render over.qel f1.bmp --size 120x120 $o --value 0=3
is "the first frame is drawn in full" same "$(gif same m.gif 0 f0.bmp)"
contains "the others are partial redraws" "not ff00ff" "$(gif same m.gif 1 f1.bmp)"

# ---- animate: more colours than a GIF has
printf '<qel width="400" height="300"><rect style="0x1" dr="10" fg="0xff" bg="0xff00" lnwid="0" crd="0 0 400 100"/>
<rect style="0x1" dr="10" fg="0xff0000" bg="0xffff" lnwid="0" crd="0 100 400 200"/>
<rect style="0x1" dr="12" fg="0xffffff" bg="0x0" lnwid="0" crd="0 200 400 300"/>
<scale scid="7" crd="100 100 200 290"/></qel>' >many.qel
run animate many.qel m.gif --size 400x300 --value 7=1..9 --frames 3
for n in 0 1 2; do run render many.qel f$n.bmp --size 400x300 --value 7=$((1 + 4 * n)); done
is "the drawing has more than 256 colours" yes "$([ "$(gif colours f0.bmp)" -gt 256 ] && echo yes)"
# Three runs of at most 256 steps shared by 256 colours: a colour stands for about three neighbours.
for n in 0 1 2; do
  is "frame $n has colours near to those" yes "$([ "$(gif near m.gif $n f$n.bmp)" -le 12 ] && echo yes)"
done

# ---- animate: refusals and progress
rm -f no.gif
refuses "animate without a picture" "animate wants a drawing and a picture: qel animate IN OUT" animate panel.qel
refuses "animate with three names" "animate takes one drawing and one picture" animate panel.qel no.gif no2.gif --value 7=0..1
refuses "a picture of another kind" "'no.png' needs the extension .gif" animate panel.qel no.png --value 7=0..1
refuses "nothing that moves" "animate wants a value that moves" animate panel.qel no.gif --value 7=5
refuses "animate: an unknown option" "unknown option '--speed'" animate panel.qel no.gif --value 7=0..1 --speed 3
for n in 0 1 1001 -5 ten 3.5 ""; do
  refuses "--frames $n" "--frames wants a whole number, 2 to 1000, not '$n'" animate panel.qel no.gif --value 7=0..1 --frames "$n"
done
for n in 0 51 -1 fast; do
  refuses "--fps $n" "--fps wants a whole number, 1 to 50, not '$n'" animate panel.qel no.gif --value 7=0..1 --fps "$n"
done
refuses "render has no --frames" "unknown option '--frames'" render panel.qel no.png --frames 5
for range in .. 1.. ..5 a..5 1..b 0..4294967296 1..2..3; do
  refuses "the range '$range'" "is no number of 32 bits" animate panel.qel no.gif --value "7=$range"
done
refuses "a range without id" "--value wants ID=FROM..TO or ID=VALUE, not '0..5'" animate panel.qel no.gif --value 0..5
refuses "a range for a setting" "is no number of 32 bits" animate panel.qel no.gif --set 7.max=1..5 --value 7=0..1
refuses "a setting that is refused" "--set 7.alarm=1: a scale does not know" animate panel.qel no.gif --set 7.alarm=1 --value 7=0..1
refuses "a value above 32 that moves" "--value 40=1..2: the value of a meter is set by the ids 0 to 32" animate ids.qel no.gif --value 40=1..2
printf '<qel width="0" height="9"/>' >flat.qel
refuses "a drawing without size" "give one with --size" animate flat.qel no.gif --value 7=0..1
refuses "a GIF in a folder that is not there" "cannot write" animate panel.qel nowhere/no.gif --value 7=0..1
cp plain.qel old.gif
run animate panel.qel old.gif --value 9=0..1
same "a refused value leaves the older animation" plain.qel old.gif
run animate panel.qel old.gif --value 7=0..1 --size 40x30 --frames 2
is "a good one replaces it" "GIF89a 40x30 loops 0 frames 2" "$(gif facts old.gif)"
is "nothing unfinished is left behind" "" "$(find . -name '*.part*')"
cat >terminal.sh <<SH
$QEL animate panel.qel t.gif --size 40x30 --value 7=0..9 --frames 12
SH
# What a terminal is sent besides the texts are control sequences of its own.
shown=$(script -qec "bash terminal.sh" /dev/null </dev/null | sed 's/\x1b\[[0-9;?]*[A-Za-z]//g' | tr '\r' '\n')
contains "a terminal shows how far it is" "frame 7 of 12" "$shown"
contains "to the end" "frame 12 of 12" "$shown"
is "and nothing at last" "" "$(printf '%s' "$shown" | tail -n 1 | tr -d ' ')"

# ---- info: what the host can set
drawing host.qel '<status stx="3"><rect crd="1 1 9 9"/></status>' '<status/>' \
  '<meter upin="1" mtype="round" crd="20 15 10 5 5 35 25"/>' '<meter mtid="5" crd="1 1 9 9"/>' \
  '<meter mtid="40" usc="0" crd="1 1 9 9"/>' '<meter mtype="pie" crd="20 15 10 5 5 35 25"/>' \
  '<scale scid="41" crd="1 1 9 9"/>' '<scale scid="41" crd="1 1 9 9"/>' \
  '<scale scid="42" style="0x0" sctype="round" hidesc="1" crd="9 9 8 6 2"/>' \
  '<g><scale scid="43" style="0x0" sctype="Arc" pin="1" crd="9 9 8 6 2 0 90"/></g>' \
  '<meter mtid="50" imin="0" crd="1 1 9 9"/>' '<meter mtid="60" upin="1" mtype="clock" crd="9 9 8 1 1 17 17"/>'
run info host.qel
is "info of a drawing with live elements" "0 " "$status $err"
is "statuses, meters and scales in words" 'status numbers: 0, 3
meter 0, round: value shown by the pointer
meter 5, vert: not reached: the ids 1 to 32 are the values of a meter with mtid 0
meter 40, vert: takes settings but no value; no axis and ticks (usc is 0)
meter 0, pie: not reached: a meter before it has the same id
meter 0, vert: imin and imax are no range: drawn with the defaults; not reached: a meter before it has the same id
meter 60, clock: shows the time
scale 41, vrtright: value shown by fill; no pointer
scale 41, vrtright: not reached: a scale before it has the same id
scale 42, round: value not shown: neither fill (style) nor pointer (pin); marks hidden
scale 43, Arc: value shown by pointer; no fill' "$(printf '%s\n' "$out" | grep -E '^(status numbers|meter|scale)')"
contains "the settings of a scale" 'scale 41, vrtright: value shown by fill; no pointer
    pin-color 0xaaaaaa, scale-color 0xaaaaaa, ticks 10, max 10, min 0, value 0
scale' "$out"
contains "a round one has a start" 'ticks 10, start-code 0, max 10' "$out"
contains "the settings of a meter" 'meter 0, round: value shown by the pointer
    pin-color 0xaaaaaa, scale-color 0xaaaaaa, ticks 10, max 10, min 0, value 0, face-color 0x000000,
    scale 1, pin 1, labels 1,' "$out"
contains "the tree follows" '
qel  ' "$out"
is "no line is longer than a hundred" "" "$(printf '%s\n' "$out" | grep '^    .*,' | grep -E '.{101}')"
contains "values are named in the mask" "values of meters and scales" "$out"
shows() { # NAME TEXT BODY...: the line of the last meter or scale
  local name=$1 text=$2
  shift 2
  drawing one.qel "$@"
  run info one.qel
  is "$name" "$text" "$(printf '%s\n' "$out" | grep -E '^(meter|scale) ' | tail -n 1)"
}
shows "a bar" "meter 0, horz3d: value shown by the bar" '<meter mtype="horz3d" crd="1 1 9 9"><g><circle crd="5 5 4"/></g></meter>'
shows "a bar without a figure" "meter 0, vert: value not shown: no figure in it for the bar" '<meter crd="1 1 9 9"><text crd="1 1 9 9">a</text></meter>'
shows "a pie" "meter 0, pieUpgrade: value shown by the filled sector" '<meter mtype="pieUpgrade" crd="9 9 8 1 1 17 17 0 90"/>'
shows "shares" "meter 0, sector: the values of the ids 1 to 32 shown as sectors, as many as 'sectors' says" '<meter mtype="sector" crd="9 9 8 1 1 17 17"/>'
shows "a gauge without pointer" "meter 0, round: value not shown: no pointer (upin is 0)" '<meter mtype="round" crd="9 9 8 1 1 17 17"/>'
shows "a gauge with a read-out" "meter 0, roundUpgrade: value not shown until 'read-out' is 1: no pointer (upin is 0)" '<meter mtype="roundUpgrade" crd="9 9 8 1 1 17 17"/>'
shows "a clock without hands" "meter 0, clock: no hands (upin is 0)" '<meter mtype="clock" crd="9 9 8 1 1 17 17"/>'
shows "a scale that shares its id" "scale 5, vrtright: value shown by fill; no pointer; the meter with mtid 0 takes the same sets" '<meter crd="1 1 9 9"/>' '<scale scid="5" crd="1 1 9 9"/>'
contains "what the meter answers is marked" "pin-color 0xaaaaaa (the meter's), scale-color 0xaaaaaa (the meter's), ticks 10, max 10," "$out"
contains "the value of a pin, too" "value 0 (the meter's)" "$out"
shows "a scale and a meter of one id above 32" "scale 40, vrtright: value shown by fill; no pointer; the meter with mtid 40 takes the same sets" '<meter mtid="40" crd="1 1 9 9"/>' '<scale scid="40" crd="1 1 9 9"/>'
contains "what the scale answers is marked" "ticks 10 (the scale's), max 10 (the scale's), min 0 (the scale's)," "$(printf '%s' "$out" | tr -s ' \n' ' ')"
run info plain.qel
is "a drawing without live elements has no such lines" "" "$(printf '%s\n' "$out" | grep -E '^(status numbers|meter|scale)')"
run info host.qel --json
valid_json "a drawing with live elements" "$out"
contains "JSON: status numbers" '"statusNumbers": [0, 3],' "$out"
contains "JSON: a meter" '{"id": 0, "type": 4, "typeName": "round", "reached": true, "valueShown": true, "note": "value shown by the pointer", "settings": [{"selector": 0, "name": "pin-color", "value": 11184810}, ' "$out"
contains "JSON: a value has a real form" '{"selector": 6, "name": "value", "value": 0, "real": 0}' "$out"
contains "JSON: one that is not reached" '{"id": 5, "type": 0, "typeName": "vert", "reached": false, "valueShown": false, ' "$out"
run info plain.qel --json
contains "JSON: lists without elements" '"statusNumbers": [],
"meters": [],
"scales": [],' "$out"
# Which selectors each type of meter follows.
for type in vert vert3d horz horz3d round Arc pie clock roundUpgrade pieUpgrade sector; do
  drawing one.qel "<meter mtype=\"$type\" crd=\"20 15 10 5 5 35 25 0 90\"/>"
  run info one.qel --json
  is "the selectors of $type" "$(python3 - $type <<'PY'
import sys
TYPES = "vert vert3d horz horz3d round Arc pie clock roundUpgrade pieUpgrade sector".split()
number = TYPES.index(sys.argv[1])
ALL = range(11)
FOLLOWED = {0: range(10), 1: range(10), 7: range(10), 15: (4, 7, 8, 10), 16: set(ALL) - {6, 9}, 20: (4, 5, 8), 21: (4, 5, 8),
            26: (4, 5, 8), 27: (7, 8), 28: (7, 8, 9), 29: (1, 3), 30: (1, 3, 8, 10), 31: (1, 3), 32: (10,), 3: ()}
print([n for n in range(34) if number in FOLLOWED.get(n, ALL)])
PY
)" "$(printf '%s' "$out" | python3 -c 'import json, sys
print([row["selector"] for row in json.load(sys.stdin)["meters"][0]["settings"]])')"
done

# ---- check: scales and meters
drawing f.qel '<meter mtype="round" upin="1" imin="5" imax="5" flag="0x200000" crd="20 15 10 5 5 35 25"><circle crd="20 15 10"/></meter>' \
  '<meter mtid="3000000000" mtype="Arc" usc="0" crd="20 15 10 5 5 35 25 30 330"/>' '<meter mtid="33" mtype="horz3d" flag="0x1000000" crd="1 1 9 9"><g><rect crd="1 1 9 9"/></g></meter>' \
  '<scale scid="41" crd="1 1 9 9"/>' '<scale scid="42" sctype="round" min="5" max="5" pin="1" hidesc="1" style="0x0" crd="9 9 8 6 2"/>' \
  '<scale scid="43" sctype="Arc" crd="9 9 8 6 2 -30 210"/>'
run check f.qel
is "scales and meters that are fine" "0 " "$status $out$err"
M='<meter crd="1 1 9 9"'
E='<rect crd="1 1 9 9"/></meter>'
S='<scale crd="1 1 9 9"'
finds "a type of meter in other letters" 3:15 error "mtype wants a type of meter, not 'arc'; it is read as vert; did you mean 'Arc'?" '<meter mtype="arc" crd="1 1 9 9">'"$E"
finds "a type of meter that is like none" 3:15 error "not 'gauge'; it is read as vert" '<meter mtype="gauge" crd="1 1 9 9">'"$E"
finds "a type of scale" 3:16 error "sctype wants a type of scale, not 'horizdown'; it is read as vrtleft; did you mean 'horizdn'?" '<scale sctype="horizdown" crd="1 1 9 9"/>'
finds "an attribute of scales on a meter" 3:22 warning "'scid' has no meaning on <meter>" "$M scid=\"3\">$E"
finds "an attribute of meters on a scale" 3:22 warning "'mtid' has no meaning on <scale>" "$S mtid=\"3\"/>"
finds "a switch of 2" 3:30 error "hidesc is out of range, 0 to 1: '2'" "$S hidesc=\"2\"/>"
finds "an id of words" 3:28 error "mtid wants decimal, not 'pump'" "$M mtid=\"pump\">$E"
finds "a negative id" 3:28 error "does not fit 32 bits; it is read as 4294967295" "$M mtid=\"-1\">$E"
finds "an id beyond 32 bits" 3:28 error "the number '4294967296' does not fit 32 bits" "$S scid=\"4294967296\"/>"
finds "coordinates of a bar" 3:13 error "4 numbers, not 7: the rest is not read" '<meter crd="20 15 30 25 5 35 25">'"$E"
finds "coordinates of a dial" 3:27 error "crd wants cx cy r left top right bottom, 7 numbers, not 4: the element keeps 0 0 10 10 0 0 0" '<meter mtype="round" crd="1 1 9 9"/>'
finds "six coordinates of an arc" 3:25 error "7 or 9 numbers, not 6: the element keeps 0 0 10 10" '<meter mtype="Arc" crd="20 15 10 5 5 35"/>'
finds "ten coordinates of an arc" 3:25 error "7 or 9 numbers, not 10: the rest is not read" '<meter mtype="Arc" crd="20 15 10 5 5 35 25 0 90 5"/>'
finds "eight coordinates of an arc" 3:25 error "7 or 9 numbers, not 8: the end angle is 360" '<meter mtype="Arc" crd="20 15 10 5 5 35 25 90"/>'
finds "an arc without angles" 3:1 warning "start and end of the arc lie one above the other" '<meter mtype="Arc" crd="20 15 10 5 5 35 25"/>'
finds "an arc with ends one above the other" 3:1 warning "nothing of the dial is drawn" '<meter mtype="pie" crd="20 15 10 5 5 35 25 45 135"/>'
finds "an arc without layout" 3:1 warning "the layout rectangle is empty" '<meter mtype="pie" crd="20 15 10 5 5 5 25 0 90"/>'
finds "a negative radius of a dial" 3:27 error "the radius -9 is negative" '<meter mtype="round" crd="20 15 -9 5 5 35 25"/>'
finds "a dial without radius" 3:1 warning "the radius is 0: nothing of the dial is drawn" '<meter mtype="clock" crd="20 15 0 5 5 35 25"/>'
finds "a bar without width" 3:1 warning "the rectangle is empty: no bar is drawn" '<meter crd="5 1 5 9">'"$E"
finds "a dial outside" 3:1 warning "outside of the drawing" '<meter mtype="round" crd="120 15 10 105 5 135 25"/>'
finds "coordinates of a round scale" 3:28 error "5 numbers, not 4: the element keeps 5 5 5 3 2" '<scale sctype="round" crd="5 5 4 3"/>'
finds "coordinates of an arc scale" 3:26 error "7 numbers, not 5: the element keeps 5 5 5 3 2 0 90" '<scale sctype="Arc" crd="5 5 4 3 2"/>'
finds "a round scale without radius" 3:1 warning "the tick radius is below 1: nothing is drawn" '<scale sctype="round" crd="5 5 0 3 2"/>'
finds "a scale without height" 3:1 warning "the rectangle is empty: nothing is drawn" '<scale crd="1 5 9 5"/>'
finds "no coordinates of a scale" 3:1 warning "no crd: the element has 5 5 5 3 2" '<scale sctype="round"/>'
finds "no coordinates of a meter" 3:1 warning "no crd: the element has 0 0 10 10" "<meter>$E"
finds "min above max" 3:1 warning "min is above max: the number of divisions is always max" "$S min=\"50\" max=\"20\"/>"
finds "min above the usual max" 3:1 warning "min is above max" "$S min=\"101\"/>"
finds "imin above imax" 3:1 error "imin 9 and imax 8 are no range from 1 up: the element is drawn with its defaults, and saving drops both" "$M imin=\"9\" imax=\"8\">$E"
finds "imin above the usual imax" 3:1 error "imin 200 and imax 100 are no range" "$M imin=\"200\">$E"
drawing f.qel "$M imin=\"0\" imax=\"50\">$E"
run check f.qel
is "imin below 1: the cause and what follows" "f.qel:3:1: error: imin 0 and imax 50 are no range from 1 up: the element is drawn with its defaults, and saving drops imin
f.qel:3:28: error: imin is out of range, 1 or more: '0'" "$out"
finds "a bar without a figure" 3:1 warning "no figure in the <meter>: a bar is painted within those alone" '<meter crd="1 1 9 9"><line crd="1 1 9 9"/></meter>'
finds "elements in a scale" 3:22 warning "elements in a <scale> are not drawn" "$S>$R/></scale>"
finds "a meter with the id of a pin" 3:28 warning "the host does not reach the meter with mtid 5: the ids 1 to 32 are the values of the meter with mtid 0" "$M mtid=\"5\">$E"
finds "a second meter of an id" 4:28 warning "a meter before has the mtid 40 already: the host does not reach this one" "$M mtid=\"40\">$E" "$M mtid=\"40\">$E"
finds "two meters without id" 4:1 warning "a meter before has the mtid 0 already" "$M>$E" "$M>$E"
finds "a second scale of an id" 4:28 warning "a scale before has the scid 40 already" "$S scid=\"40\"/>" "$S scid=\"40\"/>"
finds "a scale that shares with pins" 3:28 warning "what the host sets of the scale with scid 5 goes to the meter with mtid 0 as well" "$S scid=\"5\"/>" "$M>$E"
finds "a scale that shares with a meter" 4:28 warning "goes to the meter with mtid 40 as well" "$M mtid=\"40\">$E" "$S scid=\"40\"/>"
finds "a keep mode of a meter with two anchors" 3:28 warning "more than one anchor" "$M flag=\"0x9000\">$E"
run check "$root"/examples/*.qel
is "the examples are clean" "0 " "$status $out"
