#include "clsPicBar.h"

#include <QLabel>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>
#include <cstdlib>

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
    const QPixmap picture = m_picBox->pixmap();
    if (picture.isNull())
        return;

    // The band is a small picture kept at one pixel per pixel; the box may
    // stretch it on screen.
    const int width = picture.width();
    QPixmap shifted(picture.size());
    shifted.fill(Qt::transparent);
    {
        QPainter painter(&shifted);
        if (m_picDir == 1) {
            painter.drawPixmap(m_offsetX + m_incrementor, m_offsetY, picture);
            painter.drawPixmap(
                0, 0, picture, width - m_incrementor, 0, m_incrementor, picture.height());
        } else {
            painter.drawPixmap(m_offsetX - m_incrementor, m_offsetY, picture);
            painter.drawPixmap(width - m_incrementor, 0, picture);
        }
    }
    m_picBox->setPixmap(shifted);
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
