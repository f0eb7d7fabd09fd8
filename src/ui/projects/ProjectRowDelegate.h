// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace burnwick {

class ProjectsModel;

/// Paints the rows of a ProjectsModel.
class ProjectRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// The model must outlive the delegate.
    explicit ProjectRowDelegate(const ProjectsModel &model);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    const ProjectsModel &m_model;
};

} // namespace burnwick
