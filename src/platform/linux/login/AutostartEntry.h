// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick {

/// Returns the entry that starts the program, a path or a name that is searched for in PATH, in UTF-8. The
/// key X-Burnwick-Autostart marks it as Burnwick's, for people and other programs.
[[nodiscard]] std::string autostartEntry(std::string_view program);

/// Returns whether the entry is, byte by byte, autostartEntry() for some program, with the mark or, as former
/// versions wrote it, without.
[[nodiscard]] bool isUnchangedEntry(std::string_view entry);

/// Returns whether a desktop that finds this entry starts something: it has an Exec key, is not hidden, and
/// is not disabled by GNOME's key.
[[nodiscard]] bool startsAtLogin(std::string_view entry);

/// Returns the entry hidden, or without the lines that keep the desktop from starting it; all other lines
/// stay.
[[nodiscard]] std::string switchedEntry(std::string_view entry, bool on);

} // namespace burnwick
