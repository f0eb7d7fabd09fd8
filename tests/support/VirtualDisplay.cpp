// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/VirtualDisplay.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>

#include <sys/prctl.h>

namespace burnwick::test {

namespace {

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

} // namespace

VirtualDisplay::VirtualDisplay() {
    // A crashing test runs no destructors.
    m_server.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp"), QStringLiteral("-noreset")});
    while (!m_server.canReadLine() && m_server.waitForReadyRead()) {
    }
    const QByteArray number = m_server.readLine().trimmed();
    if (number.isEmpty())
        return;
    m_name = QLatin1Char(':') + QString::fromLatin1(number);
    m_connection.reset(xcb_connect(m_name.toLatin1().constData(), nullptr));
    if (xcb_connection_has_error(m_connection.get()) != 0)
        m_name.clear();
}

VirtualDisplay::~VirtualDisplay() {
    m_connection.reset();
    m_server.kill();
    m_server.waitForFinished();
}

bool VirtualDisplay::shows(const QByteArray &title) const {
    const auto windows = visibleWindows();
    return std::ranges::any_of(windows, [&](xcb_window_t window) { return titleOf(window) == title; });
}

bool VirtualDisplay::showsInFront(const QByteArray &title) const {
    const auto windows = visibleWindows();
    return !windows.empty() && titleOf(windows.back()) == title;
}

bool VirtualDisplay::givesKeyboardTo(const QByteArray &title) const {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    return reply && titleOf(reply->focus) == title;
}

void VirtualDisplay::close(const QByteArray &title) {
    for (const xcb_window_t window : visibleWindows()) {
        if (titleOf(window) != title)
            continue;
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = atom("WM_PROTOCOLS");
        message.data.data32[0] = atom("WM_DELETE_WINDOW");
        xcb_send_event(m_connection.get(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char *>(&message));
    }
    xcb_flush(m_connection.get());
}

std::optional<QPoint> VirtualDisplay::find(const QByteArray &title, std::uint32_t color) const {
    constexpr std::uint32_t colorBits = 0xFFFFFF, allPlanes = ~std::uint32_t{0};
    for (const xcb_window_t window : visibleWindows()) {
        if (titleOf(window) != title)
            continue;
        const Reply<xcb_get_geometry_reply_t> box(xcb_get_geometry_reply(
            m_connection.get(), xcb_get_geometry(m_connection.get(), window), nullptr));
        if (!box)
            continue;
        const auto cookie = xcb_get_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                                          box->width, box->height, allPlanes);
        const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(m_connection.get(), cookie, nullptr));
        if (!image)
            continue;
        const auto *const pixels = reinterpret_cast<const std::uint32_t *>(xcb_get_image_data(image.get()));
        const auto *const end = pixels + xcb_get_image_data_length(image.get()) / 4;
        const auto *const found =
            std::find_if(pixels, end, [&](std::uint32_t pixel) { return (pixel & colorBits) == color; });
        if (found != end) {
            const auto index = static_cast<int>(found - pixels);
            return QPoint(box->x + index % box->width, box->y + index / box->width);
        }
    }
    return std::nullopt;
}

bool VirtualDisplay::click(const QPoint &place) const {
    return runXdotool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                       QStringLiteral("click"), QStringLiteral("1")});
}

bool VirtualDisplay::pressKeys(const QString &keys) const {
    return runXdotool(QStringList{QStringLiteral("key")} + keys.split(u' '));
}

bool VirtualDisplay::runXdotool(const QStringList &arguments) const {
    QProcess xdotool;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    xdotool.setProcessEnvironment(environment);
    xdotool.start(QStringLiteral("xdotool"), arguments);
    return xdotool.waitForFinished() && xdotool.exitCode() == 0;
}

void VirtualDisplay::cover() {
    const xcb_window_t window = xcb_generate_id(m_connection.get());
    xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, window, root(), 0, 0, 2'000, 2'000, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(m_connection.get(), window);
    xcb_flush(m_connection.get());
}

QByteArray VirtualDisplay::startupMessages() {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection.get(), root(), XCB_CW_EVENT_MASK, &mask);
    const xcb_atom_t begin = atom("_NET_STARTUP_INFO_BEGIN"), more = atom("_NET_STARTUP_INFO");
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
            continue;
        const auto &message = reinterpret_cast<const xcb_client_message_event_t &>(*event);
        if (message.format == 8 && (message.type == begin || message.type == more))
            m_startupMessages += QByteArray(reinterpret_cast<const char *>(message.data.data8), 20);
    }
    return m_startupMessages;
}

xcb_window_t VirtualDisplay::root() const {
    return xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data->root;
}

xcb_atom_t VirtualDisplay::atom(const QByteArray &name) const {
    const auto cookie = xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(name.size()), name);
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::vector<xcb_window_t> VirtualDisplay::visibleWindows() const {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_connection.get(), xcb_query_tree(m_connection.get(), root()), nullptr));
    if (!tree)
        return {};
    const xcb_window_t *const children = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> windows(children, children + xcb_query_tree_children_length(tree.get()));
    std::erase_if(windows, [this](xcb_window_t window) {
        const auto cookie = xcb_get_window_attributes(m_connection.get(), window);
        const Reply<xcb_get_window_attributes_reply_t> reply(
            xcb_get_window_attributes_reply(m_connection.get(), cookie, nullptr));
        return !reply || reply->map_state != XCB_MAP_STATE_VIEWABLE;
    });
    return windows;
}

QByteArray VirtualDisplay::titleOf(xcb_window_t window) const {
    constexpr std::uint32_t longestInWords = 64;
    const auto cookie = xcb_get_property(m_connection.get(), 0, window, atom("_NET_WM_NAME"),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, longestInWords);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    return reply ? QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                              xcb_get_property_value_length(reply.get()))
                 : QByteArray();
}

} // namespace burnwick::test
