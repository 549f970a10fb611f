// Draws an SVG picture with smooth edges into an image in memory, once for each line that it reads,
// and prints how many nanoseconds that took. The picture is parsed once, before. A line that is not
// empty names a file for the rows of the image.
//     SvgDraws PICTURE.svg WIDTH HEIGHT
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <fstream>
#include <iostream>
#include <string>

int main(int nArgs, char** ppszArgs)
{
    const QGuiApplication app(nArgs, ppszArgs);
    if (nArgs != 4) return 2;
    QSvgRenderer picture(QString::fromLocal8Bit(ppszArgs[1]));
    QImage image(std::stoi(ppszArgs[2]), std::stoi(ppszArgs[3]),
                 QImage::Format_ARGB32_Premultiplied);
    if (!picture.isValid() || image.isNull()) return 2;
    image.fill(Qt::white);
    for (std::string line; std::getline(std::cin, line);) {
        QElapsedTimer clock;
        clock.start();
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            picture.render(&painter);
        }
        const qint64 nTime = clock.nsecsElapsed();
        if (!line.empty())
            std::ofstream(line, std::ios::binary)
                .write(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
        std::cout << nTime << std::endl; // the file is whole by now
    }
    return 0;
}
