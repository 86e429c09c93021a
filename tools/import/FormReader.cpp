// SPDX-License-Identifier: Apache-2.0
#include "FormReader.h"

#include "ReadFile.h"
#include "TipText.h"
#include "ToolError.h"
#include "XmlMistake.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>

namespace HovletsTool {

namespace {

constexpr qint64 MaxSize = qint64 { 64 } * 1024 * 1024; // bytes, far more than any form has

/// The member for the property \a name, or null for other properties.
FormText *textOf(FormObject &object, const QString &name)
{
    if (name == QLatin1String("toolTip"))
        return &object.toolTip;
    if (name == QLatin1String("statusTip"))
        return &object.statusTip;
    if (name == QLatin1String("whatsThis"))
        return &object.whatsThis;
    if (name == QLatin1String("text") || name == QLatin1String("title"))
        return &object.label;
    return name == QLatin1String("shortcut") ? &object.shortcut : nullptr;
}

/// Throws for a file whose root element is not that of a form.
[[noreturn]] void refuseOther(const QXmlStreamReader &reader, const QString &path)
{
    refuseMistakes(reader, path);
    if (reader.name() == QLatin1String("TS"))
        throw ToolError(QStringLiteral("%1 is a translation file; put --ts before it").arg(path));
    throw ToolError(QStringLiteral("%1 is not a Qt Designer form").arg(path));
}

bool isTipped(const FormObject &object)
{
    return !object.name.isEmpty()
            && (!object.toolTip.isEmpty() || !object.statusTip.isEmpty()
                || !object.whatsThis.isEmpty());
}

class FormReading
{
    Q_DISABLE_COPY_MOVE(FormReading)

public:
    explicit FormReading(const QString &path)
        : m_path(path)
    {
        const QByteArray bytes = readFile(path, MaxSize);
        refuseLargeTags(bytes, path);
        m_reader.addData(bytes);
    }

    std::vector<FormObject> read()
    {
        if (!m_reader.readNextStartElement() || m_reader.name() != QLatin1String("ui"))
            refuseOther(m_reader, m_path);
        m_open.push_back(NoObject);
        while (!m_open.empty()) {
            if (m_reader.readNextStartElement())
                readElement();
            else
                m_open.pop_back();
        }
        while (!m_reader.atEnd()) // anything but white space is a mistake
            m_reader.readNext();
        refuseMistakes(m_reader, m_path);
        m_all.erase(std::remove_if(m_all.begin(), m_all.end(),
                                   [](const FormObject &object) { return !isTipped(object); }),
                    m_all.end());
        return std::move(m_all);
    }

private:
    void readElement()
    {
        const auto element = m_reader.name();
        const QString name = m_reader.attributes().value(QLatin1String("name")).toString();
        if (element == QLatin1String("widget") || element == QLatin1String("action")) {
            m_open.push_back(m_all.size());
            m_all.push_back({ name, m_all.empty() ? name : m_all.front().form });
        } else if (element == QLatin1String("class") && m_context.isEmpty()) {
            m_context = m_reader.readElementText();
        } else if (element == QLatin1String("property") && m_open.back() != NoObject) {
            readProperty(name, m_all[m_open.back()]);
        } else {
            m_open.push_back(NoObject);
        }
    }

    void readProperty(const QString &name, FormObject &object)
    {
        if (FormText *text = textOf(object, name))
            *text = readText();
        else
            m_reader.skipCurrentElement();
    }

    /// Returns no text for a property of another type, and for a string without visible text.
    FormText readText()
    {
        FormText read;
        while (m_reader.readNextStartElement()) {
            if (m_reader.name() != QLatin1String("string")) {
                m_reader.skipCurrentElement();
                continue;
            }
            const QXmlStreamAttributes attributes = m_reader.attributes();
            if (attributes.value(QLatin1String("notr")) != QLatin1String("true"))
                read.places = { { m_context,
                                  attributes.value(QLatin1String("comment")).toString() } };
            read.text = m_reader.readElementText();
        }
        if (plainText(read.text).isEmpty())
            read.text.clear();
        return read;
    }

    static constexpr size_t NoObject = size_t(-1);

    QString m_path;
    QXmlStreamReader m_reader;
    QString m_context;
    std::vector<FormObject> m_all;
    // The open elements: for each object its index. The items and columns of a widget are not
    // objects; their tips do not belong to the widget.
    std::vector<size_t> m_open;
};

} // namespace

std::vector<FormObject> readForm(const QString &path)
{
    return FormReading(path).read();
}

} // namespace HovletsTool
