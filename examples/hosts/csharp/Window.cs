// A window with a live drawing, without flicker: its values swing between the ends of their scales.
// A click shows in the title what was hit.
//
//     Window DRAWING [ID]
//
// With ID only what bears this identifier swings.
// Windows Forms; QELEngine.cs has the declarations; for 32 and for 64 bits. Built in this folder:
//     csc -platform:x86 -target:winexe -r:System.Windows.Forms.dll -r:System.Drawing.dll -out:window.exe Window.cs QELEngine.cs
using System;
using System.Collections.Generic;
using System.Drawing;
using System.Runtime.InteropServices;
using System.Text;
using System.Windows.Forms;

// A bitmap in memory that keeps what was drawn last. The window shows nothing but copies of it, so
// nobody ever sees a half-drawn picture. It is a bitmap of GDI, not of GDI+: the engine draws on
// device contexts.
internal sealed class Picture : IDisposable
{
    private const int SourceCopy = 0x00CC0020;

    private readonly IntPtr dc, font, previousFont;
    private IntPtr bitmap, previousBitmap;

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

    // A new bitmap that fits the window. It is empty, which the engine cannot know.
    public void Resize(Control control, IntPtr engine, Size size)
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
        var rect = new QELEngine.RECT { right = size.Width, bottom = size.Height };
        QELEngine.QELSetQELRect(engine, ref rect);
        QELEngine.QELInvalidate(engine, ref rect);
    }

    // Paints what is not right any more, and nothing else.
    public void Update(IntPtr engine, Color background)
    {
        IntPtr brush = CreateSolidBrush((uint)ColorTranslator.ToWin32(background));
        QELEngine.QELUpdate(engine, dc, brush);
        DeleteObject(brush);
    }

    public void CopyTo(Graphics graphics, Rectangle place)
    {
        IntPtr target = graphics.GetHdc();
        BitBlt(target, place.X, place.Y, place.Width, place.Height, dc, place.X, place.Y, SourceCopy);
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
}

// What swings, by its identifier.
internal sealed class LiveValue
{
    private const double LampRange = 1.5;  // a lamp's number is truncated: off, and on near the end
    private const double TextRange = 99.0; // a text alone has no scale

    private readonly string id;
    private readonly double min, max;

    // A meter or scale tells the ends of its scale.
    public LiveValue(IntPtr engine, string identifier, int type)
    {
        id = identifier;
        if (QELEngine.QELGetSelector(engine, id, QELEngine.QEL_SEL_MAX, out max) == 0)
            max = type == QELEngine.QEL_TYPE_TEXT ? TextRange : LampRange;
        if (QELEngine.QELGetSelector(engine, id, QELEngine.QEL_SEL_MIN, out min) == 0)
            min = 0.0;
    }

    public bool Set(IntPtr engine, double place)
    {
        return QELEngine.QELSetValue(engine, id, min + (max - min) * place) != 0;
    }

    public void Ease(IntPtr engine, uint time)
    {
        QELEngine.QELSetEasing(engine, id, time);
    }
}

internal sealed class LiveWindow : Form
{
    private const int FrameTime = 40; // milliseconds
    private const int EasingTime = 300; // in which a needle moves to a new value
    private const int FramesPerValue = 10; // from one new value to the next
    private const double Step = 0.25; // of the way through the scale from value to value
    private const int UsualDpi = 96;
    private const int DpiChanged = 0x02E0; // WM_DPICHANGED

    private readonly IntPtr engine;
    private readonly List<LiveValue> values = new List<LiveValue>();
    private readonly Picture picture;
    private readonly Timer timer = new Timer(); // this one ticks on the window's own thread
    private int frame;
    private double place, change = Step; // from 0 to 1

