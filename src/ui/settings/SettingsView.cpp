// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsView.h"

#include "model/Version.h"
#include "platform/LoginItem.h"
#include "prefs/PreferencesManager.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/SvgIcon.h"
#include "ui/controls/Switch.h"
#include "ui/layout/ScreenRoom.h"
#include "ui/layout/ScrollAreas.h"
#include "ui/settings/NotificationPermission.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"
#include "ui/theme/QuietStyle.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace burnwick {

namespace {

constexpr int windowWidth = 360;
constexpr int windowHeight = 580;
constexpr int sidePadding = 16;
constexpr int cardSpacing = 8;

using P = PreferencesManager;

SettingsRow *rowOf(QWidget *control) {
    return new SettingsRow(control->accessibleName(), control);
}

QString labelOf(FigureChoice choice) {
    return choice == FigureChoice::exact ? QStringLiteral("Exact") : QStringLiteral("As logged");
}

/// The cards scroll on low screens.
QScrollArea *makeScrolling(QWidget *cards) {
    auto *area = new QScrollArea;
    makeColumn(*area, cards);
    QuietStyle::layOverMargin(*area->verticalScrollBar());
    return area;
}

} // namespace

SettingsView::SettingsView(Services services)
    : m_services(std::move(services)) {
    setAccessibleRole(*this, QAccessible::Window);
    auto *room = new ScreenRoom(this);
    connect(room, &ScreenRoom::changed, this, [this] { fitTo(*screen()); });
    fitTo(*screen());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addWidget(makeDivider());
    column->addWidget(makeScrolling(makeCards()), 1);
    column->addWidget(makeDivider());
    column->addWidget(makeFooter());
    addShortcuts();
    new FocusRing(this);
    // So that no control has the focus at first.
    setFocusPolicy(Qt::ClickFocus);
    setFocus();
}

void SettingsView::fitTo(const QScreen &screen) {
    setFixedSize(windowWidth, std::min(windowHeight, roomOn(screen).height()));
}

QWidget *SettingsView::makeHeader() {
    constexpr int logoSize = 38;
    auto *header = new QWidget;
    auto *line = new QHBoxLayout(header);
    line->setContentsMargins(sidePadding, 4, sidePadding, 12);
    line->setSpacing(10);
    line->addWidget(makeLogo(logoSize));
    line->addWidget(new TextLabel(QStringLiteral("Settings"), TextStyle::labelStrong));
    line->addStretch();
    return header;
}

QWidget *SettingsView::makeCards() {
    auto *cards = new QWidget;
    auto *column = new QVBoxLayout(cards);
    column->setContentsMargins(sidePadding, cardSpacing, sidePadding, cardSpacing);
    column->setSpacing(cardSpacing);
    const auto add = [column](std::initializer_list<SettingsRow *> rows, const QString &title = {}) {
        auto *card = new SettingsCard(title);
        for (SettingsRow *row : rows)
            card->addRow(row);
        column->addWidget(card);
    };
    Switch *launch = makeSwitch("Launch at startup",
                                {&P::launchAtStartup, &P::setLaunchAtStartup, &P::launchAtStartupChanged});
    SettingsRow *launchRow = rowOf(launch);
    const auto showLaunch = [this, launch, launchRow] {
        const LoginItemState state = m_services.loginItem.state();
        launch->setOn(state != LoginItemState::off);
        launchRow->setLabel(state == LoginItemState::requiresApproval
                                ? QStringLiteral("Launch at startup: allow it in the system's settings")
                                : launch->accessibleName());
    };
    showLaunch();
    m_showLaunch = showLaunch;
    connect(launch, &Switch::flipped, this, [this, showLaunch](bool on) {
        registerAtDesktop(on);
        showLaunch();
    });
    auto *permission = new NotificationPermission(m_services.notifications, m_services.desktop);

    add({launchRow, new UpdateRow(m_services.updates)});
    add({rowOf(makePicker<Theme>("Theme", allThemes, {&P::theme, &P::setTheme, &P::themeChanged}))});
    add({rowOf(makeSwitch("Auto-refresh quota data",
                          {&P::autoRefreshQuota, &P::setAutoRefreshQuota, &P::autoRefreshQuotaChanged})),
         rowOf(makePicker<RefreshRate>("Refresh rate", allRefreshRates,
                                       {&P::refreshRate, &P::setRefreshRate, &P::refreshRateChanged}))});
    add({new SettingsRow(QStringLiteral("Notifications"), permission),
         rowOf(makeSwitch("Session reset", {&P::sessionResetAlerts, &P::setSessionResetAlerts,
                                            &P::sessionResetAlertsChanged})),
         rowOf(makeSwitch("Alert at 80% quota",
                          {&P::alertAt80Quota, &P::setAlertAt80Quota, &P::alertAt80QuotaChanged})),
         rowOf(makeSwitch("Rate limit alerts",
                          {&P::rateLimitAlerts, &P::setRateLimitAlerts, &P::rateLimitAlertsChanged})),
         rowOf(makeSwitch("Pace alerts", {&P::paceAlerts, &P::setPaceAlerts, &P::paceAlertsChanged}))});
    add({makeFiguresRow(),
         new KeepHistoryRow(m_services.history, m_services.preferences, m_services.reducedMotion)},
        QStringLiteral("History and figures"));
    m_logFolders = new LogFoldersCard(m_services.logFolders, m_services.preferences);
    column->addWidget(m_logFolders);
    add({makeFeedbackRow()});
    column->addStretch();
    return cards;
}

