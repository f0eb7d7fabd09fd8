// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include <functional>

namespace burnwick {

/// A knob on a track, in the accent colour when on. A check box for assistive technology; the caller sets its
/// name.
class Switch final : public QAbstractButton {
    Q_OBJECT
    Q_PROPERTY(int radius READ radius CONSTANT)

public:
    /// The knob slides for 120 ms, or jumps when `reducedMotion` returns true, which is called at each
    /// change.
    explicit Switch(std::function<bool()> reducedMotion);

    /// Sets the state without emitting flipped().
    void setOn(bool on);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] int radius() const;
    /// From 0 (off) to 1 (on).
    [[nodiscard]] double knobPosition() const { return m_position; }

Q_SIGNALS:
    /// Emitted when the user toggles the switch, also by assistive technology, which emits no clicked().
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
