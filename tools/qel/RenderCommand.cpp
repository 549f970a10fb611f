// qel render: draws a drawing into a picture.
#include "tools/qel/ImageWriter.h"
#include "tools/qel/Scene.h"

namespace qel {

const char* const g_renderHelp = R"(qel render IN OUT [options]

Draws the drawing IN into the picture OUT: .png, .bmp, .jpg (.jpeg) or .emf, the recorded drawing
calls. An older picture of that name is replaced when the new one is complete; one that is
read-only, or that another program has open, is not. IN - is standard input; OUT - is a PNG on
standard output.

  -o, --output OUT       the picture, in the place of the second name
  --size WxH             the size in pixels, each side 1 to 16384 and no more pixels than 8192x8192
                         has; by default the drawing's reference size times the smallest whole
                         number that makes it at least 800 wide
  --width W, --height H  one side in pixels; the other one follows the drawing, unless both are given
  --zoom N               so many times the drawing's reference size: 2, or 0.5
  --background RRGGBB    hexadecimal; by default C0C0C0, on which black and white both show. Here as
                         everywhere a colour is taken, #RRGGBB is one, too
  --rotate DEG           turn counter-clockwise, by quarter turns: 90, 180, 270, -90
  --blink                the dark phase of blinking colours
  --pressed              elements with the pressed flag are drawn pressed
  --font NAME            the face of all texts, a scalable one; by default WenQuanYi Zen Hei
                         Mono or another one of even width with Chinese glyphs
  --config FILE          options from a file, one a line: width = 800, set = ["0.max=100"],
                         blink = true; after a line [render] or [animate] for that command alone.
                         # and ; begin a line that is a remark.
                         What the command line gives, too, is taken from there; a setting comes
                         before those of the command line

A value may also be joined to its option: --size=400x300. The last option about the size holds.

What the host of the drawing would set, any number of times, in the order given:

  --set ID.SELECTOR=V    a setting of the scale or meter with that id; 'qel info' lists ids and
                         selectors, which go by name or by number: max, ticks, alarm, 20
  --value ID=V           the value of the scale or meter with that id; the ids 1 to 32 are the
                         sectors of the meter with id 0
  --param I=V            host parameter 0 (colour), 1 (hatch, 0 to 37), 2 or 3 (its colours)
  --status N             the status number; -1 shows all status elements
  --time HH:MM:SS        the time that clocks show, instead of the present one; once

V is a decimal number, also a negative one, or 0x and hexadecimal digits; a colour is #RRGGBB, or
0xBBGGRR with the last two digits red. Values, and the setting base, may also be real numbers,
written with a point: a meter draws the kind that was set last, so write all its values with a point
or none. What the drawing refuses is an error, and then there is no picture.

Exit status: 0 the picture is there; 2 it is not (the message is on standard error).

Examples:
  qel render pump.qel pump.png
  qel render pump.qel pump.jpg --size 1600x1200 --background FFFFFF
  qel render pump.qel -o pump.png --width=640
  qel render pump.qel turned.emf --rotate 90 --font "WenQuanYi Micro Hei Mono"
  qel render gauge.qel gauge.png --set 0.max=100 --set 0.pin-color=0x0000ff --value 0=62.5
  qel render panel.qel panel.png --status 1 --value 41=380 --time 10:08:36
  qel render - - --size 400x300 <pump.qel >pump.png
)";

OptionRows RenderOptions()
{
    return SceneOptionRows();
}

int RunRender(const CommandLine& given)
{
    SceneOptions options(false);
    ReadSceneOptions(given, "render", &options, [](const GivenOption&) { return false; });
    KindOf(options.out); // a name that cannot be written is refused before any work
    const CScene scene(options);
    WritePicture(options.out, scene.Size(), [&scene](HDC hdc) { return scene.Paint(hdc); });
    return EXIT_CLEAN;
}

} // namespace qel
