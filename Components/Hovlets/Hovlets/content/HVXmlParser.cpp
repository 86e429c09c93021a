// SPDX-License-Identifier: Apache-2.0
#include "HVXmlParser.h"

#include "HVXmlBudget.h"
#include "HVLogging.h"
#include "HVXmlElement.h"
#include "HVXmlNamespaces.h"
#include "HVXmlSource.h"

#include <QtCore/QMap>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QXmlInputSource>

namespace Hovlets {

namespace {

struct StackEntry
{
    QPointer<QObject> object;
    int mode = 0;
};

void log(const QString &message)
{
    qCDebug(contentLog).noquote() << message;
}

/// Assigns the attributes to the properties of the same names; false if a property is missing.
bool writeAttributes(const QMetaObject *metaObject, QObject *object, const QXmlAttributes &atts)
{
    for (int i = 0; i < atts.count(); ++i) {
        const QString name = atts.localName(i);
        const int property = metaObject->indexOfProperty(name.toLatin1().constData());
        if (property < 0) {
            log(QStringLiteral("No Property named %1 on %2")
                        .arg(name, QLatin1String(metaObject->className())));
            return false;
        }
        if (!metaObject->property(property).write(object, QVariant(atts.value(i)))) {
            log(QStringLiteral("Could not write \"%1\" to property %2 of %3")
                        .arg(atts.value(i), name, QLatin1String(metaObject->className())));
        }
    }
    return true;
}

void writeIfPresent(QObject *object, const char *name, const QString &value)
{
    const QMetaObject *metaObject = object->metaObject();
    const int property = metaObject->indexOfProperty(name);
    if (property >= 0)
        metaObject->property(property).write(object, value.trimmed());
}

} // namespace

/*!
 * \brief Sits between the reader and the parser, and resolves the namespaces.
 *
 * The reader's own support for them is disabled: see HVXmlNamespaces.
 */
class HVXmlParser::NamespaceFilter : public QXmlDefaultHandler
{
public:
    explicit NamespaceFilter(HVXmlParser &parser)
        : m_parser(parser)
    {
    }

    void reset() { m_namespaces = {}; }

    bool startElement(const QString &, const QString &, const QString &qName,
                      const QXmlAttributes &attributes) override
    {
        const QXmlAttributes named = m_namespaces.enter(attributes);
        const HVXmlNamespaces::Name name = m_namespaces.elementName(qName);
        return m_parser.startElement(name.uri, name.local, qName, named);
    }

    bool endElement(const QString &, const QString &, const QString &qName) override
    {
        const HVXmlNamespaces::Name name = m_namespaces.elementName(qName);
        m_namespaces.leave();
        return m_parser.endElement(name.uri, name.local, qName);
    }

    bool characters(const QString &ch) override { return m_parser.characters(ch); }
    QString errorString() const override { return m_parser.errorString(); }

private:
    HVXmlParser &m_parser;
    HVXmlNamespaces m_namespaces;
};

class HVXmlParser::Private
{
public:
    explicit Private(HVXmlParser &parser)
        : filter(parser)
    {
    }

    /// An object of the class, or null; then the reason is in the debug output.
    QObject *create(const QMetaObject *metaObject, QObject *parent, const QString &localName,
                    const QXmlAttributes &atts) const;

