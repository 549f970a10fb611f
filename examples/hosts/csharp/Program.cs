// A host in C# without a window: draws a drawing into a bitmap in memory and writes it as a file.
//
//     host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]
//
// A setting is ID=VALUE (the current value of the meter or scale with that id), ID.SELECTOR=VALUE
// (another of its properties, by the number of QEL_SEL_...) or gradient=KIND (0 to 13, painted
// behind the drawing). Values with a point are real numbers.
//
// QELEngine.cs has the declarations; for 32 and for 64 bits. Built in this folder:
//     csc -platform:x86 -out:host.exe Program.cs QELEngine.cs
using System;
using System.Globalization;
using System.IO;
using System.Runtime.InteropServices;

// The engine with one drawing. DestroyQELEngine is to be called on the thread of all other calls, so
// there is no finalizer, which would run on another one: use it in a using statement.
internal sealed class Drawing : IDisposable
{
    public Drawing(string path)
    {
        Engine = QELEngine.CreateQELEngine();
        if (QELEngine.QELOpenFileU(Engine, path) != 0)
            return;
        Dispose();
        throw new IOException("the drawing cannot be opened");
    }

    public IntPtr Engine { get; private set; }

    public void Dispose()
    {
        if (Engine != IntPtr.Zero)
            QELEngine.DestroyQELEngine(Engine);
        Engine = IntPtr.Zero;
    }
}

// A bitmap that can be drawn on, with a font selected. Its rows run from the bottom up, as in a file.
internal sealed class Canvas : IDisposable
{
    private const int FontHeight = 16; // texts take the face of this font and choose their own size
    private const int PixelsPerMetre = 3780; // 96 dots per inch
    private const uint DefaultCharset = 1;
    private const uint ClearTypeQuality = 5; // two colours lose strokes in small sizes

    private readonly IntPtr bitmap, font, previousBitmap, previousFont, bits;
    private Gdi.BITMAPINFOHEADER info;

    public Canvas(int width, int height, string face)
    {
        info.biSize = (uint)Marshal.SizeOf(info);
        info.biWidth = width;
        info.biHeight = height;
        info.biPlanes = 1;
        info.biBitCount = 32;
        info.biSizeImage = (uint)(width * height * 4);
        info.biXPelsPerMeter = info.biYPelsPerMeter = PixelsPerMetre;
        Dc = Gdi.CreateCompatibleDC(IntPtr.Zero);
        bitmap = Gdi.CreateDIBSection(Dc, ref info, 0, out bits, IntPtr.Zero, 0);
        if (bitmap == IntPtr.Zero)
            throw new OutOfMemoryException("there is no picture of this size");
        font = Gdi.CreateFontW(FontHeight, 0, 0, 0, 0, 0, 0, 0, DefaultCharset, 0, 0, ClearTypeQuality, 0, face);
        previousBitmap = Gdi.SelectObject(Dc, bitmap);
        previousFont = Gdi.SelectObject(Dc, font);
    }

    public IntPtr Dc { get; private set; }

    public void Dispose()
    {
        Gdi.SelectObject(Dc, previousFont);
        Gdi.SelectObject(Dc, previousBitmap);
        Gdi.DeleteObject(font);
        Gdi.DeleteObject(bitmap);
        Gdi.DeleteDC(Dc);
    }

    public void Write(string path)
    {
        Gdi.GdiFlush(); // GDI may still hold calls back; the bits are read directly
        var pixels = new byte[info.biSizeImage];
        Marshal.Copy(bits, pixels, 0, pixels.Length);
        using (var file = new BinaryWriter(File.Create(path)))
        {
            file.Write((ushort)0x4D42); // "BM"
            file.Write(14 + info.biSize + info.biSizeImage);
            file.Write(0u);
            file.Write(14 + info.biSize);
            file.Write(info.biSize);
            file.Write(info.biWidth);
            file.Write(info.biHeight);
            file.Write(info.biPlanes);
            file.Write(info.biBitCount);
            file.Write(info.biCompression);
            file.Write(info.biSizeImage);
            file.Write(info.biXPelsPerMeter);
            file.Write(info.biYPelsPerMeter);
            file.Write(info.biClrUsed);
            file.Write(info.biClrImportant);
            file.Write(pixels);
        }
    }
}

internal static class Program
{
    private const uint Grey = 0xC0C0C0;
    private const uint White = 0xFFFFFF;

