#pragma once

#include <QDir>
#include <QImage>
#include <QMetaType>
#include <QSet>
#include <QString>
#include <QTest>
#include <QWidget>

#include <functional>
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

// One row of a table of windows to picture: how to build the window, its
// caption, and "objectName=text" of a control it must show.
struct FormShot
{
    std::function<QWidget *()> make;
    QString caption;
    QString shows;
};
Q_DECLARE_METATYPE(FormShot)

// A table of them: addFormShotColumn() in the _data function, rows as
//     QTest::newRow("frmAbout")
//         << FormShot { [] { return new frmAbout; }, "About Quorvane", "lblTitle=Quorvane" };
// and shootFormRow() as the whole test function: it shows the row's window,
// checks its caption and the control's text, and saves its picture under the
// row's name.
inline void addFormShotColumn()
{
    QTest::addColumn<FormShot>("shot");
}

inline void shootFormRow()
{
    QFETCH(FormShot, shot);
    std::unique_ptr<QWidget> form(shot.make());
    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    QCOMPARE(form->windowTitle(), shot.caption);
    // A label, a button or a box: anything with a text.
    const auto *control = form->findChild<QWidget *>(shot.shows.section('=', 0, 0));
    QVERIFY2(control && control->isVisible(), qPrintable(shot.shows));
    QCOMPARE(control->property("text").toString(), shot.shows.section('=', 1));
    QVERIFY(saveScreenshot(form->grab().toImage(), QTest::currentDataTag()));
}
