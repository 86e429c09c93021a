// SPDX-License-Identifier: Apache-2.0
#include "HostileInputs.h"
#include "TranslationFile.h"

#include <cstring>

#include <QtCore/QBuffer>
#include <QtCore/QtEndian>
#include <QtGui/QImage>

namespace {

QByteArray encoded(int width, int height, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImage image(width, height, QImage::Format_Mono);
    image.fill(0);
    image.save(&buffer, format);
    return bytes;
}

QByteArray pngOf(quint32 width, quint32 height)
{
    QByteArray bytes = encoded(16, 16, "PNG");
    qToBigEndian(width, bytes.data() + 16);
    qToBigEndian(height, bytes.data() + 20);
    return bytes;
}

QByteArray bmpOf(qint32 width, qint32 height)
{
    QByteArray bytes = encoded(16, 16, "BMP");
    qToLittleEndian(width, bytes.data() + 18);
    qToLittleEndian(height, bytes.data() + 22);
    return bytes;
}

QByteArray gifOf(quint16 width, quint16 height, int frames)
{
    QByteArray size(4, '\0');
    qToLittleEndian(width, size.data());
    qToLittleEndian(height, size.data() + 2);
    QByteArray bytes = "GIF89a" + size + QByteArray("\x80\0\0\0\0\0\xff\xff\xff", 9);
    for (int frame = 0; frame < frames; ++frame) {
        bytes += QByteArray("\x2c\0\0\0\0", 5) + size + QByteArray("\0\2\2\x44\1\0", 6);
    }
    return bytes + ";";
}

QByteArray svgOf(const QByteArray &body, const QByteArray &size = "100")
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" "
           "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\""
            + size + "\" height=\"" + size + "\">" + body + "</svg>";
}

