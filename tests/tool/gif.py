"""Reads an animated GIF: its pictures with Pillow, which forgives much, and beforehand the rules that a strict
reader holds it to."""
import struct

from PIL import Image, ImageChops


def sub_blocks(data, at):
    """The bytes of a chain of blocks, and the place behind its end."""
    out = b""
    while data[at]:
        out += data[at + 1:at + 1 + data[at]]
        at += 1 + data[at]
    return out, at + 1


def packed_pixels(min_bits, data):
    """How many pixels a frame's packed bytes hold. Only the lengths of the strings are kept."""
    clear, end = 1 << min_bits, (1 << min_bits) + 1
    bits, lengths, last, total, pending, count, ended = min_bits + 1, None, None, 0, 0, 0, False
    for byte in data:
        assert not ended, "bytes after the end code"
        pending |= byte << count
        count += 8
        while count >= bits and not ended:
            code = pending & ((1 << bits) - 1)
            pending >>= bits
            count -= bits
            if code == clear:
                bits, lengths, last = min_bits + 1, [1] * clear + [0, 0], None
                continue
            assert lengths is not None, "no clear code at the start"
            if code == end:
                ended = True
                continue
            assert code < len(lengths) or (code == len(lengths) and last is not None), "a code of no string"
            total += lengths[code] if code < len(lengths) else lengths[last] + 1
            if last is not None and len(lengths) < 4096:
                lengths.append(lengths[last] + 1)
                if len(lengths) == 1 << bits and bits < 12:
                    bits += 1
            last = code
    assert ended, "no end code"
    return total


def check_extension(data, at, frames):
    """What stands before frames: how long one is shown, and once how often all are repeated."""
    label = data[at]
    block, at = sub_blocks(data, at + 1)
    if label == 0xF9:
        flags, _, _ = struct.unpack("<BHB", block)
        assert flags == 4, "a frame that is not left in place, or has transparency"
    else:
        assert label == 0xFF, "unknown extension"
        assert block[:11] == b"NETSCAPE2.0" and block[11] == 1 and not frames
    return at


def check_frame(data, at, size):
    left, top, width, height, flags = struct.unpack("<HHHHB", data[at:at + 9])
    assert flags == 0, "a palette of its own, or lines out of order"
    assert left + width <= size[0] and top + height <= size[1]
    packed, behind = sub_blocks(data, at + 10)
    assert packed_pixels(data[at + 9], packed) == width * height
    return behind


def check_structure(path):
    """Every byte belongs where it stands; the number of frames."""
    data = path.read_bytes()
    width, height, flags, _, _ = struct.unpack("<HHBBB", data[6:13])
    assert flags & 0x80, "no palette"
    at, frames = 13 + 3 * (2 << (flags & 7)), 0
    while data[at] != 0x3B:
        kind = data[at]
        if kind == 0x21:
            at = check_extension(data, at + 1, frames)
        else:
            assert kind == 0x2C, "unknown block"
            at = check_frame(data, at + 1, (width, height))
            frames += 1
    assert at == len(data) - 1, "bytes after the end"
    return frames


class Animation:
    """version and size; loops, 0 for ever; frames, each the whole picture in red, green and blue; delays in
    hundredths of a second; and areas, what each frame stores, as left, top, right, bottom."""

    def __init__(self, path):
        count = check_structure(path)
        self.frames, self.delays, self.areas = [], [], []
        with Image.open(path) as image:
            self.version, self.size, self.loops = image.info["version"], image.size, image.info.get("loop")
            assert image.n_frames == count
            for number in range(count):
                image.seek(number)
                assert image.disposal_method == 1 and "transparency" not in image.info
                self.delays.append(image.info["duration"] // 10)
                self.areas.append(image.dispose_extent)
                self.frames.append(image.convert("RGB"))

    def facts(self):
        return "%s %dx%d loops %s frames %d" % (self.version.decode(), *self.size, self.loops, len(self.frames))


def changed(one, two):
    """The rectangle in which two pictures differ, as left, top, right, bottom."""
    return ImageChops.difference(one, two).getbbox()


def farthest(one, two):
    """By how much a channel of a pixel is off at most."""
    assert one.size == two.size
    return max(high for _, high in ImageChops.difference(one, two).getextrema())
