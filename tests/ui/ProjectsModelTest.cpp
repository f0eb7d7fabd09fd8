// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectsModel.h"
#include "support/HostileTexts.h"
#include "support/ManualClock.h"
#include "ui/projects/ProjectText.h"
#include "ui/projects/Sparkline.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QStringList>

#include <string>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Model = ProjectsModel;

const Instant now = test::at("2026-11-21T12:55:00Z");

ProjectUsage projectOf(const std::string &path, double cost, std::int64_t tokens, std::int64_t unpriced = 0) {
    ProjectUsage usage{.path = path, .sessions = 1};
    usage.total = {tokens, unpriced, cost};
    usage.loggedTokens = 2 * tokens;
    return usage;
}

UsageFigures figuresOf(std::vector<ProjectUsage> projects, FigureChoice choice = FigureChoice::exact) {
    UsageFigures usage{Calendar::inZone("UTC")};
    usage.figureChoice = choice;
    UsageBreakdown breakdown;
    std::ranges::sort(projects, {}, &ProjectUsage::path);
    for (const ProjectUsage &project : projects) {
        breakdown.total.tokens += project.total.tokens;
        breakdown.total.unpriced += project.total.unpriced;
        breakdown.total.cost += project.total.cost;
    }
    breakdown.projects = std::move(projects);
    usage.breakdown = std::make_shared<const UsageBreakdown>(std::move(breakdown));
    return usage;
}

class ProjectsModelTest : public testing::Test {
protected:
    std::string textsOf(int column) {
        QStringList texts;
        for (int row = 0; row < m_model.rowCount(); ++row)
            texts << m_model.index(row, column).data().toString();
        return texts.join(u'|').toStdString();
    }

