// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DefaultUiTest.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

/*!
 * \brief Base class of tests that change the application's colours, font or direction.
 */
class DefaultUiLooksTest : public DefaultUiTest
{
    Q_OBJECT

protected Q_SLOTS:
    void init()
    {
        m_palette = QToolTip::palette();
        m_font = QApplication::font();
    }

    void cleanup()
    {
        DefaultUiTest::cleanup();
        QToolTip::setPalette(m_palette);
        QApplication::setFont(m_font);
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

protected:
    static void setColours(const QColor &base, const QColor &text, const QColor &link)
    {
        QPalette palette;
        palette.setColor(QPalette::ToolTipBase, base);
        palette.setColor(QPalette::ToolTipText, text);
        palette.setColor(QPalette::Link, link);
        QToolTip::setPalette(palette);
    }

    static void setPixelSize(int size)
    {
        QFont font = QApplication::font();
        font.setPixelSize(size);
        QApplication::setFont(font);
    }

    QColor strongestOn(const QQuickItem *item, const QColor &base)
    {
        return m_bench->strongest(m_bench->place(item), base);
    }

    bool readable(const QQuickItem *item, const QColor &base)
    {
        return DefaultUiBench::contrast(strongestOn(item, base), base) >= 4.5;
    }

    QPalette m_palette;
    QFont m_font;
};
