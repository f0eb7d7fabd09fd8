// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/LimitChartView.h"

#include "ui/charts/LimitChartPainter.h"
#include "ui/text/Text.h"
#include "ui/theme/TextStyle.h"

#include <QKeyEvent>
#include <QPainter>

namespace burnwick {

namespace {

constexpr QSize preferredSize(504, 176);
constexpr QSize smallestSize(240, 80);

} // namespace

LimitChartView::LimitChartView() {
    setFont(fontOf(TextStyle::small));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::TabFocus);
}

QSize LimitChartView::sizeHint() const {
    return preferredSize;
}

QSize LimitChartView::minimumSizeHint() const {
    return smallestSize;
}

void LimitChartView::setCourse(const LimitCourse &course, const Forecast &forecast, const Calendar &calendar,
                               Instant now) {
    m_shown = Shown{course, forecast, calendar, now};
    layOut();
    nameChart();
}

void LimitChartView::layOut() {
    if (!m_shown)
        return;
    m_layout = layoutLimitChart(m_shown->course, m_shown->forecast, m_shown->calendar, m_shown->now, size(),
                                fonts());
    partsChanged();
}

LimitChartFonts LimitChartView::fonts() const {
    return {font(), fontOf(TextStyle::smallStrong).resolve(font()),
            fontOf(TextStyle::captionStrong).resolve(font())};
}

/// The name contains what the keyboard reads, because screen readers announce names that change.
void LimitChartView::nameChart() {
    const QString limit = textOf(limitName(m_shown->course.limit)) + QLatin1String(" limit");
    const auto read = hasFocus() ? pointedPart() : std::nullopt;
    setAccessibleName(read ? limit + QLatin1String(", ") + tipOf(*read) : limit);
}

std::optional<std::size_t> LimitChartView::partAt(QPointF point) const {
    return m_layout.stepAt(point);
}

QRect LimitChartView::zoneOf(std::size_t part) const {
    constexpr int margin = 6; // of the point
    const int x = qRound(m_layout.xOf(part));
    const QRect plot = m_layout.plot.toAlignedRect();
    return {x - margin, plot.top() - margin, 2 * margin, plot.height() + 2 * margin};
}

QString LimitChartView::tipOf(std::size_t part) const {
    const auto reading = m_layout.readingAt(part);
    return reading ? reading->text : QString();
}

/// Returns the next time in that direction that can be read, or the same one at the end; without one the
/// present, or the first.
std::optional<std::size_t> LimitChartView::nextStep(std::optional<std::size_t> from, int direction) const {
    const std::size_t count = m_layout.stepCount();
    if (!from) {
        const double x = m_layout.now ? m_layout.now->x : m_layout.plot.left();
        for (const double place : {x, m_layout.plot.left()}) {
            if (const auto step = m_layout.stepAt({place, m_layout.plot.center().y()}))
                return step;
        }
        return nextStep(0, 1);
    }
    for (std::size_t step = *from + static_cast<std::size_t>(direction); step < count;
         step += static_cast<std::size_t>(direction)) {
        if (m_layout.readingAt(step))
            return step;
    }
    return from;
}

void LimitChartView::keyPressEvent(QKeyEvent *event) {
    const std::size_t count = m_layout.stepCount();
    std::optional<std::size_t> step;
    switch (event->key()) {
    case Qt::Key_Left:
        step = nextStep(pointedPart(), -1);
        break;
    case Qt::Key_Right:
        step = nextStep(pointedPart(), 1);
        break;
    case Qt::Key_Home:
        step = m_layout.readingAt(0) ? 0 : nextStep(0, 1);
        break;
    case Qt::Key_End:
        step = nextStep(count, -1);
        break;
    default:
        PointableChart::keyPressEvent(event);
        return;
    }
    if (step && m_layout.readingAt(*step))
        point(step);
    nameChart();
}

void LimitChartView::focusOutEvent(QFocusEvent *event) {
    PointableChart::focusOutEvent(event);
    point(std::nullopt);
    if (m_shown)
        nameChart();
}

void LimitChartView::resizeEvent(QResizeEvent *event) {
    PointableChart::resizeEvent(event);
    layOut();
}

void LimitChartView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const auto pointed = pointedPart();
    paintLimitChart(painter, m_layout, fonts(), colorsFor(*this),
                    pointed ? m_layout.readingAt(*pointed) : std::nullopt);
}

} // namespace burnwick
