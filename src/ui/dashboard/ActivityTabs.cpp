// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/ActivityTabs.h"

#include "display/PriceText.h"
#include "ui/charts/ActivityHeatmapView.h"
#include "ui/charts/HeatmapLegend.h"
#include "ui/charts/ModelBarChartView.h"
#include "ui/controls/PanelCard.h"
#include "ui/dashboard/LimitsCard.h"
#include "ui/dashboard/ModelStatRowView.h"
#include "ui/dashboard/StatTile.h"
#include "ui/layout/ScrollAreas.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"
#include "ui/theme/QuietStyle.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <span>

namespace burnwick {

namespace {

constexpr int tilesPerRow = 6;
constexpr int cardPadding = 16;

/// The tile's edges that are edges of the whole block.
Qt::Edges outerEdges(std::size_t index, std::size_t count) {
    const std::size_t column = index % tilesPerRow;
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, column == 0);
    edges.setFlag(Qt::RightEdge, column == tilesPerRow - 1);
    edges.setFlag(Qt::TopEdge, index < tilesPerRow);
    edges.setFlag(Qt::BottomEdge, index >= count - tilesPerRow);
    return edges;
}

TextLabel *sectionTitle(const char *text) {
    return new TextLabel(QString::fromUtf8(text), TextStyle::captionStrong, QPalette::PlaceholderText);
}

QVBoxLayout *columnOf(QWidget *tab) {
    auto *column = new QVBoxLayout(tab);
    column->setContentsMargins({});
    return column;
}

QHBoxLayout *modelHeads() {
    const auto head = [](const char *text) {
        return new TextLabel(QString::fromUtf8(text), TextStyle::small, QPalette::PlaceholderText);
    };
    return modelColumns(head("Model"), {head("Cost")}, head("Tokens"));
}

/// Returns the tokens' cost; null if no message has that name.
std::optional<PricedTokens> costOf(const std::string &name, const std::vector<ModelUsage> &usage) {
    const auto found = std::ranges::lower_bound(usage, name, {}, &ModelUsage::name);
    return found != usage.end() && found->name == name ? std::optional(found->total) : std::nullopt;
}

} // namespace

/// A column of rows as high as its content, which scrolls above a limit.
class ModelsTab::RowsArea final : public QScrollArea {
public:
    explicit RowsArea(QWidget *rows) {
        makeColumn(*this, rows);
        QuietStyle::layOverMargin(*verticalScrollBar());
        // The rows take no focus, so the area does while it can scroll.
        const QScrollBar *bar = verticalScrollBar();
        const auto update = [this](int, int end) { setFocusPolicy(end > 0 ? Qt::StrongFocus : Qt::NoFocus); };
        connect(bar, &QScrollBar::rangeChanged, this, update);
        update(0, bar->maximum());
    }

    void setTallest(int height) {
        m_tallest = height;
        updateGeometry();
    }
    /// QScrollArea caches its first hint.
    [[nodiscard]] QSize sizeHint() const override {
        const QSize rows = widget()->sizeHint();
        return {rows.width(), std::min(rows.height(), m_tallest)};
    }
    /// QScrollArea's includes a scroll bar and is higher than one row.
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }

private:
    int m_tallest = 0;
};

OverviewTab::OverviewTab()
    : m_heatmap(new ActivityHeatmapView({.cellSize = 11, .gap = 3, .weeks = 52}))
    , m_activity(new PanelCard)
    , m_limits(new LimitsCard)
    , m_notes(new QVBoxLayout) {
    auto *tiles = new QGridLayout;
    constexpr int tileSpacing = 4;
    tiles->setSpacing(tileSpacing);
    const auto figures = statFigures({}, 0);
    for (std::size_t i = 0; i < figures.size(); ++i) {
        m_tiles[i] = new StatTile(textOf(figures[i].label), outerEdges(i, figures.size()));
        tiles->addWidget(m_tiles[i], static_cast<int>(i) / tilesPerRow, static_cast<int>(i) % tilesPerRow);
    }
    for (int column = 0; column < tilesPerRow; ++column)
        tiles->setColumnStretch(column, 1);

    auto *title = new QHBoxLayout;
    title->addWidget(sectionTitle("Activity"));
    title->addStretch();
    title->addWidget(new HeatmapLegend);
    m_activity->content()->addLayout(title);
    m_notes->addStretch();
    auto *chart = new QVBoxLayout;
    chart->setSpacing(0);
    chart->addStretch();
    chart->addWidget(m_heatmap, 0, Qt::AlignHCenter);
    chart->addLayout(m_notes);
    m_activity->content()->addLayout(chart, 1);

    QVBoxLayout *column = columnOf(this);
    column->addLayout(tiles);
    column->addWidget(m_activity, 1);
    column->addWidget(m_limits);
    fitTiles(false);
}

