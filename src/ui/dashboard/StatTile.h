// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QString>

class QLabel;

namespace burnwick {

/// A labelled figure of the dashboard. Its texts are plain text, whatever is in them.
class StatTile final : public QFrame {
    Q_OBJECT

public:
    explicit StatTile(const QString &label, QWidget *parent = nullptr);

    /// Repaints only when the text differs.
    void setValue(const QString &value);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void showElided();

    QString m_label;
    QString m_value;
    QLabel *m_valueLabel;
};

} // namespace burnwick
