// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectsTab.h"
#include "support/ManualClock.h"
#include "support/VisibleControls.h"
#include "support/WaitFor.h"
#include "ui/controls/PriceMark.h"
#include "ui/projects/ProjectsTable.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <string>

namespace burnwick {
namespace {

const Instant now = test::at("2026-11-21T12:55:00Z");

class ProjectsTabTest : public testing::Test {
protected:
    ProjectsTabTest() {
        m_tab.setPalette(paletteOf(ColorScheme::light));
        m_tab.resize(760, 574);
        m_tab.show();
        m_tab.activateWindow();
    }
    /// Shows projects in the folders, each at a lower cost than the one before.
    void show(const std::vector<std::string> &paths) {
        UsageBreakdown breakdown;
        auto cost = static_cast<double>(paths.size());
        for (const std::string &path : paths) {
            breakdown.projects.push_back({.path = path});
            breakdown.projects.back().total = {100, 0, cost--};
        }
        std::ranges::sort(breakdown.projects, {}, &ProjectUsage::path);
        m_usage.breakdown = std::make_shared<const UsageBreakdown>(std::move(breakdown));
        m_tab.setFigures(m_usage, now);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] ProjectsTable &table() const { return *m_tab.findChild<ProjectsTable *>(); }
    [[nodiscard]] QString firstName() const { return table().model()->index(0, 0).data().toString(); }
    QString copied() {
        QTest::keyClick(&m_tab, Qt::Key_C, Qt::ControlModifier);
        QString first;
        const QString text = QGuiApplication::clipboard()->text();
        for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts).mid(1))
            first += line.section(u'\t', 0, 0);
        return first;
    }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) {
        const QRect cell = table().visualRect(table().model()->index(row, 0));
        QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers, cell.center());
    }

    UsageFigures m_usage{Calendar::inZone("UTC")};
    QStringList m_opened;
    ProjectsTab m_tab{[this](const QUrl &url) { m_opened << url.toLocalFile(); }};
};

TEST_F(ProjectsTabTest, CopiesTheSelectedRowsOrAll) {
    ASSERT_TRUE(waitFor([this] { return m_tab.isActiveWindow(); }));
    show({"/a", "/b", "/c"});
    EXPECT_EQ(copied(), QStringLiteral("/a/b/c"));
    clickRow(2);
    clickRow(0, Qt::ControlModifier);
    EXPECT_EQ(copied(), QStringLiteral("/a/c")) << "in the order of the rows";
    show({"/0", "/c", "/b", "/a"});
    EXPECT_EQ(copied(), QStringLiteral("/c/a")) << "the selection follows its projects";
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_EQ(copied(), QStringLiteral("/0/c/b/a"));
}

TEST_F(ProjectsTabTest, OpensOnlyExistingFolders) {
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    show({path, path + "/gone", "", "relative", "/etc/passwd"});
    for (int row = 0; row < 5; ++row) {
        clickRow(row);
        const QPoint place = table().visualRect(table().model()->index(row, 0)).center();
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, place);
        EXPECT_EQ(m_opened.size(), row == 0 ? 1 : 2) << row;
        QTest::keyClick(&table(), row == 0 ? Qt::Key_Return : Qt::Key_Enter);
        EXPECT_EQ(m_opened.join(u'|'), folder.path() + u'|' + folder.path()) << row;
    }
}

