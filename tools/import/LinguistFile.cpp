// SPDX-License-Identifier: Apache-2.0
#include "LinguistFile.h"

#include "KnownLocale.h"
#include "ReadFile.h"
#include "ToolError.h"
#include "XmlMistake.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QXmlStreamReader>

namespace HovletsTool {

namespace {

constexpr qint64 MaxLinguistSize = qint64 { 64 } * 1024 * 1024; // bytes, far more than any has

/// A locale as the library writes it, such as es_EC for es_ec; empty if it is unknown.
QString localeFrom(QStringList parts)
{
    for (int i = 1; i < parts.size(); ++i) {
        QString &part = parts[i];
        part = part.size() == 4 ? part.left(1).toUpper() + part.mid(1).toLower() : part.toUpper();
    }
    parts[0] = parts[0].toLower();
    const QString name = parts.join(QLatin1Char('_'));
    return isKnownLocale(name) ? QLocale(name).name() : QString();
}

QString localeFrom(const QString &language)
{
    static const QRegularExpression separator(QStringLiteral("[-_]"));
    return localeFrom(language.split(separator));
}

/// The language at the end of a name such as app_es_ec.ts; empty if there is none.
QString localeOfFile(const QString &path)
{
    static const QRegularExpression separator(QStringLiteral("[-_.]"));
    const QStringList parts = QFileInfo(path).completeBaseName().split(separator);
    constexpr int MostParts = 3; // language, script, territory
    for (int count = qMin(MostParts, int(parts.size())); count > 0; --count) {
        const QStringList end = parts.mid(parts.size() - count);
        constexpr int LongestLanguage = 3; // longer words may be parts of the program's name
        if (end.first().size() > LongestLanguage)
            continue;
        const QString locale = localeFrom(end);
        if (!locale.isEmpty())
            return locale;
    }
    return {};
}

LinguistFile::State stateOf(const QXmlStreamAttributes &attributes)
{
    const auto type = attributes.value(QLatin1String("type"));
    if (type.isEmpty())
        return LinguistFile::State::Finished;
    return type == QLatin1String("unfinished") ? LinguistFile::State::Unfinished
                                               : LinguistFile::State::Missing; // no longer in use
}

} // namespace

LinguistFile::LinguistFile(const QString &path)
{
    read(path);
}

void LinguistFile::read(const QString &path)
{
    const QByteArray bytes = readFile(path, MaxLinguistSize);
    refuseLargeTags(bytes, path);
    QXmlStreamReader reader(bytes);
    bool isTranslation = false;
    QString language;
    Source source;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        const auto name = reader.name();
        if (name == QLatin1String("TS")) {
            isTranslation = true;
            language = reader.attributes().value(QLatin1String("language")).toString();
        } else if (name == QLatin1String("name")) {
            source.context = reader.readElementText();
        } else if (name == QLatin1String("message")) {
            source.text.clear();
            source.comment.clear();
        } else if (name == QLatin1String("source")) {
            source.text = allTextOf(reader);
        } else if (name == QLatin1String("comment")) {
            source.comment = allTextOf(reader);
        } else if (name == QLatin1String("translation")) {
            const State state = stateOf(reader.attributes());
            const QString text = allTextOf(reader);
            if (!text.isEmpty())
                add(source, { state, text });
        }
    }
    refuseMistakes(reader, path);
    if (!isTranslation)
        throw ToolError(QStringLiteral("%1 is not a translation file of Qt Linguist").arg(path));
    m_locale = language.isEmpty() ? localeOfFile(path) : localeFrom(language);
    if (!m_locale.isEmpty())
        return;
    throw ToolError(language.isEmpty()
                            ? QStringLiteral("%1 names no language; its root element must be <TS "
                                             "language=\"…\">, or its name end like app_de.ts")
                                      .arg(path)
                            : QStringLiteral("%1: unknown language \"%2\"; use a locale such as "
                                             "de_DE")
                                      .arg(path, language));
}

void LinguistFile::add(const Source &source, const Translation &translation)
{
    Translation &present = m_translations[source];
    if (translation.state < present.state)
        present = translation;
}

void LinguistFile::add(const LinguistFile &other)
{
    for (const auto &[source, translation] : other.m_translations)
        add(source, translation);
}

std::vector<LinguistFile::Source> LinguistFile::translatedTexts() const
{
    std::vector<Source> texts;
    for (const auto &[source, translation] : m_translations)
        texts.push_back(source);
    return texts;
}

LinguistFile::Translation LinguistFile::find(const FormText &text) const
{
    Translation best;
    for (const FormTextPlace &place : text.places) {
        for (const QString &comment : { place.comment, QString() }) { // as Qt does
            const auto found = m_translations.find({ place.context, text.text, comment });
            if (found != m_translations.end() && found->second.state < best.state)
                best = found->second;
        }
    }
    return best;
}

} // namespace HovletsTool
