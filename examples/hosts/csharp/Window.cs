// A window with a live drawing, without flicker: a meter swings between the ends of its scale.
//
//     Window DRAWING [METER-ID]
//
// Windows Forms; QELEngine.cs has the declarations; for 32 and for 64 bits. Built in this folder:
//     csc -platform:x86 -target:winexe -r:System.Windows.Forms.dll -r:System.Drawing.dll -out:window.exe Window.cs QELEngine.cs
using System;
using System.Drawing;
using System.Globalization;
using System.Runtime.InteropServices;
using System.Windows.Forms;

// A bitmap in memory that keeps what was drawn last. The window shows nothing but copies of it, so
// nobody ever sees a half-drawn picture, and the engine can draw its moving parts over it. It is a
// bitmap of GDI, not of GDI+: the engine draws on device contexts.
internal sealed class Picture : IDisposable
{
    private const int SourceCopy = 0x00CC0020;

    private readonly IntPtr dc, font, previousFont;
    private IntPtr bitmap, previousBitmap;
    private QELEngine.RECT rect;

    public Picture(Font face)
    {
        dc = CreateCompatibleDC(IntPtr.Zero);
        font = face.ToHfont(); // texts take the face of this font and choose their own size
        previousFont = SelectObject(dc, font);
    }

    public void Dispose()
    {
        SelectObject(dc, previousFont);
        DeleteObject(font);
        if (bitmap != IntPtr.Zero)
            DeleteObject(SelectObject(dc, previousBitmap));
        DeleteDC(dc);
    }

    // A new bitmap that fits the window. It has to be drawn fully before it is shown.
    public void Resize(Control control, Size size)
    {
        using (Graphics graphics = control.CreateGraphics())
        {
            IntPtr windowDc = graphics.GetHdc();
            IntPtr made = CreateCompatibleBitmap(windowDc, size.Width, size.Height);
            graphics.ReleaseHdc(windowDc);
            IntPtr previous = SelectObject(dc, made);
            if (bitmap != IntPtr.Zero)
                DeleteObject(previous);
            else
                previousBitmap = previous;
            bitmap = made;
        }
        rect = new QELEngine.RECT { right = size.Width, bottom = size.Height };
    }

    public void DrawWhole(IntPtr engine, Color background)
    {
        QELEngine.QELSetQELRect(engine, ref rect);
        IntPtr brush = CreateSolidBrush((uint)ColorTranslator.ToWin32(background));
        FillRect(dc, ref rect, brush);
        DeleteObject(brush);
        QELEngine.QELDraw(engine, dc, ref rect, QELEngine.QEL_DRAW_FULL);
    }

    public void DrawMoving(IntPtr engine)
    {
        QELEngine.QELDraw(engine, dc, ref rect, 0);
    }

    public void CopyTo(Graphics graphics)
    {
        IntPtr target = graphics.GetHdc();
        BitBlt(target, 0, 0, rect.right, rect.bottom, dc, 0, 0, SourceCopy);
        graphics.ReleaseHdc(target);
    }

    [DllImport("gdi32.dll")]
    private static extern IntPtr CreateCompatibleDC(IntPtr dc);

    [DllImport("gdi32.dll")]
    private static extern IntPtr CreateCompatibleBitmap(IntPtr dc, int width, int height);

    [DllImport("gdi32.dll")]
    private static extern IntPtr CreateSolidBrush(uint color);

    [DllImport("gdi32.dll")]
    private static extern IntPtr SelectObject(IntPtr dc, IntPtr handle);

    [DllImport("gdi32.dll")]
    private static extern int DeleteObject(IntPtr handle);

    [DllImport("gdi32.dll")]
    private static extern int DeleteDC(IntPtr dc);

    [DllImport("gdi32.dll")]
    private static extern int BitBlt(
        IntPtr target, int x, int y, int width, int height, IntPtr source, int sourceX, int sourceY, int operation);

    [DllImport("user32.dll")]
    private static extern int FillRect(IntPtr dc, ref QELEngine.RECT rect, IntPtr brush);
}

internal sealed class LiveWindow : Form
{
    private const int MaxValue = 100;
    private const int Step = 2; // of the value from frame to frame
    private const int FrameTime = 40; // milliseconds
    private const int UsualDpi = 96;
    private const int DpiChanged = 0x02E0; // WM_DPICHANGED

    private readonly IntPtr engine;
    private readonly uint meter;
    private readonly Picture picture;
    private readonly Timer timer = new Timer(); // this one ticks on the window's own thread
    private int value, change = Step;

