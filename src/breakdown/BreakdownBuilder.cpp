// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "breakdown/BreakdownBuilder.h"

#include <algorithm>

namespace burnwick {

namespace {

constexpr std::array countMembers{&ModelUsage::input,        &ModelUsage::output,
                                  &ModelUsage::cacheWrite5m, &ModelUsage::cacheWrite1h,
                                  &ModelUsage::cacheRead,    &ModelUsage::webSearches};

void addTo(std::int64_t &sum, std::int64_t count) {
    sum = addTokens(sum, count);
}

} // namespace

void BreakdownBuilder::Sum::add(const Sum &other) {
    addTo(tokens, other.tokens);
    addTo(unpriced, other.unpriced);
    cost = addAmounts(cost, other.cost);
}

PricedTokens BreakdownBuilder::Sum::figures() const {
    return {tokens, unpriced, dollarsOf(cost)};
}

void BreakdownBuilder::add(const Message &message, std::optional<Instant> at,
                           std::optional<Picodollars> price) {
    const std::int64_t written = addTokens(message.cacheWrite5m, message.cacheWrite1h);
    const SessionTokens counts{message.input, message.output, written, message.cacheRead};
    const Sum sum{counts.total(), price ? 0 : counts.total(), price.value_or(0)};
    if (message.context.isAdvisor && sum.tokens == 0)
        return;
    m_history.add(JSONLEntry({}, at, message.context.model, counts), !message.context.isAdvisor);

    m_total.add(sum);
    Model &model = m_model.of(m_models, message.context.model);
    const std::array messageCounts{message.input,        message.output,    message.cacheWrite5m,
                                   message.cacheWrite1h, message.cacheRead, message.webSearches};
    for (std::size_t i = 0; i < messageCounts.size(); ++i)
        addTo(model.counts[i], messageCounts[i]);
    model.total.add(sum);
    Project &project = m_project.of(m_projects, message.context.folder);
    project.total.add(sum);
    if (!at)
        return;
    const LocalDay day = std::chrono::floor<std::chrono::days>(m_cursor.localTimeOf(*at));
    m_days[day].add(sum);
    project.days[day].add(sum);
}

void BreakdownBuilder::addLine(const JSONLEntry &line, const MessageList::Origin &origin) {
    Project &project = m_project.of(m_projects, origin.folder);
    const std::int64_t tokens = line.counts().total();
    addTo(project.loggedTokens, tokens);
    if (origin.session.hasValue() && project.lastSession != origin.session) {
        project.lastSession = origin.session;
        project.sessions.insert(origin.session);
    }
    const auto at = line.timestamp();
    if (!at)
        return;
    project.lastUsed = std::max(project.lastUsed, at);
    addTo(project.loggedDays[std::chrono::floor<std::chrono::days>(m_cursor.localTimeOf(*at))], tokens);
}

void BreakdownBuilder::add(const BreakdownBuilder &other) {
    m_history.add(other.m_history);
    m_total.add(other.m_total);
    for (const auto &[name, model] : other.m_models) {
        Model &sum = m_models[name];
        for (std::size_t i = 0; i < sum.counts.size(); ++i)
            addTo(sum.counts[i], model.counts[i]);
        sum.total.add(model.total);
    }
    for (const auto &[folder, project] : other.m_projects) {
        Project &sum = m_projects[folder];
        sum.total.add(project.total);
        addTo(sum.loggedTokens, project.loggedTokens);
        sum.lastUsed = std::max(sum.lastUsed, project.lastUsed);
        for (const auto &[day, tokens] : project.days)
            sum.days[day].add(tokens);
        for (const auto &[day, tokens] : project.loggedDays)
            addTo(sum.loggedDays[day], tokens);
        sum.sessions.insert(project.sessions.begin(), project.sessions.end());
    }
    for (const auto &[day, tokens] : other.m_days)
        m_days[day].add(tokens);
}

UsageBreakdown BreakdownBuilder::finish(std::int64_t sessionCount, LocalDay today) const {
    UsageBreakdown breakdown{m_history.finish(sessionCount, today), m_total.figures(), {}, {}, {}};
    for (const auto &[name, sums] : m_models) {
        ModelUsage &model = breakdown.models.emplace_back();
        model.name = name.view();
        for (std::size_t i = 0; i < countMembers.size(); ++i)
            model.*countMembers[i] = sums.counts[i];
        model.total = sums.total.figures();
    }
    std::ranges::sort(breakdown.models, {}, &ModelUsage::name);
    for (const auto &[folder, sums] : m_projects) {
        ProjectUsage &project = breakdown.projects.emplace_back();
        project.path = folder.view();
        project.sessions = std::ssize(sums.sessions);
        project.total = sums.total.figures();
        project.loggedTokens = sums.loggedTokens;
        project.lastUsed = sums.lastUsed;
        for (const auto &[day, tokens] : sums.days)
            project.days.emplace(day, tokens.figures());
        project.loggedDays = sums.loggedDays;
    }
    std::ranges::sort(breakdown.projects, {}, &ProjectUsage::path);
    for (const auto &[day, tokens] : m_days)
        breakdown.days.emplace(day, tokens.figures());
    return breakdown;
}

} // namespace burnwick
