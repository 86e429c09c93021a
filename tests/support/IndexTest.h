// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContentTree.h"
#include "HVContext.h"
#include "HVIndex.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"

#include <QtCore/QObject>

#include <memory>

/// A test with an empty data path and an index of it, created for each test function.
class IndexTest : public QObject
{
    Q_OBJECT

protected:
    /// Writes and indexes "PACKAGE.hovlets/Control/NAME.xml".
    QString index(const char *package, const char *name, const QByteArray &content)
    {
        const QString path =
                m_folder->addControlFile(QLatin1String(package), QLatin1String(name), content);
        m_index->indexControlFile(path, this->package(package));
        return path;
    }

    QString package(const char *name) const
    {
        return m_folder->path() + QStringLiteral("/%1.hovlets").arg(QLatin1String(name));
    }

    static QByteArray entry(const QByteArray &key, const QByteArray &name)
    {
        return "<hovlet key=\"" + key + "\" name=\"" + name + "\"/>";
    }

    /// The result of a look-up; owns the tree.
    struct Found
    {
        Found(Hovlets::HVIndex &index, const char *key,
              const QLocale &locale = QLocale(QStringLiteral("en_US")))
        {
            Hovlets::HVXmlElement *root = nullptr;
            Hovlets::HVXmlElement *entry =
                    index.retrieve(QString::fromUtf8(key), locale, path, depth, root);
            tree = Hovlets::HVContentTree(entry, root);
        }

        Hovlets::HVXmlElement *entry() const { return tree.entry(); }
        QString attribute(const char *name) const
        {
            return entry() ? entry()->attribute(QLatin1String(name)) : QStringLiteral("no entry");
        }

        QString path = QStringLiteral("untouched");
        int depth = 77;
        Hovlets::HVContentTree tree;
    };

    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<HVContext> m_context;
    std::unique_ptr<Hovlets::HVIndex> m_index;

protected Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_context = std::make_unique<HVContext>();
        m_index = std::make_unique<Hovlets::HVIndex>(m_context.get(), QStringList());
    }

    void cleanup()
    {
        m_index.reset();
        m_context.reset();
        m_folder.reset();
    }
};
