// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/MainWindowView.h"

#include "async/DetachedTask.h"
#include "display/DisplayFormat.h"
#include "display/LimitText.h"
#include "model/Calendar.h"
#include "model/Clock.h"
#include "model/TimeFilter.h"
#include "platform/BarExtension.h"
#include "platform/WindowChrome.h"
#include "prefs/PreferencesManager.h"
#include "state/AppState.h"
#include "ui/WindowActivation.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/controls/FlatButton.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/IconButton.h"
#include "ui/controls/PanelCard.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/SvgIcon.h"
#include "ui/dashboard/AccountBar.h"
#include "ui/dashboard/ActivityTabs.h"
#include "ui/dashboard/LiveColumn.h"
#include "ui/dashboard/OpenQuestions.h"
#include "ui/layout/ScreenRoom.h"
#include "ui/layout/ScrollAreas.h"
#include "ui/projects/ProjectsTab.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPointer>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace burnwick {

namespace {

constexpr int windowMargin = 20;
constexpr int columnGap = 16;
constexpr int rightColumnWidth = 760;
/// The height of the fullest dashboard with the highest of the common desktops' fonts, Noto Sans.
constexpr int regularHeight = 810;

constexpr int overview = 0; // the first tab

/// The first day, at least in part, of the filter's period; absent for "All".
std::optional<LocalDay> firstDayOf(TimeFilter filter, Instant now, const Calendar &calendar) {
    const auto cutOff = cutOffOf(filter, now, calendar);
    return cutOff ? std::optional(calendar.dayOf(*cutOff)) : std::nullopt;
}

FlatButton *makeChoice(const QString &label, TextStyle text, TextStyle chosenText, QSize padding,
                       int radius) {
    auto *button = new FlatButton(label, {.text = text,
                                          .chosenText = chosenText,
                                          .padding = padding,
                                          .radius = radius,
                                          .hovered = &ThemeColors::hover,
                                          .chosen = &ThemeColors::selected,
                                          .restingText = &ThemeColors::inactive});
    button->setCheckable(true);
    button->setAutoExclusive(true); // makes it a radio button for assistive technology
    return button;
}

} // namespace

MainWindowView::MainWindowView(Services services)
    : m_services(std::move(services))
    , m_tabs(new QButtonGroup(this))
    , m_filters(new QButtonGroup(this))
    , m_pages(new QStackedWidget)
    , m_column(new QVBoxLayout)
    , m_liveColumn(new LiveColumn)
    , m_overview(new OverviewTab)
    , m_question(new QuestionBar)
    , m_models(new ModelsTab)
    , m_projects(new ProjectsTab(m_services.openURL))
    , m_accountBar(new AccountBar)
    , m_updated(new TextLabel(TextStyle::caption, QPalette::PlaceholderText))
    , m_subscription(m_services.appState, [this] { showState(); })
    , m_ticks(m_services.clock, m_services.scheduler, [this] { followTime(); }) {
    auto *content = new QWidget;
    setAccessibleRole(*this, QAccessible::Window);
    content->setLayout(m_column);
    m_column->addWidget(makeHeader());
    m_column->addWidget(makeBody());
    m_column->addWidget(m_accountBar);
    m_column->addWidget(m_updated);
    auto *area = new FittedArea(content);
    auto *window = new QVBoxLayout(this);
    window->setContentsMargins({});
    window->setSizeConstraint(QLayout::SetFixedSize);
    window->addWidget(area);

    const auto fit = [this, &room = area->room()] { setDense(room.size().height() < regularHeight); };
    connect(&area->room(), &ScreenRoom::changed, this, fit);
    fit();
    connect(m_accountBar, &AccountBar::refreshRequested, this, &MainWindowView::refreshQuota);
    connect(m_accountBar, &AccountBar::loginRequested, this, [this] { m_services.appState.connect(); });
    connect(&m_services.preferences, &PreferencesManager::questionAnswered, this, &MainWindowView::showState);
    if (m_services.barExtension)
        m_services.barExtension->setChangeHandler([view = QPointer(this)] {
            if (view)
                view->showState();
        });
    addShortcuts();
    new FocusRing(this);
    // So that no control has the focus at first.
    setFocusPolicy(Qt::ClickFocus);
    setFocus();
    showState();
}

void MainWindowView::decorate() {
    if (m_services.chrome == nullptr || std::exchange(m_decorated, true))
        return;
    m_services.chrome->decorateDashboard(
        winId(), [this] { Q_EMIT settingsRequested(); }, [this](int height) { leaveTopTo(height, *this); });
}

/// With the settings button, unless the window's own title bar has it.
QWidget *MainWindowView::makeHeader() {
    constexpr int height = 28;
    constexpr int logoSize = 24;
    auto *header = new QWidget;
    header->setFixedHeight(height);
    auto *line = new QHBoxLayout(header);
    line->setContentsMargins({});
    line->setSpacing(8);
    line->addWidget(makeLogo(logoSize));
    line->addWidget(new TextLabel(QStringLiteral("Burnwick"), TextStyle::figure));
    line->addStretch();
    if (m_services.chrome != nullptr)
        return header;
    auto *settings =
        new IconButton(QStringLiteral(":/burnwick/icons/settings-symbolic.svg"), QStringLiteral("Settings"));
    connect(settings, &QAbstractButton::clicked, this, &MainWindowView::settingsRequested);
    line->addWidget(settings);
    return header;
}

