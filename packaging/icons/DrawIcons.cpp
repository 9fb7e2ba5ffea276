// Draws the program's icon in the sizes that desktops ask for, while the program is being built.
//     draw_icons DRAWING.svg FOLDER SIDE...   writes FOLDER/SIDExSIDE.png
#include <QCoreApplication>
#include <QImageReader>

#include <cstdio>

namespace {

bool draw(const QString& drawing, const QString& folder, int side)
{
    QImageReader reader(drawing);
    reader.setScaledSize({side, side});
    const QImage picture = reader.read();
    return !picture.isNull() && picture.save(QStringLiteral("%1/%2x%2.png").arg(folder).arg(side));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("draw_icons DRAWING.svg FOLDER SIDE...\n", stderr);
        return 2;
    }
    for (const QString& side : arguments.sliced(3)) {
        if (!draw(arguments[1], arguments[2], side.toInt())) {
            std::fprintf(stderr, "draw_icons: cannot draw it %s pixels wide\n", qPrintable(side));
            return 1;
        }
    }
    return 0;
}
