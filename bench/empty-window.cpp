// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// What any program of the toolkit costs at least: a window with nothing in it.

#include <QApplication>
#include <QWidget>

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QWidget window;
    window.setWindowTitle(QStringLiteral("Burnwick"));
    window.resize(1'116, 700);
    window.show();
    return QApplication::exec();
}
