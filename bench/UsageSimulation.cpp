// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// The model, made up from what using an assistant looks like and not fitted to data:
// - Plan: a dollar budget for five hours (12, 60, 240, with spread), about ten times that for seven days. The
//   service weighs cache reads and models a little differently than the price list. At 100 % it refuses.
// - Day: nine in ten weekdays and a quarter of weekend days; begins near 9:00, lasts 5 to 10 hours, with
// lunch;
//   some evenings; now and then a run that works alone at night.
// - Stretch: about 40 minutes of work (widely spread), then a break of about 10, or a meeting. One to four
//   sessions at once, more on larger plans. One stretch in ten changes the model. Some stretches happen on
//   another machine, whose logs are not here.
// - Session: a prompt, a run of messages every 12 s or so, a pause of about 90 s to read and think; one run
// in
//   fourteen has two to five subagents on a small model. The context grows until it is compacted.
// - Measured: whole percents every five minutes with jitter and losses while the machine is awake; half of
// the
//   users have the status line as well, at each message. Some begin to measure within the window.
#include "UsageSimulation.h"

#include "Random.h"

#include "model/Cost.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace burnwick::bench {

namespace {

constexpr double hour = 3600;
constexpr double day = 24 * hour;
constexpr double fiveHours = 5 * hour;
constexpr double week = 7 * day;
constexpr int simulatedDays = 16;

/// Distributions that are the same on every machine.
class Dice {
public:
    explicit Dice(std::uint64_t seed)
        : m_random(seed) {}

    double between(double least, double most) {
        constexpr std::uint64_t steps = std::uint64_t{1} << 53U;
        return least + (most - least) * (static_cast<double>(m_random.below(steps)) + 0.5) / double{steps};
    }
    bool chance(double probability) { return between(0, 1) < probability; }
    double normal() {
        const double radius = std::sqrt(-2 * std::log(between(0, 1)));
        return radius * std::cos(2 * std::numbers::pi * between(0, 1));
    }
    double logNormal(double median, double sigma) { return median * std::exp(sigma * normal()); }

private:
    Random m_random;
};

enum Model : std::size_t { small, medium, large };
constexpr std::array modelPrices{1.0 / 3, 1.0, 5.0 / 3}; ///< relative to the price list's

struct Message {
    double at; ///< seconds since the user's first midnight
    double localWeight;
    double serviceCost;
    bool local;
    bool inStatusLine; ///< of a session that a person watches
};

struct User {
    explicit User(Dice &dice) {
        const double plan = dice.between(0, 1);
        const std::size_t index = plan < 0.45 ? 0 : plan < 0.8 ? 1 : 2;
        fiveHourBudget = std::array{12.0, 60.0, 240.0}[index] * dice.logNormal(1, 0.3);
        weekBudget = fiveHourBudget * dice.logNormal(10, 0.3);
        moreSessions = std::array{0.15, 0.4, 0.6}[index];
        pace = dice.logNormal(1, 0.35);
        cacheReadFactor = dice.logNormal(1, 0.5);
        for (double &factor : modelFactors)
            factor = dice.logNormal(1, 0.3);
        startOfDay = 9 * hour + 1.2 * hour * dice.normal();
        hoursOfDay = dice.between(5, 10) * hour;
        evenings = dice.between(0, 0.6);
        nightRuns = dice.chance(0.2) ? 0.25 : 0;
        elsewhere = dice.chance(0.2) ? 0.25 : 0;
        statusLine = dice.chance(0.5);
        roundsDown = dice.chance(0.5);
        alwaysOn = dice.chance(0.3);
        startsLate = dice.chance(0.1);
    }
    double fiveHourBudget, weekBudget; ///< dollars
    double cacheReadFactor;
    std::array<double, 3> modelFactors{};
    double pace; ///< pauses are shorter by that factor
    double moreSessions, startOfDay, hoursOfDay, evenings, nightRuns, elsewhere;
    bool statusLine, roundsDown, alwaysOn, startsLate;
};

/// What a user sends if nothing is refused, in order of time; and when the machine is awake.
class Diary {
public:
    Diary(const User &user, Dice &dice)
        : m_user(user)
        , m_dice(dice) {
        m_model = dice.chance(0.5) ? large : medium;
        for (int index = 0; index < simulatedDays; ++index)
            addDay(index * day, index % 7 >= 5);
        std::sort(messages.begin(), messages.end(),
                  [](const Message &a, const Message &b) { return a.at < b.at; });
        if (user.alwaysOn)
            awake = {{0, simulatedDays * day}};
    }

