// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/Theme.h"

namespace burnwick {

QString rawValueOf(Theme theme) {
    switch (theme) {
    case Theme::light:
        return QStringLiteral("light");
    case Theme::dark:
        return QStringLiteral("dark");
    case Theme::system:
        break;
    }
    return QStringLiteral("system");
}

QString labelOf(Theme theme) {
    QString label = rawValueOf(theme);
    label[0] = label[0].toUpper();
    return label;
}

} // namespace burnwick
