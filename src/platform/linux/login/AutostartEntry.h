// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick {

/// Returns the entry that starts the program, given by its path or by a name in PATH. UTF-8. The key
/// X-Burnwick-Autostart shows people and other programs that Burnwick wrote it.
[[nodiscard]] std::string autostartEntry(std::string_view program);

/// Returns whether the entry equals autostartEntry() of some program. The key X-Burnwick-Autostart may be
/// missing, as in entries of former versions.
[[nodiscard]] bool isUnchangedEntry(std::string_view entry);

/// Returns whether desktops start the entry: it has an Exec key, is not hidden, and is not disabled by
/// GNOME's key.
[[nodiscard]] bool startsAtLogin(std::string_view entry);

/// Returns the entry hidden, or without the lines that keep desktops from starting it. Changes no other line.
[[nodiscard]] std::string switchedEntry(std::string_view entry, bool on);

} // namespace burnwick
