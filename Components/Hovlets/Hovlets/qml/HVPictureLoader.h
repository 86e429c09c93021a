// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <functional>
#include <memory>

class QObject;

namespace Hovlets {

/// A decoded picture; it counts against HVLimits::pictureMemory for as long as somebody holds it.
using HVSharedPicture = std::shared_ptr<const QImage>;

/*!
 * \brief A picture on its way from its file to the item that shows it.
 *
 * All pictures of the process are decoded one after the other on one background thread, so that at
 * most one is in memory at its full size. Those that are in use already, of the same file and size,
 * are shared. Destroying the request, on any thread and without waiting, cancels it.
 */
class HVPictureRequest
{
public:
    /// Called on the receiver's thread with the picture, or null when it cannot be shown.
    using Answer = std::function<void(const HVSharedPicture &picture)>;

    /// Decodes the picture in \a path, scaled to \a size, for \a receiver, which must outlive the
    /// request.
    HVPictureRequest(const QString &path, const QSize &size, QObject *receiver, Answer answer);
    ~HVPictureRequest();

    HVPictureRequest(const HVPictureRequest &) = delete;
    HVPictureRequest &operator=(const HVPictureRequest &) = delete;

private:
    class State;
    std::shared_ptr<State> m_state;
};

} // namespace Hovlets
