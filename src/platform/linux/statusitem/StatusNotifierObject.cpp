// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusNotifierObject.h"

#include <utility>

namespace burnwick {

StatusNotifierObject::StatusNotifierObject(ActivateHandler handler)
    : m_handler(std::move(handler)) {}

void StatusNotifierObject::setState(NotifierState state) {
    const NotifierState before = std::exchange(m_state, std::move(state));
    if (m_state.title != before.title)
        Q_EMIT NewTitle();
    if (m_state.iconThemePath != before.iconThemePath)
        Q_EMIT NewIconThemePath(m_state.iconThemePath);
    // The description has no signal; hosts read it again with the icon.
    if (m_state.icon != before.icon || m_state.iconName != before.iconName ||
        m_state.accessibleDescription != before.accessibleDescription)
        Q_EMIT NewIcon();
    if (m_state.toolTip != before.toolTip)
        Q_EMIT NewToolTip();
    if (m_state.menuPath != before.menuPath)
        Q_EMIT NewMenu();
    if (m_state.label != before.label)
        Q_EMIT XAyatanaNewLabel(m_state.label, labelGuide());
}

void StatusNotifierObject::activate() {
    m_handler(std::exchange(m_activationToken, {}));
}

QString StatusNotifierObject::labelGuide() const {
    return m_state.label.isEmpty() ? QString() : QStringLiteral("000.0M | $000.00 | s100%");
}

} // namespace burnwick
