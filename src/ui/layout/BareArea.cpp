// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/layout/BareArea.h"

#include <QScrollArea>

namespace burnwick {

void makeBare(QScrollArea &area, QWidget *content) {
    area.setFrameShape(QFrame::NoFrame);
    area.setFocusPolicy(Qt::NoFocus);
    area.setWidget(content); // has the content fill its background
    area.viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

} // namespace burnwick
