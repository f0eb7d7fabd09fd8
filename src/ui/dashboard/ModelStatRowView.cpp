// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/ModelStatRowView.h"

#include "display/DisplayFormat.h"
#include "display/DisplayText.h"
#include "ui/charts/DailyActivity.h"
#include "ui/charts/UsageBar.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace burnwick {

ModelStatRowView::ModelStatRowView()
    : m_name(new TextLabel(TextStyle::label))
    , m_share(new TextLabel(TextStyle::labelStrong))
    , m_detail(new TextLabel(TextStyle::caption, QPalette::PlaceholderText))
    , m_bar(new UsageBar) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_name->setElidable();
    auto *firstLine = new QHBoxLayout;
    firstLine->setSpacing(16);
    firstLine->addWidget(m_name, 1);
    firstLine->addWidget(m_share);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addLayout(firstLine);
    column->addWidget(m_detail);
    column->addSpacing(4);
    column->addWidget(m_bar);
}

void ModelStatRowView::setStat(const ModelStat &stat) {
    if (m_stat == stat)
        return;
    m_stat = stat;
    const QString name = textOf(displayText(stat.name));
    const QString share = textOf(percentText(stat.percentage));
    const QString detail = textOf(inOutText(stat.inputTokens, stat.outputTokens));
    m_name->setText(name);
    m_share->setText(share);
    m_detail->setText(detail);
    m_bar->setShare(stat.percentage);
    setAccessibleName(name + QLatin1String(": ") + share + QLatin1String(", ") + detail);

    const QString toolTip =
        QStringLiteral("%1\nIn: %2\nOut: %3")
            .arg(name, exactTokensText(stat.inputTokens), exactTokensText(stat.outputTokens));
    setPlainToolTip(*this, toolTip);
    setPlainToolTip(*m_name, toolTip); // instead of the elided name
}

} // namespace burnwick
