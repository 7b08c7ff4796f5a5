#pragma once

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QImage>
#include <QMetaType>
#include <QSet>
#include <QString>
#include <QTest>
#include <QWidget>
#include <QtTest/qtestspontaneevent.h>

#include <functional>
#include <memory>

// For the screenshot tests only: they link Qt Gui, the rest of the support
// library does not, so this stays in the header.

// A close request, or the show of a minimised window coming back, as the
// window system sends them; sendEvent() would clear the spontaneous flag.
// Returns whether the window accepted it.
inline bool spontaneous(QWidget *window, QEvent &&event)
{
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
    return event.isAccepted();
}

// Neither the title bar nor Escape closes the shown `window`: only its own
// buttons, or the program, do.
inline bool closesOnlyThroughItsButtons(QWidget *window)
{
    QTest::keyClick(window, Qt::Key_Escape);
    return !window->windowFlags().testFlag(Qt::WindowCloseButtonHint)
        && !spontaneous(window, QCloseEvent()) && window->isVisible();
}

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

// The controls of `form` a user works that the keyboard does not reach or a
// screen reader cannot name, as "class:objectName". The buttons of a radio
// group are reached with the arrow keys; Qt's own helpers and list headers
// are left to Qt.
inline QStringList unreachedOrUnnamed(const QWidget *form)
{
    QStringList wrong;
    for (QWidget *control : form->findChildren<QWidget *>()) {
        const bool works = control->inherits("QAbstractButton") || control->inherits("QComboBox")
            || control->inherits("QLineEdit") || control->inherits("QAbstractItemView")
            || control->inherits("QPlainTextEdit");
        const bool tab = control->focusPolicy() & Qt::TabFocus;
        if (!control->isVisibleTo(form) || !(works || tab) || control->inherits("QHeaderView")
            || control->objectName().startsWith("qt_"))
            continue;
        const QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(control);
        if ((!tab && !control->inherits("QRadioButton")) || !accessible
            || accessible->text(QAccessible::Name).trimmed().isEmpty())
            wrong << QString(control->metaObject()->className()) + ":" + control->objectName();
    }
    return wrong;
}

// One row of a table of windows to picture: how to build the window, its
// caption, "objectName=text" of a control it must show, and whether only
// its own buttons close it.
struct FormShot
{
    std::function<QWidget *()> make;
    QString caption;
    QString shows;
    bool closesOnlyThroughButtons = false;
};
Q_DECLARE_METATYPE(FormShot)

// A table of them: addFormShotColumn() in the _data function, rows as
//     QTest::newRow("frmAbout")
//         << FormShot { [] { return new frmAbout; }, "About Quorvane", "lblTitle=Quorvane" };
// and shootFormRow() as the whole test function: it shows the row's window,
// checks its caption, the control's text and that the keyboard reaches every
// control a user works, each with a name, and saves its picture under the
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
    // The first check, so that a row can expect it to fail.
    const QStringList wrong = unreachedOrUnnamed(form.get());
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(", ")));
    QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    QCOMPARE(form->windowTitle(), shot.caption);
    // A label, a button or a box: anything with a text.
    const auto *control = form->findChild<QWidget *>(shot.shows.section('=', 0, 0));
    QVERIFY2(control && control->isVisible(), qPrintable(shot.shows));
    QCOMPARE(control->property("text").toString(), shot.shows.section('=', 1));
    QVERIFY(saveScreenshot(form->grab().toImage(), QTest::currentDataTag()));
    QVERIFY(!shot.closesOnlyThroughButtons || closesOnlyThroughItsButtons(form.get()));
}
