// Makes the pictures of the program from its drawings:
//     makepictures FOLDER DRAWING.svg ...
// Each drawing is painted in the colours of each theme and in all widths at which the program shows
// it. For each drawing and theme one file is written, which holds a QMap from the width in pixels
// to the bytes of a PNG, and for all of them pictures.qrc, which has a folder for each theme: a
// program in one theme has the pictures of the others not even in memory. What a theme does not
// change is there once, for the light.
#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMap>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cstdio>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

#include "widgets/style/Colori.h"

namespace lapvane {

namespace {

struct Theme {
    Tema Colours;
    const char* Suffix;
    const char* Folder;
};
constexpr Theme kThemes[] = {
    {Tema::Box, "-box", "box"}, {Tema::Scuro, "-dark", "dark"}, {Tema::Chiaro, "", "light"}};

using Widths = std::set<int>;

/// The widths at scale 1 at each scale of a desktop. Any other width is made of the next larger.
Widths AtEachScale(std::initializer_list<int> widths) {
    Widths all;
    for (const int width : widths) {
        for (const int quarters : {4, 5, 6, 7, 8, 10, 12}) all.insert(width * quarters / 4);
    }
    return all;
}

/// The widths of a drawing in pixels of the screen.
Widths WidthsOf(const QString& name, Tema theme) {
    // The ground of the first window is as large as all pictures of many icons: it has none for the
    // scales between.
    if (name == QLatin1String("splash")) return {520, 780, 1040, 1560};
    // Desktops show the sign of the program from 16 to 256.
    if (name == QLatin1String("lapvane")) return {16, 20, 24, 32, 40, 48, 64, 96, 128, 256};
    // The signs of message boxes are half as large again as the icons of tool bars.
    static const QStringList kSigns{QStringLiteral("Avviso"), QStringLiteral("Domanda"),
                                    QStringLiteral("Errore"), QStringLiteral("Informazione")};
    if (kSigns.contains(name)) return AtEachScale({16, 24, 36, 42, 48, 54, 66, 72});
    // Larger in the pit lane, as its letters are.
    if (theme == Tema::Box) return AtEachScale({24, 32, 36, 44, 48});
    // Menus, tool bars beside letters of 9, 11, 12.5 and 14 pt, cards.
    return AtEachScale({16, 24, 28, 32, 36});
}

void Check(bool done, const QString& file) {
    if (!done) throw std::runtime_error("cannot read or write " + file.toStdString());
}

void Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    Check(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush(),
          path);
}

QByteArray Read(const QString& path) {
    QFile file(path);
    Check(file.open(QIODevice::ReadOnly), path);
    return file.readAll();
}

/// The drawing with its colours changed for the theme. The drawings are made for the light one.
QByteArray Tinted(QByteArray svg, Tema theme) {
    const Colori& light = ColoriDi(Tema::Chiaro);
    const Colori& c = ColoriDi(theme);
    const auto change = [&svg](const QColor& from, const QColor& to) {
        svg.replace(from.name().toLatin1(), to.name().toLatin1());
    };
    if (theme == Tema::Scuro) change(QColor(0xB87200), QColor(0xD08300));  // settings
    if (theme == Tema::Box) change(QColor(0x76839A), c.Edge);              // the thing
    for (const auto& [from, to] : {std::pair{light.Accent, c.Accent},
                                   {light.Warn, c.Warn},
                                   {light.Err, c.Err},
                                   {light.AccentText, c.AccentText}}) {
        change(from, to);
    }
    return svg;
}

QImage Painted(QSvgRenderer& drawing, int width) {
    const QSize size = drawing.defaultSize().scaled(width, 4 * width, Qt::KeepAspectRatio);
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter pen(&picture);
    drawing.render(&pen, QRectF(QPointF(), size));
    pen.end();
    return picture;
}

/// The colour of a softened edge, so coarse that there are few and nobody sees it: its cover to 4
/// of 255, its colour the coarser the less of it there is.
QRgb Coarse(QRgb colour) {
    const auto nearest = [](int value, int step) {
        return std::min(255, (value + step / 2) / step * step);
    };
    if (qAlpha(colour) == 255) return colour;
    const int alpha = nearest(qAlpha(colour), 8);
    if (alpha == 0) return 0;
    const int step = std::max(1, 1024 / alpha);
    return qRgba(nearest(qRed(colour), step), nearest(qGreen(colour), step),
                 nearest(qBlue(colour), step), alpha);
}

/// Without a cover where the picture fills its corners.
QImage WithoutTable(const QImage& plain) {
    const bool holes = qAlpha(plain.pixel(0, 0)) != 255;
    return holes ? plain : plain.convertToFormat(QImage::Format_RGB32);
}

/// The same with a table of colours; as it is if that would have more than 256.
QImage WithTable(const QImage& picture) {
    const QImage plain = picture.convertToFormat(QImage::Format_ARGB32);
    QList<QRgb> table;
    QImage indexed(plain.size(), QImage::Format_Indexed8);
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            const QRgb colour = Coarse(plain.pixel(x, y));
            qsizetype at = table.indexOf(colour);
            if (at < 0) {
                at = table.size();
                table.append(colour);
                if (table.size() > 256) return WithoutTable(plain);
                indexed.setColorTable(table);
            }
            indexed.setPixel(x, y, static_cast<uint>(at));
        }
    }
    return indexed;
}

/// The drawing in all those widths, as bytes of a file.
QByteArray Pictures(const QByteArray& svg, const Widths& widths) {
    QSvgRenderer drawing(svg);
    Check(drawing.isValid(), QStringLiteral("a drawing"));
    QMap<qint32, QByteArray> pictures;
    for (const int width : widths) {
        QImage picture = WithTable(Painted(drawing, width));
        // Without a resolution, which would be in each.
        picture.setDotsPerMeterX(0);
        picture.setDotsPerMeterY(0);
        QBuffer png(&pictures[width]);
        Check(picture.save(&png, "PNG", 0), QStringLiteral("a picture"));
    }
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << pictures;
    return bytes;
}

void MakePictures(const QDir& folder, const QStringList& drawings) {
    QByteArray list;
    for (const QString& path : drawings) {
        const QString name = QFileInfo(path).completeBaseName();
        const QByteArray light = Read(path);
        // These two have colours of their own.
        const bool plain = name == QLatin1String("splash") || name == QLatin1String("lapvane");
        Widths common;  // of the themes that have the light one's colours
        for (const auto& [theme, suffix, inside] : kThemes) {
            const QByteArray svg = plain ? light : Tinted(light, theme);
            Widths widths = WidthsOf(name, theme);
            if (theme == Tema::Chiaro) widths.merge(common);
            if (theme != Tema::Chiaro && svg == light) {
                common.merge(widths);
                continue;
            }
            const QString file = name + QLatin1String(suffix);
            Write(folder.filePath(file), Pictures(svg, widths));
            list += "<file alias=\"" + QByteArray(inside) + '/' + name.toLatin1() + "\">" +
                    file.toLatin1() + "</file>\n";
        }
    }
    Write(folder.filePath(QStringLiteral("pictures.qrc")),
          "<RCC><qresource prefix=\"/pictures\">\n" + list + "</qresource></RCC>\n");
}

}  // namespace

}  // namespace lapvane

int main(int argc, char* argv[]) {
    try {
        if (argc < 3) throw std::runtime_error("makepictures FOLDER DRAWING.svg ...");
        QStringList drawings;
        for (int i = 2; i < argc; ++i) drawings.append(QFile::decodeName(argv[i]));
        lapvane::MakePictures(QDir(QFile::decodeName(argv[1])), drawings);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
