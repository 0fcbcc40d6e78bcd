#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

/// Draws an SVG file to pictures of several sizes.
/// usage: orvantine-draw-icons FILE.svg FOLDER SIDE…      makes FOLDER/SIDE.png
int main(int argc, char** argv)
{
    if (argc < 4)
        return 2;
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    if (!drawing.isValid())
        return 1;
    for (int number = 3; number < argc; ++number) {
        const int side = std::atoi(argv[number]);
        QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawing.render(&painter);
        painter.end();
        const QString path = u"%1/%2.png"_s.arg(QString::fromLocal8Bit(argv[2])).arg(side);
        if (!picture.save(path)) {
            std::fprintf(stderr, "Cannot write %s\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
