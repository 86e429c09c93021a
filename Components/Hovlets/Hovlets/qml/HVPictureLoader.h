// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <functional>
#include <memory>

class QObject;

namespace Hovlets {

/// A decoded picture. It counts against HVLimits::pictureMemory as long as it is referenced.
using HVSharedPicture = std::shared_ptr<const QImage>;

/*!
 * \brief A request to decode a picture for an item.
 *
 * One background thread decodes all pictures of the process in turn, so at most one is in memory at
 * its full size. Pictures with the same file and size that are already in use are shared.
 * Destroying the request cancels it, on any thread and without waiting.
 */
class HVPictureRequest
{
public:
    /// Called on the receiver's thread with the picture, or null if it cannot be shown.
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
