// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// Takes a picture of every scene of the dashboard, in both themes, into the folder that
// BURNWICK_SHOTS_DIRECTORY names.

#include "ui/DashboardScenes.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemePalette.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QTest>

namespace burnwick {
namespace {

class DashboardShots : public test::DashboardFixture, public testing::WithParamInterface<std::size_t> {};

TEST_P(DashboardShots, AreTaken) {
    const QDir directory(qEnvironmentVariable("BURNWICK_SHOTS_DIRECTORY"));
    ASSERT_TRUE(directory.exists()) << directory.path().toStdString();
    QApplication::setStyle(new QuietStyle);
    const test::DashboardScene &scene = test::dashboardScenes().at(GetParam());
    MainWindowView window(windowServices());
    window.show();
    scene.prepare(*this);
    if (scene.tab == 1)
        QTest::keyClick(&window, Qt::Key_2, Qt::ControlModifier);
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        QApplication::setPalette(paletteOf(scheme));
        QCoreApplication::processEvents();
        const QString theme = scheme == ColorScheme::dark ? QStringLiteral("dark") : QStringLiteral("light");
        const QString file = QString::fromStdString(scene.name) + u'-' + theme + QStringLiteral(".png");
        EXPECT_TRUE(window.grab().save(directory.filePath(file)));
    }
}

INSTANTIATE_TEST_SUITE_P(Scenes, DashboardShots,
                         testing::Range(std::size_t{0}, test::dashboardScenes().size()));

} // namespace
} // namespace burnwick
