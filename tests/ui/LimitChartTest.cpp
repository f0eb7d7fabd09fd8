// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/LimitCourses.h"
#include "support/PictureOf.h"
#include "ui/charts/LimitChartView.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QToolTip>

#include <limits>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using State = Forecast::State;
using Tone = LimitWords::Tone;
using Kind = Limit::Kind;
using test::courseThrough;

const Instant now = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + 12h + 55min;
const Instant reset = now + 125min;
const Calendar utc = Calendar::inZone("UTC");
constexpr QSize wholeSize(504, 176);

LimitChartFonts fonts() {
    return {fontOf(TextStyle::small), fontOf(TextStyle::smallStrong), fontOf(TextStyle::captionStrong)};
}

LimitChartLayout layoutOf(const LimitCourse &course, const Forecast &forecast, QSizeF size = wholeSize) {
    return layoutLimitChart(course, forecast, utc, now, size, fonts());
}

/// From 0 % at 10:00 to 67 % at 12:55.
LimitCourse calmCourse() {
    return courseThrough(Kind::session, reset, {{0min, 0}, {175min, 67}});
}

Forecast calmForecast() {
    return {State::expected, now, 67, 67, Forecast::Range{84, 92, 98}};
}

Forecast nearForecast() {
    return {State::expected, now, 67, 67, Forecast::Range{67, 90, 100}, {}, now + 60min};
}

Forecast fullForecast(Instant fullAt) {
    return {State::expected, now, 67, 67, Forecast::Range{90, 100, 100}, fullAt, now + (fullAt - now) / 2};
}

TEST(LimitChartLayoutTest, EachStateHasItsParts) {
    struct Row {
        const char *what;
        LimitCourse course;
        Forecast forecast;
        std::string parts;
    };
    const LimitCourse calm = calmCourse();
    LimitCourse noWindow;
    LimitCourse past = calm;
    past.limit.resetsAt = now - 1s;
    LimitCourse future = calm;
    future.limit.resetsAt = Instant::max();
    LimitCourse ancient = calm;
    ancient.limit.resetsAt = Instant::min();
    LimitCourse gap = courseThrough(Kind::session, reset, {{40min, 10}, {60min, 20}});
    gap.samples.push_back({now - 60min, 40});
    gap.samples.push_back({now - 45min, 41}); // a quarter of an hour later
    const Forecast full{State::full, now, 101, 100, Forecast::Range{100, 100, 100}, now - 9min, now - 9min};
    const Row rows[] = {
        {"calm", calm, calmForecast(), "pace now 1 band forecast"},
        {"near", calm, nearForecast(), "near pace now 1 band forecast"},
        {"urgent", calm, fullForecast(now + 25min), "over pace now 1 band forecast full wait"},
        {"full too late for words", calm, fullForecast(reset - 1min), "near pace now 1 band forecast"},
        {"collecting", calm, {State::collecting, now, 67, 67}, "pace now 1"},
        {"unmeasured", courseThrough(Kind::session, reset, {}), {}, "pace now"},
        {"quiet", calm, {State::quiet, now, 67, 67, Forecast::Range{67, 67, 67}}, "pace now 1 forecast"},
        {"full", calm, full, "over pace now 1 full wait"},
        {"stale", calm, {State::stale, now, 67, 67}, "pace now 1"},
        {"gap", gap, {State::stale, now, 41, 41}, "pace now 2"},
        {"waiting", past, {State::waiting, now - 1h, 67, 67}, ""},
        {"no window", noWindow, {}, ""},
        {"a reset too far", future, {}, ""},
        {"a reset too long ago", ancient, {State::waiting}, ""},
    };
    for (const Row &row : rows) {
        const LimitChartLayout layout = layoutOf(row.course, row.forecast);
        QStringList parts;
        const auto add = [&parts](bool has, const char *name) {
            if (has)
                parts << QLatin1String(name);
        };
        add(layout.tone == Tone::near, "near");
        add(layout.tone == Tone::over, "over");
        add(layout.evenPace.has_value(), "pace");
        add(layout.now.has_value(), "now");
        if (!layout.measured.empty())
            parts << QString::number(layout.measured.size());
        add(!layout.band.isEmpty(), "band");
        add(layout.forecast.has_value(), "forecast");
        add(layout.full.has_value(), "full");
        add(!layout.wait.isEmpty(), "wait");
        EXPECT_EQ(parts.join(u' ').toStdString(), row.parts) << row.what;
        EXPECT_EQ(layout.guideLines.size(), 4U) << row.what;
    }
}

