#include "startupartwork.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

const QColor Night(0x0d, 0x1b, 0x3d);
const QColor Deep(0x1f, 0x3f, 0x8f);
const QColor Sky(0xbf, 0xd4, 0xff);
const QColor Ember(0xff, 0x9a, 0x2e);

// A ring with a tail and a dot: the program's mark, drawn in a square of
// side `side` at the painter's origin.
void drawMark(QPainter &painter, qreal side)
{
    const qreal pen = side * 0.11;
    const QRectF ring(side * 0.2, side * 0.2, side * 0.6, side * 0.6);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, pen, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, 60 * 16, 300 * 16);
    painter.drawLine(QPointF(side * 0.6, side * 0.6), QPointF(side * 0.8, side * 0.8));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Ember);
    painter.drawEllipse(QPointF(side * 0.68, side * 0.27), pen * 0.75, pen * 0.75);
}

QPixmap iconPixmap(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient shade(0, 0, 0, side);
    shade.setColorAt(0, Deep);
    shade.setColorAt(1, Night);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    painter.drawRoundedRect(QRectF(0, 0, side, side), side * 0.2, side * 0.2);
    drawMark(painter, side);
    return pixmap;
}

} // namespace

QPixmap SplashPicture(qreal ratio)
{
    const QSize size(488, 131);
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);

    QLinearGradient shade(0, 0, size.width(), size.height());
    shade.setColorAt(0, Night);
    shade.setColorAt(1, Deep);
    painter.fillRect(QRect(QPoint(0, 0), size), shade);

    // Faint diagonal stripes give the banner some depth.
    painter.setPen(QPen(QColor(255, 255, 255, 14), 18));
    for (int x = 180; x < size.width() + size.height(); x += 46)
        painter.drawLine(x, size.height(), x + size.height(), 0);

    painter.save();
    painter.translate(24, 20);
    drawMark(painter, 91);
    painter.restore();

    QFont title = painter.font();
    title.setBold(true);
    title.setPixelSize(46);
    painter.setFont(title);
    painter.setPen(Qt::white);
    painter.drawText(
        QRectF(132, 22, 340, 56), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("Quorvane"));

    QFont subtitle = title;
    subtitle.setBold(false);
    subtitle.setPixelSize(15);
    painter.setFont(subtitle);
    painter.setPen(Sky);
    painter.drawText(QRectF(134, 78, 340, 24), Qt::AlignLeft | Qt::AlignVCenter,
        QStringLiteral("Practice bot lists for Unreal Tournament"));
    return pixmap;
}

QIcon ApplicationIcon()
{
    QIcon icon;
    for (int side : { 16, 24, 32, 48, 64, 128, 256 })
        icon.addPixmap(iconPixmap(side));
    return icon;
}
