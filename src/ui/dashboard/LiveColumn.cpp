// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/LiveColumn.h"

#include "display/PriceText.h"
#include "model/Snapshot.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/dashboard/LivePanels.h"
#include "ui/text/TextLabel.h"
#include "ui/theme/ThemeColors.h"

#include <QPainter>
#include <QVBoxLayout>

namespace burnwick {

namespace {

/// A triangle with an exclamation mark.
class WarningSymbol final : public QWidget {
public:
    WarningSymbol() { setFixedSize(26, 24); }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colorsFor(*this).secondary, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolygon(QPolygonF({{13, 2.5}, {24, 21.5}, {2, 21.5}}));
        painter.drawLine(QPointF(13, 9.5), QPointF(13, 14.5));
        painter.drawPoint(QPointF(13, 18));
    }
};

QWidget *makeEmptyState() {
    auto *card = new PanelCard;
    setAccessibleRole(*card, QAccessible::Grouping);
    card->setAccessibleName(QStringLiteral("OAuth token not found"));
    auto *hint = new TextLabel(QStringLiteral("Open Settings to connect your Claude account"),
                               TextStyle::caption, QPalette::PlaceholderText);
    QVBoxLayout *content = card->content();
    content->addSpacing(8);
    content->addWidget(new WarningSymbol, 0, Qt::AlignHCenter);
    content->addWidget(new TextLabel(QStringLiteral("OAuth token not found"), TextStyle::labelStrong), 0,
                       Qt::AlignHCenter);
    content->addWidget(hint, 0, Qt::AlignHCenter);
    content->addSpacing(8);
    return card;
}

} // namespace

LiveColumn::LiveColumn()
    : m_emptyState(makeEmptyState())
    , m_quota(new WindowQuotaPanel)
    , m_extraUsage(new WindowExtraUsagePanel)
    , m_burnRate(new WindowBurnRatePanel)
    , m_claudeStatus(new WindowClaudeStatusPanel) {
    constexpr int width = 300;
    setFixedWidth(width);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    for (QWidget *card :
         std::initializer_list<QWidget *>{m_emptyState, m_quota, m_extraUsage, m_burnRate, m_claudeStatus})
        column->addWidget(card);
    column->addStretch();
}

void LiveColumn::setValues(const Snapshot &snapshot, Instant now) {
    const auto &[usage, account] = snapshot;
    const auto &quota = account.quotaData;
    const auto &extraUsage = account.extraUsage;
    const bool showsQuota = quota || account.awaitsFirstQuota;
    if (showsQuota)
        m_quota->setAccount(account, usage.calendar, now);
    if (extraUsage)
        m_extraUsage->setUsage(*extraUsage);
    m_burnRate->setValues({usage.burnRateTokensPerMin,
                           shownProjection(usage, &UsageFigures::projectedTodayCost),
                           shownProjection(usage, &UsageFigures::projectedWeeklyCost),
                           shownProjection(usage, &UsageFigures::projectedMonthlyCost),
                           quota ? quota->fiveHourResetAt : std::nullopt, account.awaitsFirstQuota},
                          now);
    m_claudeStatus->setComponents(account.claudeStatus);

    m_emptyState->setVisible(!showsQuota && !extraUsage);
    m_quota->setVisible(showsQuota);
    m_extraUsage->setVisible(extraUsage.has_value());
    m_burnRate->setVisible(usage.burnRateTokensPerMin > 0);
}

} // namespace burnwick
