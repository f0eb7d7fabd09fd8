// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// burnwick-bundle-pictures ICONS FOLDER: draws the SVG pictures in ICONS for a macOS bundle:
// the folder Burnwick.iconset, and the pictures bwIcon and settings in two resolutions.
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdlib>
#include <iostream>

namespace {

/// An empty array when the picture cannot be read.
QByteArray pngOf(const QString &svg, int pixels) {
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return {};
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        renderer.render(&painter);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

bool write(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    return !bytes.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
           file.flush();
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3 || !QDir().mkpath(arguments[2]))
        return EXIT_FAILURE;
    const QDir icons(arguments[1]);
    const QDir folder(arguments[2]);
    bool written = folder.mkpath(QStringLiteral("Burnwick.iconset"));
    for (const int points : {16, 32, 128, 256, 512}) {
        const QString svg = icons.filePath(QStringLiteral("burnwick.svg"));
        const QString name = folder.filePath(QStringLiteral("Burnwick.iconset/icon_%1x%1").arg(points));
        written = written && write(name + QStringLiteral(".png"), pngOf(svg, points)) &&
                  write(name + QStringLiteral("@2x.png"), pngOf(svg, 2 * points));
    }
    const struct {
        QString svg, name;
        int points;
    } pictures[] = {{QStringLiteral("burnwick-symbolic.svg"), QStringLiteral("bwIcon"), 16},
                    {QStringLiteral("settings-symbolic.svg"), QStringLiteral("settings"), 18}};
    for (const auto &picture : pictures) {
        const QString svg = icons.filePath(picture.svg);
        written =
            written &&
            write(folder.filePath(picture.name + QStringLiteral(".png")), pngOf(svg, picture.points)) &&
            write(folder.filePath(picture.name + QStringLiteral("@2x.png")), pngOf(svg, 2 * picture.points));
    }
    if (!written)
        std::cerr << "burnwick-bundle-pictures: a picture could not be read or written\n";
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
