// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/KeepHistoryHint.h"

#include "display/DisplayFormat.h"
#include "model/Snapshot.h"
#include "prefs/PreferencesManager.h"
#include "ui/controls/FlatButton.h"
#include "ui/controls/SvgIcon.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QPainter>

#include <utility>

namespace burnwick {

namespace {

constexpr int distance = 10; // between the bar and the heatmap above it
constexpr int barHeight = 28;
constexpr int buttonHeight = 21;
constexpr int clockSize = 14;
constexpr int clockMargin = 10;

/// The question is asked when the oldest log has this age.
constexpr std::chrono::days leastAge{20};

FlatButton *makeAnswer(const QString &text, TextStyle style, QColor ThemeColors::*color,
                       QColor ThemeColors::*ground, QColor ThemeColors::*hovered) {
    auto *button = new FlatButton(text, {.text = style,
                                         .padding = {8, 0},
                                         .ground = ground,
                                         .hovered = hovered,
                                         .pressed = &ThemeColors::pressed,
                                         .restingText = color});
    button->setFixedHeight(buttonHeight);
    return button;
}

} // namespace

KeepHistoryHint::KeepHistoryHint(PreferencesManager &preferences, std::function<int()> daysUntilCleanup)
    : m_preferences(preferences)
    , m_daysUntilCleanup(std::move(daysUntilCleanup))
    , m_clock(svgIcon(QStringLiteral(":/burnwick/icons/clock-symbolic.svg")))
    , m_question(new TextLabel(TextStyle::body)) {
    using T = ThemeColors;
    setFixedHeight(distance + barHeight);
    setContentsMargins(0, distance, 0, 0);
    hide();
    FlatButton *keep =
        makeAnswer(QStringLiteral("Keep"), TextStyle::captionStrong, &T::text, &T::selected, &T::pressed);
    FlatButton *notNow =
        makeAnswer(QStringLiteral("Not now"), TextStyle::caption, &T::secondary, nullptr, &T::hover);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(clockMargin + clockSize + 8, 1, 4, 0);
    line->setSpacing(5);
    m_question->setElidable();
    line->addWidget(m_question, 1);
    line->addWidget(keep);
    line->addWidget(notNow);
    connect(keep, &QAbstractButton::clicked, this, [this] { m_preferences.setKeepHistory(true); });
    connect(notNow, &QAbstractButton::clicked, this, [this] { m_preferences.setKeepHistoryAsked(true); });
    connect(&preferences, &PreferencesManager::keepHistoryAskedChanged, this, [this] { hide(); });
}

void KeepHistoryHint::setFigures(const UsageFigures &usage, Instant now) {
    const bool asks = !m_preferences.keepHistory() && !m_preferences.keepHistoryAsked() && usage.oldestLog &&
                      *usage.oldestLog <= now - leastAge;
    if (asks && isHidden()) {
        const auto days = textOf(countText(m_daysUntilCleanup(), "day"));
        m_question->setText(
            QStringLiteral("Claude Code deletes logs after %1. Keep your history?").arg(days));
        for (auto *answer : findChildren<FlatButton *>())
            answer->setAccessibleDescription(m_question->text());
    }
    setVisible(asks);
}

void KeepHistoryHint::paintEvent(QPaintEvent *) {
    constexpr double radius = 8;
    const QRect bar = contentsRect();
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    fillRounded(painter, bar, radius, colors.note);
    drawTinted(painter, {bar.x() + clockMargin, bar.y() + (barHeight - clockSize) / 2, clockSize, clockSize},
               m_clock, colors.secondary);
}

} // namespace burnwick
