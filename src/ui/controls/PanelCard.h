// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace burnwick {

/// A rounded background with a column of content.
class PanelCard : public QWidget {
    Q_OBJECT

public:
    PanelCard();
    /// With a caption as its first line and its accessible name.
    explicit PanelCard(const QString &caption);

    /// Reduces the space around and between the rows, for low screens.
    virtual void setDense(bool dense);

    /// The rows from top to bottom.
    [[nodiscard]] QVBoxLayout *content() const { return m_content; }
    /// The caption's line, to which widgets can be added; null without a caption.
    [[nodiscard]] QHBoxLayout *header() const { return m_header; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QHBoxLayout *m_header = nullptr;
    QVBoxLayout *m_content;
};

} // namespace burnwick
