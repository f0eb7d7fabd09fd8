// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <QWidget>

namespace burnwick {

struct Snapshot;
class WindowBurnRatePanel;
class WindowClaudeStatusPanel;
class WindowExtraUsagePanel;
class WindowQuotaPanel;

/// The dashboard's left column. Shows the panels whose figures are known.
class LiveColumn final : public QWidget {
    Q_OBJECT

public:
    LiveColumn();

    void setValues(const Snapshot &snapshot, Instant now);

private:
    QWidget *m_emptyState;
    WindowQuotaPanel *m_quota;
    WindowExtraUsagePanel *m_extraUsage;
    WindowBurnRatePanel *m_burnRate;
    WindowClaudeStatusPanel *m_claudeStatus;
};

} // namespace burnwick
