// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVIndex.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "Text.h"
#include "ToolRun.h"

#include <QtCore/QDir>
#include <QtCore/QLocale>

#include <memory>

/// A form whose button has three tips, and whose action has one.
inline constexpr char PaintForm[] =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<ui version=\"4.0\">\n<class>MainWindow</class>\n"
        "<widget class=\"QMainWindow\" name=\"MainWindow\">\n"
        " <property name=\"windowTitle\"><string>Paint</string></property>\n"
        " <widget class=\"QPushButton\" name=\"pen\">\n"
        "  <property name=\"toolTip\"><string>Draw &amp; write</string></property>\n"
        "  <property name=\"statusTip\"><string>Draws a line.</string></property>\n"
        "  <property name=\"whatsThis\"><string>&lt;html&gt;&lt;b&gt;Hold&lt;/b&gt; it "
        "down.&lt;/html&gt;</string></property>\n"
        " </widget>\n"
        " <widget class=\"QLabel\" name=\"silent\"/>\n"
        " <action name=\"save\"><property name=\"statusTip\"><string>Saves.</string></property>"
        "</action>\n"
        "</widget>\n</ui>\n";

/// A form with one button: its label, and its tooltip written as XML.
inline QByteArray formOf(const QByteArray &form, const QByteArray &label, const QByteArray &tip,
                         const QByteArray &more = {})
{
    return "<ui><class>" + form + "</class><widget class=\"QDialog\" name=\"" + form
            + "\"><widget class=\"QPushButton\" name=\"button\"><property name=\"text\"><string>"
            + label + "</string></property><property name=\"toolTip\"><string>" + tip
            + "</string></property>" + more + "</widget></widget></ui>";
}

/// The texts of an entry: its title, then its paragraphs.
inline QStringList textsOf(const QString &package, const QString &key, const QLocale &locale)
{
    HVContext context;
    Hovlets::HVIndex index(&context, {});
    const QDir control(package + text("/Control"));
    const QStringList files = control.entryList({ text("*.xml") });
    for (const QString &file : files)
        index.indexControlFile(control.filePath(file), package);
    QString path;
    int depth = 0;
    Hovlets::HVXmlElement *root = nullptr;
    const Hovlets::HVXmlElement *entry = index.retrieve(key, locale, path, depth, root);
    const std::unique_ptr<Hovlets::HVXmlElement> owner(root);
    if (!entry)
        return {};
    QStringList texts { entry->attribute(text("title")) };
    for (const QObject *child : entry->children())
        texts += static_cast<const Hovlets::HVXmlElement *>(child)->content();
    return texts;
}
