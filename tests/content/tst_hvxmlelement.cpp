// SPDX-License-Identifier: Apache-2.0
#include "HVXmlElement.h"
#include "TestMain.h"

#include <QtQml/QQmlEngine>

#include <memory>

using namespace Hovlets;

namespace {

HVXmlElement *addChild(QObject *parent, const QString &tag)
{
    auto *child = new HVXmlElement(parent);
    child->setTagName(tag);
    return child;
}

QXmlAttributes attributes(const QList<QPair<QString, QString>> &list)
{
    QXmlAttributes result;
    for (const auto &attribute : list)
        result.append(attribute.first, QString(), attribute.first, attribute.second);
    return result;
}

} // namespace

class tst_HVXmlElement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldListItsPropertiesInOrder()
    {
        const QMetaObject &meta = HVXmlElement::staticMetaObject;
        QCOMPARE(meta.className(), "Hovlets::HVXmlElement");
        QStringList properties;
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
            const QMetaProperty property = meta.property(i);
            properties +=
                    QStringLiteral("%1 %2 %3 %4")
                            .arg(QLatin1String(property.typeName()), QLatin1String(property.name()),
                                 property.isWritable() ? QStringLiteral("rw") : QStringLiteral("r"),
                                 QLatin1String(property.notifySignal().methodSignature()));
        }
        QCOMPARE(properties,
                 (QStringList { QStringLiteral("QString tagName rw tagNameChanged()"),
                                QStringLiteral("QString tagNameSpace rw tagNameSpaceChanged()"),
                                QStringLiteral("QString content r contentChanged()") }));
    }

    void shouldListItsSignalsAndMethodsInOrder()
    {
        const QMetaObject &meta = HVXmlElement::staticMetaObject;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            const auto kind = method.methodType() == QMetaMethod::Signal ? QStringLiteral("signal")
                                                                         : QStringLiteral("method");
            methods += QStringLiteral("%1 %2 %3")
                               .arg(kind, QLatin1String(method.typeName()),
                                    QLatin1String(method.methodSignature()));
        }
        QCOMPARE(methods,
                 (QStringList {
                         QStringLiteral("signal void tagNameChanged()"),
                         QStringLiteral("signal void tagNameSpaceChanged()"),
                         QStringLiteral("signal void contentChanged()"),
                         QStringLiteral("method Hovlets::HVXmlElement* childElement(QString)"),
                         QStringLiteral("method QList<QObject*> childElementList(QString)"),
                         QStringLiteral("method QString attribute(QString)"),
                         QStringLiteral("method bool hasAttribute(QString)"),
                         QStringLiteral("method void appendContent(QString)"),
                         QStringLiteral("method QString toXml(int)"),
                         QStringLiteral("method QString toXml()"),
                 }));
    }

    void shouldNameTheParametersOfItsMethods_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("childElement(QString)") << QByteArray("name");
        QTest::newRow("childElementList(QString)") << QByteArray("name");
        QTest::newRow("attribute(QString)") << QByteArray("name");
        QTest::newRow("hasAttribute(QString)") << QByteArray("name");
        QTest::newRow("appendContent(QString)") << QByteArray("content");
        QTest::newRow("toXml(int)") << QByteArray("index");
    }

    void shouldNameTheParametersOfItsMethods()
    {
        QFETCH(QByteArray, name);
        const QMetaObject &meta = HVXmlElement::staticMetaObject;
        const QMetaMethod method = meta.method(meta.indexOfMethod(QTest::currentDataTag()));
        QCOMPARE(method.parameterNames(), QList<QByteArray> { name });
    }

    void shouldBeMadeThroughItsMetaObject()
    {
        const QMetaObject &meta = HVXmlElement::staticMetaObject;
        QCOMPARE(meta.constructorCount(), 3);
        const QMetaMethod full = meta.constructor(0);
        QCOMPARE(full.methodSignature(), QByteArray("HVXmlElement(QObject*,QXmlAttributes)"));
        QCOMPARE(full.parameterNames(), (QList<QByteArray> { "parent", "attrs" }));
        const QMetaMethod plain = meta.constructor(1);
        QCOMPARE(plain.methodSignature(), QByteArray("HVXmlElement(QObject*)"));
        QCOMPARE(plain.parameterNames(), QList<QByteArray> { "parent" });
        QCOMPARE(meta.constructor(2).methodSignature(), QByteArray("HVXmlElement()"));

        QObject parent;
        const QXmlAttributes attrs = attributes({ { QStringLiteral("key"), QStringLiteral("A") } });
        QObject *object = meta.newInstance(Q_ARG(QObject *, &parent), Q_ARG(QXmlAttributes, attrs));
        auto *element = qobject_cast<HVXmlElement *>(object);
        QVERIFY(element);
        QCOMPARE(element->parent(), &parent);
        QCOMPARE(element->attribute(QStringLiteral("key")), QStringLiteral("A"));
    }

    void shouldStartEmpty()
    {
        HVXmlElement element;
        QCOMPARE(element.parent(), nullptr);
        QVERIFY(element.attributeNames().isEmpty());
        QVERIFY(element.getTagName().isEmpty());
        QVERIFY(element.getTagNameSpace().isNull());
        QVERIFY(element.content().isNull());
        QVERIFY(element.children().isEmpty());
    }

    void shouldDeleteItsSubtree()
    {
        auto root = std::make_unique<HVXmlElement>();
        const QPointer<HVXmlElement> child(addChild(root.get(), QStringLiteral("a")));
        const QPointer<HVXmlElement> grandchild(addChild(child, QStringLiteral("b")));
        root.reset();
        QVERIFY(!child);
        QVERIFY(!grandchild);
    }

    void shouldStoreAttributesByTheirQualifiedNames()
    {
        QXmlAttributes attrs;
        attrs.append(QStringLiteral("x:key"), QStringLiteral("urn:x"), QStringLiteral("key"),
                     QStringLiteral("A"));
        const HVXmlElement element(nullptr, attrs);
        QCOMPARE(element.attributeNames(), QStringList { QStringLiteral("x:key") });
        QCOMPARE(element.attribute(QStringLiteral("x:key")), QStringLiteral("A"));
        QVERIFY(!element.hasAttribute(QStringLiteral("key")));
    }

    void shouldKeepTheLaterOfTwoAttributesWithOneName()
    {
        const HVXmlElement element(nullptr,
                                   attributes({ { QStringLiteral("a"), QStringLiteral("1") },
                                                { QStringLiteral("b"), QStringLiteral("2") },
                                                { QStringLiteral("a"), QStringLiteral("3") } }));
        QCOMPARE(element.attribute(QStringLiteral("a")), QStringLiteral("3"));
        QCOMPARE(element.attributeNames().size(), 2);
    }

    void shouldOrderAttributeNamesByCodeUnit()
    {
        const HVXmlElement element(nullptr,
                                   attributes({ { QStringLiteral("b"), QString() },
                                                { QStringLiteral("a"), QString() },
                                                { QStringLiteral("B"), QString() },
                                                { QStringLiteral("\u00e4"), QString() } }));
        QCOMPARE(element.attributeNames(),
                 (QStringList { QStringLiteral("B"), QStringLiteral("a"), QStringLiteral("b"),
                                QStringLiteral("\u00e4") }));
    }

    void shouldDistinguishAbsentAttributesFromEmptyOnes()
    {
        HVXmlElement element;
        QVERIFY(element.attribute(QStringLiteral("a")).isNull());
        QVERIFY(!element.hasAttribute(QStringLiteral("a")));

        element.setAttribute(QStringLiteral("a"), QLatin1String(""));
        QVERIFY(element.hasAttribute(QStringLiteral("a")));
        QVERIFY(!element.attribute(QStringLiteral("a")).isNull());
        QVERIFY(element.attribute(QStringLiteral("A")).isNull());
        QVERIFY(!element.hasAttribute(QStringLiteral("A")));
    }

    void shouldOverwriteAttributesWithoutASignal()
    {
        HVXmlElement element;
        QSignalSpy content(&element, &HVXmlElement::contentChanged);
        QSignalSpy tag(&element, &HVXmlElement::tagNameChanged);
        QSignalSpy tagNameSpace(&element, &HVXmlElement::tagNameSpaceChanged);
        element.setAttribute(QStringLiteral("a"), QStringLiteral("1"));
        element.setAttribute(QStringLiteral("a"), QStringLiteral("2"));
        QCOMPARE(element.attribute(QStringLiteral("a")), QStringLiteral("2"));
        QCOMPARE(content.count() + tag.count() + tagNameSpace.count(), 0);
    }

    void shouldBeFoundByItsTag()
    {
        HVXmlElement root;
        auto *child = new HVXmlElement(&root);
        QSignalSpy spy(child, &HVXmlElement::tagNameChanged);
        QCOMPARE(root.childElement(QStringLiteral("x")), nullptr);

        child->setTagName(QStringLiteral("x"));
        child->setTagName(QStringLiteral("x"));
        QCOMPARE(spy.count(), 2);
        QCOMPARE(child->objectName(), QStringLiteral("x"));
        QCOMPARE(child->getTagName(), QStringLiteral("x"));
        QCOMPARE(root.childElement(QStringLiteral("x")), child);

        child->setObjectName(QStringLiteral("y"));
        QCOMPARE(child->getTagName(), QStringLiteral("y"));
    }

    void shouldAnnounceEveryNameSpaceThatIsSet()
    {
        HVXmlElement element;
        QSignalSpy spy(&element, &HVXmlElement::tagNameSpaceChanged);
        element.setTagNameSpace(QStringLiteral("urn:a"));
        element.setTagNameSpace(QStringLiteral("urn:a"));
        QCOMPARE(element.getTagNameSpace(), QStringLiteral("urn:a"));
        QCOMPARE(spy.count(), 2);
    }

    void shouldJoinContentAndAnnounceEachPiece()
    {
        HVXmlElement element;
        QSignalSpy spy(&element, &HVXmlElement::contentChanged);
        element.appendContent(QStringLiteral("a"));
        element.appendContent(QStringLiteral("b"));
        QCOMPARE(element.content(), QStringLiteral("ab"));
        QCOMPARE(spy.count(), 2);
        element.appendContent(QString());
        QCOMPARE(spy.count(), 3);

        element.setContent(QStringLiteral("c"));
        element.setContent(QStringLiteral("c"));
        QCOMPARE(element.content(), QStringLiteral("c"));
        QCOMPARE(spy.count(), 5);
    }

    void shouldPreferADirectChildToADeeperOne()
    {
        HVXmlElement root;
        auto *group = addChild(&root, QStringLiteral("group"));
        auto *deep = addChild(group, QStringLiteral("title"));
        QCOMPARE(root.childElement(QStringLiteral("title")), deep);

        auto *direct = addChild(&root, QStringLiteral("title"));
        addChild(&root, QStringLiteral("title"));
        QCOMPARE(root.childElement(QStringLiteral("title")), direct);
        QCOMPARE(root.childElement(QStringLiteral("Title")), nullptr);
    }

    void shouldSearchChildByChildBelowTheDirectOnes()
    {
        HVXmlElement root;
        auto *inner = addChild(addChild(&root, QStringLiteral("a")), QStringLiteral("b"));
        auto *deep = addChild(inner, QStringLiteral("p"));
        addChild(addChild(&root, QStringLiteral("c")), QStringLiteral("p"));
        QCOMPARE(root.childElement(QStringLiteral("p")), deep);
    }

    void shouldFindAnyElementByANullName()
    {
        HVXmlElement root;
        QCOMPARE(root.childElement(QString()), nullptr);
        auto *other = new QObject(&root);
        other->setObjectName(QStringLiteral("a"));
        auto *first = addChild(&root, QStringLiteral("a"));
        addChild(&root, QStringLiteral("b"));
        QCOMPARE(root.childElement(QString()), first);
        QCOMPARE(root.childElement(QStringLiteral("a")), first);
    }

    void shouldListDescendantsInDocumentOrder()
    {
        HVXmlElement root;
        auto *first = addChild(&root, QStringLiteral("p"));
        auto *nested = addChild(first, QStringLiteral("p"));
        auto *group = addChild(&root, QStringLiteral("group"));
        auto *inGroup = addChild(group, QStringLiteral("p"));
        auto *plain = new QObject(&root);
        plain->setObjectName(QStringLiteral("p"));

        QCOMPARE(root.childElementList(QStringLiteral("p")),
                 (QList<QObject *> { first, nested, inGroup, plain }));
        const QList<QObject *> all { first, nested, group, inGroup, plain };
        QCOMPARE(root.childElementList(QString()), all);
        QCOMPARE(root.childElementList(QLatin1String("")), all);
        QVERIFY(root.childElementList(QStringLiteral("q")).isEmpty());
    }

    void shouldStayOwnedByCppWhenQmlAsksForIt()
    {
        HVXmlElement root;
        auto *child = addChild(&root, QStringLiteral("a"));
        auto *other = addChild(&root, QStringLiteral("b"));
        QCOMPARE(root.childElement(QStringLiteral("a")), child);
        QCOMPARE(root.childElementList(QStringLiteral("b")), QList<QObject *> { other });
        // Set ownership explicitly; the engine would guess it for objects without a parent.
        child->setParent(nullptr);
        other->setParent(nullptr);
        QQmlEngine engine;
        engine.newQObject(child);
        engine.newQObject(other);
        QCOMPARE(QQmlEngine::objectOwnership(child), QQmlEngine::CppOwnership);
        QCOMPARE(QQmlEngine::objectOwnership(other), QQmlEngine::CppOwnership);
        delete child;
        delete other;
    }

    void shouldWriteStructureAndAttributes()
    {
        HVXmlElement root(nullptr,
                          attributes({ { QStringLiteral("name"), QStringLiteral("B") },
                                       { QStringLiteral("key"), QStringLiteral("A") } }));
        root.setTagName(QStringLiteral("hovlet"));
        root.setTagNameSpace(QStringLiteral("urn:x"));
        root.setContent(QStringLiteral("text"));
        addChild(&root, QStringLiteral("title"))->setContent(QStringLiteral("Title"));
        new QObject(&root);
        QCOMPARE(root.toXml(),
                 QStringLiteral("<hovlet key=\"A\" name=\"B\">\n  <title/>\n</hovlet>"));
        QCOMPARE(root.toXml(0), root.toXml());
    }

    void shouldCloseAChildlessElementByItself()
    {
        HVXmlElement element;
        element.setTagName(QStringLiteral("tag"));
        element.setContent(QStringLiteral("text"));
        QCOMPARE(element.toXml(), QStringLiteral("<tag/>"));
        element.setAttribute(QStringLiteral("a"), QString());
        new QObject(&element);
        QCOMPARE(element.toXml(), QStringLiteral("<tag a=\"\"/>"));
    }

    void shouldIndentEachLevelByTwo()
    {
        HVXmlElement root;
        root.setTagName(QStringLiteral("a"));
        addChild(addChild(&root, QStringLiteral("b")), QStringLiteral("c"));
        addChild(&root, QStringLiteral("d"));
        QCOMPARE(root.toXml(4),
                 QStringLiteral("    <a>\n      <b>\n        <c/>\n      </b>\n      <d/>\n"
                                "    </a>"));
    }

    void shouldWriteValuesUnchanged()
    {
        HVXmlElement element(
                nullptr, attributes({ { QStringLiteral("a"), QStringLiteral("%1 <&> \"%2\"") } }));
        element.setTagName(QStringLiteral("t%1"));
        element.setAttribute(QStringLiteral("%2"), QStringLiteral("%3\n"));
        addChild(&element, QStringLiteral("%4"));
        QCOMPARE(element.toXml(),
                 QStringLiteral("<t%1 %2=\"%3\n\" a=\"%1 <&> \"%2\"\">\n  <%4/>\n</t%1>"));
    }
};

HOVLETS_TEST_MAIN(tst_HVXmlElement)
#include "tst_hvxmlelement.moc"
