// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include <functional>

namespace burnwick {

/// A knob on a track: at its end and on the accent when on. A check box to assistive technology; whoever
/// places it gives it a name.
class Switch final : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(int radius READ radius CONSTANT)

public:
    /// The knob slides for 120 ms, or jumps while `reducedMotion` holds, which is asked at each change.
    explicit Switch(std::function<bool()> reducedMotion, QWidget *parent = nullptr);

    /// Flips nothing: for showing what holds already.
    void setOn(bool on);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] int radius() const;
    /// Where the knob is, from 0 (off) to 1 (on).
    [[nodiscard]] double knobPosition() const { return m_position; }

Q_SIGNALS:
    /// The user did, by whatever means. Unlike clicked(), which assistive technology does without.
    void flipped(bool on);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void slide(bool on);

    std::function<bool()> m_reducedMotion;
    QVariantAnimation m_slide;
    double m_position = 0;
    bool m_isOn = false;
};

} // namespace burnwick
