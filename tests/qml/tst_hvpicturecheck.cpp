// SPDX-License-Identifier: Apache-2.0
#include "HVPictureCheck.h"
#include "HVPictureHeader.h"
#include "HVSvgCheck.h"
#include "TestMain.h"
#include "Text.h"

#include <QtTest/QtTest>

using namespace Hovlets;

namespace {

/// An SVG file with \a body in its root element, which has \a attributes.
QByteArray svg(const QByteArray &body, const QByteArray &attributes = {})
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:s=\"http://www.w3.org/2000/svg\" "
           "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"9\" height=\"9\" "
            + attributes + ">" + body + "</svg>";
}

QByteArray numbered(int count, const char *before, const char *after)
{
    QByteArray all;
    for (int i = 0; i < count; ++i)
        all += before + QByteArray::number(i) + after;
    return all;
}

QByteArray utf16(const QByteArray &text)
{
    const QString string = QString::fromUtf8(text);
    return { reinterpret_cast<const char *>(string.utf16()), static_cast<int>(2 * string.size()) };
}

} // namespace

/// Tests what decides whether Qt may decode a picture: neither Qt's decoders nor plug-ins are used.
class tst_HVPictureCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldAdmitOrdinarySvgFiles_data()
    {
        QTest::addColumn<QByteArray>("file");
        const auto row = [](const char *name, const QByteArray &file) {
            QTest::newRow(name) << file;
        };
        row("shapes",
            svg("<g><rect width='9' height='9'/><path d='M0 0L9 9z'/></g><text>x</text>"));
        row("declaration",
            "<?xml version='1.0' encoding='utf-8' standalone='no'?>\n<!-- Made by hand -->\n"
            "<!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' 'svg11.dtd'>\n"
                    + svg("<path/>"));
        row("byte order mark", "\xef\xbb\xbf" + svg({}));
        row("gradients",
            svg("<defs><linearGradient id='a'><stop offset='0'/></linearGradient>"
                "<radialGradient id='b' xlink:href='#a'/></defs>"
                "<rect fill='url(#a)' style=\"stroke:url( '#b' )\"/>"));
        row("style sheet", svg("<style>.a{fill:red}</style><circle class='a'/>"));
        row("link", svg("<a xlink:href='https://example.org'><rect/></a>"));
        row("data of an editor",
            svg("<sodipodi:namedview xmlns:sodipodi='s'/><metadata><rdf:RDF xmlns:rdf='r'>"
                "<cc:Work xmlns:cc='c' rdf:about=''><dc:format xmlns:dc='d'>image/svg+xml"
                "</dc:format></cc:Work></rdf:RDF></metadata>"));
        row("long path", svg("<path d='" + QByteArray("M0 0 L9 9 ").repeated(50000) + "'/>"));
    }

    void shouldAdmitOrdinarySvgFiles()
    {
        QFETCH(QByteArray, file);
        QCOMPARE(HVSvgCheck(file).problem(), QString());
        QVERIFY(HVSvgCheck::isQuicklyRead(file));
    }

    void shouldRefuseSvgFilesThatReachOthersOrTakeLong_data()
    {
        QTest::addColumn<QByteArray>("file");
        const auto row = [](const char *name, const QByteArray &file) {
            QTest::newRow(name) << file;
        };
        row("image", svg("<image xlink:href='/etc/passwd'/>"));
        row("image with a prefix", svg("<s:image xlink:href='/etc/passwd'/>"));
        row("image in an unknown namespace",
            svg("<x:image xmlns:x='u' xlink:href='/etc/passwd'/>"));
        row("image, encoded",
            "<?xml version='1.0' encoding='UTF-7'?>" + svg("+ADw-image xlink:href='/x'/>"));
        row("encoding other than UTF-8",
            "<?xml version='1.0' encoding='ISO-2022-JP'?>" + svg("<rect/>"));
        row("UTF-16", "\xff\xfe" + utf16(svg("<rect/>")));
        row("UTF-16 without a mark", utf16(svg("<rect/>")));
        row("compressed", QByteArray::fromHex("1f8b0800"));
        row("use with a prefix", svg("<g id='a'><s:use xlink:href='#a'/></g>"));
        row("pattern with a prefix", svg("<s:pattern/>"));
        row("filter with a prefix", svg("<s:filter/>"));
        row("unknown element", svg("<anything/>"));
        row("style sheet in another file", "<?xml-stylesheet href='/x'?>" + svg("<rect/>"));
        row("style sheet after another instruction",
            "<?a?><?xml-stylesheet href='/x'?>" + svg("<rect/>"));
        row("style sheet that imports another", svg("<style>@import '/x';</style>"));
        row("style that names a file", svg("<rect style='fill:url(/x)'/>"));
        row("gradient in another file", svg("<linearGradient xlink:href='/x#a'/>"));
        row("gradient of itself", svg("<linearGradient id='a' xlink:href='#a'/>"));
        row("gradients of each other",
            svg("<linearGradient id='a'/><linearGradient id='b' xlink:href='#a'/>"
                "<linearGradient id='a' xlink:href='#b'/>"));
        row("many gradients of each other",
            svg("<linearGradient id='a'/>"
                + numbered(1000, "<linearGradient xlink:href='#a' id='", "'/>")));
        row("entity", "<!DOCTYPE svg [<!ENTITY a 'b'>]>" + svg("<rect/>"));
        row("entity in an external type", "<!DOCTYPE svg SYSTEM '/x'>" + svg("&a;"));
        row("declared attributes",
            "<!DOCTYPE svg [" + QByteArray("<!ATTLIST a b CDATA ''>").repeated(9) + "]>"
                    + svg("<rect/>"));
        row("many attributes", svg("<rect/>", numbered(20000, "a", "='' ")));
        row("many attributes with ends of tags", svg("<rect/>", numbered(20000, "a", "='>' ")));
        row("many namespaces", svg("<rect/>", numbered(90, "xmlns:n", "='u' ")));
        row("many namespaces on many levels",
            svg(QByteArray("<g xmlns:a='u'>").repeated(60) + QByteArray("</g>").repeated(60)
                + numbered(90, "<g xmlns:b='", "'/>")));
        row("many levels",
            svg(QByteArray("<g>").repeated(10000) + QByteArray("</g>").repeated(10000)));
        row("many elements", svg(QByteArray("<rect/>").repeated(50000)));
        row("long text", svg("<text>" + QByteArray(50000, 'x') + "</text>"));
        row("long style sheet",
            svg("<style>" + QByteArray(".a{fill:red}").repeated(5000) + "</style>"));
        row("large file", svg("<path d='" + QByteArray(2000000, ' ') + "'/>"));
        row("torn", svg("<rect/>").chopped(3));
        row("other root", "<rect xmlns='http://www.w3.org/2000/svg'/>");
        row("nothing", {});
    }

    void shouldRefuseSvgFilesWithTooMuchToDraw()
    {
        const QByteArray file = svg(QByteArray("<rect/>").repeated(5000));
        const HVPictureHeader header { "svg", { 9, 9 } };
        QCOMPARE(HVPictureCheck(header, file, { 400, 400 }).problem(), QString());
        QVERIFY(!HVPictureCheck(header, file, { 400, 8000 }).problem().isEmpty());
    }

    void shouldRefuseGifFilesWhoseFrameIsLargerThanThePicture()
    {
        const HVPictureHeader header { "gif", { 300, 7 } };
        const QByteArray start = QByteArray::fromHex("474946383961 2c01 0700 80 0000 000000 ffffff"
                                                     "21f904 00000000 00");
        const auto problem = [&](const char *frame) {
            return HVPictureCheck(header, start + QByteArray::fromHex(frame), { 9, 9 }).problem();
        };
        QCOMPARE(problem("2c 0000 0000 2c01 0700 00"), QString());
        QCOMPARE(problem("2c 0100 0100 2b01 0600 00"), QString());
        QVERIFY(!problem("2c 0000 0000 2d01 0700 00").isEmpty());
        QVERIFY(!problem("2c ffff 0000 0100 0700 00").isEmpty());
        QVERIFY(!problem("2c 0000 0000 2c01 0800 00").isEmpty());
        QVERIFY(!problem("21f904").isEmpty());
    }

    void shouldRefuseSvgFilesThatReachOthersOrTakeLong()
    {
        QFETCH(QByteArray, file);
        QVERIFY(!HVSvgCheck(file).problem().isEmpty());
    }
};

HOVLETS_TEST_MAIN(tst_HVPictureCheck)

#include "tst_hvpicturecheck.moc"
