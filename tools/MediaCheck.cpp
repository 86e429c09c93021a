// SPDX-License-Identifier: Apache-2.0
#include "MediaCheck.h"

#include "ContentIndex.h"
#include "ControlFile.h"
#include "Findings.h"

#include <HVClip.h>
#include <HVContentTree.h>
#include <HVView.h>
#include <HVXmlElement.h>

#include <QtCore/QFile>
#include <QtCore/QSet>
#include <QtGui/QImageReader>

using namespace Hovlets;

namespace {

class MediaCheck
{
public:
    MediaCheck(ContentIndex &content, const MediaLimits &limits, FindingList &findings)
        : m_index(content.manager().index())
        , m_limits(limits)
        , m_findings(findings)
        , m_view(&content.manager(), nullptr)
    {
    }

    void check(const ControlFile &file, const ControlFile::Entry &entry)
    {
        HVXmlElement *root = nullptr;
        const QLocale locale(file.locale());
        HVXmlElement *loaded = m_index->load(entry.key, file.path(), locale, root);
        if (!loaded)
            return; // told of elsewhere
        m_view.setContentTree(HVContentTree(loaded, root));
        m_file = &file;
        checkUserInterface();
        checkResource(*entry.element, QStringLiteral("clip"), &MediaCheck::checkClip);
        for (const XmlDocument::Element *element : entry.below) {
            if (element->name == QLatin1String("img"))
                checkResource(*element, QStringLiteral("src"), &MediaCheck::checkPicture);
        }
        m_view.takeContentTree();
    }

private:
    using Check = void (MediaCheck::*)(const QString &path, Position position);

    void add(const char *code, Position position, const QString &message)
    {
        m_findings.add(code, m_file->path(), position, message);
    }

    /// Once for each file: most of its entries have the same.
    void checkUserInterface()
    {
        const QString path = m_view.uiRootFilePath();
        const QString checked = m_file->path() + QLatin1Char('\n') + path;
        if (m_checked.contains(checked))
            return;
        m_checked.insert(checked);
        const Position position = m_file->document().position(m_file->root()->offset);
        const QFileInfo info(path);
        if (!info.isAbsolute() || !info.exists())
            add("HV306", position,
                QStringLiteral("neither the package nor one that it searches has %1").arg(path));
        else if (!info.isFile() || !info.isReadable())
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
                       QStringLiteral("there is no \"%1\" in the resources").arg(name));
        if (double(info.size()) > m_limits.megabytes * 1e6)
            add("HV305", position,
                QStringLiteral("\"%1\" has %2 MB").arg(name).arg(double(info.size()) / 1e6));
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

    HVIndex *m_index;
    MediaLimits m_limits;
    FindingList &m_findings;
    HVView m_view;
    const ControlFile *m_file = nullptr;
    QSet<QString> m_checked;
};

} // namespace

void checkMedia(const ControlFiles &files, ContentIndex &content, const MediaLimits &limits,
                FindingList &findings)
{
    MediaCheck check(content, limits, findings);
    for (const ControlFile &file : files) {
        for (const ControlFile::Entry &entry : file.entries())
            check.check(file, entry);
    }
}
