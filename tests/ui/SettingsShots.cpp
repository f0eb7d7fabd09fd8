// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// Takes a picture of every scene of the settings, in both themes, into the folder that
// BURNWICK_SHOTS_DIRECTORY names.

#include "ui/SettingsScenes.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemePalette.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>

namespace burnwick {
namespace {

class SettingsShots : public test::SettingsFixture, public testing::WithParamInterface<std::size_t> {};

TEST_P(SettingsShots, AreTaken) {
    const QDir directory(qEnvironmentVariable("BURNWICK_SHOTS_DIRECTORY"));
    ASSERT_TRUE(directory.exists()) << directory.path().toStdString();
    QApplication::setStyle(new QuietStyle);
    const test::SettingsScene &scene = test::settingsScenes().at(GetParam());
    m_center.status = scene.authorization;
    m_preferences.setRefreshRate(RefreshRate::fiveMin);
    SettingsView window(settingsServices());
    window.show();
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        QApplication::setPalette(paletteOf(scheme));
        QCoreApplication::processEvents();
        const QString theme = scheme == ColorScheme::dark ? QStringLiteral("dark") : QStringLiteral("light");
        const QString file = QString::fromStdString(scene.name) + u'-' + theme + QStringLiteral(".png");
        EXPECT_TRUE(window.grab().save(directory.filePath(file)));
    }
}

INSTANTIATE_TEST_SUITE_P(Scenes, SettingsShots,
                         testing::Range(std::size_t{0}, test::settingsScenes().size()));

} // namespace
} // namespace burnwick
