// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVSettings.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>
#include <QtCore/QSize>

#include <algorithm>

using namespace Hovlets;

// The table of settings, the enumeration that hosts use and the documents must agree.

namespace {

QString sourcePath(const QString &name)
{
    return QStringLiteral(HOVLETS_SOURCE "/") + name;
}

QString defaultText(const HVSetting &setting)
{
    const QVariant &value = setting.defaultValue;
    if (!value.isValid())
        return QStringLiteral("not set");
    if (value.canConvert<QSize>())
        return QStringLiteral("%1 × %2").arg(value.toSize().width()).arg(value.toSize().height());
    return value.toString().isEmpty() ? QStringLiteral("empty") : value.toString();
}

bool isQuoted(const HVSetting &setting)
{
    return setting.type.startsWith(u"string") && !setting.defaultValue.toString().isEmpty();
}

QString row(const HVSetting &setting)
{
    QString value = defaultText(setting);
    if (isQuoted(setting))
        value = QStringLiteral("`%1`").arg(value);
    if (!setting.defaultNote.isEmpty())
        value += QStringLiteral(": ") + setting.defaultNote;
    const QStringList cells { QStringLiteral("`%1`").arg(setting.name),
                              QString::number(setting.key),
                              setting.type,
                              value,
                              setting.read,
                              setting.meaning };
    return QStringLiteral("| %1 |\n").arg(cells.join(u" | "));
}

/// The table as docs/settings.md shows it.
QString table()
{
    QString text = QStringLiteral("| key | number | type | default | read | what it does |\n"
                                  "|---|---|---|---|---|---|\n");
    for (const HVSetting &setting : allSettings())
        text += row(setting);
    return text;
}

/// The beginning of an enumerator's comment: type and default.
QString commentStart(const HVSetting &setting)
{
    QString type = setting.type;
    QString value = defaultText(setting);
    if (isQuoted(setting))
        value = QStringLiteral("\"%1\"").arg(value);
    return QStringLiteral("%1, %2: ").arg(type.remove(u'`'), value.replace(u'×', u'x'));
}

} // namespace

