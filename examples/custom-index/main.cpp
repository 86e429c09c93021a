// SPDX-License-Identifier: Apache-2.0
// A host that reads its hovlets from a database instead of control files.
#include <Hovlets/HVContext.h>
#include <Hovlets/HVIndex.h>
#include <Hovlets/HVInterface.h>
#include <Hovlets/HVXmlElement.h>

#include <QtCore/QFile>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

using Hovlets::HVXmlElement;

/// Looks up entries in the default database first, then in the control files.
class DatabaseIndex : public Hovlets::HVIndex
{
public:
    using HVIndex::HVIndex;

    QStringList keys() override
    {
        QStringList keys;
        QSqlQuery query(QStringLiteral("SELECT DISTINCT key FROM hovlet ORDER BY key"));
        while (query.next())
            keys += query.value(0).toString();
        return keys + HVIndex::keys();
    }

    HVXmlElement *retrieve(const QString &key, const QLocale &locale, QString &path, int &depth,
                           HVXmlElement *&root) override
    {
        QSqlQuery query;
        query.prepare(QStringLiteral("SELECT locale, title, shortcut FROM hovlet "
                                     "WHERE key = ? AND locale IN ('', ?) ORDER BY locale DESC"));
        query.addBindValue(key);
        query.addBindValue(locale.name());
        if (!query.exec() || !query.next())
            return HVIndex::retrieve(key, locale, path, depth, root);

        path = QCoreApplication::applicationDirPath(); // the folder for pictures and clips
        depth = 1; // 1 is the folder itself
        root = new HVXmlElement; // the library deletes it and the entry below it
        root->setTagName(QStringLiteral("hovlets"));
        auto *entry = new HVXmlElement(root);
        entry->setTagName(QStringLiteral("hovlet"));
        entry->setAttribute(QStringLiteral("key"), key);
        entry->setAttribute(QStringLiteral("title"), query.value(1).toString());
        entry->setAttribute(QStringLiteral("shortcut"), query.value(2).toString());
        // The package with the user interface. The attribute is spelled without the "e".
        entry->setAttribute(QStringLiteral("HVPackagName"), QStringLiteral("Default"));
        addParagraphs(entry, key, query.value(0).toString());
        return entry;
    }

private:
    static void addParagraphs(HVXmlElement *entry, const QString &key, const QString &locale)
    {
        QSqlQuery query;
        query.prepare(QStringLiteral("SELECT text FROM paragraph WHERE key = ? AND locale = ? "
                                     "ORDER BY position"));
        query.addBindValue(key);
        query.addBindValue(locale);
        query.exec();
        while (query.next()) {
            auto *paragraph = new HVXmlElement(entry);
            paragraph->setTagName(QStringLiteral("p"));
            paragraph->setContent(query.value(0).toString());
        }
    }
};

/// Fills a database in memory, where a real host would open a file. Returns false on failure.
bool openDatabase()
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(QStringLiteral(":memory:"));
    QFile script(QStringLiteral(HOVLETS_SQL));
    if (!database.open() || !script.open(QIODevice::ReadOnly))
        return false;
    const QStringList statements = QString::fromUtf8(script.readAll()).split(QStringLiteral(";\n"));
    for (const QString &statement : statements) {
        QSqlQuery query;
        if (!statement.trimmed().isEmpty() && !query.exec(statement))
            return false;
    }
    return true;
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (!openDatabase())
        qFatal("no database: %s", qPrintable(QSqlDatabase::database().lastError().text()));

    HVContext settings;
    settings.set(Hovlets::HVKeyTrackHover, true);
    settings.set(Hovlets::HVKeyLocale, QLocale().name());
    const QStringList packages { QStringLiteral(DEFAULT_PACKAGES) };
    DatabaseIndex index(&settings, packages);
    Hovlets::HVInterface hovlets(settings, packages, &index);

    QPushButton button(QStringLiteral("Save"));
    button.setObjectName(QStringLiteral("save")); // the key of its entry
    button.resize(260, 80);
    button.show();
    return application.exec();
}
