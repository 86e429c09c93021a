// SPDX-License-Identifier: Apache-2.0
#include "TranslationFile.h"

#include "KnownLocale.h"
#include "LinguistFile.h"
#include "LinguistProgram.h"
#include "PseudoText.h"
#include "ToolError.h"

#include <HVContentTranslator.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamWriter>

namespace HovletsTool {

namespace {

/// A string literal of C++.
QByteArray literal(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    bytes.replace('\\', "\\\\").replace('"', "\\\"");
    bytes.replace('\n', "\\n").replace('\r', "\\r");
    return '"' + bytes + '"';
}

/// The same for a context, which lupdate unescapes twice.
QByteArray contextLiteral(const QString &text)
{
    return literal(QString(text).replace(QLatin1Char('\\'), QLatin1String("\\\\")));
}

/// The texts as source code, which lupdate reads.
QByteArray sourceCode(const std::vector<TranslatableText> &texts)
{
    QByteArray code;
    for (const TranslatableText &text : texts)
        // The full stop also keeps a backslash from continuing the line.
        code += "//: " + text.comment.simplified().toUtf8() + ".\nQT_TRANSLATE_NOOP("
                + contextLiteral(text.context) + ", " + literal(text.source) + ");\n";
    return code;
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw ToolError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

QByteArray pseudoFile(const std::vector<TranslatableText> &texts, const QString &language,
                      int expansion)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("TS"));
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("2.1"));
    xml.writeAttribute(QStringLiteral("language"), language);
    for (const TranslatableText &text : texts) {
        xml.writeStartElement(QStringLiteral("context"));
        xml.writeTextElement(QStringLiteral("name"), text.context);
        xml.writeStartElement(QStringLiteral("message"));
        xml.writeTextElement(QStringLiteral("source"), text.source);
        xml.writeTextElement(QStringLiteral("translation"), pseudoText(text.source, expansion));
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    return bytes;
}

/// Whether releasePseudo() wrote the file, which always has the texts of the user interface.
bool isPseudoFile(const QString &path)
{
    Hovlets::HVContentTranslator translator(nullptr, [](const QString &) { /* ignored */ });
    bool isAny = false;
    for (const TranslatableText &text : userInterfaceTexts()) {
        const QString found = translator.find(path, text.source, text.context).value_or(QString());
        if (!found.isEmpty() && !found.startsWith(QLatin1Char('[')))
            return false;
        isAny = isAny || !found.isEmpty();
    }
    return isAny;
}

QString filePath(const QTemporaryDir &folder, const char *name)
{
    if (!folder.isValid())
        throw ToolError(
                QStringLiteral("no temporary folder can be created: %1").arg(folder.errorString()));
    return folder.filePath(QLatin1String(name));
}

} // namespace

TranslationFile::TranslationFile(const QDir &folder, const QString &name, const QString &locale)
    : m_locale(locale)
    , m_base(folder.filePath(QStringLiteral("%1_%2").arg(name, locale)))
{
}

QStringList TranslationFile::localesIn(const QDir &folder, const QString &name)
{
    const QString prefix = name + QLatin1Char('_');
    QStringList locales;
    const QStringList files = folder.entryList({ prefix + QStringLiteral("*.ts") }, QDir::Files);
    for (const QString &file : files) {
        const QString locale = QFileInfo(file).completeBaseName().mid(prefix.size());
        const QString known = QLocale(locale).name();
        // The library finds no other names.
        if (locale == known
            || (locale == known.section(QLatin1Char('_'), 0, 0) && isKnownLocale(locale)))
            locales += locale;
    }
    return locales;
}

bool TranslationFile::exists() const
{
    return QFileInfo(path()).isFile();
}

void TranslationFile::refuseSpecialFiles() const
{
    for (const QString &each : { path(), releasedPath() }) {
        const QFileInfo info(each);
        if (info.isSymLink() || (info.exists() && !info.isFile()))
            throw ToolError(QStringLiteral("%1 is not a regular file; remove it").arg(each));
    }
}

void TranslationFile::update(const std::vector<TranslatableText> &texts, const QLocale &source,
                             bool keepsObsolete) const
{
    refuseSpecialFiles();
    const LinguistProgram lupdate(QStringLiteral("lupdate"));
    const QString folder = QFileInfo(m_base).path();
    if (!QDir().mkpath(folder))
        throw ToolError(QStringLiteral("the folder %1 cannot be created").arg(folder));
    const QTemporaryDir scratch;
    const QString code = filePath(scratch, "texts.cpp");
    write(code, sourceCode(texts));
    QStringList arguments { QStringLiteral("-silent"), QStringLiteral("-locations"),
                            QStringLiteral("none") };
    arguments += { QStringLiteral("-source-language"), source.name() };
    arguments += { QStringLiteral("-target-language"), m_locale };
    if (!keepsObsolete)
        arguments += QStringLiteral("-no-obsolete");
    lupdate.run(arguments + QStringList { code, QStringLiteral("-ts"), path() });
}

void TranslationFile::release(bool withUnfinished) const
{
    refuseSpecialFiles();
    QStringList arguments { QStringLiteral("-silent") };
    if (!withUnfinished)
        arguments += QStringLiteral("-nounfinished");
    arguments += { path(), QStringLiteral("-qm"), releasedPath() };
    LinguistProgram(QStringLiteral("lrelease")).run(arguments);
}

void TranslationFile::refuseRealTranslation() const
{
    refuseSpecialFiles();
    const QString file = exists() ? path() : releasedPath();
    if (QFileInfo::exists(file) && !isPseudoFile(file))
        throw ToolError(
                QStringLiteral("%1 is a real translation; choose another --locale").arg(file));
}

void TranslationFile::releasePseudo(const std::vector<TranslatableText> &texts, int expansion) const
{
    refuseSpecialFiles();
    const LinguistProgram lrelease(QStringLiteral("lrelease"));
    const QString folder = QFileInfo(m_base).path();
    if (!QDir().mkpath(folder))
        throw ToolError(QStringLiteral("the folder %1 cannot be created").arg(folder));
    const QTemporaryDir scratch;
    const QString file = filePath(scratch, "pseudo.ts");
    write(file, pseudoFile(texts, m_locale, expansion));
    lrelease.run({ QStringLiteral("-silent"), file, QStringLiteral("-qm"), releasedPath() });
}

TranslationStatus TranslationFile::status(const std::vector<TranslatableText> &texts) const
{
    refuseSpecialFiles();
    TranslationStatus status;
    const LinguistFile file(path());
    Hovlets::HVContentTranslator released(nullptr, [](const QString &) { /* ignored */ });
    for (const TranslatableText &text : texts) {
        const auto translation = file.find({ text.source, { { text.context, {} } } });
        if (translation.state != LinguistFile::State::Finished) {
            ++status.unfinished;
            continue;
        }
        ++status.done;
        if (!QFileInfo(releasedPath()).isFile()
            || released.translate(releasedPath(), text.source, text.context) != translation.text)
            status.isReleased = false;
    }
    QSet<QPair<QString, QString>> used;
    for (const TranslatableText &text : texts)
        used.insert({ text.context, text.source });
    for (const LinguistFile::Source &source : file.translatedTexts())
        status.stale += used.contains({ source.context, source.text }) ? 0 : 1;
    return status;
}

} // namespace HovletsTool
