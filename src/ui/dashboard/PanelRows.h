// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <QWidget>

#include <cstdint>
#include <optional>

class QHBoxLayout;
class QVBoxLayout;

namespace burnwick {

class TextLabel;
class UsageBar;

/// Text that keeps a label's line free: Qt gives a label without text another height.
inline const QString emptyLine = QStringLiteral("\u00A0");

/// A label and its value on one line.
class MenuRowView final : public QWidget {
    Q_OBJECT

public:
    explicit MenuRowView(const QString &label, QWidget *parent = nullptr);

    void setValue(const QString &value);

private:
    TextLabel *m_label;
    TextLabel *m_value;
};

/// How much of a quota is used, in the colour of its nearness to the limit, and when it begins anew.
class QuotaBarRow final : public QWidget {
    Q_OBJECT

public:
    explicit QuotaBarRow(const QString &label, QWidget *parent = nullptr);

    /// In percent, which may exceed 100. Without an instant the line of the reset is left out.
    void setUsage(double usedPct, const std::optional<Instant> &resetAt, Instant now);
    /// Puts the reset on the label's line instead of one of its own.
    void setDense(bool dense);
    /// A dash and an empty bar, at the height of a row with a reset.
    void setAwaited();

private:
    QVBoxLayout *m_column;
    QHBoxLayout *m_firstLine;
    TextLabel *m_label;
    TextLabel *m_used;
    UsageBar *m_bar;
    TextLabel *m_reset;
};

/// What extra usage has cost, of the limit, and for how long the limit holds.
class ExtraUsageBarRow final : public QWidget {
    Q_OBJECT

public:
    explicit ExtraUsageBarRow(QWidget *parent = nullptr);

    /// Dollars, percent of the limit, days until the limit begins anew.
    void setUsage(double amount, double pct, std::int64_t days);

private:
    TextLabel *m_amount;
    TextLabel *m_note;
    UsageBar *m_bar;
};

} // namespace burnwick
