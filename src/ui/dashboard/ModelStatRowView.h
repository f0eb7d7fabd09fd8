// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/HistoricalData.h"

#include <QWidget>

#include <optional>

namespace burnwick {

class TextLabel;
class UsageBar;

/// A model's share of the tokens. The name is untrusted and shown as displayText().
class ModelStatRowView final : public QWidget {
    Q_OBJECT

public:
    ModelStatRowView();

    /// Repaints only for other values.
    void setStat(const ModelStat &stat);

private:
    std::optional<ModelStat> m_stat;
    TextLabel *m_name;
    TextLabel *m_share;
    TextLabel *m_detail;
    UsageBar *m_bar;
};

} // namespace burnwick