TEST(LimitChartLayoutTest, PlacesPercentsAndTimes) {
    LimitCourse course = calmCourse();
    course.samples.insert(course.samples.begin(), {now - 300min, 90}); // of the window before
    course.samples.push_back({now + 5min, 70});                        // the clock jumped
    const LimitChartLayout layout = layoutOf(course, calmForecast());
    EXPECT_EQ(layout.plot, QRectF(38, 15, 448, 142));
    const auto yOf = [&](double percent) { return 157 - 1.42 * percent; };
    EXPECT_EQ(layout.measured[0].front(), QPointF(38, 157));
    EXPECT_NEAR(layout.now->x, 38 + 448 * 175 / 300., 0.01);
    EXPECT_EQ(layout.measured[0].back(), QPointF(layout.now->x, yOf(67)));
    EXPECT_EQ(layout.forecast->p1(), layout.measured[0].back());
    EXPECT_EQ(layout.forecast->p2(), QPointF(486, yOf(92)));
    EXPECT_EQ(layout.band.back(), QPointF(486, yOf(84)));
    EXPECT_EQ(layout.guideLines[2].label, QStringLiteral("80%"));
    EXPECT_NEAR(layout.guideLines[2].y, yOf(80), 0.01);

    const auto ticksOf = [](const LimitChartLayout &chart) {
        QStringList labels;
        for (const LimitChartLayout::Mark &tick : chart.ticks)
            labels << tick.label;
        return labels.join(u'|').toStdString();
    };
    EXPECT_EQ(ticksOf(layout), "10:00|11:00|12:00|13:00|14:00|15:00");
    course.limit.resetsAt = reset - 1ms; // as the service rounds it
    EXPECT_EQ(ticksOf(layoutOf(course, calmForecast())), "10:00|11:00|12:00|13:00|14:00|15:00");
    const LimitCourse weekly = courseThrough(Kind::weekly, now + 86h, {{0min, 0}, {82h, 31}}, 15min);
    EXPECT_EQ(
        ticksOf(layoutLimitChart(weekly, {}, Calendar::inZone("Asia/Kathmandu"), now, wholeSize, fonts())),
        "Thu 19|Fri 20|Sat 21|Sun 22|Mon 23|Tue 24|Wed 25");
}

