// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "WindowWatch.h"

#include <QtCore/QSocketNotifier>
#include <QtCore/QString>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <stdexcept>

#include <xcb/damage.h>

namespace burnwick::bench {

namespace {

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T>
using Owned = std::unique_ptr<T, Free>;

} // namespace

WindowWatch::WindowWatch(const QString &display, std::function<void()> painted)
    : m_painted(std::move(painted))
    , m_connection(xcb_connect(display.toLatin1().constData(), nullptr)) {
    xcb_connection_t *const connection = m_connection.get();
    const xcb_query_extension_reply_t *damage = xcb_get_extension_data(connection, &xcb_damage_id);
    if (xcb_connection_has_error(connection) != 0 || damage == nullptr || damage->present == 0)
        throw std::runtime_error("the X server does not tell of damage to windows");
    m_damageEvent = static_cast<std::uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
    const Owned<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr));

    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection);
    m_readable =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(),
                     [this] { takeEvents(); });
}

WindowWatch::~WindowWatch() = default;

void WindowWatch::takeEvents() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        const std::uint8_t type = event->response_type & 0x7f;
        if (type == XCB_CREATE_NOTIFY) {
            watch(reinterpret_cast<const xcb_create_notify_event_t *>(event.get())->window);
        } else if (type == m_damageEvent && m_painted &&
                   isPainted(reinterpret_cast<const xcb_damage_notify_event_t *>(event.get())->drawable)) {
            std::exchange(m_painted, nullptr)();
        }
    }
}

void WindowWatch::watch(xcb_window_t window) {
    xcb_damage_create(m_connection.get(), xcb_generate_id(m_connection.get()), window,
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(m_connection.get());
}

/// A row of pixels in the middle; the server starts with black.
bool WindowWatch::isPainted(xcb_window_t window) const {
    xcb_connection_t *const connection = m_connection.get();
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    if (!size || size->width < 100)
        return false;
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0,
                                      static_cast<std::int16_t>(size->height / 2), size->width, 1, 0xffffff);
    const Owned<xcb_get_image_reply_t> image(xcb_get_image_reply(connection, cookie, nullptr));
    if (!image)
        return false;
    const std::span bytes(xcb_get_image_data(image.get()),
                          static_cast<std::size_t>(xcb_get_image_data_length(image.get())));
    return std::ranges::any_of(bytes, [](std::uint8_t byte) { return byte != 0; });
}

} // namespace burnwick::bench
