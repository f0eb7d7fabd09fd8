// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/LivePanels.h"

#include "display/DisplayFormat.h"
#include "display/DisplayText.h"
#include "display/LimitText.h"
#include "display/PriceText.h"
#include "model/Snapshot.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/dashboard/PanelRows.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"
#include "ui/theme/ThemeColors.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <utility>

namespace burnwick {

namespace {

template <typename Row>
Row *addRow(PanelCard &card, Row *row) {
    card.content()->addWidget(row);
    return row;
}

MenuRowView *addRow(PanelCard &card, const char *label) {
    return addRow(card, new MenuRowView(QString::fromUtf8(label)));
}

QColor ThemeColors::*colorRoleOf(ClaudeComponentStatus::Status status) {
    using Status = ClaudeComponentStatus::Status;
    switch (status) {
    case Status::operational:
        return &ThemeColors::operational;
    case Status::degraded:
        return &ThemeColors::degraded;
    case Status::outage:
        return &ThemeColors::outage;
    case Status::unknown:
        break;
    }
    return &ThemeColors::secondary;
}

/// A small disc. Invisible to assistive technology, because a text beside it has the status.
class StatusDot final : public QWidget {
public:
    StatusDot() { setFixedSize(7, 7); }

    void setColor(QColor ThemeColors::*color) {
        if (std::exchange(m_color, color) != color)
            update();
    }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        fillRounded(painter, rect(), width() / 2.0, colorsFor(*this).*m_color);
    }

private:
    QColor ThemeColors::*m_color = &ThemeColors::secondary;
};

} // namespace

WindowQuotaPanel::WindowQuotaPanel()
    : PanelCard(QStringLiteral("QUOTA"))
    , m_session(addRow(*this, new QuotaBarRow(QStringLiteral("Session"))))
    , m_weekly(addRow(*this, new QuotaBarRow(QStringLiteral("Weekly"))))
    , m_claudeDesign(addRow(*this, new QuotaBarRow(textOf(claudeDesign)))) {
    setDense(false);
}

void WindowQuotaPanel::setDense(bool dense) {
    m_dense = dense;
    arrange();
}

/// With further rows the panel keeps the height of three, so that the window keeps its own.
void WindowQuotaPanel::arrange() {
    const std::size_t most = !m_hasNeighbour ? 3 : m_dense ? 1 : 2;
    const int regularSpacing = m_dense ? 8 : 12;
    std::vector rows{m_session, m_weekly, m_claudeDesign};
    int room = 3 * regularSpacing; // also below the header
    for (QuotaBarRow *row : rows) {
        row->setDense(m_dense);
        row->setCrowded(false);
        room += row->sizeHint().height();
    }
    PanelCard::setDense(m_dense); // resets the margins
    content()->setSpacing(regularSpacing);
    rows.insert(rows.end(), m_models.begin(),
                std::next(m_models.begin(), static_cast<std::ptrdiff_t>(std::min(most, m_models.size()))));
    if (rows.size() == 3)
        return;

    const int gaps = static_cast<int>(rows.size());
    for (QuotaBarRow *row : rows) {
        row->setDense(true);
        row->setCrowded(m_dense || (m_hasNeighbour && rows.size() > 4));
        room -= row->sizeHint().height();
    }
    const int spacing = std::clamp(room / gaps, m_dense ? 6 : 8, 18);
    QMargins margins = content()->contentsMargins();
    margins.setBottom(margins.bottom() + std::max(0, room - gaps * spacing));
    content()->setContentsMargins(margins);
    content()->setSpacing(spacing);
    for (std::size_t i = 0; i < m_models.size(); ++i)
        m_models[i]->setVisible(i < most);
}

void WindowQuotaPanel::setAccount(const AccountFigures &account, const Calendar &calendar, Instant now) {
    const auto &quota = account.quotaData;
    if (quota) {
        m_session->setUsage(quota->fiveHourUsagePct, quota->fiveHourResetAt, now);
        m_weekly->setUsage(quota->sevenDayUsagePct, quota->sevenDayResetAt, now);
        m_claudeDesign->setUsage(quota->claudeDesignWeeklyPct, quota->claudeDesignResetAt, now);
    } else {
        for (QuotaBarRow *row : {m_session, m_weekly, m_claudeDesign})
            row->setAwaited();
    }
    setModels(account, now);
    for (auto *row : findChildren<QuotaBarRow *>())
        row->setDimmed(account.isQuotaStale);
    setPlainToolTip(*this, textOf(staleQuotaText(account, calendar)));
}

