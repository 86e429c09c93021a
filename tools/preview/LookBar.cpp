// SPDX-License-Identifier: Apache-2.0
#include "LookBar.h"

#include <QAction>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>

namespace HovletsTool {

namespace {

enum Palette { LightPalette, DarkPalette };

} // namespace

LookBar::LookBar(const PopupLook &look, QWidget *parent)
    : QToolBar(QStringLiteral("Look"), parent)
    , m_locale(new QComboBox)
    , m_palette(new QComboBox)
    , m_simple(new QCheckBox(QStringLiteral("&Simple popup")))
{
    setMovable(false);
    m_locale->setObjectName(QStringLiteral("locale"));
    m_locale->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    addLabelled(QStringLiteral("&Locale:"), m_locale);
    m_palette->setObjectName(QStringLiteral("palette"));
    m_palette->addItems({ QStringLiteral("Light"), QStringLiteral("Dark") });
    m_palette->setCurrentIndex(look.dark ? DarkPalette : LightPalette);
    addLabelled(QStringLiteral("&Palette:"), m_palette);
    m_simple->setObjectName(QStringLiteral("simple"));
    m_simple->setChecked(look.simple);
    addWidget(m_simple);
    auto *spacer = new QWidget;
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(spacer);
    QAction *reload = addAction(QStringLiteral("&Reload"));
    reload->setShortcut(QKeySequence::Refresh);
    reload->setToolTip(
            QStringLiteral("Reload all files (%1). The preview also reloads them when one "
                           "changes.")
                    .arg(reload->shortcut().toString(QKeySequence::NativeText)));
    connect(reload, &QAction::triggered, this, &LookBar::reloadRequested);
    connect(m_locale, qOverload<int>(&QComboBox::activated), this, &LookBar::changed);
    connect(m_palette, qOverload<int>(&QComboBox::activated), this, &LookBar::changed);
    connect(m_simple, &QCheckBox::clicked, this, &LookBar::changed);
}

void LookBar::setLocales(const QStringList &locales, const PopupLook &look)
{
    const QString english = QStringLiteral("en_US");
    const QString current = look.locale.empty() ? english : QString::fromStdString(look.locale);
    QStringList all = locales;
    all += { english, current };
    all.removeDuplicates();
    all.sort();
    m_locale->clear();
    m_locale->addItems(all);
    m_locale->setCurrentText(current);
}

void LookBar::applyTo(PopupLook &look) const
{
    look.locale = m_locale->currentText().toStdString();
    look.dark = m_palette->currentIndex() == DarkPalette;
    look.simple = m_simple->isChecked();
}

QString LookBar::locale() const
{
    return m_locale->currentText();
}

void LookBar::addLabelled(const QString &text, QWidget *widget)
{
    auto *label = new QLabel(text);
    label->setBuddy(widget);
    label->setMargin(4);
    addWidget(label);
    addWidget(widget);
}

} // namespace HovletsTool