    QMap<QString, const QMetaObject *> elements;
    const QMetaObject *defaultElement = &HVXmlElement::staticMetaObject;
    QList<StackEntry> stack;
    QList<QPointer<QObject>> orphans; // built below a skipped element, and without any other owner
    Callback callback = nullptr;
    void *userData = nullptr;
    int mode = GenerateAsk;
    HVXmlBudget budget;
    NamespaceFilter filter;
};

QObject *HVXmlParser::Private::create(const QMetaObject *metaObject, QObject *parent,
                                      const QString &localName, const QXmlAttributes &atts) const
{
    QObject *object =
            metaObject->newInstance(Q_ARG(QObject *, parent), Q_ARG(QXmlAttributes, atts));
    if (object)
        return object;

    std::unique_ptr<QObject> plain(metaObject->newInstance(Q_ARG(QObject *, parent)));
    if (!writeAttributes(metaObject, plain.get(), atts))
        return nullptr;
    if (!plain)
        log(QStringLiteral("Could not find object for element: %1").arg(localName));
    return plain.release();
}

HVXmlParser::HVXmlParser(Callback callback, void *userData)
    : d(std::make_unique<Private>(*this))
{
    d->callback = callback;
    d->userData = userData;
    // Makes the reader deliver text around entities in pieces and report each expansion, which lets
    // the parser stop a flood of them early.
    setFeature(QStringLiteral("http://qt-project.org/xml/features/report-start-end-entity"), true);
    setFeature(QStringLiteral("http://xml.org/sax/features/namespaces"), false);
}

HVXmlParser::~HVXmlParser()
{
    for (const StackEntry &entry : std::as_const(d->stack))
        delete entry.object.data();
    for (const QPointer<QObject> &orphan : std::as_const(d->orphans))
        delete orphan.data();
}

void HVXmlParser::registerElement(const QString &tag, const QMetaObject *metaObject)
{
    d->elements.insert(tag, metaObject);
}

void HVXmlParser::unregisterElement(const QString &tag)
{
    d->elements.remove(tag);
}

const QMetaObject *HVXmlParser::metaObjectForElement(const QString &tag) const
{
    return d->elements.value(tag, nullptr);
}

void HVXmlParser::setDefaultElement(const QMetaObject *metaObject)
{
    Q_ASSERT(metaObject);
    d->defaultElement = metaObject;
}

const QMetaObject *HVXmlParser::defaultElement() const
{
    return d->defaultElement;
}

QList<QObject *> HVXmlParser::read(const QXmlInputSource *source)
{
    d->mode = GenerateAsk;
    d->stack.clear();
    HVXmlElement holder;
    d->stack.append({ &holder, GenerateAsk });

    d->budget = HVXmlBudget();
    d->filter.reset();
    setContentHandler(&d->filter);
    setErrorHandler(this);
    setDeclHandler(this);
    setLexicalHandler(this);
    // Reading changes a source, although the reader takes it as const: it casts in the same way.
    HVXmlSource guarded(const_cast<QXmlInputSource &>(*source), d->budget);
    parse(&guarded);

    const QList<QObject *> objects = holder.children();
    for (QObject *object : objects)
        object->setParent(nullptr);
    return objects;
}

QList<QObject *> HVXmlParser::read(const QXmlInputSource &source)
{
    return read(&source);
}

bool HVXmlParser::isClosed() const
{
    return d->stack.size() <= 1;
}

QString HVXmlParser::limitMet() const
{
    return d->budget.failure();
}

bool HVXmlParser::startElement(const QString &namespaceURI, const QString &localName,
                               const QString &qName, const QXmlAttributes &atts)
{
    if (!d->budget.openElement(static_cast<int>(d->stack.size())))
        return false;
    for (int i = 0; i < atts.count(); ++i) {
        if (!d->budget.deliver(atts.value(i).size()))
            return false;
    }

    int generate = d->mode;
    if (generate & SkipChildren) {
        d->stack.append({ nullptr, SkipChildren });
        return true;
    }
    if ((generate & GenerateAsk) && d->callback)
        generate = d->callback(qName, atts, d->userData);
    if (generate & SkipChildren)
        d->mode = SkipChildren;
    else
        d->mode = generate & GenerateAll ? GenerateAll : GenerateAsk;
    if (generate & SkipElement) {
        d->stack.append({ nullptr, d->mode });
        return true;
    }

    if (!d->budget.buildElement())
        return false;
    QObject *parent = d->stack.isEmpty() ? nullptr : d->stack.constLast().object.data();
    const QMetaObject *registered = metaObjectForElement(localName);
    QObject *object =
            d->create(registered ? registered : d->defaultElement, parent, localName, atts);
    if (!object)
        return false;
    if (!parent)
        d->orphans.append(object);
    writeIfPresent(object, "tagNameSpace", namespaceURI);
    writeIfPresent(object, "tagName", qName);
    d->stack.append({ object, d->mode });
    return true;
}

bool HVXmlParser::endElement(const QString &namespaceURI, const QString &localName,
                             const QString &qName)
{
    Q_UNUSED(namespaceURI)
    Q_UNUSED(localName)
    Q_UNUSED(qName)
    if (!d->stack.isEmpty())
        d->stack.removeLast();
    if (!d->stack.isEmpty())
        d->mode = d->stack.constLast().mode;
    return true;
}

bool HVXmlParser::characters(const QString &ch)
{
    if (!d->budget.deliver(ch.size()))
        return false;

    QObject *object = d->stack.isEmpty() ? nullptr : d->stack.constLast().object.data();
    if (!object)
        return true;
    const int method = object->metaObject()->indexOfMethod("appendContent(QString)");
    if (method >= 0)
        object->metaObject()->method(method).invoke(object, Qt::DirectConnection,
                                                    Q_ARG(QString, ch));
    return true;
}

bool HVXmlParser::ignorableWhitespace(const QString &ch)
{
    return characters(ch);
}

bool HVXmlParser::startDTD(const QString &, const QString &, const QString &)
{
    d->budget.setInDocumentType(true);
    return true;
}

bool HVXmlParser::endDTD()
{
    d->budget.setInDocumentType(false);
    return true;
}

bool HVXmlParser::internalEntityDecl(const QString &name, const QString &value)
{
    return d->budget.declareEntity(name, value);
}

bool HVXmlParser::startEntity(const QString &name)
{
    return d->budget.expandEntity(name);
}

QString HVXmlParser::errorString() const
{
    const QString limit = d->budget.failure();
    return limit.isNull() ? QXmlDefaultHandler::errorString() : limit;
}

bool HVXmlParser::fatalError(const QXmlParseException &exception)
{
    log(QStringLiteral("Fatal error at %1,%2 : %3")
                .arg(QString::number(exception.lineNumber()),
                     QString::number(exception.columnNumber()), exception.message()));
    return false;
}

} // namespace Hovlets