void OverviewTab::setLimits(const std::vector<LimitCourse> &courses, bool areAwaited,
                            const Calendar &calendar, Instant now) {
    const bool isShown = areAwaited || !courses.empty();
    if (isShown)
        m_limits->setCourses(courses, calendar, now);
    if (m_limits->isHidden() != isShown)
        return;
    auto *column = static_cast<QVBoxLayout *>(layout());
    column->setStretchFactor(m_activity, isShown ? 0 : 1);
    column->setStretchFactor(m_limits, isShown ? 1 : 0);
    fitTiles(isShown);
    // Last, because it makes Qt lay out the whole window at once.
    m_limits->setVisible(isShown);
}

void OverviewTab::setDense(bool dense) {
    m_dense = dense;
    fitTiles(!m_limits->isHidden());
}

void OverviewTab::fitTiles(bool besideLimits) {
    const int height = besideLimits ? (m_dense ? 56 : 76) : (m_dense ? 64 : 92);
    for (StatTile *tile : m_tiles)
        tile->setFixedHeight(height);
}

void OverviewTab::setValues(const UsageFigures &usage, LocalDay today, std::optional<LocalDay> first) {
    const auto figures = statFigures(usage.historicalData, shownCost(usage));
    for (std::size_t i = 0; i < figures.size(); ++i) {
        m_tiles[i]->setValue(textOf(figures[i].value));
        if (figures[i].label == sessionCostLabel)
            m_tiles[i]->setNote(textOf(sessionCostNote(usage)));
    }
    m_heatmap->setActivity(usage.historicalData.dailyActivity, today, first);
}

QSize OverviewTab::sizeHint() const {
    const int fromLimits = m_limits->isHidden() ? 0 : m_notes->sizeHint().height();
    return QWidget::sizeHint() - QSize(0, fromLimits);
}

void OverviewTab::addNote(QWidget *note) {
    m_notes->insertWidget(m_notes->count() - 1, note);
}

ModelsTab::ModelsTab()
    : m_noData(new PanelCard)
    , m_models(new PanelCard)
    , m_chartCard(new PanelCard)
    , m_chart(new ModelBarChartView) {
    m_noData->content()->addWidget(
        new TextLabel(QStringLiteral("No model data yet"), TextStyle::body, QPalette::PlaceholderText), 0,
        Qt::AlignCenter);

    auto *rows = new QWidget;
    m_rowColumn = new QVBoxLayout(rows);
    m_rowColumn->setContentsMargins(0, 0, cardPadding, 0);
    m_rowColumn->setSpacing(14);
    m_rowColumn->addStretch();
    m_rowsArea = new RowsArea(rows);
    QHBoxLayout *heads = modelHeads();
    heads->setContentsMargins(0, 0, cardPadding, 0);
    m_models->content()->addLayout(heads);
    m_models->content()->addWidget(m_rowsArea);

    m_chartCard->content()->addWidget(sectionTitle("Tokens per day"));
    m_chartCard->content()->addWidget(m_chart, 1);

    QVBoxLayout *column = columnOf(this);
    column->addWidget(m_noData, 1);
    column->addWidget(m_models);
    column->addWidget(m_chartCard, 1);
    setDense(false);
}

void ModelsTab::setDense(bool dense) {
    m_rowsArea->setTallest(dense ? 192 : 336);
    // The scroll bar lies over the padding.
    QMargins padding = m_models->content()->contentsMargins();
    padding.setRight(0);
    m_models->content()->setContentsMargins(padding);
}

void ModelsTab::setValues(const HistoricalData &history, const std::vector<ModelUsage> &usage,
                          LocalDay today) {
    // A limit for logs with thousands of names, whose rows would block the window.
    constexpr std::size_t mostRows = 1000;
    const std::span stats(history.modelStats.begin(), std::min(history.modelStats.size(), mostRows));
    while (m_rows.size() > stats.size()) {
        delete m_rows.back();
        m_rows.pop_back();
    }
    while (m_rows.size() < stats.size()) {
        m_rows.push_back(new ModelStatRowView);
        m_rowColumn->insertWidget(m_rowColumn->count() - 1, m_rows.back());
    }
    for (std::size_t i = 0; i < stats.size(); ++i)
        m_rows[i]->setStat(stats[i], costOf(stats[i].name, usage));
    m_chart->setActivity(history.dailyActivity, today);

    m_noData->setVisible(stats.empty());
    m_models->setVisible(!stats.empty());
    m_chartCard->setVisible(!stats.empty());
}

} // namespace burnwick
