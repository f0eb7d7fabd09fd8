// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <QWidget>

#include <functional>

class QUrl;

namespace burnwick {

class PanelCard;
class ProjectTotalRow;
class ProjectsModel;
class ProjectsTable;

/// A sortable table of the projects, with their sums below.
class ProjectsTab final : public QWidget {
    Q_OBJECT

public:
    /// `openURL` opens a project's folder on a double click or Return.
    explicit ProjectsTab(std::function<void(const QUrl &)> openURL);

    /// Keeps selection and scroll position.
    void setFigures(const UsageFigures &usage, Instant now);

private:
    void openFolder(int row) const;
    void copyRows() const;

    std::function<void(const QUrl &)> m_openURL;
    ProjectsModel *m_model;
    PanelCard *m_noData;
    PanelCard *m_card;
    ProjectsTable *m_table;
    ProjectTotalRow *m_total;
};

} // namespace burnwick
