// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "TestMain.h"

#include <memory>
#include <type_traits>

using namespace Hovlets;

// Keys are passed as plain integers, and hosts may store them as such.
static_assert(std::is_same_v<HVContextKey, int>);

class tst_HVContext : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldStartEmpty()
    {
        const HVContext context;
        QVERIFY(context.keys().isEmpty());
        QVERIFY(!context.contains(HVKeyLocale));
    }

    void shouldReturnTheCallersDefaultForAnAbsentKey()
    {
        const HVContext context;
        QCOMPARE(context.get(HVKeyHideDelay, 3000), QVariant(3000));
        QVERIFY(!context.get(HVKeyHideDelay, QVariant()).isValid());
    }

    void shouldReturnAnInvalidValueThatWasSet()
    {
        HVContext context;
        context.set(HVKeyHideDelay, QVariant());
        QVERIFY(context.contains(HVKeyHideDelay));
        QVERIFY(!context.get(HVKeyHideDelay, 3000).isValid());
    }

    void shouldKeepAKeyOnceSet()
    {
        HVContext context;
        context.set(HVKeyLocale, QStringLiteral("de_DE"));
        context.set(HVKeyLocale, QVariant());
        QVERIFY(context.contains(HVKeyLocale));
    }

    void shouldListKeysInAscendingOrder()
    {
        HVContext context;
        context.set(25, 1);
        context.set(3, 2);
        QCOMPARE(context.keys(), (QList<HVContextKey> { 3, 25 }));
    }

    void shouldAnnounceAWriteBeforeAndAfter()
    {
        HVContext context;
        context.set(HVKeyLocale, 1);
        QStringList seen;
        connect(&context, &HVContext::settingWillChange, this, [&](HVContextKey key) {
            seen += QStringLiteral("will %1 %2").arg(key).arg(context.get(key, 0).toInt());
        });
        connect(&context, &HVContext::settingDidChange, this, [&](HVContextKey key) {
            seen += QStringLiteral("did %1 %2").arg(key).arg(context.get(key, 0).toInt());
        });
        context.set(HVKeyLocale, 2);
        QCOMPARE(seen, (QStringList { QStringLiteral("will 25 1"), QStringLiteral("did 25 2") }));
    }

    void shouldContainANewKeyOnlyAfterTheWrite()
    {
        HVContext context;
        QList<bool> held;
        const auto look = [&](HVContextKey key) { held += context.contains(key); };
        connect(&context, &HVContext::settingWillChange, this, look);
        connect(&context, &HVContext::settingDidChange, this, look);
        context.set(HVKeyLocale, QVariant());
        QCOMPARE(held, (QList<bool> { false, true }));
    }

    void shouldBeDeletedWithItsParent()
    {
        auto parent = std::make_unique<QObject>();
        const QPointer<HVContext> context(new HVContext(parent.get()));
        QCOMPARE(context->parent(), parent.get());
        parent.reset();
        QVERIFY(!context);
    }

    void shouldAnnounceEvenAnEqualValue()
    {
        HVContext context;
        QSignalSpy will(&context, SIGNAL(settingWillChange(HVContextKey)));
        QSignalSpy did(&context, SIGNAL(settingDidChange(HVContextKey)));
        context.set(HVKeyLocale, 1);
        context.set(HVKeyLocale, 1);
        QCOMPARE(will.count(), 2);
        QCOMPARE(did.count(), 2);
        QCOMPARE(did.at(0).at(0).toInt(), 25);
    }

    void shouldNameTheParameterOfItsSignals()
    {
        const QMetaObject &meta = HVContext::staticMetaObject;
        for (const char *signal :
             { "settingDidChange(HVContextKey)", "settingWillChange(HVContextKey)" }) {
            const int index = meta.indexOfSignal(signal);
            QVERIFY2(index >= 0, signal);
            QCOMPARE(meta.method(index).parameterNames(), QList<QByteArray> { "key" });
        }
    }

    void shouldCopySettingsOnly()
    {
        QObject parent;
        HVContext original(&parent);
        original.setObjectName(QStringLiteral("original"));
        original.set(HVKeyLocale, 1);
        QSignalSpy spy(&original, &HVContext::settingDidChange);

        HVContext copy(original);
        QCOMPARE(copy.parent(), nullptr);
        QVERIFY(copy.objectName().isEmpty());
        QCOMPARE(copy.get(HVKeyLocale, 0).toInt(), 1);

        copy.set(HVKeyLocale, 2);
        copy.set(HVKeyFallbackLocale, 3);
        QVERIFY(spy.isEmpty());
        QCOMPARE(original.get(HVKeyLocale, 0).toInt(), 1);
        QVERIFY(!original.contains(HVKeyFallbackLocale));

        original.set(HVKeyLocale, 4);
        QCOMPARE(copy.get(HVKeyLocale, 0).toInt(), 2);
    }

    void shouldReplaceAllSettingsByAssignmentWithoutASignal()
    {
        QObject parent;
        HVContext target(&parent);
        target.setObjectName(QStringLiteral("target"));
        target.set(HVKeySuspended, true);
        target.set(HVKeyLocale, 1);
        HVContext source;
        source.set(HVKeyLocale, 2);
        QSignalSpy will(&target, &HVContext::settingWillChange);
        QSignalSpy did(&target, &HVContext::settingDidChange);

        target = source;
        QCOMPARE(target.keys(), QList<HVContextKey> { HVKeyLocale });
        QCOMPARE(target.get(HVKeyLocale, 0).toInt(), 2);
        QCOMPARE(target.parent(), &parent);
        QCOMPARE(target.objectName(), QStringLiteral("target"));
        QVERIFY(will.isEmpty());
        QVERIFY(did.isEmpty());

        target.set(HVKeyLocale, 3);
        QCOMPARE(did.count(), 1);
        QCOMPARE(source.get(HVKeyLocale, 0).toInt(), 2);
    }

    void shouldKeepItsSettingsWhenAssignedToItself()
    {
        HVContext context;
        context.set(HVKeyLocale, 1);
        const HVContext &same = context;
        context = same;
        QCOMPARE(context.get(HVKeyLocale, 0).toInt(), 1);
    }

    void shouldNumberTheKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("number");
        const QList<QPair<int, int>> rows {
            { HVKeyHideDelay, 2 },           { HVKeyPopupIsWindow, 3 },
            { HVKeyPackageSuffix, 10 },      { HVKeyExtraComponentPath, 11 },
            { HVKeyRichUiFile, 12 },         { HVKeySimpleUiFile, 13 },
            { HVKeyResourceFolder, 16 },     { HVKeyTrackHover, 17 },
            { HVKeySafeMargin, 18 },         { HVKeyCursorOffset, 19 },
            { HVKeySimpleMode, 20 },         { HVKeyDocumentationEnabled, 21 },
            { HVKeyLinksEnabled, 22 },       { HVKeyFallbackKey, 23 },
            { HVKeyFallbackLocale, 24 },     { HVKeyLocale, 25 },
            { HVKeySuspended, 26 },          { HVKeyClearIndexOnSetup, 27 },
            { HVKeyAlwaysShowTooltips, 29 }, { HVKeyKeyDataFile, 30 },
            { HVKeyRequiredModifiers, 31 },  { HVKeyControlFolderName, 32 },
            { HVKeyTranslationFolder, 33 },  { HVKeyShowFadeDuration, 34 },
            { HVKeyHideFadeDuration, 35 },   { HVKeyMessageLevel, 36 },
            { HVKeyTranslationName, 37 },
        };
        for (const auto &row : rows)
            QTest::addRow("%d", row.second) << row.first << row.second;
    }

    void shouldNumberTheKeys()
    {
        QFETCH(int, key);
        QTEST(key, "number");
    }
};

HOVLETS_TEST_MAIN(tst_HVContext)
#include "tst_hvcontext.moc"
