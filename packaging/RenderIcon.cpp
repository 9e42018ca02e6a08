// Renders the scalable icon as a square PNG, for desktops that want bitmap sizes. No
// application object: the icon is shapes only, and painting them needs no display.
//   tallyvox_render_icon ICON.svg SIZE OUT.png

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fputs("usage: tallyvox_render_icon ICON.svg SIZE OUT.png\n", stderr);
        return 2;
    }
    const QString svgPath = QString::fromLocal8Bit(argv[1]);
    const int size = QString::fromLatin1(argv[2]).toInt();
    const QString pngPath = QString::fromLocal8Bit(argv[3]);
    QSvgRenderer renderer(svgPath);
    if (!renderer.isValid() || size <= 0) {
        std::fprintf(stderr, "tallyvox_render_icon: cannot render %s at size %s\n", argv[1],
                     argv[2]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(pngPath, "PNG")) {
        std::fprintf(stderr, "tallyvox_render_icon: cannot write %s\n", argv[3]);
        return 1;
    }
    return 0;
}
