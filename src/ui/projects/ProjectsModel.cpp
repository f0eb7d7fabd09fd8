// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectsModel.h"

#include "ui/projects/ProjectText.h"
#include "ui/projects/Sparkline.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>

namespace burnwick {

namespace {

constexpr std::size_t vanished = std::numeric_limits<std::size_t>::max();

/// Returns the index among `next` of each of the projects. Both are in the order of their paths.
std::vector<std::size_t> newIndexes(const std::vector<ProjectUsage> &projects,
                                    const std::vector<ProjectUsage> &next) {
    std::vector<std::size_t> indexes;
    indexes.reserve(projects.size());
    std::size_t i = 0;
    for (const ProjectUsage &project : projects) {
        while (i < next.size() && next[i].path < project.path)
            ++i;
        indexes.push_back(i < next.size() && next[i].path == project.path ? i : vanished);
    }
    return indexes;
}

} // namespace

/// Of one column: a number or a text.
struct ProjectsModel::Key {
    bool isMissing = false;
    double number = 0;
    QString text{};
};

ProjectsModel::ProjectsModel(std::string home)
    : m_home(std::move(home))
    , m_breakdown(std::make_shared<const UsageBreakdown>()) {}

void ProjectsModel::setFigures(const UsageFigures &usage, Instant now) {
    const LocalDay today = usage.calendar.dayOf(now);
    const bool isSame = m_breakdown == usage.breakdown || *m_breakdown == *usage.breakdown;
    const bool isShownAlike = m_choice == usage.figureChoice && m_filter == usage.timeFilter &&
                              m_calendar == usage.calendar && m_today == today;
    m_choice = usage.figureChoice;
    m_filter = usage.timeFilter;
    m_calendar = usage.calendar;
    m_today = today;
    const bool isLater = std::exchange(m_now, now) != now;
    if (!isSame)
        replaceRows(usage.breakdown);
    if (!isSame || !isShownAlike) {
        addUp();
        sortRows();
    }
    if (m_order.empty() || (isSame && isShownAlike && !isLater))
        return;
    const int first = isSame && isShownAlike ? lastUsed : 0;
    Q_EMIT dataChanged(index(0, first), index(rowCount() - 1, columns - 1));
}

/// Removes the rows of the vanished projects, and adds those of new ones at the end.
void ProjectsModel::replaceRows(std::shared_ptr<const UsageBreakdown> breakdown) {
    const auto indexes = newIndexes(m_breakdown->projects, breakdown->projects);
    std::vector<std::size_t> order = m_order;
    const auto tail = std::ranges::stable_partition(
        order, [&indexes](std::size_t old) { return indexes[old] != vanished; });
    const std::size_t kept = order.size() - tail.size();
    if (kept < order.size()) {
        reorder(std::move(order));
        beginRemoveRows({}, static_cast<int>(kept), rowCount() - 1);
        m_order.resize(kept);
        endRemoveRows();
    }
    const std::size_t count = breakdown->projects.size();
    std::vector<bool> isKnown(count, false);
    for (std::size_t &shown : m_order) {
        shown = indexes[shown];
        isKnown[shown] = true;
    }
    m_breakdown = std::move(breakdown);
    if (kept == count)
        return;
    beginInsertRows({}, static_cast<int>(kept), static_cast<int>(count) - 1);
    for (std::size_t i = 0; i < count; ++i) {
        if (!isKnown[i])
            m_order.push_back(i);
    }
    endInsertRows();
}

void ProjectsModel::reorder(std::vector<std::size_t> order) {
    if (order == m_order)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<int> rows(m_breakdown->projects.size());
    for (std::size_t row = 0; row < order.size(); ++row)
        rows[order[row]] = static_cast<int>(row);
    const QModelIndexList from = persistentIndexList();
    QModelIndexList to;
    for (const QModelIndex &old : from)
        to.append(index(rows[m_order[static_cast<std::size_t>(old.row())]], old.column()));
    m_order = std::move(order);
    changePersistentIndexList(from, to);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void ProjectsModel::sort(int column, Qt::SortOrder order) {
    m_sortColumn = column;
    m_sortOrder = order;
    sortRows();
}

void ProjectsModel::sortRows() {
    std::vector<Key> keys;
    keys.reserve(m_breakdown->projects.size());
    for (const ProjectUsage &usage : m_breakdown->projects)
        keys.push_back(keyOf(usage));
    std::vector<std::size_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, [this, &keys](std::size_t one, std::size_t other) {
        const Key &left = keys[one];
        const Key &right = keys[other];
        if (left.isMissing != right.isMissing)
            return right.isMissing;
        const auto &[less, more] =
            m_sortOrder == Qt::AscendingOrder ? std::tie(left, right) : std::tie(right, left);
        return less.number < more.number || less.text.compare(more.text, Qt::CaseInsensitive) < 0;
    });
    reorder(std::move(order));
}

ProjectsModel::Key ProjectsModel::keyOf(const ProjectUsage &usage) const {
    switch (m_sortColumn) {
    case tokensPerDay: {
        std::vector<std::int64_t> counts = noDays();
        addDays(counts, usage);
        return {.number = std::accumulate(counts.begin(), counts.end(), 0.0)};
    }
    case cost:
        return {.isMissing = !usage.total.hasPrice(), .number = usage.total.cost};
    case tokens:
        return {.number = static_cast<double>(tokensOf(usage))};
    case sessions:
        return {.number = static_cast<double>(usage.sessions)};
    case lastUsed: {
        const bool isMissing = !usage.lastUsed;
        return {isMissing,
                isMissing ? 0 : std::chrono::duration<double>(usage.lastUsed->time_since_epoch()).count()};
    }
    default:
        return {.isMissing = usage.path.empty(), .text = projectName(usage.path)};
    }
}

std::int64_t ProjectsModel::tokensOf(const ProjectUsage &usage) const {
    return m_choice == FigureChoice::exact ? usage.total.tokens : usage.loggedTokens;
}

/// Returns a 0 for each of the days that sparklines show, from the oldest to today.
std::vector<std::int64_t> ProjectsModel::noDays() const {
    return std::vector<std::int64_t>(static_cast<std::size_t>(sparklineMeasures(m_filter).days));
}

void ProjectsModel::addDays(std::vector<std::int64_t> &counts, const ProjectUsage &usage) const {
    const LocalDay first = m_today - std::chrono::days(counts.size() - 1);
    const auto add = [&](const auto &days, auto tokensOn) {
        for (auto day = days.lower_bound(first); day != days.end() && day->first <= m_today; ++day)
            counts[static_cast<std::size_t>((day->first - first).count())] += tokensOn(day->second);
    };
    if (m_choice == FigureChoice::exact)
        add(usage.days, [](const PricedTokens &priced) { return priced.tokens; });
    else
        add(usage.loggedDays, std::identity());
}

DailyActivity ProjectsModel::activityOf(const ProjectUsage &usage) const {
    if (m_choice == FigureChoice::asLogged)
        return usage.loggedDays;
    DailyActivity activity;
    for (const auto &[day, priced] : usage.days)
        activity.emplace_hint(activity.end(), day, priced.tokens);
    return activity;
}

void ProjectsModel::addUp() {
    m_totals = Totals();
    m_totals.priced = m_breakdown->total;
    m_totals.days = noDays();
    for (const ProjectUsage &usage : m_breakdown->projects) {
        m_totals.tokens += tokensOf(usage);
        m_totals.sessions += usage.sessions;
        addDays(m_totals.days, usage);
    }
}

const ProjectUsage &ProjectsModel::projectAt(int row) const {
    return m_breakdown->projects[m_order[static_cast<std::size_t>(row)]];
}

std::optional<double> ProjectsModel::costAt(int row) const {
    const PricedTokens &total = projectAt(row).total;
    return total.hasPrice() ? std::optional(total.cost) : std::nullopt;
}

double ProjectsModel::shareAt(int row) const {
    return m_totals.priced.cost > 0 ? projectAt(row).total.cost / m_totals.priced.cost * 100 : 0;
}

std::vector<std::int64_t> ProjectsModel::dayCountsAt(int row) const {
    std::vector<std::int64_t> counts = noDays();
    addDays(counts, projectAt(row));
    return counts;
}

QString ProjectsModel::pathText(int row) const {
    return projectPath(projectAt(row).path, m_home);
}

int ProjectsModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_order.size());
}

int ProjectsModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : columns;
}

} // namespace burnwick
