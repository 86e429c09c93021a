// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "DefaultUiBench.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolRun.h"

#include <QtTest/QtTest>

#include <memory>

/// A file of Qt Linguist, edited like a translator does.
class Translation
{
public:
    explicit Translation(const QString &path)
        : m_path(path)
        , m_text(readText(path))
    {
    }

    QString text() const { return m_text; }

    /// Returns whether the text was in the file, without a translation.
    bool translate(const QString &source, const QString &translation)
    {
        static const QString unfinished =
                QStringLiteral("<translation type=\"unfinished\"></translation>");
        const QString written = QStringLiteral("<source>%1</source>")
                                        .arg(source.toHtmlEscaped().replace(
                                                QLatin1Char('\''), QStringLiteral("&apos;")));
        const auto at = m_text.indexOf(written);
        const auto place = at < 0 ? at : m_text.indexOf(unfinished, at);
        if (place < 0)
            return false;
        m_text.replace(
                int(place), int(unfinished.size()),
                QStringLiteral("<translation>%1</translation>").arg(translation.toHtmlEscaped()));
        QFile file(m_path);
        return file.open(QIODevice::WriteOnly) && file.write(m_text.toUtf8()) > 0;
    }

private:
    QString m_path;
    QString m_text;
};

/*!
 * \brief The package "Test" with one entry, and `hovlets translate` run on it.
 *
 * Base class of tests, which call skipWithoutLinguist() first and reset() before each function.
 */
class TranslateBench
{
protected:
    static constexpr int UserInterfaceTexts = 12; // of the default user interface

    /// Skips all tests if Qt's programs are not installed.
    void skipWithoutLinguist()
    {
        make(DefaultUiBench::entry("title=\"Pen\""));
        if (extractGerman().error.contains(" is not installed"))
            QSKIP("needs lupdate and lrelease of the same Qt");
    }

    /// Replaces the package by one whose entry has a text of each kind.
    void reset()
    {
        make(DefaultUiBench::entry("title=\"Pen\" shortcut=\"P\"",
                                   "<p>Draws\n  a line.</p>"
                                   "<p><![CDATA[Press <b>Esc</b> & go.]]></p>"
                                   "<img src=\"pen.png\" alt=\"A line\"/>"
                                   "<link href=\"https://example.org\">More</link>"));
    }

    /// Replaces the package.
    void make(const QByteArray &entries) { m_bench = std::make_unique<DefaultUiBench>(entries); }

    /// Replaces the control file.
    QString write(const QByteArray &content)
    {
        return m_bench->folder.addControlFile(text("Test"), text("content"), content);
    }

    QString path() const { return m_bench->folder.path(); }
    QString file(const char *name) const
    {
        return path() + text("/Test.hovlets/l10n/") + text(name);
    }

    ToolRun run(const QStringList &arguments) const
    {
        return ToolRun(QStringList { text("translate") } + arguments + QStringList { path() });
    }
    ToolRun extractGerman() const
    {
        return run({ text("extract"), text("--locale"), text("de_DE") });
    }

    /// Translates one more text into German.
    void translateAndRelease(const QString &source, const QString &translation)
    {
        Translation german(file("Hovlets_de_DE.ts"));
        QVERIFY2(german.translate(source, translation), qPrintable(german.text()));
        const ToolRun released = run({ text("release") });
        QCOMPARE(released.error, QByteArray());
        QCOMPARE(released.status, 0);
    }

    void showIn(const char *locale)
    {
        m_bench->context().set(Hovlets::HVKeyLocale, text(locale));
        QVERIFY(m_bench->show());
    }

    std::unique_ptr<DefaultUiBench> m_bench;
};
