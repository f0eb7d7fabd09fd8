// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/controls/FlatButton.h"
#include "ui/controls/PanelCard.h"

#include <QWidget>

namespace burnwick {

class TextLabel;

/// Returns a thin line for between rows and between the parts of the window; the caller adds it to a layout.
[[nodiscard]] QWidget *makeDivider();

/// A label on the left and its control on the right.
class SettingsRow : public QWidget {
    Q_OBJECT

public:
    SettingsRow(const QString &label, QWidget *control);

    void setLabel(const QString &label);
    /// Adds a second, smaller line below the label, which it returns, and makes the row higher.
    TextLabel *addCaption(const QString &caption);
    /// Adds a second, smaller line below the label and the control and makes the row higher.
    void addWideCaption(const QString &caption);

private:
    TextLabel *m_label;
    QHBoxLayout *m_line;
};

/// A card of rows with dividers between them.
class SettingsCard : public PanelCard {
    Q_OBJECT

public:
    /// A non-empty title becomes the card's first line.
    explicit SettingsCard(const QString &title = {});

    void addRow(SettingsRow *row);
    /// Destroys the rows in the next turn of the event loop: one of them may be the caller.
    void removeRows();
    /// Returns the rows and the dividers between them.
    [[nodiscard]] const QList<QWidget *> &rows() const { return m_rows; }

private:
    QList<QWidget *> m_rows;
};

/// The look of the buttons at the end of a row.
[[nodiscard]] FlatButton::Look settingsButtonLook();

} // namespace burnwick
