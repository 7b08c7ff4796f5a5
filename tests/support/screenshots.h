#pragma once

#include <QDir>
#include <QImage>
#include <QLabel>
#include <QSet>
#include <QString>
#include <QTest>

#include <memory>

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

// Shows the window `make` builds, checks its caption and one label given as
// "objectName=text", and saves its picture under the current data tag.
template<typename MakeForm>
void checkAndShoot(const MakeForm &make, const QString &caption, const QString &heading)
{
    std::unique_ptr<QWidget> form(make());
    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    QCOMPARE(form->windowTitle(), caption);
    const auto *label = form->template findChild<QLabel *>(heading.section('=', 0, 0));
    QVERIFY(label && label->isVisible());
    QCOMPARE(label->text(), heading.section('=', 1));
    QVERIFY(saveScreenshot(form->grab().toImage(), QTest::currentDataTag()));
}
