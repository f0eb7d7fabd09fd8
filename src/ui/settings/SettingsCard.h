// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/controls/FlatButton.h"
#include "ui/controls/PanelCard.h"

#include <QWidget>

namespace burnwick {

class TextLabel;

/// A thin line: between the rows of a card, and between the parts of the window.
class SettingsDivider final : public QWidget {
    Q_OBJECT

public:
    explicit SettingsDivider(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A label on the left and what it is about on the right.
class SettingsRow : public QWidget {
    Q_OBJECT

public:
    SettingsRow(const QString &label, QWidget *control, QWidget *parent = nullptr);

    void setLabel(const QString &label);

private:
    TextLabel *m_label;
};

/// Rows that belong together, on the ground of the dashboard's cards.
class SettingsCard final : public PanelCard {
    Q_OBJECT

public:
    explicit SettingsCard(QWidget *parent = nullptr);

    /// Below the earlier ones, with a divider between.
    void addRow(SettingsRow *row);
};

/// What the buttons at the end of a row look like.
[[nodiscard]] FlatButton::Look settingsButtonLook();

} // namespace burnwick