TEST_F(ProjectsTabTest, HeadsSortByMouseAndKeyboardAndTheTableIsTheNextStop) {
    ASSERT_TRUE(waitFor([this] { return m_tab.isActiveWindow(); }));
    show({"/c", "/a", "/b"});
    EXPECT_EQ(firstName(), QStringLiteral("c"));
    const auto descriptionOf = [this](const char *head) {
        return test::findIn(m_tab, QAccessible::Button, head)->text(QAccessible::Description).toStdString();
    };
    EXPECT_EQ(descriptionOf("Cost"), "At API prices, each answer counted once. Sorted, highest first");
    QTest::keyClick(&m_tab, Qt::Key_Tab);
    struct Step {
        Qt::Key key;
        const char *first;
        const char *description;
    };
    for (const Step &step :
         {Step{Qt::Key_Space, "a", "Sorted, lowest first"}, {Qt::Key_Return, "c", "Sorted, highest first"}}) {
        QTest::keyClick(QApplication::focusWidget(), step.key);
        EXPECT_EQ(firstName(), QLatin1String(step.first));
        EXPECT_EQ(descriptionOf("Project"), step.description);
    }
    EXPECT_EQ(descriptionOf("Cost"), "At API prices, each answer counted once. Sorts the projects");
    test::press(m_tab, QAccessible::Button, "Cost");
    test::press(m_tab, QAccessible::Button, "Cost");
    EXPECT_EQ(firstName(), QStringLiteral("b"));
    for (int i = 0; i < 6; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &table());
    QTest::keyClick(&table(), Qt::Key_End);
    EXPECT_EQ(table().currentIndex().row(), 2);
    QTest::keyClick(&table(), Qt::Key_Home);
    EXPECT_EQ(table().currentIndex().row(), 0);
    QTest::keyClick(&table(), Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), &table()) << "the key moves in the table";
}

TEST_F(ProjectsTabTest, ThousandsOfRowsNeedNoWidgetsAndKeepTheirScrollPosition) {
    EXPECT_EQ(test::namesIn(m_tab).filter(QStringLiteral("No projects yet")).size(), 1);
    show({"/a"});
    EXPECT_TRUE(test::namesIn(m_tab).filter(QStringLiteral("No projects yet")).isEmpty());
    const auto widgets = m_tab.findChildren<QWidget *>().size();
    std::vector<std::string> paths;
    for (int i = 0; i < 5'000; ++i)
        paths.push_back("/work/project-" + std::to_string(i));
    show(paths);
    EXPECT_EQ(m_tab.findChildren<QWidget *>().size(), widgets);
    QScrollBar &bar = *table().verticalScrollBar();
    EXPECT_EQ(table().rowAt(0), 0);
    bar.setValue(61 * 2'000);
    EXPECT_EQ(table().rowAt(0), 2'000);
    paths.erase(paths.begin() + 4'000, paths.end());
    paths.emplace_back("/new");
    show(paths);
    EXPECT_EQ(table().rowAt(0), 2'000);
    EXPECT_EQ(bar.maximum(), 4'001 * 61 - table().viewport()->height());
}

TEST_F(ProjectsTabTest, ShowsCostsAsBarsAndAMarkWithoutPrice) {
    UsageBreakdown breakdown;
    breakdown.total = {300, 100, 4};
    breakdown.projects = {{.path = "/a"}, {.path = "/b"}};
    breakdown.projects[0].total = {200, 0, 3};
    breakdown.projects[1].total = {100, 100, 0};
    m_usage.breakdown = std::make_shared<const UsageBreakdown>(breakdown);
    m_tab.setFigures(m_usage, now);
    const QImage image = table().grab().toImage();
    /// The widths of what is painted above the row's line, and of the bar's filled part.
    const auto widthsOf = [&image, this](int row) {
        const QRect cell = table().visualRect(table().model()->index(row, 2)).adjusted(0, 0, 0, -1);
        const QColor ground = image.pixelColor(cell.topLeft());
        QRect painted;
        QRect filled;
        for (int y = cell.top(); y <= cell.bottom(); ++y) {
            for (int x = cell.left(); x <= cell.right(); ++x) {
                const QRect pixel(x, y, 1, 1);
                const QColor color = image.pixelColor(x, y);
                painted |= color == ground ? QRect() : pixel;
                filled |= color == colorsOf(ColorScheme::light).accent ? pixel : QRect();
            }
        }
        return std::pair(painted.width(), filled.width());
    };
    EXPECT_NEAR(widthsOf(0).first, 116, 1);
    EXPECT_NEAR(widthsOf(0).second, 116 * 3 / 4, 3);
    EXPECT_NEAR(widthsOf(1).first, PriceMark().sizeHint().width(), 2);
    EXPECT_EQ(widthsOf(1).second, 0);
    EXPECT_TRUE(table()
                    .model()
                    ->index(1, 2)
                    .data(Qt::ToolTipRole)
                    .toString()
                    .contains(QLatin1String("knows no price")));
    EXPECT_EQ(test::namesIn(m_tab).last().toStdString(),
              "Total: 2 projects · 100 with no price, $4.00, no tokens, 0 sessions");
}

} // namespace
} // namespace burnwick
