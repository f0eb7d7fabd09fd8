// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forecast/Forecast.h"
#include "model/Calendar.h"
#include "model/Limit.h"
#include "ui/controls/PanelCard.h"

#include <optional>
#include <vector>

class QButtonGroup;

namespace burnwick {

class FlatButton;
class LimitChartView;
class LimitKey;
class WrappedText;
struct LimitWords;

/// The window of one of the account's limits as a chart and in words; the user chooses the limit. Names of
/// models are untrusted and shown as displayText().
class LimitsCard final : public PanelCard {
    Q_OBJECT

public:
    /// Empty and hidden.
    LimitsCard();

    /// Shows the limit that the user chose last, otherwise the first; without courses it says that they are
    /// awaited. Repaints only for other values or in another minute.
    void setCourses(const std::vector<LimitCourse> &courses, const Calendar &calendar, Instant now);
    void setDense(bool dense) override;

    [[nodiscard]] QSize sizeHint() const override;

private:
    [[nodiscard]] QWidget *makeWords();
    void showAwaited();
    void showChips();
    void choose(std::size_t index);
    void showChosen();
    void showKey(const Forecast &forecast, const LimitWords &words);

    std::vector<LimitCourse> m_courses;
    std::size_t m_chosen = 0;
    std::optional<Calendar> m_calendar;
    Instant m_now{};
    int m_preferredHeight = 0;

    QWidget *m_chips;
    QButtonGroup *m_group; ///< of all chips, of which some may be hidden
    LimitChartView *m_chart;
    QWidget *m_words;
    WrappedText *m_sentence;
    WrappedText *m_detail;
    LimitKey *m_key;
};

} // namespace burnwick
