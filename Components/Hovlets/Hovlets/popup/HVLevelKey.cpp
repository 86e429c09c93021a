// SPDX-License-Identifier: Apache-2.0
#include "HVLevelKey.h"

#include "HVDismissal.h"
#include "HVQtCompat.h"

#include <QtCore/QChar>
#include <QtGui/QKeyEvent>

namespace Hovlets {

namespace {

/// Whether the key types a character that may need Shift, depending on the keyboard.
bool mayNeedShift(int key)
{
    constexpr int OneCharacter = 0xffff;
    if (key <= Qt::Key_Space || key > OneCharacter)
        return false;
    const QChar character(static_cast<ushort>(key));
    return character.isPrint() && !character.isLetter();
}

} // namespace

HVLevelKey::HVLevelKey(const QString &text)
    : m_key(QKeySequence::fromString(text, QKeySequence::PortableText))
{
    const bool isOne = m_key.count() == 1;
    const int key = isOne ? keyOf(m_key) : 0;
    if (!isOne || key == 0 || key == Qt::Key_unknown || isModifier(key))
        m_key = QKeySequence();
}

bool HVLevelKey::matches(const QKeyEvent &event) const
{
    if (isEmpty())
        return false;
    // With Shift, the Tab key has another name.
    const bool isBacktab = event.key() == Qt::Key_Backtab;
    const int key = isBacktab ? int(Qt::Key_Tab) : event.key();
    const auto ignored = Qt::KeypadModifier | Qt::GroupSwitchModifier;
    const int modifiers = int(event.modifiers() & ~ignored) | (isBacktab ? int(Qt::SHIFT) : 0);
    return QKeySequence(modifiers | key) == m_key
            || (mayNeedShift(key) && QKeySequence((modifiers & ~int(Qt::SHIFT)) | key) == m_key);
}

} // namespace Hovlets
