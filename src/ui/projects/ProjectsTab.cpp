// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectsTab.h"

#include "ui/controls/PanelCard.h"
#include "ui/projects/ProjectHeads.h"
#include "ui/projects/ProjectPainter.h"
#include "ui/projects/ProjectTotalRow.h"
#include "ui/projects/ProjectsModel.h"
#include "ui/projects/ProjectsTable.h"
#include "ui/text/TextLabel.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QShortcut>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>
#include <utility>

namespace burnwick {

namespace {

/// Its rows have the card's whole width.
class TableCard final : public PanelCard {
public:
    TableCard() { TableCard::setDense(false); }

    void setDense(bool) override {
        content()->setContentsMargins({});
        content()->setSpacing(0);
    }
};

} // namespace

ProjectsTab::ProjectsTab(std::function<void(const QUrl &)> openURL)
    : m_openURL(std::move(openURL))
    , m_model(new ProjectsModel(QDir::homePath().toStdString()))
    , m_noData(new PanelCard)
    , m_card(new TableCard)
    , m_table(new ProjectsTable(*m_model))
    , m_total(new ProjectTotalRow(*m_model)) {
    m_model->setParent(this);
    m_noData->content()->addWidget(
        new TextLabel(QStringLiteral("No projects yet"), TextStyle::body, QPalette::PlaceholderText), 0,
        Qt::AlignCenter);
    m_card->content()->addWidget(new ProjectHeads(*m_model));
    m_card->content()->addWidget(m_table, 1);
    m_card->content()->addWidget(m_total);
    m_card->hide();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(m_noData, 1);
    column->addWidget(m_card, 1);
    connect(m_table, &ProjectsTable::openRequested, this, &ProjectsTab::openFolder);
    new QShortcut(QKeySequence::Copy, this, this, &ProjectsTab::copyRows);
}

void ProjectsTab::setFigures(const UsageFigures &usage, Instant now) {
    m_model->setFigures(usage, now);
    m_total->follow();
    const bool isEmpty = m_model->rowCount() == 0;
    m_noData->setVisible(isEmpty);
    m_card->setVisible(!isEmpty);
}

void ProjectsTab::openFolder(int row) const {
    const QString path = QString::fromStdString(m_model->projectAt(row).path);
    if (QDir::isAbsolutePath(path) && QFileInfo(path).isDir())
        m_openURL(QUrl::fromLocalFile(path));
}

void ProjectsTab::copyRows() const {
    std::vector<int> rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        rows.push_back(index.row());
    if (rows.empty()) {
        rows.resize(static_cast<std::size_t>(m_model->rowCount()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    std::ranges::sort(rows);
    QGuiApplication::clipboard()->setText(m_model->tabSeparated(rows));
}

} // namespace burnwick
