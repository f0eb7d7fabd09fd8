// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QWidget>

namespace burnwick {

/// The application's icon in a square of that side.
class Logo final : public QWidget {
    Q_OBJECT

public:
    explicit Logo(int side, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon m_icon;
};

} // namespace burnwick
