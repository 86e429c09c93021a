// SPDX-License-Identifier: Apache-2.0
#include "HVContentTranslator.h"

#include <QtCore/QTranslator>

namespace Hovlets {

HVContentTranslator::HVContentTranslator() = default;

HVContentTranslator::~HVContentTranslator() = default;

QString HVContentTranslator::translate(const QString &file, const QString &text,
                                       const QString &context)
{
    if (file.isEmpty())
        return text;
    if (!m_translator)
        m_translator = std::make_unique<QTranslator>();
    if (file != m_file) {
        m_file.clear();
        if (!m_translator->load(file))
            return text;
        m_file = file;
    }
    return m_translator->translate(context.toUtf8().constData(), text.toUtf8().constData());
}

} // namespace Hovlets