/// A small picture with \a count texts of 40 MB each.
QByteArray withTexts(int count)
{
    QImage image(16, 16, QImage::Format_Mono);
    image.fill(0);
    const QString text(40000000, QLatin1Char('x'));
    for (int i = 0; i < count; ++i)
        image.setText(QString::number(i), text);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A frame of 9 x 7 pixels for readers that look for a length after a marker that has none.
QByteArray hiddenJpeg(const QByteArray &jpeg)
{
    const QByteArray frame = QByteArray::fromHex("ffc0 0011 08 0007 0009 03");
    return QByteArray::fromHex("ffd8 ffd0 ffe0 fffd")
            + (QByteArray(65500, '\0') + frame).leftJustified(65531, '\0') + jpeg.mid(2);
}

/// Thirty references to one picture, which is made only when it is shown.
HostileInput picture(const QByteArray &name, const QByteArray &suffix,
                     const std::function<QByteArray()> &make)
{
    const QByteArray file = "x." + suffix;
    return { "picture", suffix + " " + name, [=](const HostilePackage &package) {
                package.write(QStringLiteral("Resources/") + QString::fromLatin1(file), make());
                package.entry({}, ("<img src=\"" + file + "\"/>").repeated(30));
            } };
}

QByteArray svgWithAttributes(int count)
{
    QByteArray attributes;
    for (int i = 0; i < count; ++i)
        attributes += " a" + QByteArray::number(i) + "=\"\"";
    return "<svg" + attributes + " width=\"9\" height=\"9\"/>";
}

struct Drawing
{
    const char *name;
    QByteArray (*make)();
};

constexpr Drawing Drawings[] = {
    { "nested", [] { return svgOf(QByteArray("<g>").repeated(100000)); } },
    { "shapes",
      [] { return svgOf(QByteArray("<circle r=\"50\" stroke=\"red\"/>").repeated(25000)); } },
    { "dashes",
      [] {
          return svgOf("<line x2=\"1e9\" y2=\"1e9\" stroke=\"red\" stroke-width=\"9\" "
                       "stroke-dasharray=\"0.00001\"/>");
      } },
    { "path",
      [] {
          return svgOf("<path stroke=\"red\" d=\"M0 0" + QByteArray(" L99 1 L1 99").repeated(80000)
                       + "\"/>");
      } },
    { "far path",
      [] {
          return svgOf("<path stroke=\"red\" stroke-width=\"1e30\" d=\"M-1e30 0L1e30 1e30\"/>");
      } },
    { "fonts", [] { return svgOf("<text font-size=\"1e9\" x=\"1\" y=\"99\">x</text>"); } },
    { "many texts",
      [] { return svgOf(QByteArray("<text font-size=\"99\">x</text>").repeated(30000)); } },
    { "gradients",
      [] {
          return svgOf("<linearGradient id=\"g\" xlink:href=\"#g\"/>"
                       "<rect fill=\"url(#g)\" width=\"99\" height=\"99\"/>");
      } },
    { "uses itself", [] { return svgOf("<g id=\"a\"><use xlink:href=\"#a\"/></g>"); } },
    { "names a file",
      [] { return svgOf("<image xlink:href=\"/dev/zero\" width=\"9\" height=\"9\"/>"); } },
    { "entities", [] { return "<!DOCTYPE svg [<!ENTITY a 'x'>]>" + svgOf("&a;"); } },
    { "8000", [] { return svgOf("<rect width=\"9\" height=\"9\"/>", "5700"); } },
    { "names a file with a prefix",
      [] {
          return svgOf("<s:image xmlns:s=\"http://www.w3.org/2000/svg\" "
                       "xlink:href=\"/dev/zero\" width=\"9\" height=\"9\"/>");
      } },
    { "comment before the root",
      [] { return "<!-- <svg " + QByteArray(260000, 'x') + "-->" + svgOf({}); } },
    { "attributes", [] { return svgWithAttributes(15000); } },
};

void addPictures(QList<HostileInput> &inputs)
{
    for (const int side : { 5700, 20000 })
        inputs += picture(QByteArray::number(side), "png",
                          [=] { return encoded(side, side, "PNG"); });
    inputs += picture("9000", "bmp", [] { return encoded(9000, 9000, "BMP"); });
    for (const quint32 side : { 100u, 60000u, 0x7fffffffu, 0xffffffffu }) {
        inputs += picture("said to be " + QByteArray::number(side), "png",
                          [=] { return pngOf(side, side); });
        inputs += picture("said to be " + QByteArray::number(side), "bmp",
                          [=] { return bmpOf(qint32(side), qint32(side)); });
    }
    inputs += picture("65535", "gif", [] { return gifOf(65535, 65535, 1); });
    inputs += picture("5000, 20000 frames", "gif", [] { return gifOf(5000, 5000, 20000); });
    for (const Drawing &drawing : Drawings)
        inputs += picture(drawing.name, "svg", drawing.make);
    inputs += picture("compressed texts", "png", [] { return withTexts(6); });
    inputs += picture("hidden size", "jpg", [] { return hiddenJpeg(encoded(9000, 9000, "JPG")); });
    for (const char *suffix : { "png", "gif", "jpg", "webp", "svg", "bmp", "ico", "tiff" })
        inputs += picture("zeros", suffix, [] { return QByteArray(1000000, '\0'); });
    for (const char *format : { "PNG", "BMP", "JPG", "WEBP" }) {
        const QByteArray whole = encoded(64, 64, format);
        for (int at = 1; at < whole.size() && at < 120; at += 17) {
            QByteArray bytes = whole;
            bytes[at] = char(bytes.at(at) ^ 0xff);
            inputs +=
                    picture("flipped at " + QByteArray::number(at), format, [=] { return bytes; });
            inputs += picture("cut at " + QByteArray::number(at), format,
                              [=] { return whole.left(at); });
        }
    }
}

HostileInput translation(const QByteArray &name, const std::function<QByteArray()> &make)
{
    return { "translation", name, [=](const HostilePackage &package) {
                package.write(QStringLiteral("l10n/Hovlets_en_US.qm"), make());
                package.entry("title=\"text\"", "<p>text</p><p>other</p>");
            } };
}

void addTranslations(QList<HostileInput> &inputs)
{
    const QByteArray whole = translationFile(
            { { "attack", "text", QStringLiteral("Wort") }, { "", "other", QStringLiteral("x") } },
            true);
    for (int at = 0; at < whole.size(); at += 5) {
        QByteArray bytes = whole;
        bytes[at] = char(bytes.at(at) ^ (at % 2 ? 0x80 : 0xff));
        inputs += translation("flipped at " + QByteArray::number(at), [=] { return bytes; });
        inputs += translation("cut at " + QByteArray::number(at), [=] { return whole.left(at); });
    }
    inputs += translation("doubled", [=] { return whole + whole; });
    inputs += translation("zeros", [=] { return whole.left(16) + QByteArray(10000000, '\0'); });
    inputs += translation("ones", [=] { return whole.left(16) + QByteArray(10000000, '\xff'); });
    inputs += translation("too large", [=] { return whole + QByteArray(20000000, '\0'); });
    for (const char *piece : { "y", "</b>", "<p style=\"color:red;", "y\t", " " }) {
        inputs += { "translation", "long " + QByteArray(piece).simplified(),
                    [=](const HostilePackage &package) {
                        const QString text =
                                QString::fromLatin1(piece).repeated(7000000 / int(strlen(piece)));
                        package.write(QStringLiteral("l10n/Hovlets_en_US.qm"),
                                      translationFile("attack", "text", text));
                        package.entry("title=\"text\" shortcut=\"text\"",
                                      QByteArray("<p>text</p>").repeated(290));
                    } };
    }
}

void addCaptions(QList<HostileInput> &inputs)
{
    const auto add = [&](const QByteArray &name, const QByteArray &file) {
        inputs += { "captions", name, [=](const HostilePackage &package) {
                       package.write(QStringLiteral("Resources/x.mp4"), "x");
                       package.write(QStringLiteral("Resources/x.vtt"), "WEBVTT\n\n" + file);
                       package.entry("title=\"t\" clip=\"x.mp4\"", "<p>x</p>");
                   } };
    };
    const QByteArray at = "00:00.000 --> 00:01.000\n";
    constexpr int Largest = 65500; // bytes; the library reads no larger file
    for (const char *piece : { "<", "<b>", "&lt;", "%(", "-->", "\xe0\xb8\x81\xe0\xb9\x89" })
        add("long " + QByteArray(piece), at + times(Largest / int(strlen(piece)) - 9, piece));
    add("200 long ones", (at + times(290, "x") + "\n\n").repeated(200));
    add("many times", at.repeated(Largest / at.size()));
    add("many empty ones", (at + "\n").repeated(Largest / (at.size() + 1)));
    add("empty lines", times(Largest, "\n"));
    add("too large", at + times(20000000, "x"));
}

/// Each file of a package becomes something else after it was indexed.
void addSpecialFiles(QList<HostileInput> &inputs)
{
    const char *corpus = "special file";
    const auto make = [](const HostilePackage &package) {
        package.write(QStringLiteral("Resources/x.png"), encoded(16, 16, "PNG"));
        package.write(QStringLiteral("Resources/x.mp4"), "x");
        package.write(QStringLiteral("Resources/x.vtt"), "WEBVTT\n\n00:00.000 --> 00:01.000\nA\n");
        package.write(QStringLiteral("l10n/Hovlets_en_US.qm"),
                      translationFile("attack", "text", QStringLiteral("Wort")));
        package.write(QStringLiteral("ui/Own.qml"), PackageFolder::userInterface(10, 10));
        package.entry("title=\"text\" clip=\"x.mp4\" ui=\"ui/Own.qml\"",
                      "<p>text</p><img src=\"x.png\"/>");
        package.write(QStringLiteral("Control/plain.xml"),
                      "<hovlets search=\"Default\"><hovlet key=\"attack\" clip=\"x.mp4\">"
                      "<p>text</p><img src=\"x.png\"/></hovlet></hovlets>");
    };
    for (const char *name :
         { "Control/attack.xml", "Control/plain.xml", "Resources/x.png", "Resources/x.mp4",
           "Resources/x.vtt", "l10n/Hovlets_en_US.qm", "ui/Own.qml" }) {
        const QString file = QString::fromLatin1(name);
        const QByteArray at = " at " + QByteArray(name);
        inputs.append({ corpus, "pipe" + at, make,
                        [=](const HostilePackage &package) { package.pipe(file); } });
        inputs.append({ corpus, "socket" + at, make,
                        [=](const HostilePackage &package) { package.socket(file); } });
        inputs.append({ corpus, "folder" + at, make,
                        [=](const HostilePackage &package) { package.folder(file); } });
        for (const char *target : { "/dev/zero", "/dev/tty", "/dev/full", "/proc/self/mem",
                                    "/proc/kmsg", "/nonexistent" }) {
            inputs.append({ corpus, target + at, make, [=](const HostilePackage &package) {
                               package.link(QString::fromLatin1(target), file);
                           } });
        }
        inputs.append({ corpus, "link to itself" + at, make, [=](const HostilePackage &package) {
                           package.link(package.path(file), file);
                       } });
    }
}

} // namespace

QList<HostileInput> hostileFiles()
{
    QList<HostileInput> inputs;
    addPictures(inputs);
    addTranslations(inputs);
    addCaptions(inputs);
    addSpecialFiles(inputs);
    return inputs;
}
