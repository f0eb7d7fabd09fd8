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

/// The widget shows the text without its controls, and fits into the window.
void expectHarmless(QWidget &widget, const std::string &shown) {
    SCOPED_TRACE(widget.metaObject()->className());
    widget.resize(800, 700);
    widget.grab();
    const QStringList texts = textsOf(widget);
    EXPECT_LE(widget.minimumSizeHint().width(), 800);
    EXPECT_FALSE(texts.filter(QString::fromStdString(shown)).isEmpty())
        << texts.join(u'\n').left(2000).toStdString();
    for (const QString &text : texts)
        EXPECT_FALSE(test::hasControls(QString(text).remove(u'\n').toStdString())) << text.toStdString();
}

class HostileTextTest : public testing::TestWithParam<test::HostileText> {
protected:
    const std::string m_text = GetParam().text;
    const std::string m_shown = GetParam().shown;
};

TEST_P(HostileTextTest, IsHarmlessAsTheNameOfAModelOrComponent) {
    ModelStatRowView row;
    row.setStat({m_text, 1, 2, 50}, {});
    expectHarmless(row, m_shown);
    EXPECT_EQ(asShown(row.toolTip()).toStdString(), m_shown + "\nIn: 1 token\nOut: 2 tokens");

    UsageFigures usage{Calendar::inZone("UTC")};
    usage.historicalData.favoriteModel = m_text;
    OverviewTab tab;
    tab.setValues(usage, {}, {});
    expectHarmless(tab, m_shown.substr(m_shown.rfind('/') + 1)); // a family's name has no vendor

    WindowClaudeStatusPanel panel;
    panel.setComponents({{m_text, ClaudeComponentStatus::Status::degraded}});
    expectHarmless(panel, m_shown);
}

TEST_P(HostileTextTest, IsHarmlessAsTheToolTipOfANarrowLabel) {
    TextLabel label(QStringLiteral("a  b ") + QString::fromStdString(m_shown), TextStyle::body);
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