    // The engine paints onto whatever stands there, so the background comes first. Kind -1: plain grey.
    private static void PaintBackground(IntPtr dc, QELEngine.RECT rect, int kind)
    {
        if (kind < 0)
        {
            IntPtr brush = Gdi.CreateSolidBrush(Grey);
            Gdi.FillRect(dc, ref rect, brush);
            Gdi.DeleteObject(brush);
            return;
        }
        IntPtr gradient = QELEngine.QELCreateGradientDescriptor(ref rect, kind, White, Grey);
        if (gradient == IntPtr.Zero)
            throw new ArgumentException("there is no such gradient");
        Gdi.FillRect(dc, ref rect, QELEngine.QELGetGradientBrush(gradient)); // the descriptor owns the brush
        QELEngine.QELCloseGradientDescriptor(gradient);
    }

    // Throws when the setting is not understood, or no meter or scale of the drawing takes it.
    private static void Apply(IntPtr engine, string setting)
    {
        string[] sides = setting.Split('=');
        string[] names = sides[0].Split('.');
        uint id = uint.Parse(names[0], CultureInfo.InvariantCulture);
        uint selector = QELEngine.QEL_SEL_VALUE;
        if (names.Length > 1)
            selector = uint.Parse(names[1], CultureInfo.InvariantCulture);
        int taken = sides[1].Contains(".")
            ? QELEngine.QELSetScaleParamf(engine, id, selector, float.Parse(sides[1], CultureInfo.InvariantCulture))
            : QELEngine.QELSetScaleParam(engine, id, selector,
                unchecked((uint)long.Parse(sides[1], CultureInfo.InvariantCulture)));
        if (taken == 0)
            throw new ArgumentException(setting + ": nothing in the drawing takes this");
    }

    private static void Run(string[] args)
    {
        var rect = new QELEngine.RECT();
        rect.right = int.Parse(args[2], CultureInfo.InvariantCulture);
        rect.bottom = int.Parse(args[3], CultureInfo.InvariantCulture);
        using (var drawing = new Drawing(args[0]))
        using (var canvas = new Canvas(rect.right, rect.bottom, args[4]))
        {
            int kind = -1;
            QELEngine.QELSetQELRect(drawing.Engine, ref rect);
            for (int n = 5; n < args.Length; ++n)
            {
                if (args[n].StartsWith("gradient=", StringComparison.Ordinal))
                    kind = int.Parse(args[n].Substring(9), CultureInfo.InvariantCulture);
                else
                    Apply(drawing.Engine, args[n]);
            }
            PaintBackground(canvas.Dc, rect, kind);
            if (QELEngine.QELDraw(drawing.Engine, canvas.Dc, ref rect, QELEngine.QEL_DRAW_FULL) == 0)
                throw new InvalidOperationException("the drawing cannot be drawn");
            canvas.Write(args[1]);
        }
    }

    private static int Main(string[] args)
    {
        if (args.Length < 5)
        {
            Console.Error.WriteLine("host DRAWING PICTURE.bmp WIDTH HEIGHT FONT [SETTING...]");
            return 2;
        }
        try
        {
            Run(args);
            return 0;
        }
        catch (Exception trouble)
        {
            Console.Error.WriteLine("host: " + trouble.Message);
            return 1;
        }
    }
}

// What the host needs of the system.
internal static class Gdi
{
    [StructLayout(LayoutKind.Sequential)]
    public struct BITMAPINFOHEADER
    {
        public uint biSize;
        public int biWidth;
        public int biHeight;
        public ushort biPlanes;
        public ushort biBitCount;
        public uint biCompression;
        public uint biSizeImage;
        public int biXPelsPerMeter;
        public int biYPelsPerMeter;
        public uint biClrUsed;
        public uint biClrImportant;
    }

    [DllImport("gdi32.dll")]
    public static extern IntPtr CreateCompatibleDC(IntPtr dc);

    [DllImport("gdi32.dll")]
    public static extern IntPtr CreateDIBSection(
        IntPtr dc, ref BITMAPINFOHEADER info, uint usage, out IntPtr bits, IntPtr section, uint offset);

    [DllImport("gdi32.dll", CharSet = CharSet.Unicode, ExactSpelling = true)]
    public static extern IntPtr CreateFontW(int height, int width, int escapement, int orientation, int weight,
        uint italic, uint underline, uint strikeOut, uint charset, uint outPrecision, uint clipPrecision,
        uint quality, uint pitch, string face);

    [DllImport("gdi32.dll")]
    public static extern IntPtr CreateSolidBrush(uint color);

    [DllImport("gdi32.dll")]
    public static extern IntPtr SelectObject(IntPtr dc, IntPtr handle);

    [DllImport("gdi32.dll")]
    public static extern int DeleteObject(IntPtr handle);

    [DllImport("gdi32.dll")]
    public static extern int DeleteDC(IntPtr dc);

    [DllImport("gdi32.dll")]
    public static extern int GdiFlush();

    [DllImport("user32.dll")]
    public static extern int FillRect(IntPtr dc, ref QELEngine.RECT rect, IntPtr brush);
}