TEST(LimitChartLayoutTest, ReadsEachTime) {
    LimitCourse gap = courseThrough(Kind::session, reset, {{60min, 20}, {80min, 40}});
    gap.samples.push_back({now - 55min, 46});
    gap.samples.push_back({now - 45min, 50});
    gap.samples.push_back({now - 30min, 50});
    gap.samples.push_back({now - 15min, 50});
    const LimitChartLayout calm = layoutOf(calmCourse(), calmForecast());
    const LimitChartLayout gapped = layoutOf(gap, {State::collecting, now, 50, 50});
    const LimitChartLayout urgent = layoutOf(calmCourse(), fullForecast(now + 25min));
    const LimitChartLayout weekly = layoutOf(
        courseThrough(Kind::weekly, now + 86h, {{0min, 0}, {82h, 41}}, 15min), {State::stale, now, 41, 41});
    const std::tuple<const LimitChartLayout *, double, const char *> rows[] = {
        {&calm, 10, "10:00: 0%"},
        {&calm, 11 + 2 / 3., "11:40: 38%"},
        {&calm, 14, "14:00: about 80%"},
        {&calm, 15, "15:00: about 92%"},
        {&gapped, 10.9, ""},
        {&gapped, 11.25, "11:15: 35%"},
        {&gapped, 11 + 2 / 3., "11:40: about 43%"},
        {&gapped, 12 + 55 / 60., "12:55: 50%"},
        {&gapped, 13, ""},
        {&urgent, 13, "13:00: about 74%"},
        {&urgent, 14, "14:00: about 100%"},
        {&weekly, 12.5, "Sat 00:25: 35%"},
    };
    for (const auto &[layout, hour, text] : rows) {
        const double hours = layout == &weekly ? 168. : 5.;
        const double since = layout == &weekly ? hour + 57 + 7 / 60. : hour - 10;
        const auto step = layout->stepAt({38 + 448 * since / hours, 80});
        EXPECT_EQ(step ? layout->readingAt(*step)->text.toStdString() : "", text) << hour;
    }
    EXPECT_FALSE(calm.stepAt({200, 5})) << "above the plot";
    EXPECT_FALSE(layoutOf({}, {}).stepAt({200, 80}));
}

TEST(LimitChartLayoutTest, LabelsStayInsideAndApart) {
    for (const int width : {240, 504}) {
        for (int minute = 10; minute < 120; ++minute) {
            for (const int ago : {0, 10, 120}) {
                SCOPED_TRACE(testing::Message()
                             << width << " wide, full at " << minute << ", " << ago << " ago");
                const Instant at = reset - 120min + std::chrono::minutes(minute);
                const Instant present = ago == 0 ? now : at + std::chrono::minutes(ago);
                Forecast forecast = fullForecast(at);
                if (ago > 0)
                    forecast = {State::full, at, 100, 100, Forecast::Range{100, 100, 100}, at, at};
                const LimitChartLayout layout =
                    layoutLimitChart(calmCourse(), forecast, utc, present, QSizeF(width, 176), fonts());
                std::vector<QRectF> labels{layout.now->labelRect};
                if (layout.full)
                    labels.push_back(layout.full->labelRect);
                for (const LimitChartLayout::Mark &tick : layout.ticks) {
                    if (!tick.label.isEmpty())
                        labels.push_back(tick.labelRect);
                }
                for (std::size_t i = 0; i < labels.size(); ++i) {
                    EXPECT_GE(labels[i].left(), 0);
                    EXPECT_LE(labels[i].right(), width + 0.01);
                    for (std::size_t j = 0; j < i; ++j)
                        EXPECT_FALSE(labels[i].adjusted(-2, 0, 2, 0).intersects(labels[j]));
                }
                EXPECT_TRUE(layout.waitLabel.label.isEmpty() ||
                            layout.wait.contains(layout.waitLabel.labelRect));
            }
        }
    }
}

TEST(LimitChartLayoutTest, ImplausibleSamplesStayOutOrInside) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    LimitCourse course = calmCourse();
    const auto runsWith = [&](const std::vector<LimitSample> &samples) {
        course.samples = samples;
        return layoutOf(course, {State::stale, now, 60, 60}).measured;
    };
    EXPECT_EQ(runsWith({{now - 10min, nan}, {now - 5min, -3}}).size(), 0U);
    const auto above = runsWith({{now - 10min, 50}, {now - 5min, 250}});
    EXPECT_EQ(above[0].back().y(), 15);
    const auto fallen = runsWith({{now - 15min, 50}, {now - 10min, 40}, {now - 5min, 60}});
    EXPECT_EQ(fallen[0][1].y(), fallen[0][0].y()) << "an old figure that came late";
    const auto afterReset = runsWith({{now - 15min, 50}, {now - 10min, 4}, {now - 5min, 6}});
    EXPECT_GT(afterReset[0][1].y(), afterReset[0][0].y());

    course = courseThrough(Kind::session, reset, {{0min, 0}, {170min, 60}}, 1min);
    for (std::size_t i = 0; i < 2'000; ++i)
        course.samples.push_back({now - 2s + i * 1us, 60});
    EXPECT_LT(layoutOf(course, {State::stale, now, 60, 60}).measured[0].size(), 500) << "points on one pixel";
}

