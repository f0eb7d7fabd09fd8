// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/MenuButton.h"

#include <QAccessibleWidget>
#include <QMenu>

namespace burnwick {

namespace {

class AccessibleMenuButton final : public QAccessibleWidget {
public:
    explicit AccessibleMenuButton(MenuButton &button)
        : QAccessibleWidget(&button, QAccessible::ButtonMenu)
        , m_button(button) {}

    [[nodiscard]] int childCount() const override { return 1; }
    [[nodiscard]] QAccessibleInterface *child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(m_button.menu()) : nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override {
        return child != nullptr && child->object() == m_button.menu() ? 0 : -1;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = true;
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return QStringList(showMenuAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &name) override {
        if (name != showMenuAction())
            QAccessibleWidget::doAction(name);
        else if (m_button.isEnabled()) // queued, because it blocks until the menu is closed
            QMetaObject::invokeMethod(&m_button, &QPushButton::showMenu, Qt::QueuedConnection);
    }

private:
    MenuButton &m_button;
};

QAccessibleInterface *interfaceOf(const QString &, QObject *object) {
    auto *button = qobject_cast<MenuButton *>(object);
    return button != nullptr && button->menu() != nullptr ? new AccessibleMenuButton(*button) : nullptr;
}

} // namespace

MenuButton::MenuButton(const QString &text, const Look &look, QMenu *menu)
    : FlatButton(text, look) {
    // Installing the same function again has no effect.
    QAccessible::installFactory(&interfaceOf);
    menu->setParent(this, menu->windowFlags());
    setMenu(menu);
}

} // namespace burnwick
