// SPDX-License-Identifier: Apache-2.0
#include "MediaCheck.h"

#include "ContentIndex.h"
#include "ControlFile.h"
#include "Findings.h"
#include "Progress.h"

#include <HVClip.h>
#include <HVContentTree.h>
#include <HVView.h>
#include <HVXmlElement.h>
#include <HVXmlParser.h>

#include <QXmlInputSource>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtGui/QImageReader>

namespace HovletsTool {

using namespace Hovlets;

namespace {

/// Builds the root element and the entries without their children.
int entriesShouldGenerate(const QString &name, const QXmlAttributes &, void *)
{
    if (name == QLatin1String("hovlet"))
        return HVXmlParser::GenerateAsk | HVXmlParser::SkipChildren;
    if (name == QLatin1String("hovlets"))
        return HVXmlParser::GenerateAsk;
    return HVXmlParser::SkipElement | HVXmlParser::SkipChildren;
}

/// The entries that the library serves from a file. They are parsed together, as a look-up would
/// read the whole file again for each of them.
class ServedEntries
{
public:
    ServedEntries(const ControlFile &file, const HVIndex &index)
    {
        QXmlInputSource source;
        source.setData(file.document().bytes());
        HVXmlParser parser(&entriesShouldGenerate);
        m_roots = parser.read(source);
        if (!parser.isClosed()) {
            qDeleteAll(m_roots); // the parser deletes what it left open
            m_roots.clear();
        }
        if (m_roots.size() != 1)
            return;
        const QString package = index.packageNameForLocation(file.path());
        for (QObject *child : m_roots.constFirst()->children()) {
            auto *entry = qobject_cast<HVXmlElement *>(child);
            const QString key = entry ? entry->attribute(QStringLiteral("key")) : QString();
            if (!entry || !file.serves(key))
                continue;
            entry->setAttribute(QStringLiteral("HVPackagName"), package);
            m_entries.insert(key, entry);
        }
    }

    ~ServedEntries() { qDeleteAll(m_roots); }
    Q_DISABLE_COPY_MOVE(ServedEntries)

    /// Null for an entry that is not served, which other checks report.
    HVXmlElement *entry(const QString &key) const { return m_entries.value(key); }

private:
    QList<QObject *> m_roots;
    QHash<QString, HVXmlElement *> m_entries;
};

class MediaCheck
{
public:
    MediaCheck(ContentIndex &content, const MediaLimits &limits, FindingList &findings)
        : m_manager(content.manager())
        , m_limits(limits)
        , m_findings(findings)
        , m_view(&m_manager, nullptr)
    {
    }

    void check(const ControlFile &file, Progress &progress)
    {
        m_file = &file;
        const ServedEntries served(file, *m_manager.index());
        for (const ControlFile::Entry &entry : file.entries()) {
            if (HVXmlElement *element = served.entry(entry.key)) {
                m_view.setContent(element);
                check(entry);
                m_view.setContent(nullptr);
            }
            progress.step();
        }
    }

private:
    using Check = void (MediaCheck::*)(const QString &path, Position position);

    void check(const ControlFile::Entry &entry)
    {
        checkUserInterface(*entry.element, QStringLiteral("ui"));
        // Only hosts that show simple popups use the other user interface.
        const QString simple = QStringLiteral("simple");
        if (entry.element->has(simple) || m_file->root()->has(simple)) {
            m_manager.context().set(HVKeySimpleMode, true);
            checkUserInterface(*entry.element, simple);
            m_manager.context().set(HVKeySimpleMode, false);
        }
        checkResource(*entry.element, QStringLiteral("clip"), &MediaCheck::checkClip);
        for (const XmlDocument::Element *element : entry.below) {
            if (element->name == QLatin1String("img"))
                checkResource(*element, QStringLiteral("src"), &MediaCheck::checkPicture);
        }
    }

    void add(const char *code, Position position, const QString &message)
    {
        m_findings.add(code, m_file->path(), position, message);
    }

    /// Reports a path that the root element sets for all entries only once per file.
    void checkUserInterface(const XmlDocument::Element &entry, const QString &attribute)
    {
        const QString path = m_view.uiRootFilePath();
        const bool isOwn = entry.has(attribute);
        const QString checked = m_file->path() + QLatin1Char('\n') + path;
        if (!isOwn && m_checked.contains(checked))
            return;
        if (!isOwn)
            m_checked.insert(checked);
        const QFileInfo info(path);
        if (info.isAbsolute() && info.isFile() && info.isReadable())
            return;
        const Position position =
                m_file->document().position(isOwn ? entry : *m_file->root(), attribute);
        if (!info.isAbsolute() || !info.exists())
            add("HV306", position,
                QStringLiteral("%1 is neither in the package nor in one that it searches")
                        .arg(path));
        else
            add("HV307", position, QStringLiteral("%1 cannot be read").arg(path));
    }

    void checkResource(const XmlDocument::Element &element, const QString &attribute, Check check)
    {
        const QString name = element.value(attribute);
        if (!element.has(attribute) || (name.isEmpty() && attribute == QLatin1String("clip")))
            return;
        const Position position = m_file->document().position(element, attribute);
        const QFileInfo info(name.isEmpty() ? QString() : m_view.findResource(name));
        if (!info.isAbsolute() || !info.isFile())
            return add("HV301", position,
                       QStringLiteral("\"%1\" is not in the resources").arg(name));
        if (!info.isReadable())
            return add("HV116", position, QStringLiteral("%1 cannot be read").arg(info.filePath()));
        if (double(info.size()) > m_limits.megabytes * 1e6)
            add("HV305", position,
                QStringLiteral("\"%1\" is %2 MB large").arg(name).arg(double(info.size()) / 1e6));
        (this->*check)(info.filePath(), position);
    }

    void checkClip(const QString &path, Position position)
    {
        HVClip clip([] { return false; });
        if (const char *reason = clip.open(path))
            return add("HV303", position, QString::fromUtf8(reason).arg(path));
        if (clip.duration() > m_limits.seconds)
            add("HV304", position,
                QStringLiteral("\"%1\" lasts %2 seconds").arg(path).arg(clip.duration()));
    }

    void checkPicture(const QString &path, Position position)
    {
        QImageReader reader(path);
        if (reader.read().isNull())
            add("HV302", position, QStringLiteral("\"%1\": %2").arg(path, reader.errorString()));
    }

    HVManager &m_manager;
    MediaLimits m_limits;
    FindingList &m_findings;
    HVView m_view;
    const ControlFile *m_file = nullptr;
    QSet<QString> m_checked;
};

} // namespace

void checkMedia(const ControlFiles &files, ContentIndex &content, const MediaLimits &limits,
                Progress &progress, FindingList &findings)
{
    MediaCheck check(content, limits, findings);
    for (const ControlFile &file : files)
        check.check(file, progress);
}

} // namespace HovletsTool