void WindowQuotaPanel::setModels(const AccountFigures &account, Instant now) {
    constexpr std::size_t most = 3;
    std::vector<const Limit *> limits;
    for (const Limit &limit : account.limits) {
        if (limit.kind == Limit::Kind::weeklyScoped && limit.model != claudeDesign && limits.size() < most)
            limits.push_back(&limit);
    }
    const bool hasNeighbour = account.extraUsage.has_value();
    const bool changes = limits.size() != m_models.size() || hasNeighbour != m_hasNeighbour;
    m_hasNeighbour = hasNeighbour;
    while (m_models.size() > limits.size()) {
        delete m_models.back();
        m_models.pop_back();
    }
    while (m_models.size() < limits.size())
        m_models.push_back(addRow(*this, new QuotaBarRow({})));
    for (std::size_t i = 0; i < limits.size(); ++i) {
        m_models[i]->setLabel(textOf(limitName(*limits[i])));
        m_models[i]->setUsage(limits[i]->usedPct, limits[i]->resetsAt, now);
    }
    if (changes)
        arrange();
}

WindowExtraUsagePanel::WindowExtraUsagePanel()
    : PanelCard(QStringLiteral("EXTRA USAGE"))
    , m_spent(addRow(*this, new ExtraUsageBarRow))
    , m_monthlyLimit(addRow(*this, "Monthly limit"))
    , m_currentBalance(addRow(*this, "Current balance")) {}

void WindowExtraUsagePanel::setUsage(const ExtraUsageData &usage) {
    m_spent->setUsage(usage.dailySpend, usage.dailySpendPct, usage.daysUntilReset);
    m_monthlyLimit->setValue(textOf(costText(usage.monthlyLimit)));
    m_currentBalance->setValue(textOf(costText(usage.currentBalance)));
}

WindowBurnRatePanel::WindowBurnRatePanel()
    : PanelCard(QStringLiteral("BURN RATE"))
    , m_current(addRow(*this, "Current"))
    , m_today(addRow(*this, "Today's final"))
    , m_weekly(addRow(*this, "Weekly projection"))
    , m_monthly(addRow(*this, "Monthly projection"))
    , m_reset(addRow(*this, new TextLabel(TextStyle::small, QPalette::PlaceholderText))) {
    header()->addWidget(
        new TextLabel(QStringLiteral("(if this continues...)"), TextStyle::small, QPalette::PlaceholderText));
}

void WindowBurnRatePanel::setValues(const Values &values, Instant now) {
    m_current->setValue(textOf(burnRateText(values.tokensPerMin)));
    m_today->setValue(textOf(priceText(values.todayCost)));
    m_weekly->setValue(textOf(priceText(values.weeklyCost)));
    m_monthly->setValue(textOf(priceText(values.monthlyCost)));
    m_reset->setVisible(values.resetAt || values.awaitsReset);
    m_reset->setText(values.resetAt
                         ? QStringLiteral("Reset ") + textOf(timeRemainingText(*values.resetAt, now))
                         : emptyLine);
}

/// A component's name, dot and status.
class WindowClaudeStatusPanel::Row final : public QWidget {
public:
    Row()
        : m_name(new TextLabel(TextStyle::body, QPalette::PlaceholderText))
        , m_dot(new StatusDot)
        , m_word(new TextLabel(TextStyle::body)) {
        m_name->setElidable();
        setAccessibleRole(*this, QAccessible::Grouping);
        auto *line = new QHBoxLayout(this);
        line->setContentsMargins({});
        line->setSpacing(6);
        line->addWidget(m_name, 1);
        line->addWidget(m_dot);
        line->addWidget(m_word);
    }
    void setComponent(const ClaudeComponentStatus &component) {
        const QString name = textOf(displayText(component.name));
        const QString word = textOf(wordFor(component.status));
        m_dot->setColor(colorRoleOf(component.status));
        m_name->setText(name);
        m_word->setText(word);
        setAccessibleName(name + QLatin1String(": ") + word);
    }

private:
    TextLabel *m_name;
    StatusDot *m_dot;
    TextLabel *m_word;
};

WindowClaudeStatusPanel::WindowClaudeStatusPanel()
    : PanelCard(QStringLiteral("CLAUDE STATUS"))
    , m_fetching(addRow(*this, new TextLabel(QString::fromUtf8("Fetching status…"), TextStyle::body,
                                             QPalette::PlaceholderText))) {}

void WindowClaudeStatusPanel::setComponents(const std::vector<ClaudeComponentStatus> &components) {
    m_fetching->setVisible(components.empty());
    while (m_rows.size() > components.size()) {
        delete m_rows.back();
        m_rows.pop_back();
    }
    while (m_rows.size() < components.size())
        m_rows.push_back(addRow(*this, new Row));
    for (std::size_t i = 0; i < components.size(); ++i)
        m_rows[i]->setComponent(components[i]);
}

} // namespace burnwick
