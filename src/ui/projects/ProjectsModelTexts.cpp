// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectsModel.h"

#include "display/DisplayFormat.h"
#include "display/DisplayText.h"
#include "ui/controls/PriceMark.h"
#include "ui/projects/ProjectText.h"
#include "ui/projects/Sparkline.h"
#include "ui/text/Text.h"

#include <QStringList>

#include <array>

namespace burnwick {

namespace {

constexpr std::array<const char *, ProjectsModel::columns> heads{"Project", "Tokens per day", "Cost",
                                                                 "Tokens",  "Sessions",       "Last used"};

/// Returns the local time as "2026-11-21 12:53"; empty if null.
QString timeText(const std::optional<Instant> &instant, const Calendar &calendar) {
    if (!instant)
        return {};
    const auto local = Calendar::Cursor(calendar).localTimeOf(*instant);
    const auto day = std::chrono::floor<std::chrono::days>(local);
    const std::chrono::year_month_day date(day);
    const auto minutes = std::chrono::floor<std::chrono::minutes>(local - day).count();
    const auto padded = [](auto number) {
        return QStringLiteral("%1").arg(static_cast<int>(number), 2, 10, QLatin1Char('0'));
    };
    return QStringLiteral("%1-%2-%3 %4:%5")
        .arg(static_cast<int>(date.year()))
        .arg(padded(static_cast<unsigned>(date.month())), padded(static_cast<unsigned>(date.day())),
             padded(minutes / 60), padded(minutes % 60));
}

} // namespace

QVariant ProjectsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columns)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return QString::fromUtf8(heads[static_cast<std::size_t>(section)]);
    case Qt::ToolTipRole:
        return section == cost ? QStringLiteral("At API prices, each answer counted once") : QVariant();
    case Qt::InitialSortOrderRole:
        return section == project ? Qt::AscendingOrder : Qt::DescendingOrder;
    default:
        return {};
    }
}

QVariant ProjectsModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return textAt(index.row(), index.column());
    case Qt::AccessibleTextRole:
        return spokenAt(index.row(), index.column());
    case Qt::ToolTipRole: {
        const QString tip = tipAt(index.row(), index.column());
        return tip.isEmpty() ? QVariant() : plainToolTip(tip);
    }
    case Qt::AccessibleDescriptionRole:
        return tipAt(index.row(), index.column());
    default:
        return {};
    }
}

QString ProjectsModel::textAt(int row, int column) const {
    const ProjectUsage &usage = projectAt(row);
    switch (column) {
    case tokensPerDay:
        return {};
    case cost: {
        const auto price = costAt(row);
        return price ? textOf(costText(*price)) : noPriceText();
    }
    case tokens:
        return textOf(tokenCountText(tokensOf(usage)));
    case sessions:
        return QString::number(usage.sessions);
    case lastUsed:
        return lastUsedText(usage.lastUsed, m_now, *m_calendar);
    default:
        return projectName(usage.path);
    }
}

QString ProjectsModel::spokenAt(int row, int column) const {
    const QString text = textAt(row, column);
    switch (column) {
    case project: {
        const QString path = pathText(row);
        return path.isEmpty() ? text : text + QLatin1String(", ") + path;
    }
    case tokensPerDay: {
        const LocalDay first = m_today - std::chrono::days(sparklineMeasures(m_filter).days - 1);
        return activitySummary(activityOf(projectAt(row)), first, m_today);
    }
    case cost:
        return costAt(row) ? text + QLatin1String(", ") + shareText(shareAt(row)) : text;
    default:
        return text;
    }
}

QString ProjectsModel::tipAt(int row, int column) const {
    const ProjectUsage &usage = projectAt(row);
    switch (column) {
    case project:
        return usage.path.empty() ? QStringLiteral("The logs of these sessions name no folder")
                                  : textOf(displayText(usage.path, usage.path.size() + 2));
    case cost:
        if (!usage.total.hasPrice())
            return QStringLiteral("Burnwick knows no price for the models that were used here. Their tokens "
                                  "are counted, their cost is not.");
        return usage.total.unpriced == 0
                   ? QString()
                   : roundedTokensText(usage.total.unpriced) + QLatin1String(" with no price");
    case tokensPerDay:
        return spokenAt(row, column);
    case tokens:
        return exactTokensText(tokensOf(usage));
    case lastUsed:
        return timeText(usage.lastUsed, *m_calendar);
    default:
        return {};
    }
}

QString ProjectsModel::tabSeparated(const std::vector<int> &rows) const {
    QString lines = QStringLiteral("Project\tCost\tTokens\tSessions\tLast used\n");
    for (const int row : rows) {
        const ProjectUsage &usage = projectAt(row);
        const QString path = usage.path.empty() ? projectName(usage.path) : tipAt(row, project);
        lines += QStringList{path, textAt(row, cost), QString::number(tokensOf(usage)),
                             QString::number(usage.sessions), tipAt(row, lastUsed)}
                     .join(u'\t') +
                 u'\n';
    }
    return lines;
}

} // namespace burnwick
