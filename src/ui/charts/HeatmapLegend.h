// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace burnwick {

/// The colours of the heatmap from less to more.
class HeatmapLegend final : public QWidget {
    Q_OBJECT

public:
    explicit HeatmapLegend(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace burnwick
