// SPDX-License-Identifier: Apache-2.0
#include "SettingsPanel.h"

#include "DrawingHost.h"

#include <Hovlets/HVContext.h>
#include <HovletsAssist/HVKeyboardAccess.h>

#include <QtGui/QKeySequence>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QSpinBox>

using namespace Hovlets;

namespace {

constexpr int LongestDuration = 20000; // ms
constexpr int DurationStep = 100;

} // namespace

SettingsPanel::SettingsPanel(DrawingHost &host, HVKeyboardAccess &keyboard, QWidget *window)
    : QWidget(window)
    , m_host(host)
{
    auto *layout = new QFormLayout(this);
    addLocale(layout);
    addModifiers(layout);
    addDuration(layout, tr("Hide after"), HVKeyHideDelay, 3000);
    addReducedMotion(layout,
                     { addDuration(layout, tr("Fade in"), HVKeyShowFadeDuration, 0),
                       addDuration(layout, tr("Fade out"), HVKeyHideFadeDuration, 300) });
    addSwitch(layout, tr("Beside the control"), HVKeyPlacement, false);
    addSwitch(layout, tr("Safe path to the popup"), HVKeySafePath, false);
    addDuration(layout, tr("Rest on the way"), HVKeySafePathDwell, 180);
    addDuration(layout, tr("Show after"), HVKeyShowDelay, 0);
    addDismissal(layout);
    addSwitch(layout, tr("Simple popups"), HVKeySimpleMode, false);
    addDuration(layout, tr("Full popup after"), HVKeyExpandDelay, 0);
    addExpandKey(layout);
    addSwitch(layout, tr("Links to the guide"), HVKeyDocumentationEnabled, true);
    addSwitch(layout, tr("Links to files and the web"), HVKeyLinksEnabled, true);
    addFallback(layout);
    addPinned(layout, window);
    addKeyboard(layout, keyboard);
    addSwitch(layout, tr("No popups at all"), HVKeySuspended, false);
}

void SettingsPanel::addLocale(QFormLayout *layout)
{
    auto *box = new QComboBox;
    box->setObjectName(QStringLiteral("settingsLocale"));
    box->addItem(tr("English"), QStringLiteral("en_US"));
    box->addItem(tr("German"), QStringLiteral("de_DE"));
    box->setCurrentIndex(box->findData(m_host.context().get(HVKeyLocale, box->itemData(0))));
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, box](int index) { m_host.context().set(HVKeyLocale, box->itemData(index)); });
    layout->addRow(tr("Language"), box);
}

void SettingsPanel::addModifiers(QFormLayout *layout)
{
    auto *box = new QComboBox;
    box->addItem(tr("Always"), int(Qt::NoModifier));
    box->addItem(tr("While Shift is held"), int(Qt::ShiftModifier));
    box->addItem(tr("While Ctrl is held"), int(Qt::ControlModifier));
    box->addItem(tr("While Alt is held"), int(Qt::AltModifier));
    box->setToolTip(tr("Without the key, ordinary tooltips show instead."));
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, box](int index) {
        m_host.context().set(HVKeyRequiredModifiers, box->itemData(index));
    });
    layout->addRow(tr("Show"), box);
}

SettingsPanel::Duration SettingsPanel::addDuration(QFormLayout *layout, const QString &label,
                                                   int key, int defaultValue)
{
    auto *box = new QSpinBox;
    box->setRange(0, LongestDuration);
    box->setSingleStep(DurationStep);
    box->setSuffix(tr(" ms"));
    box->setValue(m_host.context().get(key, defaultValue).toInt());
    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [this, key](int value) { m_host.context().set(key, value); });
    layout->addRow(label, box);
    return { box, key };
}