QWidget *SettingsView::makeFooter() {
    auto *footer = new QWidget;
    auto *line = new QHBoxLayout(footer);
    line->setContentsMargins(sidePadding, 10, sidePadding, 10);
    line->setSpacing(6);
    line->addWidget(new TextLabel(QStringLiteral("Version"), TextStyle::caption, QPalette::PlaceholderText));
    auto *number = new TextLabel(textOf(version()), TextStyle::caption);
    number->setColorGroup(QPalette::Disabled);
    line->addWidget(number);
    line->addStretch();
    return footer;
}

Switch *SettingsView::makeSwitch(const char *name, Preference<bool> preference) {
    P &preferences = m_services.preferences;
    auto *control = new Switch(m_services.reducedMotion);
    control->setAccessibleName(QString::fromUtf8(name));
    control->setOn((preferences.*preference.get)());
    connect(&preferences, preference.changed, control, &Switch::setOn);
    connect(control, &Switch::flipped, &preferences, preference.set);
    return control;
}

template <typename Value, typename Values>
SegmentedPicker *SettingsView::makePicker(const char *name, const Values &values,
                                          Preference<Value> preference) {
    P &preferences = m_services.preferences;
    QStringList labels;
    for (const Value value : values)
        labels.append(labelOf(value));
    auto *control = new SegmentedPicker(labels);
    control->setAccessibleName(QString::fromUtf8(name));
    const auto show = [control, &values](Value value) {
        control->setChosen(static_cast<int>(std::ranges::find(values, value) - values.begin()));
    };
    show((preferences.*preference.get)());
    connect(&preferences, preference.changed, control, show);
    connect(control, &SegmentedPicker::picked, &preferences, [&preferences, &values, preference](int index) {
        (preferences.*preference.set)(values[static_cast<std::size_t>(index)]);
    });
    return control;
}

SettingsRow *SettingsView::makeFiguresRow() {
    const QString caption = QString::fromUtf8("Exact counts each answer once, at its model’s price");
    auto *control = makePicker<FigureChoice>("Figures", allFigureChoices,
                                             {&P::figures, &P::setFigures, &P::figuresChanged});
    control->setAccessibleDescription(caption);
    SettingsRow *row = rowOf(control);
    row->addWideCaption(caption);
    return row;
}

SettingsRow *SettingsView::makeFeedbackRow() {
    auto *button = new FlatButton(QStringLiteral("Give Feedback"), settingsButtonLook());
    connect(button, &QAbstractButton::clicked, this,
            [this] { m_services.updates.openURL(m_services.feedbackURL); });
    return new SettingsRow(QStringLiteral("Help us improve the product"), button);
}

/// Runs after the preference changed; resets it when the desktop refuses.
void SettingsView::registerAtDesktop(bool on) {
    LoginItem &item = m_services.loginItem;
    static_cast<void>(on ? item.registerItem() : item.unregisterItem());
    m_services.preferences.setLaunchAtStartup(item.state() != LoginItemState::off);
}

void SettingsView::changeEvent(QEvent *event) {
    // The user may come back from the system's settings, or have mounted a folder.
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        m_showLaunch();
        m_logFolders->check();
    }
    QWidget::changeEvent(event);
}

void SettingsView::addShortcuts() {
    new QShortcut(Qt::Key_Escape, this, this, &QWidget::close);
    new QShortcut(Qt::CTRL | Qt::Key_W, this, this, &QWidget::close);
    new QShortcut(Qt::CTRL | Qt::Key_Q, this, &QApplication::quit);
}

} // namespace burnwick
