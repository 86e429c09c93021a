// SPDX-License-Identifier: Apache-2.0
#include "PictureComparison.h"

#include "ToolError.h"

#include <Magick++.h>

#include <QtCore/QFile>

#include <limits>

namespace HovletsTool {

namespace {

Magick::Image load(const QString &file)
{
    static const bool isReady = (Magick::InitializeMagick(nullptr), true);
    Q_UNUSED(isReady)
    try {
        return Magick::Image("PNG:" + QFile::encodeName(file).toStdString());
    } catch (const Magick::Exception &error) {
        throw ToolError(QStringLiteral("%1 is not a readable picture: %2")
                                .arg(file, QString::fromLocal8Bit(error.what())));
    }
}

} // namespace

double pictureDifference(const QString &expected, const QString &actual)
{
    Magick::Image first = load(expected);
    const Magick::Image second = load(actual);
    if (first.columns() != second.columns() || first.rows() != second.rows())
        return 1;
    constexpr double Visible = 0.02; // as a fraction of a channel's range; less is rounding
    first.colorFuzz(Visible * static_cast<double>(std::numeric_limits<Magick::Quantum>::max()));
    const double pixels = first.compare(second, Magick::AbsoluteErrorMetric);
    return pixels / static_cast<double>(first.columns() * first.rows());
}

} // namespace HovletsTool
