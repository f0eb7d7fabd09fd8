// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/HistoricalData.h"
#include "model/UsageBreakdown.h"

#include <QWidget>

#include <initializer_list>
#include <optional>
#include <utility>

class QHBoxLayout;

namespace burnwick {

class PriceMark;
class TextLabel;
class UsageBar;

/// Returns a line with a model's columns or their heads: the name, of which the label is elidable, the
/// widgets in the column of costs, and the share.
[[nodiscard]] QHBoxLayout *modelColumns(TextLabel *name, std::initializer_list<QWidget *> costs,
                                        TextLabel *share);

/// A model's cost and its share of the tokens. The name is untrusted and shown as displayText().
class ModelStatRowView final : public QWidget {
    Q_OBJECT

public:
    ModelStatRowView();

    /// Shows no cost if it is unknown, and the mark "no price" for tokens without a price. Repaints only for
    /// other values.
    void setStat(const ModelStat &stat, const std::optional<PricedTokens> &cost);

private:
    std::optional<std::pair<ModelStat, std::optional<PricedTokens>>> m_shown;
    TextLabel *m_name;
    TextLabel *m_cost;
    PriceMark *m_noPrice;
    TextLabel *m_share;
    TextLabel *m_detail;
    UsageBar *m_bar;
};

} // namespace burnwick
