#pragma once

#include <QImage>
#include <QPixmap>
#include <QPointer>

class QLabel;

// Turns a picture box (a label showing a pixmap) into an endless band: every
// BGScroll moves the picture sideways by Incrementor pixels and wraps the
// strip that leaves one end in at the other. It shows that work is going on,
// not how much is done.
class clsPicBar
{
public:
    QLabel *PicBox() const;
    void setPicBox(QLabel *box);

    bool ReDraw() const { return m_reDraw; }
    void setReDraw(bool value) { m_reDraw = value; }

    qint16 Incrementor() const { return m_incrementor; }
    void setIncrementor(qint16 value) { m_incrementor = value; }

    // 1 scrolls to the right, anything else to the left.
    qint32 PicDir() const { return m_picDir; }
    void setPicDir(qint32 value) { m_picDir = value; }

    // Moves the band one step. The box shows the steps made since it last
    // painted when the event loop next runs.
    void BGScroll();

private:
    void drawPendingSteps();
    QPixmap scrolled(const QPixmap &picture, int distance, qint32 direction) const;

    bool m_reDraw = false;
    qint16 m_incrementor = 0;
    QPointer<QLabel> m_picBox;
    qint32 m_picDir = 1;
    qint16 m_offsetX = 0;
    qint16 m_offsetY = 0;
    qint64 m_pendingSteps = 0;
};

// The band's picture: every row runs from pure blue at the edges to nearly
// white in the middle column.
QImage GradientPicture(int width = 347, int height = 15);
