// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/HeaderBar.h"

#include "ui/controls/IconButton.h"
#include "ui/controls/Logo.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>

namespace burnwick {

HeaderBar::HeaderBar(QWidget *parent)
    : QWidget(parent) {
    constexpr int height = 28;
    constexpr int logoSize = 24;
    setFixedHeight(height);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->setSpacing(8);
    line->addWidget(new Logo(logoSize));
    line->addWidget(new TextLabel(QStringLiteral("Burnwick"), TextStyle::figure));
    line->addStretch();
    auto *settings =
        new IconButton(QStringLiteral(":/burnwick/icons/settings-symbolic.svg"), QStringLiteral("Settings"));
    connect(settings, &QAbstractButton::clicked, this, &HeaderBar::settingsRequested);
    line->addWidget(settings);
}

} // namespace burnwick
