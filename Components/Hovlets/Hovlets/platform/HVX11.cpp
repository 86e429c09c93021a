// SPDX-License-Identifier: Apache-2.0
#include "HVX11.h"

#include "HVQtCompat.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QLibrary>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>

namespace Hovlets {

namespace {

// The part of libxcb's stable interface that is needed here. Qt's plug-in for X11 has loaded both
// libraries, so the build does not depend on X11.
struct XcbConnection;

struct XcbCookie
{
    unsigned int sequence;
};

/// The replies to all requests: the answer follows a header of eight bytes.
struct XcbReply
{
    uint8_t header[8];
    uint32_t answer; // an atom or a window
    int16_t x; // only where the request is for a position
    int16_t y;
};

struct Free
{
    void operator()(void *reply) const { std::free(reply); }
};

using Reply = std::unique_ptr<XcbReply, Free>;

class Xcb
{
public:
    Xcb()
        : m_library(QStringLiteral("xcb"), 1)
        , m_shapes(QStringLiteral("xcb-shape"), 0)
    {
        m_isComplete = resolve(m_library, connect, "xcb_connect")
                && resolve(m_library, hasError, "xcb_connection_has_error")
                && resolve(m_library, disconnect, "xcb_disconnect")
                && resolve(m_library, internAtom, "xcb_intern_atom")
                && resolve(m_library, internAtomReply, "xcb_intern_atom_reply")
                && resolve(m_library, getSelectionOwner, "xcb_get_selection_owner")
                && resolve(m_library, getSelectionOwnerReply, "xcb_get_selection_owner_reply")
                && resolve(m_library, getGeometry, "xcb_get_geometry")
                && resolve(m_library, getGeometryReply, "xcb_get_geometry_reply")
                && resolve(m_library, translate, "xcb_translate_coordinates")
                && resolve(m_library, translateReply, "xcb_translate_coordinates_reply")
                && resolve(m_library, requestCheck, "xcb_request_check")
                && resolve(m_library, changeAttributes, "xcb_change_window_attributes_checked")
                && resolve(m_shapes, shapeRectangles, "xcb_shape_rectangles_checked");
    }

    bool isComplete() const { return m_isComplete; }

    XcbConnection *(*connect)(const char *display, int *screen) = nullptr;
    int (*hasError)(XcbConnection *) = nullptr;
    void (*disconnect)(XcbConnection *) = nullptr;
    XcbCookie (*internAtom)(XcbConnection *, uint8_t onlyIfExists, uint16_t length,
                            const char *name) = nullptr;
    XcbReply *(*internAtomReply)(XcbConnection *, XcbCookie, void **error) = nullptr;
    XcbCookie (*getSelectionOwner)(XcbConnection *, uint32_t selection) = nullptr;
    XcbReply *(*getSelectionOwnerReply)(XcbConnection *, XcbCookie, void **error) = nullptr;
    XcbCookie (*getGeometry)(XcbConnection *, uint32_t window) = nullptr;
    XcbReply *(*getGeometryReply)(XcbConnection *, XcbCookie, void **error) = nullptr;
    XcbCookie (*translate)(XcbConnection *, uint32_t from, uint32_t to, int16_t x,
                           int16_t y) = nullptr;
    XcbReply *(*translateReply)(XcbConnection *, XcbCookie, void **error) = nullptr;
    void *(*requestCheck)(XcbConnection *, XcbCookie) = nullptr;
    XcbCookie (*changeAttributes)(XcbConnection *, uint32_t window, uint32_t mask,
                                  const void *values) = nullptr;
    XcbCookie (*shapeRectangles)(XcbConnection *, uint8_t operation, uint8_t kind, uint8_t ordering,
                                 uint32_t window, int16_t x, int16_t y, uint32_t count,
                                 const void *rectangles) = nullptr;

private:
    template <typename Function>
    static bool resolve(QLibrary &library, Function &function, const char *name)
    {
        function = reinterpret_cast<Function>(library.resolve(name));
        return function != nullptr;
    }

