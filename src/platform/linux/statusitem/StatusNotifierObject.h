// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/statusitem/NotifierState.h"
#include "platform/linux/statusitem/StatusNotifierTypes.h"

#include <QtCore/QObject>
#include <QtDBus/QDBusObjectPath>

#include <functional>
#include <string>

namespace burnwick {

/// Implements the D-Bus interface org.kde.StatusNotifierItem, with Ayatana's additions.
class StatusNotifierObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ iconThemePath)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QList<burnwick::NotifierPixmap> IconPixmap READ iconPixmap)
    Q_PROPERTY(QString OverlayIconName READ noText CONSTANT)
    Q_PROPERTY(QList<burnwick::NotifierPixmap> OverlayIconPixmap READ noPixmaps CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ noText CONSTANT)
    Q_PROPERTY(QList<burnwick::NotifierPixmap> AttentionIconPixmap READ noPixmaps CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ noText CONSTANT)
    Q_PROPERTY(burnwick::NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)
    Q_PROPERTY(uint XAyatanaOrderingIndex READ orderingIndex CONSTANT)
    Q_PROPERTY(QString IconAccessibleDesc READ iconAccessibleDesc)
    Q_PROPERTY(QString AttentionAccessibleDesc READ noText CONSTANT)

public:
    /// Called with the token of ProvideXdgActivationToken, or an empty one.
    using ActivateHandler = std::function<void(const std::string &activationToken)>;

    explicit StatusNotifierObject(ActivateHandler handler);

    /// Emits the signals of the properties that differ from the previous state.
    void setState(NotifierState state);

    /// Calls the handler with the stored token and forgets it.
    void activate();

    [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] QString id() const { return QStringLiteral("burnwick"); }
    [[nodiscard]] QString title() const { return m_state.title; }
    [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString iconThemePath() const { return m_state.iconThemePath; }
    [[nodiscard]] QString iconName() const { return m_state.iconName; }
    [[nodiscard]] NotifierPixmaps iconPixmap() const { return m_state.icon; }
    [[nodiscard]] NotifierToolTip toolTip() const { return m_state.toolTip; }
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QDBusObjectPath menu() const { return QDBusObjectPath(m_state.menuPath); }
    [[nodiscard]] QString label() const { return m_state.label; }
    [[nodiscard]] QString labelGuide() const;
    [[nodiscard]] uint orderingIndex() const { return 0; }
    [[nodiscard]] QString iconAccessibleDesc() const { return m_state.accessibleDescription; }
    [[nodiscard]] QString noText() const { return {}; }
    [[nodiscard]] NotifierPixmaps noPixmaps() const { return {}; }

public Q_SLOTS:
    // The protocol's names. Positions and counts are ignored: the click is the only action.
    Q_SCRIPTABLE void Activate(int /*x*/, int /*y*/) { activate(); }
    Q_SCRIPTABLE void SecondaryActivate(int /*x*/, int /*y*/) { activate(); }
    Q_SCRIPTABLE void ContextMenu(int /*x*/, int /*y*/) { activate(); }
    Q_SCRIPTABLE void Scroll(int /*delta*/, const QString & /*orientation*/) {}
    Q_SCRIPTABLE void ProvideXdgActivationToken(const QString &token) {
        m_activationToken = token.toStdString();
    }
    Q_SCRIPTABLE void XAyatanaSecondaryActivate(uint /*timestamp*/) { activate(); }

Q_SIGNALS:
    Q_SCRIPTABLE void NewTitle();
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void NewAttentionIcon();
    Q_SCRIPTABLE void NewOverlayIcon();
    Q_SCRIPTABLE void NewToolTip();
    Q_SCRIPTABLE void NewMenu();
    Q_SCRIPTABLE void NewStatus(const QString &status);
    Q_SCRIPTABLE void NewIconThemePath(const QString &iconThemePath);
    Q_SCRIPTABLE void XAyatanaNewLabel(const QString &label, const QString &guide);

private:
    ActivateHandler m_handler;
    NotifierState m_state;
    std::string m_activationToken;
};

} // namespace burnwick
