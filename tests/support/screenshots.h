#pragma once

#include <QDir>
#include <QImage>
#include <QSet>
#include <QString>

// For the screenshot tests only: they link Qt Gui, the rest of the support
// library does not, so this stays in the header.

// Enough colours to be a drawn window rather than an empty rectangle.
inline bool looksDrawn(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2)
            colours.insert(image.pixel(x, y));
    return colours.size() > 8;
}

// Saves `shot` as `name`.png where a reviewer finds the pictures of a run.
inline bool saveScreenshot(const QImage &shot, const QString &name)
{
    const QString dir = qEnvironmentVariable("QUORVANE_SCREENSHOT_DIR", QUORVANE_SCREENSHOT_DIR);
    return QDir().mkpath(dir) && looksDrawn(shot) && shot.save(dir + "/" + name + ".png");
}
