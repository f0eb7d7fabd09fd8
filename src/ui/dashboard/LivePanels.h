// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/ClaudeComponentStatus.h"
#include "model/ExtraUsageData.h"
#include "model/QuotaData.h"
#include "ui/controls/PanelCard.h"

#include <optional>
#include <vector>

namespace burnwick {

class ExtraUsageBarRow;
class MenuRowView;
class QuotaBarRow;
class TextLabel;
struct AccountFigures;

/// The account's three rate-limit windows, and further ones of single models.
class WindowQuotaPanel final : public PanelCard {
    Q_OBJECT

public:
    WindowQuotaPanel();

    /// The quota is absent until the first response. The panel has rows for as many models as fit into the
    /// lowest window.
    void setAccount(const AccountFigures &account, const Calendar &calendar, Instant now);
    void setDense(bool dense) override;

private:
    void setModels(const AccountFigures &account, Instant now);
    void arrange();

    bool m_dense = false;
    bool m_hasNeighbour = false; ///< whether the panel of the extra usage needs room, too
    QuotaBarRow *m_session;
    QuotaBarRow *m_weekly;
    QuotaBarRow *m_claudeDesign;
    std::vector<QuotaBarRow *> m_models; ///< some may be hidden
};

/// The account's paid extra usage.
class WindowExtraUsagePanel final : public PanelCard {
    Q_OBJECT

public:
    WindowExtraUsagePanel();

    void setUsage(const ExtraUsageData &usage);

private:
    ExtraUsageBarRow *m_spent;
    MenuRowView *m_monthlyLimit;
    MenuRowView *m_currentBalance;
};

/// The burn rate and its projections.
class WindowBurnRatePanel final : public PanelCard {
    Q_OBJECT

public:
    WindowBurnRatePanel();

    /// Costs are dollars.
    struct Values {
        double tokensPerMin = 0;
        std::optional<double> todayCost, weeklyCost, monthlyCost; ///< in dollars; null without a price
        std::optional<Instant> resetAt;                           ///< of the 5-hour window
        bool awaitsReset = false; ///< shows an empty line while `resetAt` is absent
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
    WindowClaudeStatusPanel();

    /// Without components the panel shows that they are being fetched.
    void setComponents(const std::vector<ClaudeComponentStatus> &components);

private:
    class Row;

    TextLabel *m_fetching;
    std::vector<Row *> m_rows;
};

} // namespace burnwick
