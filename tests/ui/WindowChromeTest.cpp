// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/WindowChrome.h"
#include "support/VisibleControls.h"
#include "ui/DashboardScenes.h"
#include "ui/SettingsScenes.h"
#include "ui/layout/ScrollAreas.h"
#include "ui/settings/SettingsWindowController.h"

#include <QApplication>
#include <QLayout>
#include <QSignalSpy>

#include <algorithm>

namespace burnwick {
namespace {

constexpr int titleBarHeight = 52;

/// A system whose title bars cover the windows' contents.
class FakeWindowChrome final : public WindowChrome {
public:
    void decorateDashboard(std::uintptr_t, std::function<void()> open, HeightHandler onHeight) override {
        openSettings = std::move(open);
        onHeight(titleBarHeight);
        ++dashboards;
    }
    void decorateSettings(std::uintptr_t, HeightHandler onHeight) override { onHeight(titleBarHeight); }

    std::function<void()> openSettings;
    int dashboards = 0;
};

using DashboardChrome = test::DashboardFixture;

TEST_F(DashboardChrome, ContentsBeginBelowATitleBarThatHasTheSettingsButton) {
    const auto top = [](MainWindowView &window) {
        window.show();
        QCoreApplication::processEvents();
        return window.findChild<FittedArea *>()->mapTo(&window, QPoint()).y();
    };
    MainWindowView bare(windowServices());
    const int bareTop = top(bare);
    EXPECT_NE(test::findIn(bare, QAccessible::Button, "Settings"), nullptr);

    FakeWindowChrome chrome;
    auto services = windowServices();
    services.chrome = &chrome;
    MainWindowView window(services);
    EXPECT_EQ(top(window), bareTop + titleBarHeight);
    EXPECT_EQ(test::findIn(window, QAccessible::Button, "Settings"), nullptr);
    QSignalSpy requested(&window, &MainWindowView::settingsRequested);
    chrome.openSettings();
    EXPECT_EQ(requested.size(), 1);
    window.hide();
    window.show();
    EXPECT_EQ(chrome.dashboards, 1);
}

using SettingsChrome = test::SettingsFixture;

TEST_F(SettingsChrome, ContentsBeginBelowTheTitleBarOfEachNewWindow) {
    FakeWindowChrome chrome;
    auto services = settingsServices();
    services.chrome = &chrome;
    SettingsWindowController controller(services);
    for (const char *opening : {"first", "second"}) {
        controller.show({});
        QCoreApplication::processEvents();
        const auto windows = QApplication::topLevelWidgets();
        const auto found = std::ranges::find(windows, QStringLiteral("Settings"), &QWidget::windowTitle);
        ASSERT_NE(found, windows.end());
        EXPECT_EQ((*found)->layout()->contentsMargins(), QMargins(0, titleBarHeight, 0, 0)) << opening;
        (*found)->close();
    }
}

} // namespace
} // namespace burnwick
