// A window of Qt on Linux with a live drawing: the pictures come from the engine, which paints them
// under Wine in a process beside (painter.c), and are shown over the window's own ground.
//
//     window DRAWING ID MAX FACE FRAMES COMMAND...
//
// What bears the identifier ID goes from 0 to MAX and back. FACE is the font of texts. With FRAMES
// other than 0 it stands still after so many frames. COMMAND starts the painter: wine painter.exe.
// Built in this folder, with the package qtbase5-dev of Debian:
//     g++ -std=c++17 -fPIC window.cpp $(pkg-config --cflags --libs Qt5Widgets) -o window
#include <QApplication>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTimer>
#include <QWidget>
#include <QtEndian>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int FRAME_TIME = 40;     // milliseconds
constexpr int EASING_TIME = 300;   // in which a needle moves to a new value
constexpr int FRAMES_A_VALUE = 10; // from one new value to the next
constexpr int STEPS = 4;           // values from end to end
constexpr int WHOLE = 100;         // percent
constexpr int START_TIME = 60000;  // Wine's first start takes its time
const QColor GROUND(32, 64, 96);

// The engine, as a process that follows lines and answers with pictures.
class CPainter {
public:
    CPainter(const QString& drawing, const QString& face, QStringList command)
    {
        // Wine has all of this system's files on a drive of its own.
        const QString path = "Z:" + QFileInfo(drawing).absoluteFilePath();
        const QString program = command.takeFirst();
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program, command << path << face);
    }
    ~CPainter()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }

    QProcess& Process() { return m_process; }
    void Tell(const QString& line) { m_process.write((line + '\n').toUtf8()); }

    // The size that the drawing is made for; an empty one when there is none.
    QSize TakeSize()
    {
        while (m_process.bytesAvailable() < 2 * 4)
            if (!m_process.waitForReadyRead(START_TIME)) return {};
        const int nWidth = TakeNumber();
        return {nWidth, TakeNumber()};
    }
    // Whether a picture has come as a whole: then it is in pPixels, which is empty for none.
    bool TakePicture(QByteArray* pPixels)
    {
        if (m_nExpected < 0) {
            if (m_process.bytesAvailable() < 4) return false;
            m_nExpected = TakeNumber();
        }
        if (m_process.bytesAvailable() < m_nExpected) return false;
        *pPixels = m_process.read(m_nExpected);
        m_nExpected = -1;
        return true;
    }

private:
    int TakeNumber() { return qFromLittleEndian<qint32>(m_process.read(4).constData()); }

    QProcess m_process;
    qint64 m_nExpected = -1; // bytes of the picture that is on its way; below 0 for none
};

class CWindow : public QWidget {
public:
    CWindow(CPainter& painter, QString id, double fMax, int nFrames)
        : m_painter(painter), m_id(std::move(id)), m_fMax(fMax), m_nLast(nFrames)
    {
        QPalette colors = palette();
        colors.setColor(QPalette::Window, GROUND);
        setPalette(colors);
        m_painter.Tell(QString("set %1 0").arg(m_id));
        m_painter.Tell(QString("ease %1 %2").arg(m_id).arg(EASING_TIME));
        connect(&m_painter.Process(), &QProcess::readyReadStandardOutput,
                [this] { TakePicture(); });
        connect(&m_timer, &QTimer::timeout, [this] { NextFrame(); });
        m_timer.start(FRAME_TIME);
    }

protected:
    void paintEvent(QPaintEvent* /*pEvent*/) override { QPainter(this).drawImage(0, 0, m_image); }
    void resizeEvent(QResizeEvent* /*pEvent*/) override { Ask(0); }

private:
    void NextFrame()
    {
        if (m_bAsked) return; // the painter is behind: no time passes
        if (m_nLast && m_nFrame == m_nLast) return m_timer.stop();
        if (++m_nFrame % FRAMES_A_VALUE == 0) SetValue(m_nFrame / FRAMES_A_VALUE % (2 * STEPS));
        Ask(FRAME_TIME);
    }
    void SetValue(int nStep)
    {
        const double fValue = m_fMax * (STEPS - std::abs(STEPS - nStep)) / STEPS;
        m_painter.Tell(QString("set %1 %2").arg(m_id).arg(fValue));
    }
    // In the pixels of the screen: lines and hatches are to be as wide on every screen.
    void Ask(int nTime)
    {
        m_nTime += nTime;
        if (m_bAsked) return;
        m_asked = size() * devicePixelRatioF();
        const int nPercent = qRound(WHOLE * devicePixelRatioF());
        m_painter.Tell(QString("paint %1 %2 %3 %4")
                           .arg(m_asked.width())
                           .arg(m_asked.height())
                           .arg(nPercent)
                           .arg(std::exchange(m_nTime, 0)));
        m_bAsked = true;
    }
    void TakePicture()
    {
        QByteArray pixels;
        if (!m_bAsked || !m_painter.TakePicture(&pixels)) return;
        m_bAsked = false;
        if (pixels.isEmpty()) return;
        m_pixels = pixels; // the image shows these very bytes
        m_image =
            QImage(reinterpret_cast<const uchar*>(m_pixels.constData()), m_asked.width(),
                   m_asked.height(), 4 * m_asked.width(), QImage::Format_ARGB32_Premultiplied);
        m_image.setDevicePixelRatio(devicePixelRatioF());
        update();
        if (m_asked != size() * devicePixelRatioF()) Ask(0); // it was resized meanwhile
    }

    CPainter& m_painter;
    QString m_id;
    double m_fMax;
    int m_nLast;
    int m_nFrame = 0;
    int m_nTime = 0; // that the painter has not been told of
    bool m_bAsked = false;
    QSize m_asked;
    QByteArray m_pixels;
    QImage m_image;
    QTimer m_timer;
};

} // namespace

int main(int nArgs, char** ppszArgs)
{
    const QApplication app(nArgs, ppszArgs);
    const QStringList args = QApplication::arguments();
    if (args.size() < 7) {
        std::fprintf(stderr, "window DRAWING ID MAX FACE FRAMES COMMAND...\n");
        return 2;
    }
    CPainter painter(args[1], args[4], args.mid(6));
    const QSize size = painter.TakeSize();
    if (size.isEmpty()) {
        std::fprintf(stderr, "window: %s cannot be opened\n", ppszArgs[1]);
        return 1;
    }
    CWindow window(painter, args[2], args[3].toDouble(), args[5].toInt());
    window.setWindowTitle(args[1]);
    window.resize(size);
    window.show();
    QObject::connect(&painter.Process(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished),
                     [] { QApplication::exit(1); });
    return QApplication::exec();
}
