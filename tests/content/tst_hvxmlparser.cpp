// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "TestMain.h"
#include "XmlReading.h"

using namespace Hovlets;

namespace Content {

/// Has no constructor that takes attributes, so they become properties.
class Item : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(int count MEMBER count)
    Q_PROPERTY(int fixed READ fixed)
    Q_PROPERTY(QString tagName READ lastWritten WRITE setTagName)
    Q_PROPERTY(QString tagNameSpace READ lastWritten WRITE setTagNameSpace)

public:
    Q_INVOKABLE explicit Item(QObject *parent = nullptr)
        : QObject(parent)
    {
        alive.append(this);
    }

    ~Item() override { alive.removeOne(this); }

    int fixed() const { return 7; }
    QString lastWritten() const { return written.value(written.size() - 1); }
    void setTagName(const QString &value) { written += QStringLiteral("tag ") + value; }
    void setTagNameSpace(const QString &value) { written += QStringLiteral("space ") + value; }

    QString title;
    int count = 0;
    QStringList written;

    static inline QList<Item *> alive;
};

/// A class that the parser cannot create.
class Sealed : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER title)

public:
    QString title;
};

} // namespace Content

using Content::Item;
using Content::Sealed;

namespace {

/// Answers by tag, with 1 by default, and records the calls.
struct Answers
{
    QMap<QString, int> answers;
    QStringList asked;

    static int ask(const QString &qName, const QXmlAttributes &attributes, void *userData)
    {
        auto *self = static_cast<Answers *>(userData);
        const QString key = attributes.value(QStringLiteral("key"));
        self->asked += key.isEmpty() ? qName : qName + QLatin1Char('=') + key;
        return self->answers.value(qName, HVXmlParser::GenerateAsk);
    }
};

} // namespace

