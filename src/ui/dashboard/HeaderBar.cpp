// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/HeaderBar.h"

#include "ui/controls/TextLabel.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QPainter>

namespace burnwick {

namespace {

constexpr int logoSize = 24;

class Logo final : public QWidget {
public:
    Logo()
        : m_icon(QStringLiteral(":/burnwick/icons/burnwick.svg")) {
        setFixedSize(logoSize, logoSize);
        setAccessibleName(QStringLiteral("Burnwick"));
    }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        m_icon.paint(&painter, rect());
    }

private:
    QIcon m_icon;
};

} // namespace

HeaderBar::HeaderBar(QWidget *parent)
    : QWidget(parent) {
    constexpr int height = 28;
    setFixedHeight(height);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->setSpacing(8);
    line->addWidget(new Logo);
    line->addWidget(new TextLabel(QStringLiteral("Burnwick"), TextStyle::figure));
    line->addStretch();
}

} // namespace burnwick