QWidget *MainWindowView::makeTabBar() {
    auto *bar = new QWidget;
    auto *line = new QHBoxLayout(bar);
    line->setContentsMargins({});
    line->setSpacing(4);
    for (const char *label : {"Overview", "Models", "Projects"}) {
        auto *tab =
            makeChoice(QString::fromUtf8(label), TextStyle::label, TextStyle::labelStrong, {14, 6}, 8);
        m_tabs->addButton(tab, static_cast<int>(m_tabs->buttons().size()));
        line->addWidget(tab);
    }
    line->addStretch();
    for (const TimeFilter filter : allTimeFilters) {
        auto *button = makeChoice(textOf(nameOf(filter)), TextStyle::body, TextStyle::bodyStrong, {10, 5}, 6);
        m_filters->addButton(button, static_cast<int>(filter));
        line->addWidget(button);
    }
    m_tabs->button(overview)->setChecked(true);
    m_filters->button(static_cast<int>(m_services.appState.snapshot().usage.timeFilter))->setChecked(true);
    stopAtChosen(*m_tabs);
    stopAtChosen(*m_filters);
    connect(m_tabs, &QButtonGroup::idToggled, this, [this](int tab, bool chosen) {
        if (chosen)
            m_pages->setCurrentIndex(tab);
    });
    connect(m_filters, &QButtonGroup::idToggled, this, [this](int filter, bool chosen) {
        if (chosen)
            m_services.appState.setTimeFilter(static_cast<TimeFilter>(filter));
    });
    return bar;
}

QWidget *MainWindowView::makeBody() {
    auto *body = new QWidget;
    auto *line = new QHBoxLayout(body);
    line->setContentsMargins({});
    line->setSpacing(columnGap);
    line->addWidget(m_liveColumn);

    m_right = new QVBoxLayout;
    m_right->addWidget(makeTabBar());
    m_overview->addNote(m_question);
    m_pages->addWidget(m_overview);
    m_pages->addWidget(m_models);
    m_pages->addWidget(m_projects);
    m_pages->setFixedWidth(rightColumnWidth);
    m_right->addWidget(m_pages, 1);
    line->addLayout(m_right);
    return body;
}

/// Reduces the height, for low screens.
void MainWindowView::setDense(bool dense) {
    if (m_dense == dense)
        return;
    m_dense = dense;
    m_column->setContentsMargins(windowMargin, dense ? 10 : 14, windowMargin, dense ? 8 : 12);
    for (QLayout *layout : std::initializer_list<QLayout *>{m_column, m_right, m_liveColumn->layout(),
                                                            m_overview->layout(), m_models->layout()})
        layout->setSpacing(dense ? 8 : 12);
    for (PanelCard *card : findChildren<PanelCard *>())
        card->setDense(dense);
    m_overview->setDense(dense);
    m_models->setDense(dense);
}

void MainWindowView::addShortcuts() {
    new QShortcut(Qt::CTRL | Qt::Key_1, this, this, [this] { selectTab(0); });
    new QShortcut(Qt::CTRL | Qt::Key_2, this, this, [this] { selectTab(1); });
    new QShortcut(Qt::CTRL | Qt::Key_3, this, this, [this] { selectTab(2); });
    new QShortcut(Qt::CTRL | Qt::Key_R, this, this, &MainWindowView::refreshAll);
    new QShortcut(Qt::CTRL | Qt::Key_Comma, this, this, &MainWindowView::settingsRequested);
    new QShortcut(Qt::CTRL | Qt::Key_W, this, this, &QWidget::close);
    new QShortcut(Qt::CTRL | Qt::Key_Q, this, &QApplication::quit);
}

void MainWindowView::selectTab(int tab) {
    m_tabs->button(tab)->setChecked(true);
}

void MainWindowView::refreshQuota() {
    runDetached(m_services.appState.refreshQuotaNow());
}

void MainWindowView::refreshAll() {
    AppState &state = m_services.appState;
    state.refreshLocalData();
    if (state.snapshot().account.oauthStatus != OAuthStatus::authenticating)
        refreshQuota();
    runDetached(state.refreshClaudeStatus());
}

void MainWindowView::showEvent(QShowEvent *event) {
    followTime();
    m_ticks.start();
    QWidget::showEvent(event);
    decorate();
}

void MainWindowView::hideEvent(QHideEvent *event) {
    m_ticks.stop();
    QWidget::hideEvent(event);
}

void MainWindowView::closeEvent(QCloseEvent *event) {
    selectTab(overview);
    QWidget::closeEvent(event);
}

void MainWindowView::followTime() {
    m_services.appState.followTimeZone();
    showState();
}

void MainWindowView::showState() {
    const Snapshot &snapshot = m_services.appState.snapshot();
    const UsageFigures &usage = snapshot.usage;
    const Instant now = m_services.clock.now();
    const LocalDay today = usage.calendar.dayOf(now);
    m_liveColumn->setValues(snapshot, now);
    m_overview->setValues(usage, today, firstDayOf(usage.timeFilter, now, usage.calendar));
    // The courses follow the limits a moment later.
    m_overview->setLimits(usage.limitCourses,
                          snapshot.account.awaitsFirstQuota || !snapshot.account.limits.empty(),
                          usage.calendar, now);
    auto question = barQuestion(m_services.preferences, m_services.barExtension);
    if (!question)
        question = historyQuestion(m_services.preferences, usage, now, m_services.daysUntilCleanup);
    m_question->ask(question);
    m_models->setValues(usage.historicalData, usage.breakdown->models, today);
    m_projects->setFigures(usage, now);
    m_filters->button(static_cast<int>(usage.timeFilter))->setChecked(true);
    m_accountBar->setStatus(snapshot.account.oauthStatus);
    QString updated = QStringLiteral("Updated ") + textOf(relativeAgeText(usage.lastUpdated, now));
    if (const auto &at = snapshot.account.asksAgainAt)
        updated +=
            QString::fromUtf8(" · the quota is asked again at ") + textOf(clockText(*at, usage.calendar));
    m_updated->setText(updated);
}

} // namespace burnwick
