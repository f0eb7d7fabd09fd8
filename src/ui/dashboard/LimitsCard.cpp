// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/LimitsCard.h"

#include "display/DisplayFormat.h"
#include "display/LimitText.h"
#include "ui/charts/LimitChartView.h"
#include "ui/charts/LimitKey.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/controls/FlatButton.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/WrappedText.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace burnwick {

namespace {

constexpr int headerHeight = 22;
constexpr int chartWidth = 504;
constexpr int wordsWidth = 204;
constexpr int columnGap = 20;
constexpr int chipsWidth = 640; ///< the most of all chips
constexpr int chipSpacing = 2;
constexpr int chipPadding = 9;
/// More would have no room for their letters; the status item's tool tip has all limits.
constexpr std::size_t mostChips = 8;

FlatButton *makeChip() {
    auto *chip = new FlatButton({}, {.text = TextStyle::caption,
                                     .chosenText = TextStyle::captionStrong,
                                     .padding = {chipPadding, 0},
                                     .radius = 6,
                                     .hovered = &ThemeColors::hover,
                                     .chosen = &ThemeColors::selected,
                                     .restingText = &ThemeColors::secondary});
    chip->setFixedHeight(headerHeight);
    chip->setCheckable(true);
    chip->setAutoExclusive(true); // makes it a radio button for assistive technology
    return chip;
}

/// Shows the names, of which it elides the longest if there is too little room for all.
void nameChips(const QList<QAbstractButton *> &chips, const QStringList &names) {
    const QFontMetrics font(fontOf(TextStyle::captionStrong).resolve(chips.front()->font()));
    std::vector<int> widths;
    for (const QString &name : names)
        widths.push_back(font.horizontalAdvance(name));
    std::ranges::sort(widths);
    const int count = static_cast<int>(widths.size());
    int room = chipsWidth - count * 2 * chipPadding - (count - 1) * chipSpacing;
    int widest = room; // of those that need no more than their share of the remaining room
    for (int i = 0; i < count; ++i) {
        widest = room / (count - i);
        if (widths[static_cast<std::size_t>(i)] > widest)
            break;
        room -= widths[static_cast<std::size_t>(i)];
        widest = chipsWidth;
    }
    for (int i = 0; i < count; ++i) {
        QAbstractButton &chip = *chips[i];
        QString shown = font.elidedText(names[i], Qt::ElideMiddle, widest);
        setPlainToolTip(chip, shown == names[i] ? QString() : names[i]);
        shown.replace(QLatin1Char('&'), QLatin1String("&&")); // no accelerators
        chip.setAccessibleName(names[i]);
        if (chip.text() == shown)
            continue;
        chip.setText(shown);
        chip.updateGeometry();
    }
}

QColor ThemeColors::*textColorOf(LimitWords::Tone tone) {
    switch (tone) {
    case LimitWords::Tone::over:
        return &ThemeColors::overText;
    case LimitWords::Tone::near:
        return &ThemeColors::nearText;
    case LimitWords::Tone::calm:
        break;
    }
    return &ThemeColors::text;
}

} // namespace

LimitsCard::LimitsCard()
    : m_chips(new QWidget)
    , m_group(new QButtonGroup(this))
    , m_chart(new LimitChartView)
    , m_words(makeWords()) {
    hide();
    setAccessibleRole(*this, QAccessible::Grouping);
    auto *chipLine = new QHBoxLayout(m_chips);
    chipLine->setContentsMargins({});
    chipLine->setSpacing(chipSpacing);
    for (std::size_t i = 0; i < mostChips; ++i) {
        FlatButton *chip = makeChip();
        m_group->addButton(chip, static_cast<int>(i));
        chipLine->addWidget(chip);
    }
    chipLine->addStretch();
    m_group->button(0)->setChecked(true);
    stopAtChosen(*m_group);
    connect(m_group, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
        if (isChosen)
            choose(static_cast<std::size_t>(index));
    });
    m_chips->setFixedHeight(headerHeight);
    setAccessibleRole(*m_chips, QAccessible::Grouping);
    m_chips->setAccessibleName(QStringLiteral("Shown limit"));

    auto *header = new QHBoxLayout;
    auto *title =
        new TextLabel(QStringLiteral("Limits"), TextStyle::captionStrong, QPalette::PlaceholderText);
    title->setFixedHeight(headerHeight); // also without chips
    header->addWidget(title);
    header->addStretch();
    header->addWidget(m_chips);
    auto *body = new QHBoxLayout;
    body->setSpacing(columnGap);
    m_chart->setFixedWidth(chartWidth);
    m_words->setFixedWidth(wordsWidth);
    body->addWidget(m_chart);
    body->addWidget(m_words);
    content()->addLayout(header);
    content()->addLayout(body, 1);
    LimitsCard::setDense(false);
}

QWidget *LimitsCard::makeWords() {
    auto *words = new QWidget;
    auto *column = new QVBoxLayout(words);
    column->setSpacing(0);
    column->addWidget(
        m_sentence = new WrappedText(TextStyle::labelStrong, {.line = 18, .lines = 3, .width = wordsWidth}));
    column->addSpacing(5);
    column->addWidget(m_detail =
                          new WrappedText(TextStyle::caption, {.line = 14, .lines = 2, .width = wordsWidth}));
    column->addStretch();
    column->addWidget(m_key = new LimitKey);
    return words;
}