class tst_HVSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldBeOrderedByKey()
    {
        const QList<HVSetting> &settings = allSettings();
        QVERIFY(std::is_sorted(settings.cbegin(), settings.cend(),
                               [](const HVSetting &left, const HVSetting &right) {
                                   return left.key <= right.key;
                               }));
    }

    void shouldDescribeEachKeyAsItsEnumeratorDoes()
    {
        QMap<QString, const HVSetting *> rows;
        for (const HVSetting &setting : allSettings())
            rows.insert(setting.name, &setting);

        const QString header =
                readText(sourcePath(QStringLiteral("Components/Hovlets/Hovlets/HVContext.h")));
        auto enumerators = QRegularExpression(QStringLiteral("    /// (.*)\n((?:    /// .*\n)*)"
                                                             "    (HVKey\\w+) = (\\d+)"))
                                   .globalMatch(header);
        int count = 0;
        for (; enumerators.hasNext(); ++count) {
            const auto match = enumerators.next();
            const QString name = match.captured(3);
            QVERIFY2(rows.contains(name), qPrintable(name));
            QCOMPARE(int(rows[name]->key), match.captured(4).toInt());
            const QString start = commentStart(*rows[name]);
            QVERIFY2(match.captured(1).startsWith(start), qPrintable(start));
        }
        QCOMPARE(count, int(rows.size()));
        QCOMPARE(int(header.count(QRegularExpression(QStringLiteral("HVKey\\w+ = ")))), count);
    }

    void shouldReadAsTheDefaultUntilItIsSet()
    {
        HVContext context;
        for (const HVSetting &setting : allSettings())
            QCOMPARE(context.get(setting.key), setting.defaultValue);
        context.set(HVKeyHideDelay, 5);
        QCOMPARE(context.get(HVKeyHideDelay), QVariant(5));
        context.set(HVKeyHideDelay, QVariant());
        QVERIFY(!context.get(HVKeyHideDelay).isValid());
    }

    void shouldHaveNoDefaultForTheHostsOwnKeys()
    {
        HVContext context;
        QVERIFY(!context.get(1).isValid());
        QVERIFY(!context.get(2000).isValid());
        context.set(2000, 7);
        QCOMPARE(context.get(2000), QVariant(7));
    }

    /// Replaces the table in the document if HOVLETS_UPDATE_DOCS is set in the environment.
    void shouldBeTheTableInTheReference()
    {
        const QString path = sourcePath(QStringLiteral("docs/settings.md"));
        const QString document = readText(path);
        const auto start = document.indexOf(u"| key | number |");
        const auto end = document.indexOf(u"\n\n", start) + 1;
        QVERIFY(start >= 0 && end > start);
        if (qEnvironmentVariableIsSet("HOVLETS_UPDATE_DOCS")) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write((document.left(start) + table() + document.mid(end)).toUtf8());
            QSKIP("docs/settings.md was written, not checked");
        }
        const QStringList written = document.mid(start, end - start).split(u'\n');
        const QStringList wanted = table().split(u'\n');
        for (int i = 0; i < qMin(written.size(), wanted.size()); ++i)
            QCOMPARE(written.at(i), wanted.at(i)); // HOVLETS_UPDATE_DOCS=1 updates it
        QCOMPARE(written.size(), wanted.size());
    }

    void shouldWriteWhatTheReferenceRecommends()
    {
        HVContext context;
        context.set(HVKeyHideDelay, 5);
        useRecommendedSettings(context);
        QCOMPARE(context.get(HVKeyHideDelay), QVariant(5));
        QString written = QStringLiteral("| key | value |\n|---|---|\n");
        for (const HVSetting &setting : allSettings()) {
            if (setting.key != HVKeyHideDelay && context.contains(setting.key))
                written += QStringLiteral("| `%1` | %2 |\n")
                                   .arg(setting.name, context.get(setting.key).toString());
        }
        QCOMPARE(context.keys().size(), recommendedSettings().size() + 1);

        const QString document = readText(sourcePath(QStringLiteral("docs/settings.md")));
        const auto start = document.indexOf(u"| key | value |");
        QVERIFY(start >= 0);
        QCOMPARE(document.mid(start, document.indexOf(u"\n\n", start) + 1 - start), written);
    }

    /// The plug-in sees only the public headers, and therefore has a list of its own.
    void shouldBeKnownToThePlugIn()
    {
        const QList<HVContextKey> onlyForCode { HVKeyTrackHover, HVKeyDocumentationEnabled,
                                                HVKeyClearIndexOnSetup, HVKeyKeepClear };
        const QString source =
                readText(sourcePath(QStringLiteral("Components/Hovlets/Plugin/AttachOptions.cpp")));
        for (const HVSetting &setting : allSettings()) {
            const bool isListed = source.contains(QStringLiteral("HV_NAMED(%1)").arg(setting.name));
            QVERIFY2(isListed != onlyForCode.contains(setting.key), qPrintable(setting.name));
        }
    }

    /// The README lists the settings that everybody needs, and links to the full table.
    void shouldBeInTheReadmeAsInTheReference()
    {
        QStringList wanted;
        for (const HVSetting &setting : allSettings())
            wanted += row(setting).section(u'|', 1, 4);
        const QString readme = readText(sourcePath(QStringLiteral("README.md")));
        QVERIFY(readme.contains(u"](docs/settings.md)"));
        auto rows = QRegularExpression(QStringLiteral("^\\| `HVKey.*$"),
                                       QRegularExpression::MultilineOption)
                            .globalMatch(readme);
        int count = 0;
        for (; rows.hasNext(); ++count) {
            const QString cells = rows.next().captured().section(u'|', 1, 4);
            QVERIFY2(wanted.contains(cells), qPrintable(cells));
        }
        QCOMPARE(count, 5);
    }
};

HOVLETS_TEST_MAIN(tst_HVSettings)
#include "tst_hvsettings.moc"
