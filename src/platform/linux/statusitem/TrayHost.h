// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace burnwick {

/// How a program that shows status items can show this one.
struct TrayHost {
    enum class Presentation {
        label,   ///< a square icon beside a plain text
        wide,    ///< one undistorted picture of the whole title
        compact, ///< a square icon only; the text goes into the tool tip
    };
    /// The markup of a tool tip's body. All kinds need `&` and `<` escaped.
    enum class Markup {
        plain,  ///< unknown: no elements, no line breaks
        qtText, ///< Qt's styled text; line breaks are `<br/>`
        pango,  ///< an unknown element or a `<br/>` blanks the whole tool tip; line breaks are `\n`
    };

    Presentation presentation = Presentation::compact;
    Markup markup = Markup::plain;
    bool clickNeedsMenu = false; ///< a single click opens the exported menu, or nothing without one
    bool iconsByName = false;    ///< it ignores pixmaps and looks icons up in the item's theme directory
    /// It may look for the label before it has read the properties, and then not again until the label
    /// changes or the item registers a second time. It reads the menu afterwards.
    bool overlooksLabel = false;

    bool operator==(const TrayHost &) const = default;
};

/// Returns the host for the process name of the watcher's owner (/proc/PID/comm, at most 15 characters).
[[nodiscard]] TrayHost trayHostFor(std::string_view processName);

} // namespace burnwick
