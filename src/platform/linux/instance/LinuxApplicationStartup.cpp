// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/instance/Display.h"

#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <xcb/xcb.h>

namespace burnwick {

namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char *startupIdVariable = "DESKTOP_STARTUP_ID";

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

xcb_atom_t atom(xcb_connection_t *connection, std::string_view name) {
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// Returns "remove: ID=", the quoted identifier and the protocol's terminating zero.
std::string removalOf(std::string_view startupId) {
    std::string text = "remove: ID=\"";
    for (const char c : startupId) {
        if (c == '"' || c == '\\')
            text += '\\';
        text += c;
    }
    return text + '"' + '\0';
}

/// Sends the text in pieces to all clients that listen on the root window, by freedesktop.org's Startup
/// Notification Protocol 0.1.
void broadcast(xcb_connection_t *connection, std::string_view text) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    // A hidden window, whose identifier groups the pieces.
    const xcb_window_t sender = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, sender, root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = sender;
    message.type = atom(connection, "_NET_STARTUP_INFO_BEGIN");
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, sizeof message.data.data8);
        std::ranges::fill(message.data.data8, std::uint8_t{0});
        std::ranges::copy(piece, message.data.data8);
        xcb_send_event(connection, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char *>(&message));
        message.type = atom(connection, "_NET_STARTUP_INFO");
        text.remove_prefix(piece.size());
    }
    xcb_destroy_window(connection, sender);
    xcb_flush(connection);
}

class LinuxApplicationStartup final : public ApplicationStartup {
public:
    std::optional<std::string> prepare() override {
        DisplayTrial trial = tryDisplay();
        if (!trial.fault.empty())
            return trial.fault;
        m_displayConnection = std::move(trial.connection);
        disableUnresponsiveBus();
        // Qt removes a part of it.
        m_activation = {qgetenv(tokenVariable).toStdString(), qgetenv(startupIdVariable).toStdString()};
        return std::nullopt;
    }

    StartupActivation begin() override {
        m_displayConnection.reset();
        // Programs started by this one must not inherit it.
        qunsetenv(tokenVariable);
        qunsetenv(startupIdVariable);
        return m_activation;
    }

    /// X11's desktops would show a busy pointer for a while.
    void endWithoutWindow() override {
        const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        // The offscreen platform has the interface and no connection.
        xcb_connection_t *const connection = x11 != nullptr ? x11->connection() : nullptr;
        if (connection != nullptr && !m_activation.startupId.empty())
            broadcast(connection, removalOf(m_activation.startupId));
    }

private:
    std::shared_ptr<void> m_displayConnection;
    StartupActivation m_activation;
};

} // namespace

std::unique_ptr<ApplicationStartup> platform::makeApplicationStartup() {
    return std::make_unique<LinuxApplicationStartup>();
}

} // namespace burnwick
