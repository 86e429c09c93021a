// SPDX-License-Identifier: Apache-2.0
// Checks that any text becomes markup that is safe to show: balanced, with known tags, and without
// anything that names a file or an address.
#include "FuzzTarget.h"
#include "HVInterpolation.h"
#include "HVMarkup.h"
#include "MarkupReading.h"

#include <QtCore/QUrl>
#include <QtGui/QTextDocument>

#include <cstdlib>

using namespace Hovlets;

namespace {

[[noreturn]] void fail(const char *what, const QString &text)
{
    qCritical("%s: %s", what, text.toUtf8().toPercentEncoding(" <>=\"'/&;#").constData());
    std::abort();
}

/// Ends the program if a text refers to anything outside itself.
class LonelyDocument : public QTextDocument
{
protected:
    QVariant loadResource(int, const QUrl &name) override { fail("A text loads", name.toString()); }
};

void checkMarkup(const QString &text, bool topics)
{
    const QMap<QString, QVariant> values { { QStringLiteral("a"), text },
                                           { QStringLiteral("b"), QStringLiteral("<b>&%(a)s") } };
    HVMarkupRules rules;
    rules.topics = topics;
    rules.fill = [&](const QString &placeholder) { return interpolated(placeholder, values); };
    HVDisplayBudget budget { HVLimits() };
    const HVShownText shown = shownMarkup(text, rules, budget);
    if (!isBalanced(shown.text))
        fail("Not balanced", shown.text);
    if (shown.format == HVShownText::Format::Rich)
        LonelyDocument().setHtml(shown.text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    isMarkup(text);
    checkMarkup(text, false);
    checkMarkup(text, true);
    return 0;
}
