// qel render: draws a drawing into a picture.
#include "tools/qel/ImageWriter.h"
#include "tools/qel/Scene.h"

namespace qel {

namespace {

constexpr char ABOUT[] =
    R"(Draws the drawing IN into the picture OUT: .png, .bmp, .jpg (.jpeg) or .emf, the recorded drawing
calls. An older picture of that name is replaced when the new one is complete; one that is
read-only, or that another program has open, is not. IN - is standard input; OUT - is a PNG on
standard output.)";

constexpr char EXAMPLES[] = R"(
Exit status: 0 the picture is there; 2 it is not (the message is on standard error).

Examples:
  qel render pump.qel pump.png
  qel render pump.qel pump.jpg --size 1600x1200 --background FFFFFF
  qel render pump.qel -o pump.png --width=640
  qel render pump.qel turned.emf --rotate 90 --font "WenQuanYi Micro Hei Mono"
  qel render gauge.qel gauge.png --set 0.max=100 --set 0.pin-color=0x0000ff --value 0=62.5
  qel render panel.qel panel.png --status 1 --value 41=380 --time 10:08:36
  qel render - - --size 400x300 <pump.qel >pump.png)";

int RunRender(const CommandLine& given)
{
    SceneOptions options(false);
    ReadSceneOptions(given, "render", &options, [](const GivenOption&) {});
    KindOf(options.out); // a name that cannot be written is refused before any work
    const CScene scene(options);
    WritePicture(options.out, scene.Size(), [&scene](HDC hdc) { return scene.Paint(hdc); });
    scene.TellUnheard();
    return EXIT_CLEAN;
}

} // namespace

CommandRow RenderCommand()
{
    CommandRow row{"render",
                   "IN OUT [options]",
                   "draw a drawing into a picture: .png, .bmp, .jpg or .emf",
                   ABOUT,
                   std::string(g_sceneNotes) + EXAMPLES,
                   {},
                   RunRender};
    AddSceneOptions(&row.options);
    return row;
}

} // namespace qel