    public LiveWindow(string path, uint meterId)
    {
        meter = meterId;
        engine = QELEngine.CreateQELEngine();
        if (QELEngine.QELOpenFileU(engine, path) == 0)
        {
            QELEngine.DestroyQELEngine(engine);
            throw new ArgumentException(path + " cannot be opened");
        }
        QELEngine.QELSetScaleParam(engine, meter, QELEngine.QEL_SEL_MAX, MaxValue);
        QELEngine.QELSetScaleParam(engine, meter, QELEngine.QEL_SEL_SCALE_END, MaxValue);
        QELEngine.QELSetScaleStatus(engine, meter, 0);
        using (var face = new Font("Courier New", 12))
            picture = new Picture(face);

        // Painting is done here alone: nothing erases the window first, which is what flickers.
        SetStyle(ControlStyles.AllPaintingInWmPaint | ControlStyles.UserPaint | ControlStyles.Opaque, true);
        Text = path;
        QELEngine.SIZE size;
        QELEngine.QELGetRefSize(engine, out size);
        using (Graphics graphics = CreateGraphics())
            ClientSize = new Size((int)(size.cx * graphics.DpiX / UsualDpi), (int)(size.cy * graphics.DpiY / UsualDpi));
        DrawWhole(); // should this be the size that a form has at first, it does not tell of a change
        timer.Interval = FrameTime;
        timer.Tick += delegate { NextFrame(); };
        timer.Start();
    }

    private void DrawWhole()
    {
        if (picture == null || ClientSize.Width == 0 || ClientSize.Height == 0)
            return; // not made yet, or minimised
        picture.Resize(this, ClientSize);
        picture.DrawWhole(engine, BackColor);
        Invalidate();
    }

    private void NextFrame()
    {
        if (value + change < 0 || value + change > MaxValue)
            change = -change;
        value += change;
        QELEngine.QELSetScaleStatus(engine, meter, (uint)value);
        picture.DrawMoving(engine);
        Invalidate();
    }

    protected override void OnClientSizeChanged(EventArgs e)
    {
        base.OnClientSizeChanged(e);
        DrawWhole();
    }

    protected override void OnPaint(PaintEventArgs e)
    {
        picture.CopyTo(e.Graphics);
    }

    // Another screen, or the same one set anew: the system says what fits.
    protected override void WndProc(ref Message message)
    {
        base.WndProc(ref message);
        if (message.Msg != DpiChanged)
            return;
        var rect = (QELEngine.RECT)Marshal.PtrToStructure(message.LParam, typeof(QELEngine.RECT));
        Bounds = Rectangle.FromLTRB(rect.left, rect.top, rect.right, rect.bottom);
    }

    // On the thread of the window, like all calls; a finalizer would run on another one.
    protected override void Dispose(bool disposing)
    {
        if (disposing)
        {
            timer.Dispose();
            picture.Dispose();
            QELEngine.DestroyQELEngine(engine);
        }
        base.Dispose(disposing);
    }
}

internal static class WindowProgram
{
    [DllImport("user32.dll")]
    private static extern int SetProcessDPIAware();

    [DllImport("user32.dll")]
    private static extern int SetProcessDpiAwarenessContext(IntPtr context);

    // The drawing is lines: it wants the real pixels of every screen, not a stretched picture. Systems
    // older than Windows 10 know one resolution for all screens, and not the newer function.
    private static void AskForRealPixels()
    {
        var perMonitor = new IntPtr(-3);
        var perMonitorV2 = new IntPtr(-4);
        try
        {
            if (SetProcessDpiAwarenessContext(perMonitorV2) != 0 || SetProcessDpiAwarenessContext(perMonitor) != 0)
                return;
        }
        catch (EntryPointNotFoundException)
        {
        }
        SetProcessDPIAware();
    }

    [STAThread]
    private static int Main(string[] args)
    {
        if (args.Length < 1)
        {
            Console.Error.WriteLine("Window DRAWING [METER-ID]");
            return 2;
        }
        AskForRealPixels();
        uint meter = args.Length > 1 ? uint.Parse(args[1], CultureInfo.InvariantCulture) : 0;
        try
        {
            using (var window = new LiveWindow(args[0], meter))
                Application.Run(window);
            return 0;
        }
        catch (ArgumentException trouble)
        {
            MessageBox.Show(trouble.Message);
            return 1;
        }
    }
}
