// SPDX-License-Identifier: Apache-2.0
#include "GeneratedContent.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <random>

namespace {

const char *const Words[] = {
    "the",      "a",        "of",       "to",      "and",       "in",       "is",       "with",
    "for",      "value",    "surface",  "edge",    "selected",  "object",   "curve",    "every",
    "move",     "over",     "view",     "preview", "level",     "distance", "offset",   "layer",
    "brush",    "size",     "colour",   "channel", "track",     "volume",   "press",    "hold",
    "while",    "dragging", "keeps",    "angle",   "between",   "two",      "parallel", "faces",
    "result",   "visible",  "Größe",    "Fläche",  "für",       "können",   "élément",  "sélection",
    "première", "größer",   "señal",    "también", "průměr",    "úhel",     "значение", "кривая",
    "表示",     "選択",     "レイヤー", "–",       "“preview”", "45°",      "µm",       "&amp;",
    "&lt;",     "&#228;",   "&#x2014;", "&quot;",  "1.5",       "100%",
};

/// The text of a control file, which depends only on the number of the file.
class ControlFileText
{
public:
    ControlFileText(int file, int size)
        : m_file(file)
        , m_size(size)
        , m_random(static_cast<unsigned>(file))
    {
    }

    QByteArray text()
    {
        m_text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
        m_text +=
                m_file % 3 == 0 ? "<!-- Reviewed. Keys are the controls' object names. -->\n" : "";
        m_text += m_file % 2 == 0 ? "<hovlets locale=\"en_US\">\n" : "<hovlets>\n";
        for (int entry = 0; entry == 0 || m_text.size() < m_size; ++entry)
            addEntry(entry);
        m_text += "</hovlets>\n";
        return m_text;
    }

private:
    // No standard distribution: their results differ between standard libraries.
    int upTo(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }

    QByteArray words(int count)
    {
        QByteArray result;
        for (int i = 0; i < count; ++i) {
            result += i == 0 ? "" : " ";
            result += Words[upTo(static_cast<int>(std::size(Words)))];
        }
        return result;
    }

    void addEntry(int entry)
    {
        m_text += "  <hovlet key=\"" + GeneratedContent::key(m_file, entry).toUtf8() + "\" title=\""
                + words(3) + "\"\n          shortcut=\"Ctrl+Shift+" + char('A' + upTo(26))
                + "\" ui=\"ui/HovletsUI.qml\">\n";
        m_text += "    <title>" + words(3) + "</title>\n";
        m_text += "    <text>" + words(12) + ".</text>\n";
        const int paragraphs = qMin(6, m_size / 800) + 1;
        for (int i = 0; i < paragraphs; ++i)
            addParagraph(i);
        m_text += "  </hovlet>\n";
    }

    void addParagraph(int number)
    {
        if (number % 2 == 0) {
            m_text += "    <paragraph><![CDATA[<p>" + words(30) + " <b>" + words(2) + "</b> "
                    + words(25) + ".</p>]]></paragraph>\n";
        } else {
            m_text += "    <paragraph image=\"Resources/figure" + QByteArray::number(upTo(100))
                    + ".png\" width='320'>" + words(60) + ".</paragraph>\n";
        }
    }

    int m_file;
    int m_size;
    std::mt19937 m_random;
    QByteArray m_text;
};

} // namespace

GeneratedContent::GeneratedContent(int files, int fileSize, int filesPerPackage)
{
    if (!m_folder.isValid())
        qFatal("no temporary folder: %s", qPrintable(m_folder.errorString()));
    for (int file = 0; file < files; ++file) {
        if (file % filesPerPackage == 0)
            m_folders += packageFolder(file / filesPerPackage) + QStringLiteral("/Control");
        m_files += m_folders.constLast() + QStringLiteral("/dialog%1.xml").arg(file);
        write(m_files.constLast(), ControlFileText(file, fileSize).text());
    }
}

QString GeneratedContent::path() const
{
    return QFileInfo(m_folder.path()).canonicalFilePath();
}

QString GeneratedContent::packageFolder(int package) const
{
    return QStringLiteral("%1/Package%2.hovlets").arg(path(), QString::number(package));
}

QString GeneratedContent::key(int file, int entry)
{
    return QStringLiteral("mainWindow.dialog%1.control%2").arg(file).arg(entry);
}

void GeneratedContent::write(const QString &path, const QByteArray &content)
{
    const QFileInfo info(path);
    if (!info.dir().exists())
        QDir().mkpath(info.path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}
