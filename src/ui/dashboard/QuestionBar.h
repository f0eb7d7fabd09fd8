// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QWidget>

#include <functional>
#include <optional>

namespace burnwick {

class FlatButton;
class TextLabel;

/// A quiet question to the user, in one line.
struct Question {
    QString icon; ///< a symbolic picture of the resources
    QString text; ///< identifies the question
    /// A button; without a text there is none.
    struct Answer {
        QString text;
        std::function<void()> give;
    };
    Answer yes, no;
};

/// Shows a question and the buttons of its answers; hidden without one.
class QuestionBar final : public QWidget {
    Q_OBJECT

public:
    QuestionBar();

    void ask(const std::optional<Question> &question);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Question m_question; ///< the last one
    FlatButton *m_yes, *m_no;
    TextLabel *m_text;
    QIcon m_icon;
};

} // namespace burnwick