    public LiveWindow(string path, string id)
    {
        engine = QELEngine.CreateQELEngine();
        if (QELEngine.QELOpenFileU(engine, path) == 0)
        {
            QELEngine.DestroyQELEngine(engine);
            throw new ArgumentException(path + " cannot be opened");
        }
        if (id != null)
            AddValue(id, QELEngine.QEL_TYPE_NONE);
        else
            AddAllValues();
        using (var face = new Font("Courier New", 12))
            picture = new Picture(face);

        // Painting is done here alone: nothing erases the window first, which is what flickers.
        SetStyle(ControlStyles.AllPaintingInWmPaint | ControlStyles.UserPaint | ControlStyles.Opaque, true);
        Text = path;
        QELEngine.SIZE size;
        QELEngine.QELGetRefSize(engine, out size);
        using (Graphics graphics = CreateGraphics())
        {
            SetResolution((int)graphics.DpiX);
            ClientSize = new Size((int)(size.cx * graphics.DpiX / UsualDpi), (int)(size.cy * graphics.DpiY / UsualDpi));
        }
        Resized(); // should this be the size that a form has at first, it does not tell of a change
        timer.Interval = FrameTime;
        timer.Tick += delegate { NextFrame(); };
        timer.Start();
    }

    // Lines, borders and hatches are to be as wide on every screen as on a usual one.
    private void SetResolution(int dpi)
    {
        QELEngine.QELSetPixelScale(engine, (uint)(100 * dpi / UsualDpi));
    }

    private void AddValue(string id, int type)
    {
        var value = new LiveValue(engine, id, type);
        if (!value.Set(engine, 0.0))
            return; // a shape takes none
        value.Ease(engine, EasingTime);
        values.Add(value);
    }

    // All identifiers of the drawing, one by one.
    private void AddAllValues()
    {
        var id = new StringBuilder(QELEngine.QEL_TEXT_SIZE);
        int type;
        for (uint n = 0; QELEngine.QELGetLiveId(engine, n, id, id.Capacity, out type) != 0; ++n)
            AddValue(id.ToString(), type);
    }

    private void Resized()
    {
        if (picture == null || ClientSize.Width == 0 || ClientSize.Height == 0)
            return; // not made yet, or minimised
        picture.Resize(this, engine, ClientSize);
        Invalidate();
    }

    private void SetValues()
    {
        if (place + change < 0.0 || place + change > 1.0)
            change = -change;
        place += change;
        foreach (LiveValue value in values)
            value.Set(engine, place);
    }

    // Tells the window system what has changed, place by place.
    private void InvalidateDirty()
    {
        IntPtr region = CreateRectRgn(0, 0, 0, 0);
        if (QELEngine.QELGetDirtyRegion(engine, region) != 0)
            InvalidateRgn(Handle, region, 0); // 0: nothing is erased
        DeleteObject(region);
    }

    private void NextFrame()
    {
        if (++frame % FramesPerValue == 0)
            SetValues();
        QELEngine.QELAdvance(engine, FrameTime);
        InvalidateDirty();
    }

    protected override void OnClientSizeChanged(EventArgs e)
    {
        base.OnClientSizeChanged(e);
        Resized();
    }

    protected override void OnPaint(PaintEventArgs e)
    {
        picture.Update(engine, BackColor);
        picture.CopyTo(e.Graphics, e.ClipRectangle);
    }

    // The title tells what was hit, by its identifier.
    protected override void OnMouseDown(MouseEventArgs e)
    {
        base.OnMouseDown(e);
        var id = new StringBuilder(QELEngine.QEL_TEXT_SIZE);
        var point = new[] { new QELEngine.POINT { x = e.X, y = e.Y } };
        if (QELEngine.QELIdFromPoint(engine, point, id, id.Capacity) != 0)
            Text = id.ToString();
    }

    [DllImport("gdi32.dll")]
    private static extern IntPtr CreateRectRgn(int left, int top, int right, int bottom);

    [DllImport("gdi32.dll")]
    private static extern int DeleteObject(IntPtr handle);

    [DllImport("user32.dll")]
    private static extern int InvalidateRgn(IntPtr window, IntPtr region, int erase);

    // Another screen, or the same one set anew: the system says what fits.
    protected override void WndProc(ref Message message)
    {
        base.WndProc(ref message);
        if (message.Msg != DpiChanged)
            return;
        SetResolution((int)(message.WParam.ToInt64() & 0xFFFF));
        var rect = (QELEngine.RECT)Marshal.PtrToStructure(message.LParam, typeof(QELEngine.RECT));
        Bounds = Rectangle.FromLTRB(rect.left, rect.top, rect.right, rect.bottom);
        InvalidateDirty();
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
            Console.Error.WriteLine("Window DRAWING [ID]");
            return 2;
        }
        AskForRealPixels();
        try
        {
            using (var window = new LiveWindow(args[0], args.Length > 1 ? args[1] : null))
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
