// SPDX-License-Identifier: Apache-2.0
#include "HVClipComponent.h"
#include "HVPictureComponent.h"
#include "HVScrollBarComponent.h"
#include "HVStyledRectangleComponent.h"
#include "HVToolTipTheme.h"
#include "HVVideoComponent.h"
#include "HVView.h"
#include "HVXmlElement.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDirIterator>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>

#include <utility>

using namespace Hovlets;

Q_DECLARE_METATYPE(const QMetaObject *)

// Tests that the documentation is complete and that its links work.

namespace {

const QDir Source(QStringLiteral(HOVLETS_SOURCE));

/// The anchors that a document's headings create.
QStringList anchorsOf(const QString &markdown)
{
    QStringList anchors;
    auto headings =
            QRegularExpression(QStringLiteral("^#+ +(.+)$"), QRegularExpression::MultilineOption)
                    .globalMatch(markdown);
    while (headings.hasNext()) {
        QString anchor = headings.next().captured(1).trimmed().toLower();
        anchor.remove(QRegularExpression(QStringLiteral("[^-a-z0-9_ ]")));
        anchors.append(anchor.replace(QLatin1Char(' '), QLatin1Char('-')));
    }
    return anchors;
}

} // namespace

class tst_DocsReference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldDocumentEverythingThatQmlSees_data();
    void shouldDocumentEverythingThatQmlSees();
    void shouldDocumentEveryQuestionToTheHost();
    void shouldLinkToExistingTargets_data();
    void shouldLinkToExistingTargets();
};

void tst_DocsReference::shouldDocumentEverythingThatQmlSees_data()
{
    QTest::addColumn<const QMetaObject *>("type");
    QTest::newRow("view") << &HVView::staticMetaObject;
    QTest::newRow("entry") << &HVXmlElement::staticMetaObject;
    QTest::newRow("clip") << &HVVideoComponent::staticMetaObject;
    QTest::newRow("clip with a time") << &HVClipComponent::staticMetaObject;
    QTest::newRow("rectangle") << &HVStyledRectangleComponent::staticMetaObject;
    QTest::newRow("scroll bar") << &HVScrollBarComponent::staticMetaObject;
    QTest::newRow("picture") << &HVPictureComponent::staticMetaObject;
    QTest::newRow("theme") << &HVToolTipTheme::staticMetaObject;
}

/// Every property and method of a type, and every signal that does not belong to a property.
void tst_DocsReference::shouldDocumentEverythingThatQmlSees()
{
    QFETCH(const QMetaObject *, type);
    QStringList names, notifications;
    for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
        names += QLatin1String(type->property(i).name());
        notifications += QLatin1String(type->property(i).notifySignal().name());
    }
    for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
        const QString name = QLatin1String(type->method(i).name());
        if (!notifications.contains(name))
            names += name;
    }
    QVERIFY(names.size() > 1);
    const QString document = readText(Source.filePath(QStringLiteral("docs/qml.md")));
    for (const QString &name : std::as_const(names)) {
        QVERIFY2(document.contains(QRegularExpression(QStringLiteral("`%1[`(]").arg(name))),
                 qPrintable(name));
    }
}

void tst_DocsReference::shouldDocumentEveryQuestionToTheHost()
{
    const QString document = readText(Source.filePath(QStringLiteral("docs/hosts.md")));
    auto questions = QRegularExpression(QStringLiteral("\\n    virtual [\\w *]*?(\\w+)\\("))
                             .globalMatch(readText(Source.filePath(
                                     QStringLiteral("Components/Hovlets/Hovlets/HVInterface.h"))));
    int count = 0;
    for (; questions.hasNext(); ++count) {
        const QString name = questions.next().captured(1);
        QVERIFY2(document.contains(QStringLiteral("**`%1`**").arg(name)), qPrintable(name));
    }
    QCOMPARE(count, 6);
}

void tst_DocsReference::shouldLinkToExistingTargets_data()
{
    QTest::addColumn<QString>("path");
    const QStringList names { QStringLiteral("README.md"), QStringLiteral("CONTRIBUTING.md"),
                              QStringLiteral("SECURITY.md"), QStringLiteral("CHANGELOG.md") };
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << Source.filePath(name);
    QDirIterator docs(Source.filePath(QStringLiteral("docs")), { QStringLiteral("*.md") },
                      QDir::Files);
    while (docs.hasNext()) {
        const QString path = docs.next();
        QTest::newRow(qPrintable(Source.relativeFilePath(path))) << path;
    }
}

void tst_DocsReference::shouldLinkToExistingTargets()
{
    QFETCH(QString, path);
    const QString document = readText(path);
    auto links = QRegularExpression(QStringLiteral("\\]\\(([^)\\s]+)\\)")).globalMatch(document);
    while (links.hasNext()) {
        const QString link = links.next().captured(1);
        if (link.contains(QLatin1String("://")))
            continue;
        const QString file = link.section(QLatin1Char('#'), 0, 0);
        const QString target = file.isEmpty() ? path : QFileInfo(path).dir().filePath(file);
        QVERIFY2(QFileInfo::exists(target), qPrintable(link));
        if (link.contains(QLatin1Char('#')))
            QVERIFY2(anchorsOf(readText(target)).contains(link.section(QLatin1Char('#'), 1)),
                     qPrintable(link));
    }
}

HOVLETS_TEST_MAIN(tst_DocsReference)
#include "tst_docs_reference.moc"
