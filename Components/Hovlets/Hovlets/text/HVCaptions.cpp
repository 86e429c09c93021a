// SPDX-License-Identifier: Apache-2.0
#include "HVCaptions.h"

#include "HVRegularFile.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <array>
#include <optional>
#include <utility>

namespace Hovlets {

namespace {

/// The time in the three groups of a match that begin at \a group: hours, minutes and seconds.
double secondsOf(const QRegularExpressionMatch &match, int group)
{
    return match.captured(group).toInt() * 3600 + match.captured(group + 1).toInt() * 60
            + match.captured(group + 2).toDouble();
}

/// The caption without its text, if \a line contains its times.
std::optional<HVCaption> timesIn(const QString &line)
{
    static const QRegularExpression times(
            QStringLiteral("^(?:(\\d{1,4}):)?([0-5]\\d):([0-5]\\d\\.\\d{3})[ \\t]+-->[ \\t]+"
                           "(?:(\\d{1,4}):)?([0-5]\\d):([0-5]\\d\\.\\d{3})(?:[ \\t].*)?$"));
    const QRegularExpressionMatch match = times.match(line);
    if (!match.hasMatch())
        return {};
    constexpr int First = 1;
    constexpr int Second = 4;
    const HVCaption caption { secondsOf(match, First), secondsOf(match, Second), {} };
    return caption.begin < caption.end ? std::optional(caption) : std::nullopt;
}

/// Without tags, and with the character references of the format resolved.
QString plainText(QString text)
{
    static const QRegularExpression tag(QStringLiteral("<[^<>]*>"));
    static constexpr std::array<std::pair<const char *, const char16_t *>, 6> References {
        { { "&lt;", u"<" },
          { "&gt;", u">" },
          { "&nbsp;", u"\u00a0" },
          { "&lrm;", u"\u200e" },
          { "&rlm;", u"\u200f" },
          { "&amp;", u"&" } } // last: it may precede what reads like another reference
    };
    text.remove(tag);
    for (const auto &[reference, character] : References)
        text.replace(QLatin1String(reference), QString::fromUtf16(character));
    return text.simplified();
}

/// Reads a file line by line.
class CaptionReader
{
public:
    explicit CaptionReader(const QByteArray &file)
    {
        QString text = QString::fromUtf8(file);
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
        m_lines = text.split(QLatin1Char('\n'));
    }

    QVector<HVCaption> read()
    {
        static const QRegularExpression signature(QStringLiteral("^\\x{feff}?WEBVTT(?:[ \\t]|$)"));
        if (!signature.match(m_lines.constFirst()).hasMatch()) {
            report(0, QStringLiteral("the file does not begin with \"WEBVTT\""));
            return {};
        }
        while (m_at < m_lines.size() && !m_isCut)
            readBlock();
        return std::exchange(m_captions, {});
    }

    [[nodiscard]] QString problem() const { return m_problem; }
    [[nodiscard]] bool isCut() const { return m_isCut; }

private:
    /// Reads up to the next empty line.
    void readBlock()
    {
        std::optional<HVCaption> caption;
        QStringList text;
        for (; m_at < m_lines.size() && !m_lines.at(m_at).isEmpty(); ++m_at) {
            const QString &line = m_lines.at(m_at);
            if (caption)
                text += line;
            else if (line.contains(QLatin1String("-->")) && !(caption = timesIn(line)))
                report(m_at, QStringLiteral("the times are not valid"));
        }
        while (m_at < m_lines.size() && m_lines.at(m_at).isEmpty())
            ++m_at;
        if (!caption)
            return; // the header, a comment, a style or a region
        caption->text = plainText(text.join(QLatin1Char('\n')));
        if (caption->text.isEmpty())
            return;
        m_isCut = m_captions.size() >= MostCaptions;
        if (!m_isCut)
            m_captions += *caption;
    }

    void report(int line, const QString &problem)
    {
        if (m_problem.isEmpty())
            m_problem = QStringLiteral("line %1: %2").arg(line + 1).arg(problem);
    }

    QStringList m_lines; // at least one
    int m_at = 0;
    QVector<HVCaption> m_captions;
    QString m_problem;
    bool m_isCut = false;
};

} // namespace

QByteArray readCaptionFile(const QString &path)
{
    QFile file(path); // a path in Qt's resources has no other kind of file
    const bool isOpen = path.startsWith(QLatin1Char(':')) ? file.open(QIODevice::ReadOnly)
                                                          : openRegularFile(file, path);
    return isOpen && file.size() <= MostCaptionBytes ? file.read(MostCaptionBytes) : QByteArray();
}

QVector<HVCaption> readCaptions(const QByteArray &file, QString *problem, bool *isCut)
{
    CaptionReader reader(file);
    QVector<HVCaption> captions = reader.read();
    if (problem)
        *problem = reader.problem();
    if (isCut)
        *isCut = reader.isCut();
    return captions;
}

} // namespace Hovlets
