// qel render: draws a drawing into a picture.
#include "tools/qel/ImageWriter.h"
#include "tools/qel/Scene.h"
#include "tools/qel/Text.h"

#include <fmt/format.h>

namespace qel {

namespace {

constexpr char DATA_GROUP[] = "The table of --data";

constexpr SettingRow<std::wstring> g_rows[] = {
    {{OptionRow::Takes::Value, "--row", "N", DATA_GROUP,
      "the row to show, from 1 on; the row of names is none. Where it has an empty cell, the last "
      "row before it that has a value there holds, as in the frame of 'qel animate'"},
     [](const GivenOption& given, std::wstring* pRow) { *pRow = given.value; }}};

void TakeRow(const std::wstring& text, CLiveOptions* pLive)
{
    const CValueTable* pTable = pLive->Table();
    if (!pTable && text.empty()) return;
    if (!pTable) throw CTrouble("--row is a row of a table: --data FILE.csv");
    if (text.empty()) throw CTrouble("a picture shows one row of --data: --row N");
    long nRow = 0;
    if (!ReadNumber(text, 10, &nRow) || nRow < 1 || nRow > pTable->CountRows())
        throw CTrouble(fmt::format("--row wants a row of '{}', 1 to {}, not '{}'", pTable->File(),
                                   pTable->CountRows(), ToUtf8(text)));
    pLive->ShowRow(static_cast<int>(nRow));
}

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
  qel render pump.qel pump.png --scale 200 --transparent
  qel render pump.qel pump.png --smooth 0
  qel render pump.qel turned.emf --rotate 90 --font "WenQuanYi Micro Hei Mono"
  qel render gauge.qel gauge.png --set 0.max=100 --set 0.pin-color=0x0000ff --value 0=62.5
  qel render panel.qel panel.png --status 1 --value 41=380 --time 10:08:36
  qel render pump.qel pump.png --value pump.speed=1480 --set pump.speed.max=3000 --quality flow=1
  qel render pump.qel pump.png --data day.csv --row 17
  qel render - - --size 400x300 <pump.qel >pump.png)";

void Write(const CScene& scene, const SceneOptions& options)
{
    if (options.bTransparent)
        WriteTransparent(options.out, scene.Size(),
                         [&scene](BYTE* pBits) { return scene.Render(pBits); });
    else
        WritePicture(options.out, scene.Size(), [&scene](HDC hdc) { return scene.Paint(hdc); });
}

int RunRender(const CommandLine& given)
{
    SceneOptions options(false);
    std::wstring row;
    ReadSceneOptions(given, "render", &options,
                     [&row](const GivenOption& option) { TakeOption(g_rows, option, &row); });
    TakeRow(row, &options.live);
    const PictureKind nKind = KindOf(options.out); // one that is none is refused before any work
    if (options.bTransparent && nKind != PictureKind::Png)
        throw CTrouble(
            "--transparent wants a picture .png: other kinds have no transparent places");
    const bool bForScreen = nKind == PictureKind::Png || nKind == PictureKind::Jpeg;
    const CScene scene(options, SmoothSamples(options, bForScreen));
    Write(scene, options);
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
    AddOptions(g_rows, &row.options);
    return row;
}

} // namespace qel
