// SPDX-License-Identifier: Apache-2.0
#include "HVContentTranslator.h"

#include "HVContentLocale.h"
#include "HVContext.h"
#include "HVDisplayBudget.h"
#include "HVLimits.h"
#include "HVTranslationCheck.h"

#include <QtCore/QDir>

#include <utility>

namespace Hovlets {

HVContentTranslator::HVContentTranslator(QObject *owner, std::function<void(const QString &)> warn)
    : m_owner(owner)
    , m_warn(std::move(warn))
{
}

HVContentTranslator::~HVContentTranslator()
{
    delete m_translator.data(); // it reads the bytes
}

void HVContentTranslator::contentShown()
{
    m_mayHaveChanged = true;
}

QString HVContentTranslator::translate(const QString &file, const QString &text,
                                       const QString &context)
{
    return find(file, text, context).value_or(text);
}

std::optional<QString> HVContentTranslator::find(const QString &file, const QString &text,
                                                 const QString &context)
{
    if (file.isEmpty())
        return {};
    if (!m_translator) {
        m_translator = new QTranslator(m_owner);
        m_file.clear();
    }
    // If the file is missing, the path is only a folder name. It must not be resolved in the host's
    // working directory.
    if (!QDir::isAbsolutePath(file)) {
        m_file.clear();
        return {};
    }
    if (!isCurrent(file) && !load(file))
        return {};
    const QString translation =
            m_translator->translate(context.toUtf8().constData(), text.toUtf8().constData());
    const int most = HVDisplayBudget::mostWritten(HVLimits::current());
    return translation.size() > most ? translation.left(most) : translation;
}

bool HVContentTranslator::isCurrent(const QString &file)
{
    if (file != m_file)
        return false;
    if (m_mayHaveChanged && !m_status.isSameAs(HVFileStatus(file)))
        return false;
    m_mayHaveChanged = false;
    return true;
}

bool HVContentTranslator::load(const QString &file)
{
    m_file.clear();
    const HVFileStatus status(file);
    if (file == m_skipped
        && (m_mayHaveChanged ? m_status.isSameAs(status) : m_status.looksLike(status)))
        return false;
    m_status = status;
    const qint64 limit = HVLimits::current().translationFileSize;
    HVFileBytes read = HVFileBytes::all(file, limit);
    if (read.result == HVFileBytes::Result::Unreadable)
        return false;
    read.bytes = completedTranslation(read.bytes);
    const QString problem = read.result == HVFileBytes::Result::Read
            ? translationProblem(read.bytes)
            : read.problem(limit);
    if (!problem.isNull())
        return skip(file, problem);
    const auto *data = reinterpret_cast<const uchar *>(read.bytes.constData());
    if (!m_translator->load(data, static_cast<int>(read.bytes.size())))
        return skip(file, QStringLiteral("damaged"));
    m_bytes = read.bytes; // the translator does not copy them
    m_file = file;
    m_skipped.clear();
    m_mayHaveChanged = false;
    return true;
}

/// Warns about a file unless the last warning was about the same one. Returns false.
bool HVContentTranslator::skip(const QString &file, const QString &problem)
{
    const bool isKnown = file == m_skipped;
    m_skipped = file;
    m_mayHaveChanged = false;
    if (!isKnown)
        m_warn(QStringLiteral("Translation file %1 is skipped: %2").arg(file, problem));
    return false;
}

QStringList translationFileNames(const HVContext &settings, const QString &written)
{
    const QString name = settings.get(HVKeyTranslationName).toString();
    QStringList files = translationLocaleNames(settings, written);
    for (QString &file : files)
        file = QStringLiteral("%1_%2.qm").arg(name, file);
    return files;
}

} // namespace Hovlets
