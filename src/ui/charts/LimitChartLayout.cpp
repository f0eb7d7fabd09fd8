// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/LimitChartLayout.h"

#include "display/DisplayFormat.h"
#include "ui/text/Text.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <utility>

namespace burnwick {

namespace {

using std::chrono::minutes;
using std::chrono::nanoseconds;

constexpr double axisWidth = 38; // the least
constexpr double axisGap = 8;    // between the percents and the plot
constexpr double rightInset = 18;
constexpr double bottomInset = 19;
constexpr double tickLabelCentre = 13; // below the plot
constexpr double markGap = 3.5;        // between the plot and the labels above it
constexpr double labelSpacing = 6;
constexpr double overhang = 2; // of a label that ends at its line
constexpr QSizeF waitPadding{5, 4};

/// The longest time between two samples of a running program: one sample a quarter of an hour, and the
/// request after that.
constexpr minutes longestStep{20};

/// Whether there is a plausible reset, not more than a year ago.
bool hasWindow(const Limit &limit, Instant now) {
    return limit.resetsAt && isPlausibleReset(*limit.resetsAt, limit.kind, now) &&
           *limit.resetsAt > now - std::chrono::hours(366 * 24);
}

QRectF centredAt(QPointF centre, QSizeF size) {
    return {centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(), size.height()};
}

/// Lays out the curves of a window.
class Curves {
public:
    Curves(LimitChartLayout &layout, const LimitCourse &course, const Forecast &forecast, Instant now)
        : m_layout(layout)
        , m_course(course)
        , m_forecast(forecast)
        , m_now(now) {}

    void place() {
        m_layout.evenPace = QLineF(m_layout.plot.bottomLeft(), m_layout.plot.topRight());
        placeMeasured();
        if (isOver())
            m_layout.wait = QRectF(pointOf(*m_forecast.fullAt, 100), m_layout.plot.bottomRight());
        if (m_forecast.atReset && m_forecast.state != Forecast::State::full)
            placeForecast(*m_forecast.atReset);
    }

    [[nodiscard]] double xOf(Instant instant) const {
        const auto since = std::clamp(instant - m_layout.start, nanoseconds(0), m_layout.length);
        return m_layout.plot.left() + m_layout.plot.width() * std::chrono::duration<double>(since).count() /
                                          std::chrono::duration<double>(m_layout.length).count();
    }

private:
    /// Whether the limit is full so long before the reset that the words say it.
    [[nodiscard]] bool isOver() const { return m_layout.tone == LimitWords::Tone::over && m_forecast.fullAt; }
    [[nodiscard]] Instant end() const { return m_layout.start + m_layout.length; }

    [[nodiscard]] QPointF pointOf(Instant instant, double percent) const {
        return {xOf(instant),
                m_layout.plot.bottom() - m_layout.plot.height() * std::clamp(percent, 0.0, 100.0) / 100};
    }

    /// The samples as the forecast understands them: never falling, except once after an early reset.
    [[nodiscard]] std::vector<LimitSample> risingSamples() const {
        std::vector<LimitSample> samples;
        for (const LimitSample &sample : m_course.samples) {
            if (sample.at >= m_layout.start && sample.at <= m_now && sample.percent >= 0 &&
                (samples.empty() || sample.at >= samples.back().at))
                samples.push_back(sample);
        }
        const auto peak = std::ranges::max_element(samples, {}, &LimitSample::percent);
        const bool wasReset = peak != samples.end() && isEarlyReset(peak->percent, samples.back().percent);
        const auto raise = [](auto from, auto to) {
            for (double highest = 0; from != to; ++from)
                from->percent = highest = std::max(highest, from->percent);
        };
        raise(samples.begin(), wasReset ? peak + 1 : samples.end());
        if (wasReset)
            raise(peak + 1, samples.end());
        return samples;
    }

