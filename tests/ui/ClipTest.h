// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ClipFolder.h"
#include "DefaultUiTest.h"
#include "HVClipComponent.h"

/*!
 * \brief Base class of tests of an entry's clip in the default user interface.
 */
class ClipTest : public DefaultUiTest
{
protected:
    static constexpr auto LongClip = "-s 160x90 -t 6 -r 25";
    static constexpr auto ShortClip = "-s 160x90 -t 0.4 -r 25";

    using Property = QPair<QString, QVariant>; // a property of the host

    void showClip(const QString &options, const Property &property = {},
                  const QByteArray &attributes = {})
    {
        m_bench = std::make_unique<DefaultUiBench>(DefaultUiBench::entry(
                "title=\"Clip\" clip=\"clip.mp4\" " + attributes, "<p>Text</p>"));
        const QString made = m_clips.make(
                QStringLiteral("%1.mp4").arg(qHash(options)),
                QStringLiteral("-f lavfi -i testsrc2 -pix_fmt yuv420p %1").arg(options));
        QVERIFY(!made.isEmpty());
        m_bench->folder.add(QStringLiteral("Test.hovlets/Resources/clip.mp4"),
                            ClipFolder::read(made));
        if (!property.first.isEmpty())
            m_bench->host.manager()->setGlobalProperty(property.first, property.second);
        QVERIFY(m_bench->show());
    }

    void showClip(const char *options, const Property &property = {})
    {
        showClip(QString::fromLatin1(options), property);
    }

    /// Qt 5 ignores a move to where the mouse is.
    void hover()
    {
        leave();
        QTest::mouseMove(m_bench->view(), m_bench->place(picture()).center().toPoint());
    }

    void leave() { QTest::mouseMove(m_bench->view(), QPoint(2, 2)); }

    /// Makes the popup the active window, with the keyboard.
    void activate()
    {
        m_bench->view()->window()->activateWindow();
        QTRY_VERIFY(m_bench->view()->window()->isActiveWindow());
        m_bench->view()->setFocus();
        QTRY_VERIFY(m_bench->view()->hasFocus());
    }

    Hovlets::HVClipComponent *video()
    {
        return qobject_cast<Hovlets::HVClipComponent *>(m_bench->item("video"));
    }

    QQuickItem *picture() { return m_bench->item("clipPicture"); }

    QImage grabPicture() { return m_bench->grab().copy(m_bench->place(picture()).toRect()); }

    ClipFolder m_clips;
};
