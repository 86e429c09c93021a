// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QObject;
class QWidget;

namespace Hovlets {

// What the helpers ask of the library's popups, through HVPopup.

bool isPopup(const QObject *object);

/// Whether the user has pinned it, so that it is no tooltip any more.
bool isPinned(const QWidget *popup);

/// The popup that is on screen and not pinned, or null.
QWidget *visiblePopup();

/// The pinned popup that has the focus, or null.
QWidget *pinnedPopupWithFocus();

/// Closes a pinned popup with the window that is around it alone.
void closePinnedPopup(QWidget *popup);

/// The key of the entry that it shows, or empty.
QString shownKey(const QWidget *popup);

/// What it says, for a screen reader: plain text, translated and filled in.
struct HVPopupWords
{
    QString title;
    QString text;
};

HVPopupWords wordsOf(const QWidget *popup);

} // namespace Hovlets
