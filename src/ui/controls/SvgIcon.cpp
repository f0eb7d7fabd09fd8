// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/SvgIcon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <utility>

// A library's resources are linked in only when named, and Qt wants that outside of every namespace.
static void initIconResource() {
    Q_INIT_RESOURCE(burnwick_icons);
}

namespace burnwick {

namespace {

/// Looks the same in all modes and states.
class SvgIconEngine final : public QIconEngine {
public:
    explicit SvgIconEngine(QString file)
        : m_file(std::move(file))
        , m_picture(m_file) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State) override {
        m_picture.render(painter, rect);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new SvgIconEngine(m_file); }

private:
    QString m_file;
    QSvgRenderer m_picture;
};

} // namespace

QIcon svgIcon(const QString &file) {
    initIconResource();
    return QIcon(new SvgIconEngine(file)); // which the icon owns
}

QIcon applicationIcon() {
    return svgIcon(QStringLiteral(":/burnwick/icons/burnwick.svg"));
}

} // namespace burnwick
