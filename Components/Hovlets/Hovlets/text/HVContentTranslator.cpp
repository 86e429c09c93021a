// SPDX-License-Identifier: Apache-2.0
#include "HVContentTranslator.h"

#include "HVContentLocale.h"
#include "HVContext.h"

namespace Hovlets {

HVContentTranslator::HVContentTranslator(QObject *owner)
    : m_owner(owner)
{
}

HVContentTranslator::~HVContentTranslator()
{
    delete m_translator.data();
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

QString translationFileName(const HVContext &settings)
{
    const QString name = settings.get(HVKeyTranslationName).toString();
    return QStringLiteral("%1_%2.qm").arg(name, translationLocale(settings).name());
}

} // namespace Hovlets
