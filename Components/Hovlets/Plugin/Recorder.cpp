// SPDX-License-Identifier: Apache-2.0
#include "Recorder.h"

#include "AttachedHost.h"
#include "Explanation.h"

#include <Hovlets/HVPopup.h>
#include <QtCore/QRegularExpression>
#include <QtGui/QWindow>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

namespace Hovlets {

namespace {

constexpr QLatin1String Between("\n\n"); // paragraphs

QLabel *wrappedLabel(const char *name)
{
    auto *label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

QStringList paragraphsOf(const QString &text)
{
    static const QRegularExpression emptyLines(QStringLiteral("\\n\\s*\\n"));
    QStringList paragraphs;
    const QStringList parts = text.split(emptyLines);
    for (const QString &part : parts) {
        if (!part.trimmed().isEmpty())
            paragraphs += part.simplified();
    }
    return paragraphs;
}

} // namespace

Recorder::Recorder(AttachedHost &host, const RecordedFile &file)
    : QWidget(nullptr, Qt::Tool | Qt::WindowStaysOnTopHint)
    , m_host(host)
    , m_file(file)
    , m_rest(new PointerRest(this))
    , m_path(wrappedLabel("hovletsPath"))
    , m_key(new QComboBox)
    , m_reason(wrappedLabel("hovletsReason"))
    , m_title(new QLineEdit)
    , m_text(new QPlainTextEdit)
    , m_save(new QPushButton(QStringLiteral("&Save")))
    , m_discard(new QPushButton(QStringLiteral("&Discard")))
    , m_status(wrappedLabel("hovletsStatus"))
{
    setObjectName(QStringLiteral("hovletsRecorder"));
    setWindowTitle(QStringLiteral("Hovlets"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    m_key->setEditable(true);
    m_key->setObjectName(QStringLiteral("hovletsKey"));
    m_title->setObjectName(QStringLiteral("hovletsTitle"));
    m_text->setObjectName(QStringLiteral("hovletsText"));
    m_text->setPlaceholderText(QStringLiteral("Paragraphs, with an empty line between them"));
    m_save->setObjectName(QStringLiteral("hovletsSave"));
    m_discard->setObjectName(QStringLiteral("hovletsDiscard"));
    auto *layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("Control"), m_path);
    layout->addRow(QStringLiteral("&Key"), m_key);
    layout->addRow(m_reason);
    layout->addRow(QStringLiteral("&Title"), m_title);
    layout->addRow(QStringLiteral("Te&xt"), m_text);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_save);
    buttons->addWidget(m_discard);
    buttons->addWidget(m_status, 1);
    layout->addRow(buttons);
    m_path->setText(QStringLiteral("Rest the mouse on a control of the program."));
    setModified(false);
    resize(420, 340);

    connect(m_rest, &PointerRest::rested, this, &Recorder::showControl);
    connect(m_key, &QComboBox::currentTextChanged, this, [this](const QString &key) {
        if (!m_isFilling && !m_isModified)
            showEntry(key);
    });
    const auto edited = [this] {
        if (!m_isFilling)
            setModified(true);
    };
    connect(m_title, &QLineEdit::textChanged, this, edited);
    connect(m_text, &QPlainTextEdit::textChanged, this, edited);
    connect(m_save, &QPushButton::clicked, this, &Recorder::save);
    connect(m_discard, &QPushButton::clicked, this, &Recorder::discard);
    auto *modal = new QTimer(this);
    connect(modal, &QTimer::timeout, this, &Recorder::followModalWindow);
    modal->start(200);
}

RecordedFile Recorder::fileIn(const QString &package, const QString &locale)
{
    return RecordedFile(QStringLiteral("%1/Control/Recorded_%2.xml").arg(package, locale));
}

void Recorder::showControl(QWidget *widget, const QPoint &position)
{
    const QWidget *window = widget->window();
    if (m_isModified || window == this || !HVPopup(window).isNull() || !HVPopup(widget).isNull()
        || m_key->view()->window() == window)
        return;
    const Explanation found = explain(m_host, m_file, widget, position);
    m_isFilling = true;
    m_path->setText(found.control.path);
    m_key->clear();
    m_key->addItems(found.control.candidates);
    m_key->setCurrentText(found.control.key);
    m_isFilling = false;
    showEntry(found.control.key);
    m_reason->setText(found.reason);
}

/// Fills the fields with the entry for a key, if there is one.
void Recorder::showEntry(const QString &key)
{
    const QString file = m_host.hovletAttribute(key, QStringLiteral("HVLocation"), {});
    auto found = m_file.find(key); // the host may answer from a popup that shows an older entry
    if (!found && !file.isEmpty())
        found = RecordedFile(file).find(key);
    m_isFilling = true;
    m_title->setText(found ? found->entry.title : QString());
    m_text->setPlainText(found ? found->entry.paragraphs.join(Between) : QString());
    m_isFilling = false;
    setModified(false);
    m_status->clear();
}

void Recorder::save()
{
    const QString key = m_key->currentText().trimmed();
    if (key.isEmpty() || m_title->text().trimmed().isEmpty()) {
        m_status->setText(QStringLiteral("An entry needs a key and a title."));
        return;
    }
    const QString failure =
            m_file.write({ key, m_title->text().trimmed(), paragraphsOf(m_text->toPlainText()) });
    if (!failure.isEmpty()) {
        m_status->setText(failure);
        return;
    }
    setModified(false);
    m_status->setText(QStringLiteral("Saved in %1").arg(m_file.path()));
}

void Recorder::discard()
{
    showEntry(m_key->currentText());
}

void Recorder::setModified(bool isModified)
{
    m_isModified = isModified;
    m_discard->setEnabled(isModified);
    m_save->setEnabled(isModified);
    if (isModified)
        m_status->setText(QStringLiteral("Not saved: the window stays with this control."));
}

/// A modal dialog gets all input except that of its own windows, so this becomes one of them.
void Recorder::followModalWindow()
{
    const QWidget *modal = QApplication::activeModalWidget();
    QWindow *parent = modal ? modal->windowHandle() : nullptr;
    // The program opened the dialog over this window, so it has its input already.
    if (parent && windowHandle() && windowHandle()->isAncestorOf(parent))
        return;
    if (windowHandle() && windowHandle()->transientParent() != parent)
        windowHandle()->setTransientParent(parent);
}

} // namespace Hovlets
