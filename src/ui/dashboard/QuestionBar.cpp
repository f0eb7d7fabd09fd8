// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/QuestionBar.h"

#include "ui/controls/FlatButton.h"
#include "ui/controls/SvgIcon.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QPainter>

#include <utility>

namespace burnwick {

namespace {

constexpr int distance = 10; // between the bar and the heatmap above it
constexpr int barHeight = 28;
constexpr int buttonHeight = 21;
constexpr int iconSize = 14;
constexpr int iconMargin = 10;

FlatButton *makeAnswer(TextStyle style, QColor ThemeColors::*color, QColor ThemeColors::*ground,
                       QColor ThemeColors::*hovered) {
    auto *button = new FlatButton({}, {.text = style,
                                       .padding = {8, 0},
                                       .ground = ground,
                                       .hovered = hovered,
                                       .pressed = &ThemeColors::pressed,
                                       .restingText = color});
    button->setFixedHeight(buttonHeight);
    return button;
}

} // namespace

QuestionBar::QuestionBar()
    : m_text(new TextLabel(TextStyle::body)) {
    using T = ThemeColors;
    setFixedHeight(distance + barHeight);
    setContentsMargins(0, distance, 0, 0);
    hide();
    m_yes = makeAnswer(TextStyle::captionStrong, &T::text, &T::selected, &T::pressed);
    m_no = makeAnswer(TextStyle::caption, &T::secondary, nullptr, &T::hover);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(iconMargin + iconSize + 8, 1, 4, 0);
    line->setSpacing(5);
    m_text->setElidable();
    line->addWidget(m_text, 1);
    line->addWidget(m_yes);
    line->addWidget(m_no);
    // Copies: an answer asks the next question.
    connect(m_yes, &QAbstractButton::clicked, this, [this] { std::function(m_question.yes.give)(); });
    connect(m_no, &QAbstractButton::clicked, this, [this] { std::function(m_question.no.give)(); });
}

void QuestionBar::ask(const std::optional<Question> &question) {
    if (question && question->text != m_question.text) {
        m_question = *question;
        m_icon = svgIcon(question->icon);
        m_text->setText(question->text);
        for (const auto &[button, answer] :
             {std::pair(m_yes, &m_question.yes), std::pair(m_no, &m_question.no)}) {
            button->setText(answer->text);
            button->setVisible(!answer->text.isEmpty());
            button->setAccessibleDescription(question->text);
        }
        update();
    }
    setVisible(question.has_value());
}

void QuestionBar::paintEvent(QPaintEvent *) {
    constexpr double radius = 8;
    const QRect bar = contentsRect();
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    fillRounded(painter, bar, radius, colors.note);
    drawTinted(painter, {bar.x() + iconMargin, bar.y() + (barHeight - iconSize) / 2, iconSize, iconSize},
               m_icon, colors.secondary);
}

} // namespace burnwick
