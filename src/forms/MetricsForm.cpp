// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/MetricsForm.h"

#include <QtCore/QString>

#include <array>
#include <charconv>
#include <map>
#include <span>
#include <utility>

namespace burnwick {

namespace {

using Labels = std::vector<std::pair<std::string_view, std::string_view>>;

constexpr std::array<std::pair<UsageCell::Count, std::string_view>, 5> kinds{{
    {UsageCell::input, "input"},
    {UsageCell::output, "output"},
    {UsageCell::cacheWrite5m, "cache_write_5m"},
    {UsageCell::cacheWrite1h, "cache_write_1h"},
    {UsageCell::cacheRead, "cache_read"},
}};

std::string escaped(std::string_view value) {
    std::string result;
    // Qt replaces what is no UTF-8.
    for (const char c : QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())).toStdString()) {
        if (c == '\\' || c == '"')
            result += '\\';
        result += c == '\n' ? "\\n" : std::string(1, c);
    }
    return result;
}

std::string numberText(double number) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return {digits.data(), end};
}

/// Returns the amount in dollars without any loss.
std::string dollarText(std::int64_t picodollars) {
    constexpr std::int64_t one = 1'000'000'000'000;
    constexpr std::size_t places = 12;
    std::string fraction = std::to_string(picodollars % one);
    fraction.insert(0, places - fraction.size(), '0');
    fraction.erase(fraction.find_last_not_of('0') + 1);
    return std::to_string(picodollars / one) + (fraction.empty() ? "" : "." + fraction);
}

/// A metric's lines.
class Family {
public:
    Family(std::string name, std::string_view type, std::string_view help)
        : m_name(std::move(name))
        , m_head("# HELP " + m_name + ' ' + std::string(help) + "\n# TYPE " + m_name + ' ' +
                 std::string(type) + '\n') {}

    /// Labels without a value are left out.
    void add(const Labels &labels, const std::string &value) {
        std::string text;
        for (const auto &[label, labelValue] : labels) {
            if (!labelValue.empty())
                text += (text.empty() ? "" : ",") + std::string(label) + "=\"" + escaped(labelValue) + '"';
        }
        m_lines += m_name + (text.empty() ? "" : '{' + text + '}') + ' ' + value + '\n';
    }
    /// Returns nothing without a value.
    [[nodiscard]] std::string text() const { return m_lines.empty() ? "" : m_head + m_lines; }

private:
    std::string m_name;
    std::string m_head;
    std::string m_lines;
};

std::string secondsText(Instant at) {
    return std::to_string(std::chrono::floor<std::chrono::seconds>(at).time_since_epoch().count());
}

std::string useText(const Metrics &metrics) {
    std::map<std::pair<std::string_view, std::string_view>, UsageCell> cells;
    for (const UsageCell &cell : metrics.use)
        cells[{cell.model, cell.project}].add(cell.counts);
    const auto family = [&metrics](std::string_view name, std::string_view help) {
        return Family("burnwick_" + std::string(name) + (metrics.areCounters ? "_total" : ""),
                      metrics.areCounters ? "counter" : "gauge", help);
    };
    Family tokens = family("tokens", "Tokens, each message counted once.");
    Family cost = family("cost_usd", "US dollars at API prices; tokens without a price are not in it.");
    Family messages = family("messages", "Answers of the model.");
    Family unpriced = family("unpriced_tokens", "Those of the tokens that have no price.");
    for (const auto &[place, cell] : cells) {
        const Labels labels{{"model", place.first}, {"project", place.second}};
        for (const auto &[count, kind] : kinds) {
            Labels withKind = labels;
            withKind.insert(withKind.begin() + 1, {"kind", kind});
            tokens.add(withKind, std::to_string(cell.counts[count]));
        }
        cost.add(labels, dollarText(cell.counts[UsageCell::picodollars]));
        messages.add(labels, std::to_string(cell.counts[UsageCell::messages]));
        unpriced.add(labels, std::to_string(cell.counts[UsageCell::unpriced]));
    }
    return tokens.text() + cost.text() + messages.text() + unpriced.text();
}

std::string limitText(const std::vector<Limit> &limits) {
    Family used("burnwick_limit_used_ratio", "gauge",
                "Used share of the account's limit, 1 when it is full.");
    Family reset("burnwick_limit_reset_timestamp_seconds", "gauge", "When the limit's window ends.");
    Family observed("burnwick_limit_observed_timestamp_seconds", "gauge",
                    "When the used share was observed.");
    for (const Limit &limit : limits) {
        const Labels labels{{"limit", nameOf(limit.kind)}, {"model", limit.model}};
        used.add(labels, numberText(limit.usedPct / 100));
        if (limit.resetsAt)
            reset.add(labels, secondsText(*limit.resetsAt));
        observed.add(labels, secondsText(limit.observedAt));
    }
    return used.text() + reset.text() + observed.text();
}

} // namespace

std::string metricsForm(const Metrics &metrics, std::string_view version) {
    Family rate("burnwick_burn_tokens_per_minute", "gauge",
                "Input and output tokens a minute, in the logs of the last day.");
    rate.add({}, numberText(metrics.burnRateTokensPerMin));
    Family build("burnwick_build_info", "gauge", "Burnwick's version; always 1.");
    build.add({{"version", version}}, "1");
    return build.text() + useText(metrics) + limitText(metrics.limits) + rate.text();
}

} // namespace burnwick
