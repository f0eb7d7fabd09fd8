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

/// A no-break space, for an empty line: Qt gives a label without text another height.
inline const QString emptyLine = QStringLiteral("\u00A0");

/// A label and its value on one line.
class MenuRowView final : public QWidget {
    Q_OBJECT

public:
    explicit MenuRowView(const QString &label);

    void setValue(const QString &value);

private:
    TextLabel *m_label;
    TextLabel *m_value;
};

/// A quota's used share, with a bar in the indicator's colour, and its reset.
class QuotaBarRow final : public QWidget {
    Q_OBJECT

public:
    explicit QuotaBarRow(const QString &label);

    /// The label is elidable.
    void setLabel(const QString &label);
    /// `usedPct` may exceed 100. Without an instant the row has no reset line.
    void setUsage(double usedPct, const std::optional<Instant> &resetAt, Instant now);
    /// Shows the percentage in the secondary colour.
    void setDimmed(bool dimmed);
    /// Moves the reset into the label's line, for low screens.
    void setDense(bool dense);
    /// Reduces the space above the bar.
    void setCrowded(bool crowded);
    /// Shows a dash and an empty bar, with the height of a row with a reset.
    void setAwaited();

private:
    void nameRow();

    QVBoxLayout *m_column;
    QHBoxLayout *m_firstLine;
    TextLabel *m_label;
    TextLabel *m_used;
    UsageBar *m_bar;
    TextLabel *m_reset;
};

/// The cost of the extra usage, its share of the limit and the days until the reset.
class ExtraUsageBarRow final : public QWidget {
    Q_OBJECT

public:
    ExtraUsageBarRow();

    /// In dollars, percent of the limit, and days until the limit resets.
    void setUsage(double amount, double pct, std::int64_t days);

private:
    TextLabel *m_amount;
    TextLabel *m_note;
    UsageBar *m_bar;
};

} // namespace burnwick
