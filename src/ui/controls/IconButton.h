// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QIcon>

namespace burnwick {

/// A square button with a picture in the secondary text colour. Its tool tip is its name.
class IconButton final : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(int radius READ radius CONSTANT)

public:
    /// `picture` is an SVG file or resource, of which only the opacity counts.
    IconButton(const QString &picture, const QString &name);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] int radius() const { return 8; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon m_picture;
};

} // namespace burnwick
