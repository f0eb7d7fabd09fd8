// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/ModelStatRowView.h"

#include "display/DisplayFormat.h"
#include "display/DisplayText.h"
#include "ui/charts/DailyActivity.h"
#include "ui/charts/UsageBar.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/controls/PriceMark.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace burnwick {

QHBoxLayout *modelColumns(TextLabel *name, std::initializer_list<QWidget *> costs, TextLabel *share) {
    constexpr int shareWidth = 48;
    name->setElidable();
    auto *cost = new QHBoxLayout;
    cost->addSpacerItem(new QSpacerItem(0, 0, QSizePolicy::Expanding));
    for (QWidget *widget : costs)
        cost->addWidget(widget);
    share->setMinimumWidth(shareWidth);
    share->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *line = new QHBoxLayout;
    line->setSpacing(16);
    line->addWidget(name, 1);
    line->addLayout(cost);
    line->addWidget(share);
    return line;
}

ModelStatRowView::ModelStatRowView()
    : m_name(new TextLabel(TextStyle::label))
    , m_cost(new TextLabel(TextStyle::label))
    , m_noPrice(new PriceMark)
    , m_share(new TextLabel(TextStyle::labelStrong))
    , m_detail(new TextLabel(TextStyle::caption, QPalette::PlaceholderText))
    , m_bar(new UsageBar) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_noPrice->hide();
    QFont costFont = m_cost->font();
    costFont.setWeight(QFont::Medium);
    m_cost->setFont(costFont);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addLayout(modelColumns(m_name, {m_cost, m_noPrice}, m_share));
    column->addWidget(m_detail);
    column->addSpacing(4);
    column->addWidget(m_bar);
}

void ModelStatRowView::setStat(const ModelStat &stat, const std::optional<PricedTokens> &cost) {
    if (m_shown == std::pair(stat, cost))
        return;
    m_shown.emplace(stat, cost);
    const bool hasPrice = !cost || cost->hasPrice();
    const QString price = hasPrice ? (cost ? textOf(costText(cost->cost)) : QString()) : noPriceText();
    m_cost->setText(hasPrice ? price : QString());
    m_cost->setVisible(hasPrice);
    m_noPrice->setVisible(!hasPrice);
    const QString name = textOf(displayText(stat.name));
    const QString share = textOf(percentText(stat.percentage));
    const QString detail = textOf(inOutText(stat.inputTokens, stat.outputTokens));
    m_name->setText(name);
    m_share->setText(share);
    m_detail->setText(detail);
    m_bar->setShare(stat.percentage);
    const QString spokenPrice = price.isEmpty() ? QString() : QLatin1String(", ") + price;
    setAccessibleName(name + QLatin1String(": ") + share + spokenPrice + QLatin1String(", ") + detail);

    const QString toolTip =
        QStringLiteral("%1\nIn: %2\nOut: %3")
            .arg(name, exactTokensText(stat.inputTokens), exactTokensText(stat.outputTokens));
    setPlainToolTip(*this, toolTip);
    setPlainToolTip(*m_name, toolTip); // instead of the elided name
}

} // namespace burnwick
