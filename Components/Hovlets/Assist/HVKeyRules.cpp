// SPDX-License-Identifier: Apache-2.0
#include "HVKeyRules.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <utility>

namespace Hovlets {

namespace {

constexpr qint64 LargestFile = 1024 * qint64(1024);

QString filledIn(QString key, const QRegularExpressionMatch &match)
{
    // Optional groups that did not match are empty, including those after the last one that did.
    for (int group = match.regularExpression().captureCount(); group >= 0; --group)
        key.replace(QLatin1Char('\\') + QString::number(group), match.captured(group));
    return key;
}

} // namespace

HVKeyRules::HVKeyRules(const QString &file)
    : m_file(file)
{
}

std::optional<QString> HVKeyRules::keyFor(const QStringList &subjects)
{
    readIfChanged();
    for (const Rule &rule : std::as_const(m_rules)) {
        for (const QString &subject : subjects) {
            const QRegularExpressionMatch match = rule.pattern.match(subject);
            if (match.hasMatch())
                return filledIn(rule.key, match);
        }
    }
    return std::nullopt;
}

QStringList HVKeyRules::errors()
{
    readIfChanged();
    return m_errors;
}

void HVKeyRules::readIfChanged()
{
    if (m_file.isEmpty())
        return;
    const QFileInfo now(m_file);
    if (m_wasRead && now.lastModified() == m_modified && now.size() == m_size)
        return;
    m_wasRead = true;
    m_modified = now.lastModified();
    m_size = now.size();
    m_rules.clear();
    m_errors.clear();
    QFile file(m_file);
    if (!now.isFile() || m_size > LargestFile || !file.open(QIODevice::ReadOnly)) {
        m_errors += QStringLiteral("%1:0: cannot be read").arg(m_file);
        return;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i)
        readLine(lines.at(i).trimmed(), i + 1);
}

void HVKeyRules::readLine(const QString &line, int number)
{
    if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
        return;
    const auto mistake = [&](const QString &message) {
        m_errors += QStringLiteral("%1:%2: %3").arg(m_file, QString::number(number), message);
    };
    const QLatin1String arrow("->");
    const int end = line.lastIndexOf(arrow);
    if (end < 0)
        return mistake(QStringLiteral("no \"->\" between the expression and the key"));
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(line.left(end).trimmed()),
                                     QRegularExpression::UseUnicodePropertiesOption);
    if (!pattern.isValid())
        return mistake(pattern.errorString());
    m_rules.append({ pattern, line.mid(end + arrow.size()).trimmed() });
}

} // namespace Hovlets
