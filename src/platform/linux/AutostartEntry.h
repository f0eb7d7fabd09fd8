// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick {

/// The program as the one argument of an Exec key, by the quoting and escaping rules of the Desktop Entry
/// Specification 1.5. UTF-8. GLib 2.74 and systemd 252 read it back as it was, but for a percent sign
/// (neither finds such a program) and a backslash (systemd does not).
[[nodiscard]] std::string execValue(std::string_view program);

/// Whether a desktop that finds this text in its autostart folder starts something: it is an entry with an
/// Exec key, not hidden, and not switched off as GNOME does it.
[[nodiscard]] bool startsAtLogin(std::string_view entry);

/// An autostart entry that starts the program, a path or a name that is looked for in PATH. It is `existing`
/// where that does so already. Otherwise only what keeps `existing` from it is changed, so that a delay or a
/// translation that the user added stays; a text that is no desktop entry is replaced.
[[nodiscard]] std::string autostartEntry(std::string_view existing, std::string_view program);

} // namespace burnwick
