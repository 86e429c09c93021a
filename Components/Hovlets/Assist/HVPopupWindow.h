// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QObject;
class QWidget;

namespace Hovlets {

// Queries of the helpers about the library's popups, through HVPopup.

bool isPopup(const QObject *object);

/// Whether the user has pinned the popup, which therefore no longer acts as a tooltip.
bool isPinned(const QWidget *popup);

/// The visible popup that is not pinned, or null.
QWidget *visiblePopup();

/// The pinned popup that has the focus, or null.
QWidget *pinnedPopupWithFocus();

/// Closes a pinned popup, or its parent if that is a window.
void closePinnedPopup(QWidget *popup);

/// The key of the entry in the popup; empty if there is none.
QString shownKey(const QWidget *popup);

/// The popup's text for a screen reader: plain text, translated, with placeholders filled.
struct HVPopupWords
{
    QString title;
    QString text;
};

HVPopupWords wordsOf(const QWidget *popup);

} // namespace Hovlets
