#include "editorartwork.h"

#include <QPainter>
#include <QPainterPath>

#include <functional>

namespace {

QPixmap drawn(QSizeF size, qreal ratio, const std::function<void(QPainter &)> &paint)
{
    QPixmap pixmap((size * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return pixmap;
}

void drawDisc(QPainter &painter, const QColor &fill)
{
    const QRectF disc(0.5, 0.5, StateSymbolSize - 1.0, StateSymbolSize - 1.0);
    painter.setPen(QPen(fill.darker(135), 1.0));
    painter.setBrush(fill);
    painter.drawEllipse(disc);
}

} // namespace

QPixmap SavedSymbol(qreal ratio)
{
    return drawn(QSizeF(StateSymbolSize, StateSymbolSize), ratio, [](QPainter &painter) {
        drawDisc(painter, QColor(0x2e, 0xa0, 0x43));
        QPainterPath tick;
        tick.moveTo(3.6, 6.8);
        tick.lineTo(5.6, 8.8);
        tick.lineTo(9.4, 4.4);
        painter.setPen(QPen(Qt::white, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
    });
}

QPixmap NotSavedSymbol(qreal ratio)
{
    return drawn(QSizeF(StateSymbolSize, StateSymbolSize), ratio, [](QPainter &painter) {
        drawDisc(painter, QColor(0xe0, 0x8a, 0x1e));
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawEllipse(QPointF(6.5, 6.5), 2.2, 2.2);
    });
}

QPixmap PartnerLogo(qreal ratio)
{
    const QSizeF size(96, 28);
    return drawn(size, ratio, [size](QPainter &painter) {
        const QRectF badge(QPointF(0.5, 0.5), size - QSizeF(1, 1));
        QLinearGradient shade(badge.topLeft(), badge.bottomLeft());
        shade.setColorAt(0, QColor(0x3a, 0x5f, 0xa8));
        shade.setColorAt(1, QColor(0x1d, 0x33, 0x66));
        painter.setPen(QPen(QColor(0x12, 0x22, 0x44), 1.0));
        painter.setBrush(shade);
        painter.drawRoundedRect(badge, 6, 6);

        QFont font = painter.font();
        font.setBold(true);
        font.setPixelSize(12);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(badge, Qt::AlignCenter, QStringLiteral("Fan Site"));
    });
}