    std::vector<Message> messages;
    std::vector<std::pair<double, double>> awake;

private:
    void addDay(double midnight, bool weekend) {
        if (m_dice.chance(weekend ? 0.25 : 0.9)) {
            const double begin =
                midnight + std::max(5 * hour, m_user.startOfDay + 0.7 * hour * m_dice.normal());
            const double end =
                std::min(begin + m_user.hoursOfDay * m_dice.between(0.7, 1.2), midnight + 20 * hour);
            const double lunch = midnight + m_dice.between(11.75, 13.25) * hour;
            work(begin, std::min(lunch, end));
            work(lunch + m_dice.between(0.5, 1.25) * hour, end);
            awake.emplace_back(begin - 600, end + m_dice.between(0, hour));
        }
        if (m_dice.chance(m_user.evenings)) {
            const double begin = midnight + m_dice.between(20, 21.5) * hour;
            const double end = begin + m_dice.between(0.5, 2.5) * hour;
            work(begin, end);
            awake.emplace_back(begin - 300, end + m_dice.between(0, hour / 2));
        }
        if (m_dice.chance(m_user.nightRuns)) {
            const double begin = midnight + m_dice.between(22.5, 23.5) * hour;
            const double end = begin + m_dice.between(1, 6) * hour;
            session(begin, end, true, 0.2);
            awake.emplace_back(begin, end);
        }
    }

    void work(double begin, double end) {
        for (double at = begin; at < end;) {
            const double stretchEnd = std::min(end, at + m_dice.logNormal(40 * 60, 0.7));
            if (m_dice.chance(0.1))
                m_model = static_cast<Model>(m_dice.between(0, 3));
            const bool local = !m_dice.chance(m_user.elsewhere);
            session(at, stretchEnd, local, 1);
            for (int others = 0; others < 3 && m_dice.chance(m_user.moreSessions); ++others)
                session(m_dice.between(at, stretchEnd), stretchEnd, local, 1);
            at = stretchEnd +
                 (m_dice.chance(0.2) ? m_dice.between(30, 90) * 60 : m_dice.logNormal(10 * 60, 0.8));
        }
    }

    /// `pauses` is the length of the pauses between runs, relative to those of people.
    void session(double begin, double end, bool local, double pauses) {
        double context = m_dice.between(15e3, 30e3);
        for (double at = begin; at < end;) {
            const double runEnd =
                run(at, end, std::ceil(m_dice.logNormal(8, 1)), context, m_model, local, true);
            if (m_dice.chance(1.0 / 14)) {
                for (int agents = static_cast<int>(m_dice.between(2, 6)); agents > 0; --agents) {
                    double own = 12e3;
                    run(at, end, std::floor(m_dice.between(10, 40)), own, small, local, false);
                }
            }
            at = runEnd + pauses * m_dice.logNormal(90, 1) / m_user.pace;
        }
    }

    double run(double at, double end, double count, double &context, Model model, bool local, bool watched) {
        for (double index = 0; index < count && at < end; ++index) {
            at += m_dice.logNormal(12, 0.7);
            const double growth = m_dice.logNormal(2000, 0.8);
            const SessionTokens tokens{.input = 6,
                                       .output = static_cast<std::int64_t>(m_dice.logNormal(350, 1)),
                                       .cacheCreation = static_cast<std::int64_t>(growth),
                                       .cacheRead = static_cast<std::int64_t>(context)};
            SessionTokens service = tokens;
            service.cacheRead = static_cast<std::int64_t>(context * m_user.cacheReadFactor);
            messages.push_back({at, sessionCost(tokens) * modelPrices[model],
                                sessionCost(service) * modelPrices[model] * m_user.modelFactors[model], local,
                                local && watched});
            context = context + growth > 160e3 ? 30e3 : context + growth;
        }
        return at;
    }