    void placeMeasured() {
        const bool isCurrent =
            m_forecast.state != Forecast::State::stale && m_forecast.state != Forecast::State::waiting;
        std::vector<LimitSample> samples = risingSamples();
        if (isCurrent && !samples.empty() && samples.back().at < m_now)
            samples.push_back({m_now, m_forecast.percent});
        for (std::size_t i = 0; i < samples.size(); ++i) {
            const QPointF point = pointOf(samples[i].at, samples[i].percent);
            if (i == 0 || samples[i].at - samples[i - 1].at > longestStep)
                m_layout.measured.emplace_back();
            QPolygonF &run = m_layout.measured.back();
            // A point that differs by less than the eye can see would only cost time.
            constexpr double visible = 1;
            if (run.size() >= 2 && point.x() - run[run.size() - 2].x() < visible)
                run.removeLast();
            run << point;
        }
    }

    void placeForecast(const Forecast::Range &range) {
        const QPointF from = pointOf(m_now, m_forecast.percent);
        const auto toEdge = [&](double percent, const std::optional<Instant> &full) {
            return full ? pointOf(*full, 100) : pointOf(end(), percent);
        };
        const QPointF to = toEdge(range.middle, isOver() ? m_forecast.fullAt : std::nullopt);
        m_layout.forecast = QLineF(from, to);
        if (m_forecast.state == Forecast::State::quiet)
            return;
        // When the middle is full, no percent follows, and the band ends.
        const QPointF upper = toEdge(range.high, m_forecast.earliestFullAt);
        const QLineF lower(from, pointOf(end(), range.low));
        m_layout.band << from << upper;
        if (upper.x() < to.x())
            m_layout.band << QPointF(to.x(), upper.y());
        m_layout.band << lower.pointAt(lower.dx() > 0 ? (to.x() - from.x()) / lower.dx() : 1);
    }

