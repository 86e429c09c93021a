// SPDX-License-Identifier: Apache-2.0
#include "HVPictureLoader.h"

#include "HVLimits.h"
#include "HVPictureFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QMutexLocker>
#include <QtCore/QObject>
#include <QtCore/QThreadPool>

#include <atomic>

namespace Hovlets {

namespace {

/// Bytes of all decoded pictures in use.
std::atomic<qint64> usedMemory { 0 };

qint64 bytesOf(const QImage &image)
{
    return qint64 { image.bytesPerLine() } * image.height();
}

/// Null if the image exceeds the memory that those in use have left.
HVSharedPicture shared(QImage image)
{
    const qint64 bytes = bytesOf(image);
    if (image.isNull() || usedMemory.fetch_add(bytes) + bytes > HVLimits::current().pictureMemory) {
        usedMemory -= image.isNull() ? 0 : bytes;
        return {};
    }
    return HVSharedPicture(new QImage(std::move(image)), [bytes](const QImage *used) {
        delete used;
        usedMemory -= bytes;
    });
}

/// A single thread, so only one picture at a time has its full size in memory. Null at exit.
std::unique_ptr<QThreadPool> &decoders()
{
    static std::unique_ptr<QThreadPool> pool;
    return pool;
}

/// Waits, because image plug-ins should not be unloaded while a picture is being decoded. A decoder
/// that takes longer keeps its thread until the process ends.
void endDecoding()
{
    constexpr int ExitTime = 3000; // ms
    std::unique_ptr<QThreadPool> ending = std::move(decoders());
    ending->clear();
    if (!ending->waitForDone(ExitTime))
        static_cast<void>(ending.release()); // its destructor would wait without a bound
}

QThreadPool &decoder()
{
    if (!decoders()) {
        decoders() = std::make_unique<QThreadPool>();
        decoders()->setMaxThreadCount(1);
        qAddPostRoutine(endDecoding);
    }
    return *decoders();
}

/// The picture, shared if another item shows it. Call only on the decoding thread.
HVSharedPicture decoded(const QString &path, const QSize &size)
{
    // Never freed, because the thread may outlive static objects.
    static auto &inUse = *new QHash<QString, std::weak_ptr<const QImage>>;
    const QFileInfo file(path);
    const QString key = QStringLiteral("%1x%2 %3 %4 %5")
                                .arg(size.width())
                                .arg(size.height())
                                .arg(file.size())
                                .arg(file.lastModified().toMSecsSinceEpoch())
                                .arg(path);
    if (HVSharedPicture known = inUse.value(key).lock())
        return known;
    for (auto it = inUse.begin(); it != inUse.end();)
        it = it->expired() ? inUse.erase(it) : std::next(it);
    const HVSharedPicture picture = shared(HVPictureFile(path).decode(size));
    if (picture)
        inUse.insert(key, picture);
    return picture;
}

} // namespace

/// Shared by the receiver's thread and the decoding one.
class HVPictureRequest::State
{
public:
    bool isWanted()
    {
        const QMutexLocker lock(&mutex);
        return receiver;
    }

    QMutex mutex; // guards receiver
    QObject *receiver = nullptr; // null once cancelled
    Answer answer; // called only on the receiver's thread
};

HVPictureRequest::HVPictureRequest(const QString &path, const QSize &size, QObject *receiver,
                                   Answer answer)
    : m_state(std::make_shared<State>())
{
    m_state->receiver = receiver;
    m_state->answer = std::move(answer);
    decoder().start([path, size, state = m_state] {
        if (!state->isWanted())
            return;
        const HVSharedPicture picture = decoded(path, size);
        const QMutexLocker lock(&state->mutex);
        if (!state->receiver)
            return;
        const auto tell = [state, picture] {
            if (state->isWanted())
                state->answer(picture);
        };
        QMetaObject::invokeMethod(state->receiver, tell, Qt::QueuedConnection);
    });
}

HVPictureRequest::~HVPictureRequest()
{
    const QMutexLocker lock(&m_state->mutex);
    m_state->receiver = nullptr;
}

} // namespace Hovlets