    const User &m_user;
    Dice &m_dice;
    Model m_model;
};

struct Period {
    double start;
    double length;
};

Instant instantOf(double seconds) {
    constexpr Instant monday = std::chrono::sys_days(std::chrono::year(2026) / 11 / 2);
    return monday + std::chrono::nanoseconds(std::llround(seconds * 1e9));
}

/// The messages that the service accepts under both limits, and the 5-hour windows that they open.
struct Accepted {
    Accepted(const User &user, const std::vector<Message> &wanted, double firstReset) {
        double used = 0, usedInWeek = 0;
        double weekEnd = firstReset;
        for (const Message &message : wanted) {
            if (windows.empty() || message.at >= windows.back().start + fiveHours) {
                windows.push_back({std::floor(message.at / hour) * hour, fiveHours});
                used = 0;
            }
            while (message.at >= weekEnd) {
                weekEnd += week;
                usedInWeek = 0;
            }
            if (used >= user.fiveHourBudget || usedInWeek >= user.weekBudget)
                continue;
            used += message.serviceCost;
            usedInWeek += message.serviceCost;
            messages.push_back(message);
        }
    }
    std::vector<Message> messages;
    std::vector<Period> windows;
};

SimulatedWindow measure(const User &user, const Diary &diary, const Accepted &accepted, Period period,
                        double budget, Dice &dice) {
    const double end = period.start + period.length;
    SimulatedWindow result;
    result.start = instantOf(period.start);
    result.window = {instantOf(end), instantOf(end) - result.start, std::chrono::minutes(10)};
    double percent = 0;
    const double firstSample = period.start + (user.startsLate ? dice.between(0.1, 0.6) * period.length : 0);
    const auto answer = [&] { return user.roundsDown ? std::floor(percent) : std::round(percent); };
    const auto isAwake = [&](double at) {
        return std::any_of(diary.awake.begin(), diary.awake.end(),
                           [at](const auto &span) { return span.first <= at && at < span.second; });
    };
    double nextPoll = period.start + dice.between(0, 300);
    const auto pollUntil = [&](double at) {
        while (nextPoll < at) {
            if (nextPoll >= firstSample && isAwake(nextPoll) && !dice.chance(0.04))
                result.samples.push_back({instantOf(nextPoll), answer()});
            nextPoll += 300 + dice.between(0, 30);
        }
    };
    for (const Message &message : accepted.messages) {
        if (message.at < period.start || message.at >= end)
            continue;
        pollUntil(message.at);
        percent = std::min(100.0, percent + 100 * message.serviceCost / budget);
        result.truth.push_back({instantOf(message.at), percent});
        if (message.local)
            result.tokens.push_back({instantOf(message.at), message.localWeight});
        if (user.statusLine && message.inStatusLine && message.at >= firstSample)
            result.samples.push_back({instantOf(message.at), answer()});
    }
    pollUntil(end);
    return result;
}

} // namespace

double SimulatedWindow::percentAt(Instant instant) const {
    const auto after = std::upper_bound(truth.begin(), truth.end(), instant,
                                        [](Instant at, const LimitSample &sample) { return at < sample.at; });
    return after == truth.begin() ? 0 : (after - 1)->percent;
}

std::vector<SimulatedWindow> simulateWindows(WindowLength length, std::uint64_t seed, std::size_t count) {
    Dice dice(seed);
    std::vector<SimulatedWindow> windows;
    while (windows.size() < count) {
        const User user(dice);
        const Diary diary(user, dice);
        const double firstReset = std::floor(dice.between(0, week) / hour) * hour;
        const Accepted accepted(user, diary.messages, firstReset);
        if (accepted.windows.empty())
            continue;
        const double one = dice.between(0, static_cast<double>(accepted.windows.size()));
        windows.push_back(length == WindowLength::sevenDays
                              ? measure(user, diary, accepted, {firstReset, week}, user.weekBudget, dice)
                              : measure(user, diary, accepted,
                                        accepted.windows[static_cast<std::size_t>(one)], user.fiveHourBudget,
                                        dice));
    }
    return windows;
}

} // namespace burnwick::bench