void SettingsPanel::addDismissal(QFormLayout *layout)
{
    auto *box = new QComboBox;
    box->addItem(tr("Nothing"), int(HVDismissNever));
    box->addItem(tr("Esc"), int(HVDismissOnEscape));
    box->addItem(tr("Esc and the wheel"), int(HVDismissOnEscape) | int(HVDismissOnWheel));
    box->addItem(tr("Any key and the wheel"), int(HVDismissOnAnyKey) | int(HVDismissOnWheel));
    box->setCurrentIndex(qMax(0, box->findData(m_host.context().get(HVKeyDismissOnKey))));
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, box](int index) {
        m_host.context().set(HVKeyDismissOnKey, box->itemData(index));
    });
    layout->addRow(tr("Hide on"), box);
}

/// Turns a simple popup into the full one and then pins it.
void SettingsPanel::addExpandKey(QFormLayout *layout)
{
    auto *box = new QComboBox;
    box->setObjectName(QStringLiteral("settingsExpandKey"));
    box->addItem(tr("None"), QString());
    for (const char *key : { "F1", "Ctrl+Space" }) {
        const auto portable = QString::fromLatin1(key);
        const QKeySequence sequence =
                QKeySequence::fromString(portable, QKeySequence::PortableText);
        box->addItem(sequence.toString(QKeySequence::NativeText), portable);
    }
    box->setToolTip(tr("Turns a simple popup into the full one, and pins the full one."));
    box->setCurrentIndex(qMax(0, box->findData(m_host.context().get(HVKeyExpandKey))));
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, box](int index) { m_host.context().set(HVKeyExpandKey, box->itemData(index)); });
    layout->addRow(tr("Key for more"), box);
}

/// The user interface stops its clips; the fades are settings of the library.
void SettingsPanel::addReducedMotion(QFormLayout *layout, const QList<Duration> &fades)
{
    auto *box = new QCheckBox(tr("Reduced motion"));
    box->setToolTip(tr("Popups do not fade, and clips wait for a click."));
    connect(box, &QCheckBox::toggled, this, [this, fades](bool on) {
        m_host.setGlobalProperty(QStringLiteral("reducedMotion"), on);
        for (const Duration &fade : fades) {
            fade.box->setDisabled(on);
            m_host.context().set(fade.key, on ? 0 : fade.box->value());
        }
    });
    layout->addRow(box);
}

void SettingsPanel::addSwitch(QFormLayout *layout, const QString &label, int key, bool defaultValue)
{
    auto *box = new QCheckBox(label);
    box->setChecked(m_host.context().get(key, defaultValue).toBool());
    connect(box, &QCheckBox::toggled, this,
            [this, key](bool on) { m_host.context().set(key, on); });
    layout->addRow(box);
}

/// Initially off, because a general text for every control would replace all ordinary tooltips.
void SettingsPanel::addFallback(QFormLayout *layout)
{
    auto *box = new QCheckBox(tr("General help elsewhere"));
    box->setToolTip(tr("Shows a general text for controls that have none of their own."));
    connect(box, &QCheckBox::toggled, this, [this](bool on) {
        m_host.context().set(HVKeyFallbackKey, on ? QStringLiteral("generic") : QString());
    });
    layout->addRow(box);
}

void SettingsPanel::addPinned(QFormLayout *layout, QWidget *window)
{
    auto *box = new QCheckBox(tr("Pinned popups in a window"));
    box->setToolTip(tr("Puts them into a window of the program."));
    connect(box, &QCheckBox::toggled, this,
            [this, window](bool on) { m_host.setPinnedParent(on ? window : nullptr); });
    layout->addRow(box);
}

void SettingsPanel::addKeyboard(QFormLayout *layout, HVKeyboardAccess &keyboard)
{
    auto *box = new QCheckBox(tr("Keys for popups"));
    box->setToolTip(tr("Ctrl+F1 shows the popup of the control with the focus; Esc hides it."));
    box->setChecked(keyboard.isEnabled());
    connect(box, &QCheckBox::toggled, this, [&keyboard](bool on) { keyboard.setEnabled(on); });
    layout->addRow(box);
}
