// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// Takes a picture of every scene, in both themes, into the folder that BURNWICK_SHOTS_DIRECTORY names.

#include "ui/DashboardScenes.h"
#include "ui/SettingsScenes.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QScrollArea>
#include <QScrollBar>

namespace burnwick {
namespace {

void takePictures(QWidget &window, const std::string &scene) {
    const QDir directory(qEnvironmentVariable("BURNWICK_SHOTS_DIRECTORY"));
    ASSERT_TRUE(directory.exists()) << directory.path().toStdString();
    for (const auto &[scheme, ending] :
         {std::pair(ColorScheme::light, "-light.png"), {ColorScheme::dark, "-dark.png"}}) {
        QApplication::setPalette(paletteOf(scheme));
        QCoreApplication::processEvents();
        const QString file = QString::fromStdString(scene + ending);
        EXPECT_TRUE(window.grab().save(directory.filePath(file)));
    }
}

template <typename Fixture, typename Scene>
class Shots : public Fixture, public testing::WithParamInterface<Scene> {
protected:
    Shots() { QApplication::setStyle(new QuietStyle); }
};

using DashboardShots = Shots<test::DashboardFixture, test::DashboardScene>;

TEST_P(DashboardShots, AreTaken) {
    MainWindowView window(windowServices());
    play(GetParam(), window);
    takePictures(window, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Scenes, DashboardShots, testing::ValuesIn(test::dashboardScenes()));

using SettingsShots = Shots<test::SettingsFixture, test::SettingsScene>;

TEST_P(SettingsShots, AreTaken) {
    m_center.status = GetParam().authorization;
    m_preferences.setRefreshRate(RefreshRate::fiveMin);
    m_preferences.setKeepHistory(true);
    m_usage.keptSessions = 56;
    m_usage.keptMessages = 1234;
    openView();
    if (GetParam().isAtEnd) {
        QScrollBar *bar = m_view->findChild<QScrollArea *>()->verticalScrollBar();
        bar->setValue(bar->maximum());
    }
    if (GetParam().asks)
        test::press(*m_view, QAccessible::CheckBox, "Keep history");
    QWidget *alert = QApplication::activeModalWidget();
    takePictures(alert != nullptr ? *alert : *m_view, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Scenes, SettingsShots, testing::ValuesIn(test::settingsScenes()));

} // namespace
} // namespace burnwick
