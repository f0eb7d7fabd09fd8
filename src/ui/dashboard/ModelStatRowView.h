// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/HistoricalData.h"

#include <QWidget>

#include <optional>

namespace burnwick {

class TextLabel;
class UsageBar;

/// A model's share of the tokens. The name comes from outside: it is shown as it stands.
class ModelStatRowView final : public QWidget {
    Q_OBJECT

public:
    explicit ModelStatRowView(QWidget *parent = nullptr);

    /// Repaints only when the values differ.
    void setStat(const ModelStat &stat);

private:
    std::optional<ModelStat> m_stat;
    TextLabel *m_name;
    TextLabel *m_share;
    TextLabel *m_detail;
    UsageBar *m_bar;
};

} // namespace burnwick
