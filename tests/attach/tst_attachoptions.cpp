// SPDX-License-Identifier: Apache-2.0
#include "AttachOptions.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"

#include <QtTest/QtTest>

using namespace Hovlets;

class tst_AttachOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadAFile()
    {
        const PackageFolder folder;
        const QString file = folder.add(text("attach.json"),
                                        R"({ "dataPaths": ["/packages", "mine"],
                                             "settings": { "HVKeyHideDelay": 1000 },
                                             "rules": "rules.txt" })");
        QStringList errors;
        const AttachOptions options = AttachOptions::read(file, errors);
        QCOMPARE(errors, QStringList());
        QCOMPARE(options.dataPaths,
                 QStringList({ text("/packages"), folder.path() + text("/mine") }));
        QCOMPARE(options.settings.value(text("HVKeyHideDelay")).toInt(), 1000);
        QCOMPARE(options.rules, folder.path() + text("/rules.txt"));
        QCOMPARE(options.record, QString());
    }

    void shouldReportAMistake_data()
    {
        QTest::addColumn<QByteArray>("member");
        QTest::addColumn<QString>("error");
        const auto row = [](const char *member, const char *error) {
            QTest::newRow(member) << QByteArray(member) << text(error);
        };
        row(R"("dataPaths": "packages")", "\"dataPaths\" is not an array of strings");
        row(R"("dataPaths": [1])", "\"dataPaths\" is not an array of strings");
        row(R"("settings": [])", "\"settings\" is not an object");
        row(R"("rules": 1)", "\"rules\" is not a string");
        row(R"("record": {})", "\"record\" is not a string");
        row(R"("report": null)", "\"report\" is not a string");
        row(R"("path": "packages")", "unknown name \"path\"");
    }

    void shouldReportAMistake()
    {
        QFETCH(QByteArray, member);
        QFETCH(QString, error);
        const PackageFolder folder;
        const QString rest = member.startsWith("\"rules\"") ? text("record") : text("rules");
        const QString file = folder.add(text("attach.json"),
                                        "{ \"" + rest.toUtf8() + "\": \"other\", " + member + " }");
        QStringList errors;
        const AttachOptions options = AttachOptions::read(file, errors);
        QCOMPARE(errors, QStringList(file + text(": ") + error));
        QCOMPARE(options.rules + options.record, folder.path() + text("/other")); // the rest counts
    }
};

HOVLETS_TEST_MAIN(tst_AttachOptions)
#include "tst_attachoptions.moc"