class tst_HVXmlParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(Item::alive.isEmpty()); }

    void shouldNumberTheValuesOfTheCallback()
    {
        QCOMPARE(int(HVXmlParser::GenerateAsk), 1);
        QCOMPARE(int(HVXmlParser::GenerateAll), 2);
        QCOMPARE(int(HVXmlParser::SkipElement), 4);
        QCOMPARE(int(HVXmlParser::SkipChildren), 8);
    }

    void shouldBuildEveryElementWithoutACallback()
    {
        HVXmlParser parser;
        const Objects objects = read(
                parser, "<?xml version=\"1.0\"?><!-- c --><a k=\"1\" j='2'><b><c/></b><d/></a>");
        QCOMPARE(flat(objects), QStringLiteral("<a j=\"2\" k=\"1\"><b><c/></b><d/></a>"));
        QCOMPARE(objects.front()->parent(), nullptr);
        QVERIFY(parser.isClosed());
    }

    void shouldKeepWhatTheCallbackSelects_data()
    {
        QTest::addColumn<int>("answer"); // for <p>
        QTest::addColumn<QString>("tree");
        QTest::addColumn<QString>("asked");

        const QString built = QStringLiteral("<r><p k=\"1\"><q><s/></q></p><t/></r>");
        const QString empty = QStringLiteral("<r><p k=\"1\"/><t/></r>");
        const QString without = QStringLiteral("<r><t/></r>");
        const QString all = QStringLiteral("r p q s t");
        const QString top = QStringLiteral("r p t");
        QTest::newRow("0 acts as 1") << 0 << built << all;
        QTest::newRow("1") << 1 << built << all;
        QTest::newRow("16 acts as 1") << 16 << built << all;
        QTest::newRow("2") << 2 << built << top;
        QTest::newRow("3") << 3 << built << top;
        QTest::newRow("4") << 4 << without << all;
        QTest::newRow("5") << 5 << without << all;
        QTest::newRow("6") << 6 << without << top;
        QTest::newRow("8") << 8 << empty << top;
        QTest::newRow("9") << 9 << empty << top;
        QTest::newRow("10") << 10 << empty << top;
        QTest::newRow("12") << 12 << without << top;
        QTest::newRow("15") << 15 << without << top;
    }

    void shouldKeepWhatTheCallbackSelects()
    {
        QFETCH(int, answer);
        QFETCH(QString, tree);
        QFETCH(QString, asked);
        Answers answers { { { QStringLiteral("p"), answer } }, {} };
        HVXmlParser parser(&Answers::ask, &answers);
        const Objects objects = read(parser, "<r>x<p k=\"1\">y<q>z<s/></q></p>w<t/></r>");
        QCOMPARE(flat(objects), tree);
        QCOMPARE(answers.asked, asked.split(QLatin1Char(' ')));
        // Text in an element that was not built is dropped.
        QCOMPARE(element(objects)->content(), QStringLiteral("xw"));
    }

    void shouldGiveTheCallbackTagAndAttributes()
    {
        Answers answers;
        HVXmlParser parser(&Answers::ask, &answers);
        read(parser, "<x:r xmlns:x=\"urn:x\"><p key=\"K\"/></x:r>");
        QCOMPARE(answers.asked, (QStringList { QStringLiteral("x:r"), QStringLiteral("p=K") }));
    }

    void shouldAskAgainAfterASubtreeThatItHandledWithoutAsking_data()
    {
        QTest::addColumn<int>("answer");
        for (int answer : { 2, 3, 8, 12 })
            QTest::addRow("%d", answer) << answer;
    }

    void shouldAskAgainAfterASubtreeThatItHandledWithoutAsking()
    {
        QFETCH(int, answer);
        Answers answers { { { QStringLiteral("p"), answer } }, {} };
        HVXmlParser parser(&Answers::ask, &answers);
        read(parser, "<r><p><q/></p><t><u/></t></r>");
        QCOMPARE(answers.asked,
                 (QStringList { QStringLiteral("r"), QStringLiteral("p"), QStringLiteral("t"),
                                QStringLiteral("u") }));
    }

    void shouldBuildBelowASkippedElementWithoutAParent()
    {
        Answers answers { { { QStringLiteral("x"), 4 } }, {} };
        {
            HVXmlParser parser(&Answers::ask, &answers);
            parser.registerElement(QStringLiteral("item"), &Item::staticMetaObject);
            Objects objects =
                    read(parser, "<r><item/><x><item title=\"lost\"><item/></item></x></r>");
            QCOMPARE(Item::alive.size(), 3);
            Item *lost = Item::alive.at(1);
            QCOMPARE(lost->title, QStringLiteral("lost"));
            QCOMPARE(lost->parent(), nullptr);
            QCOMPARE(lost->children().size(), 1);
            QCOMPARE(objects.front()->children(), QList<QObject *> { Item::alive.at(0) });

            // Another read keeps them; they live as long as the parser.
            read(parser, "<r/>");
            QCOMPARE(Item::alive.size(), 3);
        }
        QVERIFY(Item::alive.isEmpty());
    }

    void shouldOmitASkippedRoot()
    {
        Answers answers { { { QStringLiteral("r"), 4 } }, {} };
        HVXmlParser parser(&Answers::ask, &answers);
        QVERIFY(read(parser, "<r><a/></r>").empty());
        QCOMPARE(answers.asked, (QStringList { QStringLiteral("r"), QStringLiteral("a") }));
        QVERIFY(parser.isClosed());
    }

    void shouldChooseClassesByTag()
    {
        HVXmlParser parser;
        QCOMPARE(parser.defaultElement(), &HVXmlElement::staticMetaObject);
        QCOMPARE(parser.metaObjectForElement(QStringLiteral("item")), nullptr);

        parser.registerElement(QStringLiteral("item"), &HVXmlElement::staticMetaObject);
        parser.registerElement(QStringLiteral("item"), &Item::staticMetaObject);
        QCOMPARE(parser.metaObjectForElement(QStringLiteral("item")), &Item::staticMetaObject);
        QCOMPARE(parser.metaObjectForElement(QStringLiteral("Item")), nullptr);
        {
            const Objects objects = read(parser, "<r><item/></r>");
            QVERIFY(qobject_cast<Item *>(objects.front()->children().constFirst()));
        }

        parser.unregisterElement(QStringLiteral("other"));
        parser.unregisterElement(QStringLiteral("item"));
        QCOMPARE(parser.metaObjectForElement(QStringLiteral("item")), nullptr);
        QCOMPARE(flat(read(parser, "<r><item/></r>")), QStringLiteral("<r><item/></r>"));

        parser.setDefaultElement(&Item::staticMetaObject);
        QCOMPARE(parser.defaultElement(), &Item::staticMetaObject);
        const Objects objects = read(parser, "<r/>");
        QVERIFY(qobject_cast<Item *>(objects.front().get()));
        QCOMPARE(objects.front()->parent(), nullptr);
    }

    void shouldUseTheLocalNameOfATag()
    {
        HVXmlParser parser;
        parser.registerElement(QStringLiteral("item"), &Item::staticMetaObject);
        const Objects objects = read(
                parser,
                "<r xmlns=\" urn:r \" xmlns:x=\"urn:x\"><x:item x:title=\"T\" count=\"3\"/></r>");
        QCOMPARE(element(objects)->getTagNameSpace(), QStringLiteral("urn:r"));
        const auto *item = qobject_cast<Item *>(objects.front()->children().constFirst());
        QVERIFY(item);
        QCOMPARE(item->title, QStringLiteral("T"));
        QCOMPARE(item->count, 3);
        QCOMPARE(item->written,
                 (QStringList { QStringLiteral("space urn:x"), QStringLiteral("tag x:item") }));
    }

    void shouldBuildClassesThatTakeNoTagAndNoText()
    {
        HVXmlParser parser;
        parser.registerElement(QStringLiteral("plain"), &QObject::staticMetaObject);
        const Objects objects = read(parser, "<r><plain objectName=\"n\">text</plain></r>");
        QCOMPARE(objects.front()->children().size(), 1);
        QCOMPARE(objects.front()->children().constFirst()->objectName(), QStringLiteral("n"));
        QCOMPARE(element(objects)->content(), QString());
    }

    void shouldContinueAfterAPropertyThatCannotBeWritten()
    {
        HVXmlParser parser;
        parser.registerElement(QStringLiteral("item"), &Item::staticMetaObject);
        DebugLog log;
        const Objects objects =
                read(parser, "<r><item fixed=\"%2\" count=\"many\" title=\"T\"/><b/></r>");
        QCOMPARE(
                log.lines(),
                (QStringList {
                        QStringLiteral("Could not write \"%2\" to property fixed of Content::Item"),
                        QStringLiteral(
                                "Could not write \"many\" to property count of Content::Item") }));
        QCOMPARE(objects.front()->children().size(), 2);
        QCOMPARE(Item::alive.constFirst()->title, QStringLiteral("T"));
    }

    void shouldStopAtAnAttributeWithoutAProperty()
    {
        HVXmlParser parser;
        parser.registerElement(QStringLiteral("item"), &Item::staticMetaObject);
        DebugLog log;
        const Objects objects =
                read(parser, "<r><a/><item title=\"1\"/><item no=\"2\" title=\"3\"/><b/></r>");
        QCOMPARE(log.lines().size(), 2);
        QCOMPARE(log.lines().constFirst(), QStringLiteral("No Property named no on Content::Item"));
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(objects.size(), 1U);
        QCOMPARE(objects.front()->children().size(), 2);
        QCOMPARE(Item::alive.size(), 1);
        QVERIFY(!parser.isClosed());
    }

    void shouldStopAtAClassThatItCannotMake_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QStringList>("lines");
        const QString missing = QStringLiteral("Could not find object for element: sealed");
        QTest::newRow("no attribute") << QByteArray() << QStringList { missing };
        QTest::newRow("a property")
                << QByteArray(" title=\"T\"")
                << QStringList { QStringLiteral("Could not write \"T\" to property title of "
                                                "Content::Sealed"),
                                 missing };
        QTest::newRow("no property")
                << QByteArray(" no=\"T\"")
                << QStringList { QStringLiteral("No Property named no on Content::Sealed") };
    }

    void shouldStopAtAClassThatItCannotMake()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(QStringList, lines);
        HVXmlParser parser;
        parser.registerElement(QStringLiteral("sealed"), &Sealed::staticMetaObject);
        DebugLog log;
        const Objects objects =
                read(parser, "<r><a/><x:sealed xmlns:x=\"urn:x\"" + attributes + "/><b/></r>");
        QCOMPARE(log.lines().mid(0, log.lines().size() - 1), lines);
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(flat(objects), QStringLiteral("<r><a/></r>"));
    }

    void shouldStartEachReadFromScratch()
    {
        Answers answers { { { QStringLiteral("p"), 12 } }, {} };
        HVXmlParser parser(&Answers::ask, &answers);
        DebugLog log;
        read(parser, "<r><p><q>");
        answers.asked.clear();
        QCOMPARE(flat(read(parser, "<r><q/></r>")), QStringLiteral("<r><q/></r>"));
        QCOMPARE(answers.asked, (QStringList { QStringLiteral("r"), QStringLiteral("q") }));
        QCOMPARE(log.fatalErrors(), 1);
    }

    void shouldDeleteTheOpenObjectsOfAParseThatStopped()
    {
        auto parser = std::make_unique<HVXmlParser>();
        DebugLog log;
        QXmlInputSource source;
        source.setData(QByteArray("<a><b>"));
        const QList<QObject *> list = parser->read(source);
        QCOMPARE(list.size(), 1);
        const QPointer<QObject> root(list.constFirst());
        const QPointer<QObject> child(root->children().constFirst());
        parser.reset();
        QVERIFY(!root);
        QVERIFY(!child);
    }

    void shouldNotAffectTheObjectsOfAnEarlierRead()
    {
        auto parser = std::make_unique<HVXmlParser>();
        DebugLog log;
        const Objects stopped = read(*parser, "<a><b>");
        const Objects whole = read(*parser, "<c/>");
        const QPointer<QObject> first(stopped.front().get());
        const QPointer<QObject> second(whole.front().get());
        parser.reset();
        QVERIFY(first);
        QVERIFY(second);
    }

    void shouldContinueWhenAnOpenObjectIsDeleted()
    {
        const auto deleteItem = [](const QString &qName, const QXmlAttributes &, void *) -> int {
            if (qName == QLatin1String("last"))
                delete Item::alive.value(0);
            return HVXmlParser::GenerateAsk;
        };
        HVXmlParser parser(deleteItem);
        parser.registerElement(QStringLiteral("item"), &Item::staticMetaObject);
        const Objects objects = read(parser, "<r><item>a<last/>b</item><c/></r>");
        QCOMPARE(flat(objects), QStringLiteral("<r><c/></r>"));
    }
};

HOVLETS_TEST_MAIN(tst_HVXmlParser)
#include "tst_hvxmlparser.moc"
