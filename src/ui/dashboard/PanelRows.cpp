// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/PanelRows.h"

#include "display/DisplayFormat.h"
#include "model/StatusIndicator.h"
#include "ui/charts/UsageBar.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace burnwick {

namespace {

QHBoxLayout *lineOf(QWidget *leading, QWidget *trailing) {
    auto *line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(leading);
    line->addStretch();
    line->addWidget(trailing);
    return line;
}

QColor ThemeColors::*colorRoleOf(StatusIndicator indicator) {
    switch (indicator) {
    case StatusIndicator::red:
        return &ThemeColors::over;
    case StatusIndicator::orange:
        return &ThemeColors::near;
    case StatusIndicator::green:
        break;
    }
    return &ThemeColors::good;
}

} // namespace

MenuRowView::MenuRowView(const QString &label)
    : m_label(new TextLabel(label, TextStyle::body, QPalette::PlaceholderText))
    , m_value(new TextLabel(TextStyle::bodyStrong)) {
    m_value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_value->setElidable();
    QHBoxLayout *line = lineOf(m_label, m_value);
    line->setContentsMargins({});
    setLayout(line);
    setAccessibleRole(*this, QAccessible::Grouping);
}

void MenuRowView::setValue(const QString &value) {
    if (m_value->text() == value)
        return;
    m_value->setText(value);
    setAccessibleName(m_label->text() + QLatin1String(": ") + value);
}

QuotaBarRow::QuotaBarRow(const QString &label)
    : m_column(new QVBoxLayout(this))
    , m_label(new TextLabel(label, TextStyle::label))
    , m_used(new TextLabel(TextStyle::label))
    , m_bar(new UsageBar)
    , m_reset(new TextLabel(TextStyle::caption, QPalette::PlaceholderText)) {
    setAccessibleRole(*this, QAccessible::Grouping);
    m_column->setContentsMargins({});
    m_column->setSpacing(6);
    m_column->addLayout(m_firstLine = lineOf(m_label, m_used));
    m_column->addWidget(m_bar);
    m_column->addWidget(m_reset);
}

void QuotaBarRow::setLabel(const QString &label) {
    if (m_label->text() == label)
        return;
    m_label->setElidable();
    m_label->setText(label);
    nameRow();
}

void QuotaBarRow::setDimmed(bool dimmed) {
    m_used->setForegroundRole(dimmed ? QPalette::PlaceholderText : QPalette::WindowText);
}

void QuotaBarRow::setCrowded(bool crowded) {
    m_column->setSpacing(crowded ? 4 : 6);
    updateGeometry();
}

void QuotaBarRow::setDense(bool dense) {
    m_column->removeWidget(m_reset);
    m_firstLine->removeWidget(m_reset);
    if (dense)
        m_firstLine->insertWidget(1, m_reset);
    else
        m_column->addWidget(m_reset);
    // The card's layout keeps the former size of a row whose layout was activated by that of the card.
    updateGeometry();
}

void QuotaBarRow::setUsage(double usedPct, const std::optional<Instant> &resetAt, Instant now) {
    const QString used = textOf(percentText(usedPct)) + QLatin1String(" used");
    const QString reset = textOf(resetText(resetAt, now));
    m_bar->setShare(usedPct);
    m_bar->setColor(colorRoleOf(statusIndicatorForUsage(usedPct)));
    m_reset->setVisible(resetAt.has_value());
    if (m_used->text() == used && m_reset->text() == reset)
        return;
    m_used->setText(used);
    m_reset->setText(reset);
    nameRow();
}

void QuotaBarRow::nameRow() {
    setAccessibleName(m_label->text() + QLatin1String(": ") + m_used->text() +
                      (m_reset->text().isEmpty() ? QString() : QLatin1String(", ") + m_reset->text()));
}

void QuotaBarRow::setAwaited() {
    const QString dash = QString::fromUtf8("–");
    m_used->setText(dash);
    m_bar->setShare(0);
    m_reset->setText(emptyLine);
    m_reset->setVisible(true);
    setAccessibleName(m_label->text() + QLatin1String(": ") + dash);
}

ExtraUsageBarRow::ExtraUsageBarRow()
    : m_amount(new TextLabel(TextStyle::figure))
    , m_note(new TextLabel(TextStyle::caption, QPalette::PlaceholderText))
    , m_bar(new UsageBar) {
    auto *line = lineOf(m_amount, m_note);
    line->setAlignment(m_note, Qt::AlignBottom);
    setAccessibleRole(*this, QAccessible::Grouping);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(6);
    column->addLayout(line);
    column->addWidget(m_bar);
}

void ExtraUsageBarRow::setUsage(double amount, double pct, std::int64_t days) {
    const QString spent = textOf(costText(amount));
    const QString note = textOf(percentText(pct)) + QString::fromUtf8(" · ") + QString::number(days) +
                         (days == 1 ? QLatin1String(" day left") : QLatin1String(" days left"));
    m_bar->setShare(pct);
    if (m_amount->text() == spent && m_note->text() == note)
        return;
    m_amount->setText(spent);
    m_note->setText(note);
    setAccessibleName(spent + QLatin1String(" spent, ") + note);
}

} // namespace burnwick
