// SPDX-License-Identifier: Apache-2.0
#include "Output.h"

#include "ToolError.h"

#include <QtCore/QJsonDocument>

#include <cerrno>
#include <cstdio>

namespace HovletsTool {

namespace {

void refuseLoss(bool isWritten)
{
    if (!isWritten && errno != EPIPE)
        throw ToolError(QStringLiteral("the output cannot be written: %1; write it elsewhere")
                                .arg(qt_error_string(errno)));
}

void write(const QByteArray &bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    refuseLoss(std::fwrite(bytes.constData(), 1, size, stdout) == size);
}

} // namespace

void printText(const QString &text)
{
    write(text.toUtf8());
}

void printJson(const QJsonObject &object)
{
    write(QJsonDocument(object).toJson());
}

void flushOutput()
{
    refuseLoss(std::fflush(stdout) == 0);
}

void printError(const QString &message)
{
    std::fprintf(stderr, "hovlets: %s\n", qPrintable(message));
}

} // namespace HovletsTool
