// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick {

/// The entry that starts the program, a path or a name that is looked for in PATH, in UTF-8. A key of its own
/// marks it as Burnwick's, for people and other programs.
[[nodiscard]] std::string autostartEntry(std::string_view program);

/// Whether the entry is, byte by byte, what autostartEntry() gives for some program, with the mark or, as
/// former versions wrote it, without.
[[nodiscard]] bool isUnchangedEntry(std::string_view entry);

/// Whether a desktop that finds this text in its autostart folder starts something: it is an entry with an
/// Exec key, not hidden, and not switched off as GNOME does it.
[[nodiscard]] bool startsAtLogin(std::string_view entry);

/// The entry hidden, or with nothing that keeps the desktop from starting it; the rest stays as it is.
[[nodiscard]] std::string switchedEntry(std::string_view entry, bool on);

} // namespace burnwick
