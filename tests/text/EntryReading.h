// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVEntryContent.h"
#include "HVLimits.h"
#include "HVXmlElement.h"
#include "Text.h"

#include <memory>

/// Services that record what they are asked.
class EntryServices : public Hovlets::HVEntryServices
{
public:
    QString translate(const QString &text, const QString &context) override
    {
        translated += context + QLatin1Char('/') + text;
        return translation;
    }
    QString interpolate(const QString &text) override
    {
        interpolated += text.size();
        return QString(text).remove(QLatin1String("%(empty)s"));
    }
    QString resource(const QString &relativePath) override
    {
        return relativePath.contains(QLatin1String("missing")) ? QString() : relativePath;
    }
    bool canShowPicture(const QString &path) override
    {
        ++picturesRead;
        return path.endsWith(QLatin1String(".png"));
    }

    QString optionalResource(const QString &relativePath, const QString &) override
    {
        return relativePath.endsWith(QLatin1String(".vtt")) ? relativePath : QString();
    }

    QByteArray captionFile(const QString &) override { return captions; }

    QByteArray captions;
    QString translation; // of each text
    QStringList translated;
    qint64 interpolated = 0; // characters
    int picturesRead = 0;
};

/// A tree of elements, built from the outside in.
class Element
{
public:
    explicit Element(Hovlets::HVXmlElement *element)
        : m_element(element)
    {
    }

    Element add(const char *tag, const QString &content = {})
    {
        auto *child = new Hovlets::HVXmlElement(m_element);
        child->setTagName(QLatin1String(tag));
        child->setContent(content);
        return Element(child);
    }

    Element &set(const char *name, const QString &value)
    {
        m_element->setAttribute(QLatin1String(name), value);
        return *this;
    }

private:
    Hovlets::HVXmlElement *m_element;
};

inline QStringList textsOf(const Hovlets::HVEntryContent &content)
{
    QStringList texts;
    for (const Hovlets::HVEntryBlock &block : content.blocks)
        texts += block.text.text;
    return texts;
}

/// What a test of entries needs: an element for the entry, with the key "k".
class EntryReading
{
protected:
    void start()
    {
        m_root = std::make_unique<Hovlets::HVXmlElement>();
        m_root->setAttribute(text("key"), text("k"));
        m_limits = {};
        m_services = {};
    }

    Hovlets::HVEntryContent read()
    {
        return Hovlets::readEntry(*m_root, m_services, false, m_limits);
    }

    std::unique_ptr<Hovlets::HVXmlElement> m_root;
    Hovlets::HVLimits m_limits;
    EntryServices m_services;
};