    QLibrary m_library; // both stay loaded
    QLibrary m_shapes;
    bool m_isComplete = false;
};

/// A compositor owns the selection _NET_WM_CM_Sn of the screen n.
bool hasCompositor(const Xcb &xcb, XcbConnection *connection, int screen)
{
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(screen);
    const XcbCookie named =
            xcb.internAtom(connection, 1, static_cast<uint16_t>(name.size()), name.constData());
    const Reply atom(xcb.internAtomReply(connection, named, nullptr));
    if (!atom || atom->answer == 0)
        return false;
    const XcbCookie asked = xcb.getSelectionOwner(connection, atom->answer);
    const Reply owner(xcb.getSelectionOwnerReply(connection, asked, nullptr));
    return owner && owner->answer != 0;
}

/// The value of the program's last option "-display". Qt uses that one, and removes all from the
/// arguments of the application.
QByteArray displayFromCommandLine()
{
    QFile file(QStringLiteral("/proc/self/cmdline"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> arguments = file.readAll().split('\0');
    const auto isOption = [](const QByteArray &argument) {
        return argument == "-display" || argument == "--display";
    };
    const auto option = std::find_if(arguments.rbegin(), arguments.rend(), isOption);
    return option == arguments.rend() || option == arguments.rbegin() ? QByteArray()
                                                                      : *std::prev(option);
}

/// The name of the application's display; empty for that in the environment.
QByteArray displayName()
{
    void *const display = x11Display();
    QLibrary x11(QStringLiteral("X11"), 6);
    const auto nameOf =
            display ? reinterpret_cast<char *(*)(void *)>(x11.resolve("XDisplayString")) : nullptr;
    return nameOf ? QByteArray(nameOf(display)) : displayFromCommandLine();
}

/// A connection to the server. Opening one takes several messages, so it stays open.
class Connection
{
    Q_DISABLE_COPY_MOVE(Connection)

public:
    explicit Connection(const Xcb &xcb)
        : m_xcb(xcb)
    {
    }
    ~Connection() { close(); }

    /// The connection, opened again after an error; null if there is no server.
    XcbConnection *get()
    {
        if (m_connection && m_xcb.hasError(m_connection))
            close();
        if (!m_connection) {
            const QByteArray name = displayName();
            m_connection = // never null
                    m_xcb.connect(name.isEmpty() ? nullptr : name.constData(), &m_screen);
        }
        return m_xcb.hasError(m_connection) ? nullptr : m_connection;
    }

    int screen() const { return m_screen; }

private:
    void close()
    {
        if (m_connection)
            m_xcb.disconnect(m_connection);
        m_connection = nullptr;
    }

    const Xcb &m_xcb;
    XcbConnection *m_connection = nullptr;
    int m_screen = 0;
};

/// Calls \a action with a connection to the server, if there is one.
template <typename Action> void withConnection(const Action &action)
{
    static const Xcb xcb;
    if (!xcb.isComplete())
        return;
    static Connection connection(xcb);
    if (XcbConnection *open = connection.get())
        action(xcb, open, connection.screen());
}

} // namespace

bool isX11Composited()
{
    bool isComposited = false;
    withConnection([&](const Xcb &xcb, XcbConnection *connection, int screen) {
        isComposited = hasCompositor(xcb, connection, screen);
    });
    return isComposited;
}

bool passX11InputThrough(WId window)
{
    constexpr uint8_t Set = 0;
    constexpr uint8_t InputShape = 2;
    bool isDone = false;
    withConnection([&](const Xcb &xcb, XcbConnection *connection, int) {
        const XcbCookie shaped = xcb.shapeRectangles(
                connection, Set, InputShape, 0, static_cast<uint32_t>(window), 0, 0, 0, nullptr);
        const std::unique_ptr<void, Free> error(xcb.requestCheck(connection, shaped));
        isDone = !error;
    });
    return isDone;
}

bool keepX11PictureInPlace(WId window)
{
    constexpr uint32_t BitGravity = 1U << 4;
    const uint32_t isStatic = 10;
    bool isDone = false;
    withConnection([&](const Xcb &xcb, XcbConnection *connection, int) {
        const XcbCookie changed = xcb.changeAttributes(connection, static_cast<uint32_t>(window),
                                                       BitGravity, &isStatic);
        const std::unique_ptr<void, Free> error(xcb.requestCheck(connection, changed));
        isDone = !error;
    });
    return isDone;
}

std::optional<QPoint> x11Position(WId window)
{
    std::optional<QPoint> position;
    withConnection([&](const Xcb &xcb, XcbConnection *connection, int) {
        const auto id = static_cast<uint32_t>(window);
        const Reply geometry( // with the root window as its answer
                xcb.getGeometryReply(connection, xcb.getGeometry(connection, id), nullptr));
        if (!geometry)
            return;
        const XcbCookie asked = xcb.translate(connection, id, geometry->answer, 0, 0);
        const Reply corner(xcb.translateReply(connection, asked, nullptr));
        if (corner)
            position = QPoint(corner->x, corner->y);
    });
    return position;
}

} // namespace Hovlets
