#include "clsPicBar.h"

#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

QLabel *clsPicBar::PicBox() const
{
    return m_picBox;
}

void clsPicBar::setPicBox(QLabel *box)
{
    m_picBox = box;
}

void clsPicBar::BGScroll()
{
    if (!m_picBox)
        return;
    // The scan calls this thousands of times a second, and drawing the band
    // costs more than the work between two calls; the box only shows it when
    // the event loop paints, so the steps made meanwhile are drawn in one.
    if (m_pendingSteps++ == 0)
        QTimer::singleShot(0, m_picBox, [this] { drawPendingSteps(); });
}

void clsPicBar::drawPendingSteps()
{
    const qint64 steps = std::exchange(m_pendingSteps, 0);
    QPixmap picture = m_picBox ? m_picBox->pixmap() : QPixmap();
    if (picture.isNull())
        return;
    const int width = picture.width();
    if (m_incrementor >= 0 && m_incrementor <= width) {
        // Steps of at most the band's width add up to one rotation.
        const qint64 distance = steps * m_incrementor % width;
        if (distance != 0)
            picture = scrolled(picture, m_picDir == 1 ? distance : width - distance, 1);
    } else {
        for (qint64 i = 0; i < steps; ++i)
            picture = scrolled(picture, m_incrementor, m_picDir);
    }
    m_picBox->setPixmap(picture);
}

// One step: the picture moved sideways by `distance`, the strip that left
// at one end put back at the other.
QPixmap clsPicBar::scrolled(const QPixmap &picture, int distance, qint32 direction) const
{
    // The band is a small picture kept at one pixel per pixel; the box may
    // stretch it on screen.
    const int width = picture.width();
    QPixmap shifted(picture.size());
    shifted.fill(Qt::transparent);
    QPainter painter(&shifted);
    if (direction == 1) {
        painter.drawPixmap(m_offsetX + distance, m_offsetY, picture);
        painter.drawPixmap(0, 0, picture, width - distance, 0, distance, picture.height());
    } else {
        painter.drawPixmap(m_offsetX - distance, m_offsetY, picture);
        painter.drawPixmap(width - distance, 0, picture);
    }
    return shifted;
}

QImage GradientPicture(int width, int height)
{
    QImage picture(width, height, QImage::Format_RGB32);
    const int middle = (width - 1) / 2;
    for (int x = 0; x < width; ++x) {
        const double towardsMiddle = middle > 0 ? 1.0 - std::abs(x - middle) / double(middle) : 1.0;
        const int level = int(std::lround(254 * std::max(0.0, towardsMiddle)));
        const QRgb colour = qRgb(level, level, 255);
        for (int y = 0; y < height; ++y)
            picture.setPixel(x, y, colour);
    }
    return picture;
}
