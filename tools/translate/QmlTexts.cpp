// SPDX-License-Identifier: Apache-2.0
#include "QmlTexts.h"

#include "LinguistProgram.h"
#include "ToolError.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>

#include <algorithm>

namespace HovletsTool {

namespace {

constexpr qint64 LargestFile = qint64 { 4 } * 1024 * 1024; // bytes, far more than anybody writes

/// Whether the file may mark texts. Most user interfaces mark none, and then need no lupdate.
bool mayMarkTexts(const QString &path)
{
    QFile file(path);
    if (file.size() > LargestFile || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray code = file.read(LargestFile);
    const QByteArrayList marks { "qsTr", "QT_TR_NOOP", "QT_TRANSLATE_NOOP" };
    return std::any_of(marks.begin(), marks.end(),
                       [&](const QByteArray &mark) { return code.contains(mark); });
}

QStringList markedFiles(const QString &package)
{
    QStringList files;
    QDirIterator each(package, { QStringLiteral("*.qml"), QStringLiteral("*.js") },
                      QDir::Files | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (each.hasNext()) {
        const QString file = each.next();
        if (each.fileInfo().isFile() && mayMarkTexts(file)) // pipes and devices are not
            files += file;
    }
    files.sort();
    return files;
}

/// The text of the element that begins, in which lupdate writes control characters as elements.
QString readText(QXmlStreamReader &reader)
{
    QString text;
    while (reader.readNext() == QXmlStreamReader::Characters || reader.isStartElement()
           || (reader.isEndElement() && reader.name() == QLatin1String("byte"))) {
        if (reader.isStartElement())
            text += QChar(reader.attributes()
                                  .value(QLatin1String("value"))
                                  .toString()
                                  .mid(1)
                                  .toUShort(nullptr, 16));
        else
            text += reader.text();
    }
    return text;
}

/// The texts in a file that lupdate wrote. Those that qsTrId() marks have an identifier instead of
/// a source text, and are not translated.
std::vector<TranslatableText> readTexts(const QString &path)
{
    QFile file(path);
    std::vector<TranslatableText> texts;
    if (!file.open(QIODevice::ReadOnly))
        return texts; // without texts, lupdate writes no file
    QXmlStreamReader reader(&file);
    QString context;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const auto name = reader.name();
        if (name == QLatin1String("name"))
            context = reader.readElementText();
        else if (name == QLatin1String("message"))
            texts.push_back({ context, {}, QStringLiteral("Text of the user interface") });
        else if (texts.empty())
            continue;
        else if (name == QLatin1String("source"))
            texts.back().source = readText(reader);
        else if (name == QLatin1String("extracomment"))
            texts.back().comment = reader.readElementText();
    }
    texts.erase(std::remove_if(texts.begin(), texts.end(),
                               [](const auto &text) { return text.source.isEmpty(); }),
                texts.end());
    return texts;
}

std::vector<TranslatableText> textsIn(const QStringList &files)
{
    if (files.isEmpty())
        return {};
    const QTemporaryDir scratch;
    const QString list = scratch.filePath(QStringLiteral("files.txt"));
    const QString texts = scratch.filePath(QStringLiteral("texts.ts"));
    QFile listFile(list);
    const QByteArray lines = files.join(QLatin1Char('\n')).toLocal8Bit() + '\n';
    if (!listFile.open(QIODevice::WriteOnly) || listFile.write(lines) != lines.size()
        || !listFile.flush())
        throw ToolError(
                QStringLiteral("%1 cannot be written: %2").arg(list, listFile.errorString()));
    LinguistProgram(QStringLiteral("lupdate"))
            .run({ QStringLiteral("-silent"), QStringLiteral("-locations"), QStringLiteral("none"),
                   QLatin1Char('@') + list, QStringLiteral("-ts"), texts });
    return readTexts(texts);
}

} // namespace

const std::vector<TranslatableText> &QmlTexts::in(const QString &package)
{
    const auto known = m_known.constFind(package);
    return known == m_known.cend() ? *m_known.insert(package, textsIn(markedFiles(package)))
                                   : *known;
}

} // namespace HovletsTool
