// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTableView>

namespace burnwick {

class ProjectsModel;

/// The rows of the projects. Escape clears the selection. The caller adds heads above it.
class ProjectsTable final : public QTableView {
    Q_OBJECT

public:
    /// The model must outlive the table.
    explicit ProjectsTable(ProjectsModel &model);

Q_SIGNALS:
    /// Emitted on a double click and on Return.
    void openRequested(int row);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void keyPressEvent(QKeyEvent *event) override;
    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace burnwick
