// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace burnwick {

/// The abilities of a program that shows status items.
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
    bool clickNeedsMenu = false; ///< a single click opens the exported menu, and is ignored without one
    bool iconsByName = false;    ///< it ignores pixmaps and finds icons by name in the item's theme directory
    /// It may look for the label before it has read the properties, and then only after the label changed or
    /// the item registered a second time. It reads the menu later than the properties.
    bool overlooksLabel = false;

    bool operator==(const TrayHost &) const = default;
};

/// Returns the host with that process name (/proc/PID/comm, at most 15 characters), or a default.
[[nodiscard]] TrayHost trayHostFor(std::string_view processName);

} // namespace burnwick
