// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/NamedStatusIcons.h"

#include "platform/linux/statusitem/NotifierState.h"
#include "platform/linux/statusitem/StatusItemLog.h"
#include "platform/linux/statusitem/StatusItemPainting.h"

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

namespace burnwick {

namespace {

QString directoryTemplate() {
    const QDir runtime(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    return runtime.filePath(QStringLiteral("burnwick-icons-XXXXXX"));
}

} // namespace

NamedStatusIcons::NamedStatusIcons()
    : m_directory(directoryTemplate()) {
    constexpr int size = 48; // hosts scale down
    const QDir directory(m_directory.path());
    for (const auto indicator : {StatusIndicator::green, StatusIndicator::orange, StatusIndicator::red}) {
        const QString file = directory.filePath(iconNameFor(indicator) + QStringLiteral(".png"));
        if (!m_directory.isValid() || !paintSquareIcon(indicator, {}, size).save(file, "PNG")) {
            qCWarning(statusItemLog) << "cannot write the status icons to" << directory.path();
            return;
        }
    }
}

} // namespace burnwick
