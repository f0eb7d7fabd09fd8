// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/HostileTexts.h"
#include "ui/dashboard/ActivityTabs.h"
#include "ui/dashboard/LivePanels.h"
#include "ui/dashboard/ModelStatRowView.h"
#include "ui/text/TextLabel.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QHelpEvent>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

namespace burnwick {
namespace {

using test::HostileText;

QString shownName(const HostileText &hostile) {
    return QString::fromStdString(hostile.shown);
}

QString asShown(const QString &toolTip) {
    return Qt::mightBeRichText(toolTip) ? QTextDocumentFragment::fromHtml(toolTip).toPlainText() : toolTip;
}

/// All texts of the widget and its children: visible, in tool tips and for assistive technology.
QStringList textsOf(const QWidget &widget) {
    QStringList texts;
    QList<const QWidget *> widgets{&widget};
    for (const QWidget *child : widget.findChildren<QWidget *>())
        widgets << child;
    for (const QWidget *each : widgets) {
        if (const auto *label = qobject_cast<const QLabel *>(each)) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().left(80).toStdString();
            EXPECT_FALSE(label->text().contains(u'\n')) << "the name has more than one line";
            texts << label->text();
        }
        texts << asShown(each->toolTip()) << each->accessibleName() << each->accessibleDescription();
        if (QAccessibleInterface *object = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(each)))
            texts << object->text(QAccessible::Name) << object->text(QAccessible::Description);
    }
    return texts;
}

/// The widget shows the name's displayText(), has none of its controls, and fits into the window.
void expectHarmless(QWidget &widget, const HostileText &hostile) {
    widget.resize(800, 700);
    widget.grab();
    const QStringList texts = textsOf(widget);
    EXPECT_LE(widget.minimumSizeHint().width(), 800);
    EXPECT_FALSE(texts.filter(shownName(hostile)).isEmpty()) << texts.join(u'\n').left(2000).toStdString();
    for (const QString &text : texts)
        EXPECT_FALSE(test::hasControls(QString(text).remove(u'\n').toStdString())) << text.toStdString();
}

class HostileTextTest : public testing::TestWithParam<HostileText> {
protected:
    const HostileText &m_hostile = GetParam();
};

TEST_P(HostileTextTest, NamesAModel) {
    ModelStatRowView row;
    row.setStat({m_hostile.text, 1, 2, 50});
    expectHarmless(row, m_hostile);
    EXPECT_EQ(asShown(row.toolTip()), shownName(m_hostile) + QStringLiteral("\nIn: 1 token\nOut: 2 tokens"));
}

TEST_P(HostileTextTest, NamesTheFavoriteModel) {
    HistoricalData history;
    history.favoriteModel = m_hostile.text;
    OverviewTab tab;
    tab.setValues(history, 0, {}, {});
    HostileText shown = m_hostile;
    shown.shown.erase(0, shown.shown.rfind('/') + 1); // a family's name has no vendor
    expectHarmless(tab, shown);
}

TEST_P(HostileTextTest, NamesAComponent) {
    WindowClaudeStatusPanel panel;
    panel.setComponents({{m_hostile.text, ClaudeComponentStatus::Status::degraded}});
    expectHarmless(panel, m_hostile);
}

TEST_P(HostileTextTest, IsTheToolTipOfALabelThatIsTooNarrow) {
    TextLabel label(QStringLiteral("a  b ") + shownName(m_hostile), TextStyle::body);
    label.setElidable();
    label.resize(10, 20);
    label.show();
    QHelpEvent help(QEvent::ToolTip, QPoint(1, 1), label.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&label, &help);
    EXPECT_EQ(asShown(QToolTip::text()), label.text());
    QToolTip::hideText();
}

INSTANTIATE_TEST_SUITE_P(Texts, HostileTextTest, testing::ValuesIn(test::hostileTexts()));

} // namespace
} // namespace burnwick
