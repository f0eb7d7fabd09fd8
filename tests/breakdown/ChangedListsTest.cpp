// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/ExactCounting.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace burnwick {
namespace {

const Instant now = test::at("2026-08-20T12:00:00Z");

/// Lines with few distinct identifiers, which are shared by lists at random.
class RandomLists {
public:
    explicit RandomLists(std::size_t sessions)
        : m_sessions(sessions) {}

    std::size_t below(std::size_t limit) { return m_random() % limit; }
    LogEntries list() {
        auto list = std::make_shared<EntryList>();
        for (std::size_t left = below(6); left > 0; --left)
            addLine(*list);
        return list;
    }
    /// Returns the lines of all lists as one list.
    static LogEntries joined(const std::vector<LogEntries> &lists, RandomLists &lines) {
        auto all = std::make_shared<EntryList>();
        for (const LogEntries &list : lists) {
            for (const JSONLEntry &line : *list)
                lines.addAgain(*all, line);
        }
        return all;
    }

private:
    void addLine(EntryList &list) {
        UsageDetails details;
        details.messageKey = below(40);
        details.requestKey = below(3);
        details.session = InternedString(below(m_sessions) == 0 ? "s1" : "s2");
        details.isSidechain = below(3) == 0;
        const Instant at = now - std::chrono::hours(24 * below(3));
        const auto output = static_cast<std::int64_t>(below(3));
        // The number of the line finds its details again.
        const auto number = static_cast<std::int64_t>(m_details.size());
        m_details.push_back(details);
        const JSONLEntry line(InternedString("assistant"), at,
                              InternedString(below(2) == 0 ? "claude-opus-5" : "x"),
                              SessionTokens{number, output, 0, 0});
        list.push_back(line);
        list.messages.add({&line, 1}, {&details, 1});
    }
    void addAgain(EntryList &list, const JSONLEntry &line) {
        list.push_back(line);
        list.messages.add({&line, 1}, {&m_details[static_cast<std::size_t>(line.counts().input)], 1});
    }

    std::size_t m_sessions;
    std::mt19937 m_random{20261123};
    std::vector<UsageDetails> m_details;
};

class ExactCountingOfChangedLists : public testing::TestWithParam<std::size_t> {};

TEST_P(ExactCountingOfChangedLists, EqualsAFreshCount) {
    const Calendar calendar = Calendar::inZone("Etc/UTC");
    const PriceTable prices = PriceTable::ofProduct();
    RandomLists random(GetParam());
    ExactCounting counting(prices);
    LogHistory history;
    for (int step = 0; step < 1500; ++step) {
        std::vector<LogEntries> &lists = history.entries;
        const auto place = lists.begin() + static_cast<std::ptrdiff_t>(random.below(lists.size() + 1));
        if (lists.size() < 60 || (lists.size() < 80 && random.below(2) == 0))
            lists.insert(place, random.list());
        else if (place == lists.end())
            std::rotate(lists.begin(), lists.begin() + 1, lists.end());
        else if (random.below(2) == 0)
            *place = random.list();
        else
            lists.erase(place);
        LogHistory together;
        together.entries = lists;
        if (GetParam() == 1) // lines of one session may as well be in one list
            together.entries = {RandomLists::joined(lists, random)};
        ExactCounting fresh(prices);
        ASSERT_EQ(counting.sums(history, calendar)->within(TimeFilter::all, now, 0),
                  fresh.sums(together, calendar)->within(TimeFilter::all, now, 0))
            << "step " << step;
        ASSERT_EQ(counting.session(lists), fresh.session(together.entries)) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(OneAndTwoSessions, ExactCountingOfChangedLists, testing::Values(1, 2));

} // namespace
} // namespace burnwick
