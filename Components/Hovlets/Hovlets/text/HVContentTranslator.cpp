// SPDX-License-Identifier: Apache-2.0
#include "HVContentTranslator.h"

#include "HVContentLocale.h"
#include "HVContext.h"
#include "HVSettings.h"
#include "HVView.h"

#include <QtCore/QTranslator>

namespace Hovlets {

HVContentTranslator::HVContentTranslator(QObject *owner)
    : m_owner(owner)
{
}

QString HVContentTranslator::translate(const QString &file, const QString &text,
                                       const QString &context)
{
    if (file.isEmpty())
        return text;
    if (!m_translator)
        m_translator = new QTranslator(m_owner);
    if (file != m_file) {
        m_file.clear();
        if (!m_translator->load(file))
            return text;
        m_file = file;
    }
    return m_translator->translate(context.toUtf8().constData(), text.toUtf8().constData());
}

QString translationFile(const HVView &view, const HVContext &context)
{
    const QString name = context.get(HVKeyTranslationName).toString();
    return view.findComponent(
            QStringLiteral("l10n_name"), HVKeyTranslationFolder,
            defaultOf(HVKeyTranslationFolder).toString(),
            QStringLiteral("%1_%2.qm").arg(name, translationLocale(context).name()));
}

} // namespace Hovlets
