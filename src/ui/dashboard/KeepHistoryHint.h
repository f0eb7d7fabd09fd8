// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <QIcon>
#include <QWidget>

#include <functional>

namespace burnwick {

class PreferencesManager;
class TextLabel;
struct UsageFigures;

/// The question whether to keep the history, until the user has answered it; hidden at first.
class KeepHistoryHint final : public QWidget {
    Q_OBJECT

public:
    /// The preferences must outlive the hint.
    KeepHistoryHint(PreferencesManager &preferences, std::function<int()> daysUntilCleanup);

    /// Shows the question if it is open and logs are old enough to be deleted soon, otherwise hides it.
    void setFigures(const UsageFigures &usage, Instant now);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PreferencesManager &m_preferences;
    std::function<int()> m_daysUntilCleanup;
    QIcon m_clock;
    TextLabel *m_question;
};

} // namespace burnwick
