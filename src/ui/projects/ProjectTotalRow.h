// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/projects/ProjectsModel.h"

#include <QWidget>

namespace burnwick {

/// The sums below the projects.
class ProjectTotalRow final : public QWidget {
    Q_OBJECT

public:
    /// The model must outlive the row.
    explicit ProjectTotalRow(const ProjectsModel &model);

    /// Shows the model's present sums.
    void follow();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const ProjectsModel &m_model;
    QString m_note;
};

} // namespace burnwick
