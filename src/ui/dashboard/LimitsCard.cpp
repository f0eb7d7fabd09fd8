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
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>
#include <QTextLayout>
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
/// Further limits are only in the menus and reports; a chip needs room for a few letters.
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

} // namespace

/// A sentence that wraps, after a triangle if it is a warning.
class LimitsCard::Sentence final : public QWidget {
public:
    Sentence() {
        setFont(fontOf(TextStyle::labelStrong));
        setAccessibleRole(*this, QAccessible::StaticText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }

    void setWords(const QString &text, LimitWords::Tone tone) {
        if (accessibleName() == text && m_tone == tone)
            return;
        m_tone = tone;
        setAccessibleName(text);
        updateGeometry();
        update();
    }

    [[nodiscard]] QSize sizeHint() const override {
        return {0, lineHeight * static_cast<int>(linesIn(wordsWidth).size())};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *) override {
        const ThemeColors &colors = colorsFor(*this);
        const QColor color = m_tone == LimitWords::Tone::over   ? colors.overText
                             : m_tone == LimitWords::Tone::near ? colors.nearText
                                                                : colors.text;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (isWarning())
            drawTriangle(painter, color);
        painter.setPen(color);
        QRect line(indent(), 0, width() - indent(), lineHeight);
        for (const QString &text : linesIn(width())) {
            painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, text);
            line.translate(0, lineHeight);
        }
    }

private:
    static constexpr int lineHeight = 18;
    static constexpr int mostLines = 3;

    [[nodiscard]] bool isWarning() const { return m_tone == LimitWords::Tone::over; }
    [[nodiscard]] int indent() const { return isWarning() ? 22 : 0; }

    [[nodiscard]] QStringList linesIn(int width) const {
        const QString text = accessibleName();
        const int room = std::max(1, width - indent());
        QTextLayout layout(text, font());
        QStringList lines;
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < mostLines;
             line = layout.createLine()) {
            line.setLineWidth(room);
            const bool isLast = lines.size() == mostLines - 1;
            lines << (isLast ? fontMetrics().elidedText(text.mid(line.textStart()), Qt::ElideRight, room)
                             : text.mid(line.textStart(), line.textLength()).trimmed());
        }
        layout.endLayout();
        return lines;
    }

    static void drawTriangle(QPainter &painter, const QColor &color) {
        // 15 x 14 with its outline; its base is level with the capitals' feet.
        painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolygon(QPolygonF({{7.5, 1.6}, {14.3, 13.4}, {0.7, 13.4}}));
        painter.drawLine(QPointF(7.5, 6), QPointF(7.5, 9.2));
        painter.drawPoint(QPointF(7.5, 11.4));
    }

    LimitWords::Tone m_tone = LimitWords::Tone::calm;
};

LimitsCard::LimitsCard()
    : m_chips(new QWidget)
    , m_chipLine(new QHBoxLayout(m_chips))
    , m_chart(new LimitChartView)
    , m_words(makeWords()) {
    hide();
    setAccessibleRole(*this, QAccessible::Grouping);
    m_chipLine->setContentsMargins({});
    m_chipLine->setSpacing(chipSpacing);
    m_chips->setMinimumWidth(wordsWidth);
    m_chips->setFixedHeight(headerHeight);
    m_chips->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    setAccessibleRole(*m_chips, QAccessible::Grouping);
    m_chips->setAccessibleName(QStringLiteral("Shown limit"));

    auto *header = new QHBoxLayout;
    header->addWidget(
        new TextLabel(QStringLiteral("Limits"), TextStyle::captionStrong, QPalette::PlaceholderText));
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
    column->addWidget(m_sentence = new Sentence);
    column->addSpacing(5);
    column->addWidget(m_detail = new TextLabel(TextStyle::caption, QPalette::PlaceholderText));
    column->addStretch();
    column->addWidget(m_key = new LimitKey);
    m_detail->setElidable();
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
    if (courses == m_courses && m_calendar == calendar &&
        std::chrono::floor<minutes>(now) == std::chrono::floor<minutes>(m_now))
        return;
    const std::optional<Limit> chosen =
        m_chosen < m_courses.size() ? std::optional(m_courses[m_chosen].limit) : std::nullopt;
    m_courses = courses;
    m_calendar = calendar;
    m_now = now;
    if (courses.empty())
        return;
    const auto same = std::ranges::find_if(
        courses, [&](const LimitCourse &course) { return chosen && isSameLimit(course.limit, *chosen); });
    m_chosen = same == courses.end() ? 0 : static_cast<std::size_t>(same - courses.begin());
    showChips();
    showChosen();
}

void LimitsCard::showChips() {
    const std::size_t count = std::min(m_courses.size(), mostChips);
    m_chips->setVisible(count > 1);
    if (m_group == nullptr || static_cast<std::size_t>(m_group->buttons().size()) != count)
        makeChips();
    QStringList names;
    for (std::size_t i = 0; i < count; ++i)
        names << textOf(limitName(m_courses[i].limit));
    nameChips(m_group->buttons(), names);
    if (m_chosen >= count)
        m_chosen = 0;
    m_group->button(static_cast<int>(m_chosen))->setChecked(true);
}

void LimitsCard::makeChips() {
    const bool hadFocus = m_chips->isAncestorOf(m_chips->window()->focusWidget());
    delete std::exchange(m_group, new QButtonGroup(this));
    qDeleteAll(m_chips->findChildren<FlatButton *>());
    while (QLayoutItem *item = m_chipLine->takeAt(0))
        delete item;
    const int count = static_cast<int>(std::min(m_courses.size(), mostChips));
    for (int i = 0; i < count; ++i) {
        FlatButton *chip = makeChip();
        m_group->addButton(chip, i);
        m_chipLine->addWidget(chip);
        chip->show(); // which the layout would do in a later turn of the event loop
    }
    m_chipLine->addStretch();
    QAbstractButton *chosen = m_group->button(std::min(static_cast<int>(m_chosen), count - 1));
    chosen->setChecked(true);
    stopAtChosen(*m_group);
    connect(m_group, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
        if (isChosen)
            choose(static_cast<std::size_t>(index));
    });
    if (hadFocus)
        chosen->setFocus();
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
    m_sentence->setWords(sentence, words.tone);
    m_detail->setText(textOf(words.detail));
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