TEST(LimitChartViewTest, PaintsUseForecastAndTheTimeWhenItIsFull) {
    LimitChartView view;
    view.resize(wholeSize);
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        view.setPalette(paletteOf(scheme));
        const ThemeColors &colors = colorsOf(scheme);
        for (const double scale : {1.0, 2.0}) {
            SCOPED_TRACE(scale);
            const auto countOf = [&](const QColor &color, QRect area) {
                const QImage picture = test::pictureOf(view, scale);
                area = {area.topLeft() * scale, area.size() * scale};
                int count = 0;
                for (int y = area.top(); y <= area.bottom(); ++y)
                    for (int x = area.left(); x <= area.right(); ++x)
                        count += picture.pixel(x, y) == color.rgb();
                return count;
            };
            const QRect left(60, 20, 200, 130);
            const QRect right(340, 20, 140, 130);
            view.setCourse(calmCourse(), calmForecast(), utc, now);
            EXPECT_GT(countOf(colors.accent, left), 100 * scale * scale) << "measured";
            EXPECT_GT(countOf(colors.accent, right), 20 * scale * scale) << "forecast";
            EXPECT_EQ(countOf(colors.over, right), 0);
            EXPECT_GT(countOf(colors.card, right), 5'000 * scale * scale);
            view.setCourse(calmCourse(), nearForecast(), utc, now);
            EXPECT_GT(countOf(colors.near, right), 20 * scale * scale);
            view.setCourse(calmCourse(), fullForecast(now + 25min), utc, now);
            EXPECT_LT(countOf(colors.card, right), 3'000 * scale * scale) << "hatched, but for the label";
            EXPECT_GT(countOf(colors.over, QRect(300, 10, 50, 60)), 10 * scale * scale);
        }
    }
}

TEST(LimitChartViewTest, PointerAndKeyboardReadTheChart) {
    LimitChartView view;
    view.resize(wholeSize);
    view.setCourse(calmCourse(), calmForecast(), utc, now);
    view.show();
    view.activateWindow();
    view.setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    QTest::mouseMove(&view, {38 + 448 / 5, 80});
    EXPECT_EQ(QToolTip::text(), QStringLiteral("11:00: 23%"));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view, &leave);
    EXPECT_EQ(view.accessibleName(), QStringLiteral("Session limit"));
    const auto press = [&view](Qt::Key key) {
        QTest::keyClick(&view, key);
        return QToolTip::text().toStdString();
    };
    EXPECT_EQ(press(Qt::Key_Left), "12:55: 67%") << "begins at the present";
    EXPECT_EQ(press(Qt::Key_Right), "12:56: about 67%");
    EXPECT_EQ(press(Qt::Key_Left), "12:55: 67%");
    EXPECT_EQ(press(Qt::Key_End), "15:00: about 92%");
    EXPECT_EQ(press(Qt::Key_Home), "10:00: 0%");
    EXPECT_EQ(view.accessibleName(), QStringLiteral("Session limit, 10:00: 0%"));
    view.setCourse(courseThrough(Kind::session, reset, {{10min, 5}, {175min, 67}}), calmForecast(), utc, now);
    EXPECT_EQ(view.accessibleName(), QStringLiteral("Session limit")) << "nothing was measured at that time";
    EXPECT_EQ(press(Qt::Key_Home), "10:10: 5%");
    view.clearFocus();
    EXPECT_EQ(view.accessibleName(), QStringLiteral("Session limit"));
}

} // namespace
} // namespace burnwick
