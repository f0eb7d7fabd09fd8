// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QWidget>

#include <vector>

class QAbstractItemModel;

namespace burnwick {

class ProjectHead;

/// The heads of the projects' columns. A click, or a key on the focused head, sorts by it; the next one
/// reverses the order.
class ProjectHeads final : public QWidget {
    Q_OBJECT

public:
    /// Sorts the model by cost, the highest first. The model must outlive the heads.
    explicit ProjectHeads(QAbstractItemModel &model);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void sortBy(int column, Qt::SortOrder order);

    QAbstractItemModel &m_model;
    std::vector<ProjectHead *> m_heads;
    int m_column = 0;
    Qt::SortOrder m_order = Qt::DescendingOrder;
};

/// The head of a column, with an arrow while the rows are sorted by it.
class ProjectHead final : public QAbstractButton {
    Q_OBJECT

public:
    ProjectHead(const QString &text, Qt::Alignment alignment);

    void setSorted(bool isSorted, Qt::SortOrder order);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::Alignment m_alignment;
    bool m_isSorted = false;
    Qt::SortOrder m_order = Qt::AscendingOrder;
};

} // namespace burnwick