    LimitChartLayout &m_layout;
    const LimitCourse &m_course;
    const Forecast &m_forecast;
    Instant m_now;
};

void placeGuideLines(LimitChartLayout &layout, double lineHeight) {
    using Kind = LimitChartLayout::GuideLine::Kind;
    for (const auto &[percent, kind] :
         {std::pair(0, Kind::faint), {50, Kind::faint}, {80, Kind::threshold}, {100, Kind::full}}) {
        const double y = layout.plot.bottom() - layout.plot.height() * percent / 100;
        layout.guideLines.push_back({y,
                                     kind,
                                     textOf(percentText(percent)),
                                     {0, y - lineHeight / 2, layout.plot.left() - axisGap, lineHeight}});
    }
}

/// Full hours; in windows of seven days the midnights.
void placeTicks(LimitChartLayout &layout, const Calendar &calendar, const Curves &curves, double width,
                const QFontMetricsF &font) {
    // Zones differ by multiples of a quarter of an hour. A reset may be a little before the full hour.
    constexpr minutes quarter(15);
    constexpr minutes tolerance(1);
    Calendar::Cursor cursor(calendar);
    const Instant last = layout.start + layout.length + tolerance;
    double labelsEnd = -labelSpacing;
    for (Instant at =
             std::chrono::ceil<std::chrono::duration<int, std::ratio<900>>>(layout.start - tolerance);
         at <= last; at += quarter) {
        const auto local = cursor.localTimeOf(at);
        const bool isSession = layout.kind == Limit::Kind::session;
        if (isSession ? std::chrono::floor<std::chrono::hours>(local) != local
                      : std::chrono::floor<std::chrono::days>(local) != local)
            continue;
        QString label = textOf(limitTimeText(layout.kind, at, calendar));
        if (!isSession) {
            const std::chrono::year_month_day day(calendar.dayOf(at));
            label = label.section(QLatin1Char(' '), 0, 0) + QLatin1Char(' ') +
                    QString::number(static_cast<unsigned>(day.day()));
        }
        const double x = curves.xOf(at);
        QRectF rect = centredAt({x, layout.plot.bottom() + tickLabelCentre},
                                {font.horizontalAdvance(label), font.height()});
        rect.moveLeft(std::clamp(rect.left(), 0.0, std::max(0.0, width - rect.width())));
        if (rect.left() < labelsEnd + labelSpacing)
            label.clear();
        else
            labelsEnd = rect.right();
        layout.ticks.push_back({x, label, rect});
    }
}

/// Places the labels above the plot so that they stay inside and apart.
void placeMarks(LimitChartLayout &layout, double width, const QFontMetricsF &marks) {
    const auto place = [&](LimitChartLayout::Mark &mark) {
        mark.labelRect = {mark.x - marks.horizontalAdvance(mark.label) / 2,
                          layout.plot.top() - markGap - marks.height(), marks.horizontalAdvance(mark.label),
                          marks.height()};
        mark.labelRect.moveLeft(
            std::clamp(mark.labelRect.left(), 0.0, std::max(0.0, width - mark.labelRect.width())));
    };
    if (layout.now)
        place(*layout.now);
    if (layout.full)
        place(*layout.full);
    if (!layout.now || !layout.full)
        return;
    const bool nowIsLeft = layout.now->x <= layout.full->x;
    QRectF &left = (nowIsLeft ? layout.now : layout.full)->labelRect;
    QRectF &right = (nowIsLeft ? layout.full : layout.now)->labelRect;
    const auto areApart = [&] { return left.right() + labelSpacing <= right.left(); };
    if (areApart())
        return;
    if (nowIsLeft)
        left.moveRight(std::min(left.right(), layout.now->x + overhang));
    else
        right.moveLeft(std::max(right.left(), layout.now->x - overhang));
    if (!areApart())
        right.moveLeft(left.right() + labelSpacing);
    if (right.right() > width) {
        right.moveRight(width);
        left.moveRight(std::min(left.right(), right.left() - labelSpacing));
    }
}

void placeWaitLabel(LimitChartLayout &layout, QString text, const QFontMetricsF &font) {
    // In the part to come, if that has the room.
    QRectF room = layout.wait;
    if (layout.now && layout.now->x > room.left())
        room.setLeft(layout.now->x);
    const QSizeF size = QSizeF(font.horizontalAdvance(text), font.height()) + 2 * waitPadding;
    if (size.width() + 2 * labelSpacing > room.width())
        room = layout.wait;
    if (size.width() + 2 * labelSpacing > room.width())
        return;
    layout.waitLabel = {room.center().x(), std::move(text), centredAt(room.center(), size)};
}

} // namespace

std::optional<double> evenPaceOf(const Limit &limit, Instant now) {
    if (!hasWindow(limit, now) || *limit.resetsAt <= now)
        return std::nullopt;
    const std::chrono::duration<double> left = *limit.resetsAt - now;
    return std::clamp(100 * (1 - left / windowLengthOf(limit.kind)), 0.0, 100.0);
}

LimitChartLayout layoutLimitChart(const LimitCourse &course, const Forecast &forecast,
                                  const Calendar &calendar, Instant now, QSizeF size,
                                  const LimitChartFonts &fonts) {
    const QFontMetricsF font(fonts.axis);
    LimitChartLayout layout;
    const double left =
        std::max(axisWidth, std::ceil(font.horizontalAdvance(textOf(percentText(100)))) + axisGap);
    layout.plot = {left, limitPlotTop, std::max(1.0, size.width() - left - rightInset),
                   std::max(1.0, size.height() - limitPlotTop - bottomInset)};
    placeGuideLines(layout, font.height());
    const Limit &limit = course.limit;
    if (!hasWindow(limit, now))
        return layout;

    layout.kind = limit.kind;
    layout.length = windowLengthOf(limit.kind);
    layout.start = *limit.resetsAt - layout.length;
    layout.calendar = calendar;
    Curves curves(layout, course, forecast, now);
    placeTicks(layout, calendar, curves, size.width(), font);
    if (forecast.state == Forecast::State::waiting || now >= *limit.resetsAt)
        return layout;

    layout.tone = limitWords(course, forecast, calendar, now).tone;
    curves.place();
    layout.now = {
        curves.xOf(now), QStringLiteral("Now ") + textOf(limitTimeText(limit.kind, now, calendar)), {}};
    if (!layout.wait.isEmpty()) {
        const bool isFull = forecast.state == Forecast::State::full;
        const Instant fullAt = isFull ? *forecast.fullAt : roundedTime(limit.kind, *forecast.fullAt);
        layout.full = {layout.wait.left(), textOf(limitTimeText(limit.kind, fullAt, calendar)), {}};
        placeWaitLabel(layout,
                       textOf(timeRemainingText(*limit.resetsAt, isFull ? now : fullAt)) +
                           QLatin1String(" to wait"),
                       QFontMetricsF(fonts.note));
    }
    placeMarks(layout, size.width(), QFontMetricsF(fonts.mark));
    return layout;
}

} // namespace burnwick
