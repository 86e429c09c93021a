// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

PackageFolder::PackageFolder()
{
    if (!m_folder.isValid())
        qFatal("no temporary folder: %s", qPrintable(m_folder.errorString()));
}

QString PackageFolder::path() const
{
    return QFileInfo(m_folder.path()).canonicalFilePath();
}

QString PackageFolder::add(const QString &relativePath, const QByteArray &content) const
{
    const QString path = QDir(this->path()).filePath(relativePath);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

QString PackageFolder::addControlFile(const QString &package, const QString &name,
                                      const QByteArray &content) const
{
    return add(QStringLiteral("%1.hovlets/Control/%2.xml").arg(package, name), content);
}

void PackageFolder::addPackage(const QString &package, const QStringList &keys) const
{
    QByteArray content("<hovlets>\n");
    for (const QString &key : keys) {
        content += "  <hovlet key=\"" + key.toUtf8() + "\"><title>Title of " + key.toUtf8()
                + "</title></hovlet>\n";
    }
    addControlFile(package, QStringLiteral("content"), content + "</hovlets>\n");
    add(package + QStringLiteral(".hovlets/ui/HovletsUI.qml"), userInterface(200, 100));
}

QByteArray PackageFolder::userInterface(int width, int height, const QByteArray &body)
{
    return "import QtQuick 2.15\nRectangle {\n    width: " + QByteArray::number(width)
            + "\n    height: " + QByteArray::number(height) + "\n" + body + "\n}\n";
}