void LimitsCard::setDense(bool dense) {
    PanelCard::setDense(dense);
    content()->setSpacing(dense ? 4 : 6);
    m_preferredHeight = dense ? 196 : 232;
    setMinimumHeight(m_preferredHeight - 38); // the height of a note in the card above
    // The capitals of the sentence are level with the chart's highest line, and the last row of the key with
    // its lowest one.
    m_words->layout()->setContentsMargins(0, dense ? 2 : 11, 0, dense ? 2 : 13);
    m_key->setDense(dense);
}

QSize LimitsCard::sizeHint() const {
    return {PanelCard::sizeHint().width(), m_preferredHeight};
}

void LimitsCard::setCourses(const std::vector<LimitCourse> &courses, const Calendar &calendar, Instant now) {
    using std::chrono::minutes;
    if (m_calendar == calendar && courses == m_courses &&
        std::chrono::floor<minutes>(now) == std::chrono::floor<minutes>(m_now))
        return;
    const std::optional<Limit> chosen =
        m_chosen < m_courses.size() ? std::optional(m_courses[m_chosen].limit) : std::nullopt;
    m_courses = courses;
    m_calendar = calendar;
    m_now = now;
    if (courses.empty())
        return showAwaited();
    const auto same = std::ranges::find_if(
        courses, [&](const LimitCourse &course) { return chosen && isSameLimit(course.limit, *chosen); });
    m_chosen = same == courses.end() ? 0 : static_cast<std::size_t>(same - courses.begin());
    showChips();
    showChosen();
}

void LimitsCard::showAwaited() {
    m_chips->hide();
    const QString sentence = QString::fromUtf8("Waiting for figures…");
    m_sentence->setText(sentence, &ThemeColors::text, false);
    m_detail->setText({}, &ThemeColors::secondary);
    m_key->setRows({}, LimitWords::Tone::calm);
    m_chart->setCourse({}, {}, *m_calendar, m_now);
    m_chart->setAccessibleDescription(sentence);
    setAccessibleName(QStringLiteral("Limits"));
    setAccessibleDescription(sentence);
}

void LimitsCard::showChips() {
    const std::size_t count = std::min(m_courses.size(), mostChips);
    m_chips->setVisible(count > 1);
    QList<QAbstractButton *> chips;
    for (QAbstractButton *chip : m_group->buttons()) {
        chip->setVisible(static_cast<std::size_t>(chips.size()) < count);
        if (!chip->isHidden())
            chips << chip;
    }
    QStringList names;
    for (std::size_t i = 0; i < count; ++i)
        names << textOf(limitName(m_courses[i].limit));
    nameChips(chips, names);
    int width = (static_cast<int>(count) - 1) * chipSpacing;
    for (const QAbstractButton *chip : chips)
        width += chip->sizeHint().width();
    m_chips->setFixedWidth(std::max(width, wordsWidth));
    if (m_chosen >= count)
        m_chosen = 0;
    m_group->button(static_cast<int>(m_chosen))->setChecked(true);
}

void LimitsCard::choose(std::size_t index) {
    if (std::exchange(m_chosen, index) != index)
        showChosen();
}

void LimitsCard::showChosen() {
    const LimitCourse &course = m_courses[m_chosen];
    const Forecast forecast = forecastOf(course, m_now);
    const LimitWords words = limitWords(course, forecast, *m_calendar, m_now);
    const QString sentence = textOf(words.sentence);
    m_sentence->setText(sentence, textColorOf(words.tone), words.tone == LimitWords::Tone::over);
    m_detail->setText(textOf(words.detail), &ThemeColors::secondary);
    showKey(forecast, words);
    m_chart->setCourse(course, forecast, *m_calendar, m_now);
    const QString all =
        words.detail.empty() ? sentence : sentence + QLatin1String(". ") + textOf(words.detail);
    m_chart->setAccessibleDescription(all);
    setAccessibleName(QStringLiteral("Limits, ") + textOf(limitName(course.limit)));
    setAccessibleDescription(all);
}

void LimitsCard::showKey(const Forecast &forecast, const LimitWords &words) {
    using State = Forecast::State;
    using Line = LimitKeyRow::Line;
    const Limit &limit = m_courses[m_chosen].limit;
    const auto timeText = [&](Instant instant) {
        return textOf(limitTimeText(limit.kind, instant, *m_calendar));
    };
    std::vector<LimitKeyRow> rows;
    if (const auto evenPace = evenPaceOf(limit, m_now)) {
        const bool isStale = forecast.state == State::stale;
        rows.push_back(
            {Line::measured,
             isStale ? QStringLiteral("Used at ") + timeText(forecast.measuredAt.value_or(limit.observedAt))
                     : QStringLiteral("Used now"),
             textOf(percentText(forecast.measuredAt ? forecast.rawPercent : limit.usedPct))});
        if (forecast.state == State::full)
            rows.push_back({Line::forecast, QStringLiteral("Full since"), timeText(*forecast.fullAt)});
        else if (words.tone == LimitWords::Tone::over)
            rows.push_back({Line::forecast, QStringLiteral("Full at"),
                            timeText(roundedTime(limit.kind, *forecast.fullAt))});
        else if (forecast.atReset)
            rows.push_back({Line::forecast, QStringLiteral("Forecast at ") + timeText(*limit.resetsAt),
                            textOf(percentText(forecast.atReset->middle))});
        rows.push_back({Line::evenPace, QStringLiteral("Even pace now"), textOf(percentText(*evenPace))});
    }
    m_key->setRows(rows, words.tone);
}

} // namespace burnwick
