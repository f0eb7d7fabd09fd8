// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/SvgIcon.h"

#include "ui/controls/AccessibleRole.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <QWidget>

#include <utility>

// Links the library's resources in; Qt requires a function outside of namespaces.
static void initIconResource() {
    Q_INIT_RESOURCE(burnwick_icons);
}

namespace burnwick {

namespace {

/// Ignores modes and states.
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

class Logo final : public QWidget {
protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        m_icon.paint(&painter, rect());
    }

private:
    QIcon m_icon = applicationIcon();
};

} // namespace

QIcon svgIcon(const QString &file) {
    initIconResource();
    return QIcon(new SvgIconEngine(file)); // which becomes its owner
}

void drawTinted(QPainter &painter, const QRect &area, const QIcon &icon, const QColor &color) {
    QPixmap shape = icon.pixmap(area.size(), painter.device()->devicePixelRatioF());
    {
        QPainter tint(&shape);
        tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
        tint.fillRect(shape.rect(), color);
    }
    painter.drawPixmap(area.topLeft(), shape);
}

QIcon applicationIcon() {
    return svgIcon(QStringLiteral(":/burnwick/icons/burnwick.svg"));
}

QWidget *makeLogo(int side) {
    auto *logo = new Logo;
    logo->setFixedSize(side, side);
    setAccessibleRole(*logo, QAccessible::Graphic);
    logo->setAccessibleName(QStringLiteral("Burnwick"));
    return logo;
}

} // namespace burnwick