    Model m_model{"/home/me"};
    QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ProjectsModelTest, SortsByEachColumn) {
    ProjectUsage a = projectOf("/a", 5, 300);
    ProjectUsage b = projectOf("/x/B", 0, 900, 900);
    ProjectUsage c = projectOf("/c", 7, 200, 100);
    ProjectUsage d = projectOf("/d", 5, 300);
    ProjectUsage unknown = projectOf("", 6, 400);
    a.lastUsed = now - 5h;
    b.lastUsed = now - 1h;
    d.lastUsed = unknown.lastUsed = now - 48h;
    a.sessions = 2;
    unknown.sessions = 12;
    a.days[LocalDay(LocalDay::duration(20'778))] = {3, 0, 0}; // today
    d.days[LocalDay(LocalDay::duration(20'700))] = {9, 0, 0}; // before the sparkline's days
    m_model.setFigures(figuresOf({a, b, c, d, unknown}), now);
    const std::string byCost = "c|Unknown project|a|d|B";
    EXPECT_EQ(textsOf(Model::project), byCost) << "at first";
    struct Row {
        int column;
        const char *ascending;
        const char *descending;
    };
    // Equal rows in the order of their paths; rows without a price, a time or a name last.
    const Row rows[] = {
        {Model::project, "a|B|c|d|Unknown project", "d|c|B|a|Unknown project"},
        {Model::tokensPerDay, "Unknown project|c|d|B|a", "a|Unknown project|c|d|B"},
        {Model::cost, "a|d|Unknown project|c|B", "c|Unknown project|a|d|B"},
        {Model::tokens, "c|a|d|Unknown project|B", "B|Unknown project|a|d|c"},
        {Model::sessions, "c|d|B|a|Unknown project", "Unknown project|a|c|d|B"},
        {Model::lastUsed, "Unknown project|d|a|B|c", "B|a|Unknown project|d|c"},
    };
    for (const Row &row : rows) {
        m_model.sort(row.column, Qt::AscendingOrder);
        EXPECT_EQ(textsOf(Model::project), row.ascending) << row.column;
        m_model.sort(row.column, Qt::DescendingOrder);
        EXPECT_EQ(textsOf(Model::project), row.descending) << row.column;
    }
}

TEST_F(ProjectsModelTest, TokensFollowTheChoiceAndCostsDoNot) {
    ProjectUsage project = projectOf("/a", 5, 300);
    project.days[LocalDay(LocalDay::duration(20'778))] = {3, 0, 0};
    project.loggedDays[LocalDay(LocalDay::duration(20'778))] = 8;
    struct Row {
        FigureChoice choice;
        const char *tokens;
        std::int64_t today;
        std::int64_t total;
    };
    for (const Row &row :
         {Row{FigureChoice::exact, "300|100", 3, 400}, {FigureChoice::asLogged, "600|200", 8, 800}}) {
        m_model.setFigures(figuresOf({project, projectOf("/b", 1, 100, 40)}, row.choice), now);
        EXPECT_EQ(textsOf(Model::tokens), row.tokens);
        EXPECT_EQ(textsOf(Model::cost), "$5.00|$1.00");
        EXPECT_EQ(m_model.dayCountsAt(0).back(), row.today);
        EXPECT_EQ(m_model.totals().days.back(), row.today);
        EXPECT_EQ(m_model.totals().tokens, row.total);
        EXPECT_EQ(m_model.totals().priced, (PricedTokens{400, 40, 6}));
        EXPECT_NEAR(m_model.shareAt(0), 83.3, 0.1);
    }
}

TEST_F(ProjectsModelTest, IndexesFollowTheirProjects) {
    m_model.setFigures(figuresOf({projectOf("/a", 3, 1), projectOf("/b", 2, 1), projectOf("/c", 1, 1)}), now);
    const QPersistentModelIndex a(m_model.index(0, 0));
    const QPersistentModelIndex b(m_model.index(1, 0));
    const QPersistentModelIndex c(m_model.index(2, 3));
    m_model.setFigures(figuresOf({projectOf("/0", 8, 1), projectOf("/a", 3, 1), projectOf("/bb", 2, 1),
                                  projectOf("/c", 9, 1)}),
                       now);
    EXPECT_EQ(textsOf(Model::project), "c|0|a|bb");
    EXPECT_EQ(a.row(), 2);
    EXPECT_FALSE(b.isValid());
    EXPECT_EQ(c.row(), 0);
    EXPECT_EQ(c.column(), 3);
    m_model.sort(Model::project, Qt::AscendingOrder);
    EXPECT_EQ(a.row(), 1);
    m_model.setFigures(figuresOf({}), now);
    EXPECT_FALSE(a.isValid());
    EXPECT_EQ(m_model.rowCount(), 0);
}

TEST_F(ProjectsModelTest, CopiesExactFigures) {
    ProjectUsage a = projectOf("/home/me/a\tb", 1.5, 1'234'567);
    a.lastUsed = now - 4h;
    m_model.setFigures(figuresOf({a, projectOf("/b", 0, 9, 9), projectOf("", 0.001, 2)}), now);
    EXPECT_EQ(m_model.tabSeparated({0, 2}).toStdString(),
              "Project\tCost\tTokens\tSessions\tLast used\n"
              "/home/me/a\uFFFDb\t$1.50\t1234567\t1\t2026-11-21 08:55\n"
              "/b\tno price\t9\t1\t\n");
    EXPECT_EQ(m_model.tabSeparated({1}).section(u'\n', 1).toStdString(),
              "Unknown project\t$0.0010\t2\t1\t\n");
}

TEST_F(ProjectsModelTest, PathsAreHarmless) {
    for (const test::HostileText &hostile : test::hostileTexts()) {
        SCOPED_TRACE(hostile.what);
        m_model.setFigures(figuresOf({projectOf("/" + hostile.text, 1, 1)}), now);
        for (int column = 0; column < Model::columns; ++column)
            for (const int role : {Qt::DisplayRole, Qt::AccessibleTextRole, Qt::ToolTipRole}) {
                const QString text = m_model.index(0, column).data(role).toString();
                EXPECT_FALSE(test::hasControls(text.toStdString())) << role;
                EXPECT_TRUE(role != Qt::ToolTipRole || !text.contains(QLatin1String("<b>")));
            }
        EXPECT_EQ(m_model.tabSeparated({0}).count(u'\n'), 2);
        EXPECT_EQ(m_model.tabSeparated({0}).count(u'\t'), 8);
    }
}

TEST(ProjectTextTest, NamesAndPaths) {
    struct Row {
        const char *path;
        const char *name;
        const char *shown;
    };
    for (const Row &row : {Row{"/home/me/work/atlas", "atlas", "~/work/atlas"},
                           {"/home/me/work/atlas/", "atlas", "~/work/atlas"},
                           {"/home/me", "me", "~"},
                           {"/home/mea/x", "x", "/home/mea/x"},
                           {"/", "/", "/"},
                           {"C:", "C:", "C:"},
                           {"", "Unknown project", ""}}) {
        EXPECT_EQ(projectName(row.path).toStdString(), row.name);
        EXPECT_EQ(projectPath(row.path, "/home/me/").toStdString(), row.shown);
    }
    EXPECT_EQ(projectPath("/srv", "/").toStdString(), "/srv") << "a home folder that contains all";
}

TEST(ProjectTextTest, SharesAndAges) {
    for (const auto &[share, text] :
         {std::pair(0.0, "0%"), {0.001, "<1%"}, {0.49, "<1%"}, {0.5, "1%"}, {99.6, "100%"}})
        EXPECT_EQ(shareText(share).toStdString(), text);
    const Calendar berlin = Calendar::inZone("Europe/Berlin"); // 13:55
    struct Row {
        const char *lastUsed;
        const char *text;
    };
    for (const Row &row : {Row{"2026-11-21T12:53:00Z", "2 minutes ago"},
                           {"2026-11-20T23:00:00Z", "13h ago"},
                           {"2026-11-20T22:59:59Z", "Yesterday"},
                           {"2026-11-19T22:59:59Z", "Nov 19"},
                           {"2025-12-31T12:00:00Z", "Dec 31, 2025"},
                           {"2026-11-22T12:00:00Z", "just now"}})
        EXPECT_EQ(lastUsedText(test::at(row.lastUsed), now, berlin).toStdString(), row.text);
    const Instant night = test::at("2026-11-20T23:10:00Z");
    EXPECT_EQ(lastUsedText(night - 20min, night, berlin).toStdString(), "20 minutes ago") << "after midnight";
    EXPECT_EQ(lastUsedText({}, now, berlin).toStdString(), "–");
}

TEST_F(ProjectsModelTest, SparklinesShowTheLastDaysOfTheFilter) {
    const LocalDay today(LocalDay::duration(20'778));
    ProjectUsage project = projectOf("/a", 5, 300);
    for (const int daysAgo : {-1, 0, 6, 7, 29, 30, 61, 62})
        project.days[today - std::chrono::days(daysAgo)] = {100 + daysAgo, 0, 0};
    struct Row {
        TimeFilter filter;
        std::size_t days;
        std::int64_t first;
    };
    for (const Row &row : {Row{TimeFilter::all, 62, 161},
                           {TimeFilter::thirtyDays, 30, 129},
                           {TimeFilter::sevenDays, 7, 106}}) {
        UsageFigures usage = figuresOf({project});
        usage.timeFilter = row.filter;
        m_model.setFigures(usage, now);
        const auto counts = m_model.dayCountsAt(0);
        ASSERT_EQ(counts.size(), row.days);
        EXPECT_EQ(counts.front(), row.first);
        EXPECT_EQ(counts.back(), 100);
        EXPECT_EQ(m_model.totals().days, counts);
    }
}

TEST(SparklineTest, HasABarForEachDayOnItsOwnScale) {
    struct Row {
        TimeFilter filter;
        std::size_t count;
        double width; ///< of all bars
    };
    for (const Row &row : {Row{TimeFilter::all, 62, 123},
                           {TimeFilter::thirtyDays, 30, 119},
                           {TimeFilter::sevenDays, 7, 122}}) {
        const SparklineMeasures measures = sparklineMeasures(row.filter);
        std::vector<std::int64_t> counts(row.count);
        const QRectF area(10, 5, 123, 20);
        EXPECT_EQ(layoutSparkline(counts, measures, area).front().height(), 0) << "no tokens";
        counts.front() = 1'000;
        counts[row.count - 2] = 1;
        counts.back() = 250;
        const auto bars = layoutSparkline(counts, measures, area);
        ASSERT_EQ(bars.size(), row.count);
        EXPECT_EQ(bars.front(), QRectF(10, 5, measures.bar, 20));
        EXPECT_EQ(bars[1].height(), 0);
        EXPECT_EQ(bars[row.count - 2].height(), 1) << "a token is visible";
        EXPECT_EQ(bars.back(), QRectF(10 + row.width - measures.bar, 20, measures.bar, 5));
    }
}

} // namespace
} // namespace burnwick
