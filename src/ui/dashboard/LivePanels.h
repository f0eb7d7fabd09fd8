// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/ClaudeComponentStatus.h"
#include "model/ExtraUsageData.h"
#include "model/QuotaData.h"
#include "ui/controls/PanelCard.h"

#include <optional>
#include <vector>

class QVBoxLayout;

namespace burnwick {

class ExtraUsageBarRow;
class MenuRowView;
class QuotaBarRow;
class TextLabel;

/// The account's three rate-limit windows.
class WindowQuotaPanel final : public PanelCard {
    Q_OBJECT

public:
    explicit WindowQuotaPanel(QWidget *parent = nullptr);

    /// Absent while the first answer is awaited.
    void setQuota(const std::optional<QuotaData> &quota, Instant now);
    void setDense(bool dense) override;

private:
    QuotaBarRow *m_session;
    QuotaBarRow *m_weekly;
    QuotaBarRow *m_claudeDesign;
};

/// The account's paid extra usage.
class WindowExtraUsagePanel final : public PanelCard {
    Q_OBJECT

public:
    explicit WindowExtraUsagePanel(QWidget *parent = nullptr);

    void setUsage(const ExtraUsageData &usage);

private:
    ExtraUsageBarRow *m_spent;
    MenuRowView *m_monthlyLimit;
    MenuRowView *m_currentBalance;
};

/// How fast tokens are burnt, and what that comes to.
class WindowBurnRatePanel final : public PanelCard {
    Q_OBJECT

public:
    explicit WindowBurnRatePanel(QWidget *parent = nullptr);

    /// Costs are dollars.
    struct Values {
        double tokensPerMin = 0;
        double todayCost = 0;
        double weeklyCost = 0;
        double monthlyCost = 0;
        std::optional<Instant> resetAt; ///< of the 5-hour window
        bool awaitsReset = false;       ///< leaves its line empty, otherwise there is none without an instant
    };
    void setValues(const Values &values, Instant now);

private:
    MenuRowView *m_current;
    MenuRowView *m_today;
    MenuRowView *m_weekly;
    MenuRowView *m_monthly;
    TextLabel *m_reset;
};

/// The health of the service's components.
class WindowClaudeStatusPanel final : public PanelCard {
    Q_OBJECT

public:
    explicit WindowClaudeStatusPanel(QWidget *parent = nullptr);

    /// Without components it says that they are being fetched.
    void setComponents(const std::vector<ClaudeComponentStatus> &components);

private:
    class Row;

    TextLabel *m_fetching;
    std::vector<Row *> m_rows;
};

} // namespace burnwick
