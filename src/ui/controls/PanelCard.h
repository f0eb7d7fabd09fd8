// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace burnwick {

/// A rounded ground, one shade off the window's, with room for what stands on it.
class PanelCard : public QWidget {
    Q_OBJECT

public:
    explicit PanelCard(QWidget *parent = nullptr);
    /// With a name in capitals on its first line.
    explicit PanelCard(const QString &caption, QWidget *parent = nullptr);

    /// Puts less space around the rows and between them.
    virtual void setDense(bool dense);

    /// What the card shows, from top to bottom.
    [[nodiscard]] QVBoxLayout *content() const { return m_content; }
    /// The line of the name; something may stand at its end. None without a name.
    [[nodiscard]] QHBoxLayout *header() const { return m_header; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QHBoxLayout *m_header = nullptr;
    QVBoxLayout *m_content;
};

} // namespace burnwick
