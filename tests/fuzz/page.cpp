// SPDX-License-Identifier: Apache-2.0
// Checks that the QML of the default user interface can show any text, and that showing it reaches
// no address.
#include "FuzzTarget.h"
#include "HVEntryReader.h"
#include "HVQmlTypes.h"
#include "HVToolTipTheme.h"
#include "HVXmlElement.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlNetworkAccessManagerFactory>

#include <cstdlib>
#include <memory>

using namespace Hovlets;

namespace {

class NoNetwork : public QNetworkAccessManager
{
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *createRequest(Operation, const QNetworkRequest &request, QIODevice *) override
    {
        qFatal("A text requests %s", request.url().toEncoded().constData());
    }
};

class NoNetworkFactory : public QQmlNetworkAccessManagerFactory
{
public:
    QNetworkAccessManager *create(QObject *parent) override { return new NoNetwork(parent); }
};

constexpr auto PageSource = R"(
import QtQuick 2.15
import "Content.js" as Content
Item {
    property var entry: null
    readonly property var content: Content.read(entry, hovletReader, hovletView)
    readonly property string spoken: Content.spokenContent(content, content.blocks)
    readonly property var simple: Content.firstParagraph(content.blocks)
    Theme { id: pageTheme }
    Body { theme: pageTheme; width: 300; blocks: content.blocks }
}
)";

/// The part of the default user interface that shows texts, with its engine.
class Page
{
public:
    Page()
    {
        registerQmlTypes();
        m_engine.setNetworkAccessManagerFactory(&m_network);
        QQmlContext *context = m_engine.rootContext();
        context->setContextProperty(QStringLiteral("hovletTheme"), &m_theme);
        context->setContextProperty(QStringLiteral("hovletReader"), &m_reader);
        context->setContextProperty(QStringLiteral("hovletView"), nullptr);
        QQmlComponent component(&m_engine);
        component.setData(PageSource,
                          QUrl::fromLocalFile(
                                  QStringLiteral(HOVLETS_PACKAGES "/Default.hovlets/ui/Page.qml")));
        m_item.reset(component.create());
        if (!m_item)
            qFatal("%s", qPrintable(component.errorString()));
    }

    /// Shows \a text as a paragraph and as a link.
    void show(const QString &text)
    {
        auto entry = std::make_unique<HVXmlElement>();
        entry->setAttribute(QStringLiteral("key"), QStringLiteral("k"));
        entry->setAttribute(QStringLiteral("title"), text);
        addChild(*entry, QStringLiteral("p"))->setContent(text);
        addChild(*entry, QStringLiteral("link"))->setAttribute(QStringLiteral("href"), text);
        m_item->setProperty("entry", QVariant::fromValue(entry.get()));
        m_entry = std::move(entry);

        // Without an event loop, nothing else deletes the items of the previous text.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        constexpr int ShowsUntilCollection = 50;
        if (++m_shows % ShowsUntilCollection == 0)
            m_engine.collectGarbage();
    }

private:
    static HVXmlElement *addChild(HVXmlElement &parent, const QString &tag)
    {
        auto *child = new HVXmlElement(&parent);
        child->setTagName(tag);
        return child;
    }

    HVToolTipTheme m_theme { nullptr };
    HVEntryReader m_reader { nullptr };
    NoNetworkFactory m_network;
    QQmlEngine m_engine;
    std::unique_ptr<HVXmlElement> m_entry;
    std::unique_ptr<QObject> m_item;
    int m_shows = 0;
};

} // namespace

// The JavaScript engine keeps objects in memory in which the leak sanitizer looks for no pointers.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that the sanitizer looks for
extern "C" const char *__asan_default_options()
{
    return "detect_leaks=0";
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Page page;
    page.show(QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
