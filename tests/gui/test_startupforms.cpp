#include "scriptedprompt.h"
#include "testfiles.h"

#include "configfiles/fileops.h"
#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/formregistry.h"
#include "roster/botroster.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/frmSplash.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QtTest/qtestspontaneevent.h>

#include <functional>

using MakeWindow = std::function<QWidget *()>;
Q_DECLARE_METATYPE(MakeWindow)

namespace {

// Runs `action` once the next modal dialog has started its event loop.
void whenShown(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, std::move(action));
}

// Shows `dialog` modal, presses `button` and tells whether it stayed open.
bool staysOpenAfter(QDialog &dialog, QPushButton *button)
{
    bool open = false;
    whenShown([&] {
        button->click();
        open = dialog.isVisible();
        if (open)
            dialog.reject();
    });
    dialog.exec();
    return open;
}

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

// A close request as the window system sends it (title bar, Alt+F4);
// sendEvent() would clear the spontaneous flag, notify() keeps it.
bool closedByWindowSystem(QWidget *window)
{
    QCloseEvent event;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
    return event.isAccepted();
}

// A show as the window system sends it when a minimised window comes back.
void restoredByWindowSystem(QWidget *window)
{
    QShowEvent event;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
}

// The text a control shows: a window's caption for "", else the named
// label's or button's text.
QString shownText(const QWidget &window, const QString &control)
{
    if (control.isEmpty())
        return window.windowTitle();
    if (const auto *label = window.findChild<QLabel *>(control))
        return label->text();
    if (const auto *button = window.findChild<QAbstractButton *>(control))
        return button->text();
    return QStringLiteral("<no control %1>").arg(control);
}

QImage rotatedRight(const QImage &picture, int shift)
{
    const int width = picture.width();
    QImage result(picture.size(), QImage::Format_RGB32);
    for (int x = 0; x < width; ++x)
        for (int y = 0; y < picture.height(); ++y)
            result.setPixel(x, y, picture.pixel(((x - shift) % width + width) % width, y));
    return result;
}

QImage shownBand(const frmSplash &splash)
{
    return splash.pbGradient->pixmap().toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

class TestStartupForms : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void captions_data();
    void captions();
    void closeControl_data();
    void closeControl();
    void invalidUTPathRefused_data();
    void invalidUTPathRefused();
    void configFolderCreatedOnOk_data();
    void configFolderCreatedOnOk();
    void folderChooserResults_data();
    void folderChooserResults();
    void folderCreation_data();
    void folderCreation();
    void errorReport_data();
    void errorReport();
    void descriptionEditor_data();
    void descriptionEditor();
    void splashMessages();
    void splashBandScrolls_data();
    void splashBandScrolls();
    void splashHandOver_data();
    void splashHandOver();

private:
    QTemporaryDir m_dir;
    ScriptedPrompt *m_prompt = nullptr;
};

void TestStartupForms::initTestCase()
{
    QVERIFY(m_dir.isValid());
    // A home folder without the game, so nothing is proposed.
    QVERIFY(QDir(m_dir.path()).mkpath("home"));
    qputenv("HOME", QFile::encodeName(m_dir.path() + "/home"));
    setProgramDir(m_dir.path());
}

void TestStartupForms::init()
{
    m_prompt = new ScriptedPrompt;
    AppOptions() = Options();
}

void TestStartupForms::cleanup()
{
    delete m_prompt;
    unloadForm<dlgChangePath>();
}

// clang-format off
void TestStartupForms::captions_data()
{
    QTest::addColumn<MakeWindow>("make");
    QTest::addColumn<QStringList>("shown"); // "control=text"; no control for the caption

    const auto firstRun = MakeWindow([] { return new dlgFirstRun; });
    QTest::newRow("first run") << firstRun << QStringList{
        "=",
        "lblTitle=Starting Quorvane First Run Setup...",
        "Label1=The only time you will see this dialog is when Quorvane is first installed.",
        "Label2=Following this dialog there will be a few setup dialog windows asking you to choose settings that are required for the operation of Quorvane.",
        "lblOtherTimes=Other times that you would see these setup dialog windows are:",
        "lblOptionDeleted=...if the options.ini file has been deleted.",
        "lblOR=OR",
        "lblChangeSettings=...if you change settings.",
        "lblBeginClick=Click the continue button to begin...",
        "cmdContinue=Continue..."};
    QTest::newRow("game path") << MakeWindow([] { return new dlgCorrectUTPath; }) << QStringList{
        "=Is this your correct UT Path?",
        "lblMessage=Is this the correct Unreal Tournament path to use?",
        "lblUTPath=",
        "Label2=If it is not click the BROWSE button.", "cmdBrowse=Browse",
        "lblOK=If it is correct click the OK button.", "OKButton=OK"};
    QTest::newRow("config path") << MakeWindow([] { return new dlgChangeConfigPath; }) << QStringList{
        "=Is this your correct Configuration path?",
        "lblMessage=Is the path below where you want your configurations saved?",
        "Label2=If it is not click the BROWSE button.", "cmdBrowse=Browse",
        "lblOK=If it is correct click the OK button.", "OKButton=OK"};
    QTest::newRow("splash") << MakeWindow([] { return new frmSplash; }) << QStringList{
        "=",
        "lblCompanyProduct=Tessaline presents the...",
        "lblPlatform=...for Windows 9x/NT/2000",
        "lblVersion=Version 0.1.0 Beta",
        "lblMessage=",
        "chkAutoClose=Auto-close this window after program initialization finishes.",
        "cmdClose=Close"};
    QTest::newRow("folder chooser") << MakeWindow([] { return new dlgChangePath; }) << QStringList{
        "=Change Path...",
        "lblDrive=Drive:", "lblFolder=Folder:", "cmdCreateFolder=Create Folder",
        "OKButton=OK", "CancelButton=Cancel",
        "lblNewFolder=New Folder:", "cmdCreate=Cancel"};
    QTest::newRow("error") << MakeWindow([] { return new dlgError; }) << QStringList{
        "lblErrDescrLabel=Error Description:",
        "lblCustomDescrLabel=Custom Error Msg:"};
    QTest::newRow("description") << MakeWindow([] { return new dlgDescr; }) << QStringList{
        "=Enter Description",
        "cmdSave=Apply", "CancelButton=Cancel",
        "lblWarning=Changes are only applied.  Must save configuration to save description."};
}
// clang-format on

void TestStartupForms::captions()
{
    QFETCH(MakeWindow, make);
    QFETCH(QStringList, shown);

    std::unique_ptr<QWidget> window(make());
    for (const QString &entry : shown) {
        const QString control = entry.section('=', 0, 0);
        QCOMPARE(shownText(*window, control), entry.section('=', 1));
    }
}

// clang-format off
void TestStartupForms::closeControl_data()
{
    QTest::addColumn<MakeWindow>("make");
    QTest::addColumn<bool>("onlyThroughButtons");

    QTest::newRow("game path") << MakeWindow([] { return new dlgCorrectUTPath; }) << true;
    QTest::newRow("config path") << MakeWindow([] { return new dlgChangeConfigPath; }) << true;
    QTest::newRow("error") << MakeWindow([] { return new dlgError; }) << true;
    QTest::newRow("splash") << MakeWindow([] { return new frmSplash; }) << true;
    QTest::newRow("description") << MakeWindow([] { return new dlgDescr; }) << true;
    QTest::newRow("folder chooser, like Cancel") << MakeWindow([] { return new dlgChangePath; }) << false;
}
// clang-format on

void TestStartupForms::closeControl()
{
    QFETCH(MakeWindow, make);
    QFETCH(bool, onlyThroughButtons);

    std::unique_ptr<QWidget> window(make());
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));

    QCOMPARE(window->windowFlags().testFlag(Qt::WindowCloseButtonHint), !onlyThroughButtons);
    QCOMPARE(closedByWindowSystem(window.get()), !onlyThroughButtons);
    if (onlyThroughButtons) {
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QVERIFY(window->isVisible());
        QVERIFY(window->close()); // the program itself still can
    }
}

// clang-format off
void TestStartupForms::invalidUTPathRefused_data()
{
    QTest::addColumn<QString>("folder"); // inside the temporary directory; "-" for none
    QTest::addColumn<QString>("userIni");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("nothing proposed") << "-" << "" << false;
    QTest::newRow("folder without user.ini") << "empty" << "" << false;
    QTest::newRow("user.ini elsewhere") << "wrong" << "user.ini" << false;
    QTest::newRow("game folder") << "game" << "System/user.ini" << true;
    QTest::newRow("game folder, other case") << "game2" << "system/User.ini" << true;
    QTest::newRow("64-bit game only") << "game64" << "System64/User.ini" << false;
    QTest::newRow("64-bit game") << "game64b" << "System/Core.int|System64/User.ini" << true;
}
// clang-format on

void TestStartupForms::invalidUTPathRefused()
{
    QFETCH(QString, folder);
    QFETCH(QString, userIni);
    QFETCH(bool, accepted);

    const QString path = folder == "-" ? QString() : native(m_dir.path() + "/" + folder + "/");
    QDir().mkpath(path);
    for (const QString &file : userIni.split('|', Qt::SkipEmptyParts))
        QVERIFY(writeTestFile(path + file, "[URL]\r\n"));

    dlgCorrectUTPath dialog;
    QCOMPARE(dialog.ChosenPath, QString()); // the home folder holds no game
    dialog.showPath(path);
    QCOMPARE(dialog.lblUTPath->text(), path);

    QCOMPARE(staysOpenAfter(dialog, dialog.OKButton), !accepted);
    QCOMPARE(AppOptions().UTPath, accepted ? path : QString());
    const QString refusal
        = "Invalid UT Path|" + path + " is not a valid UT path.\r\n\r\nPlease choose again.";
    QCOMPARE(m_prompt->transcript(), accepted ? QStringList() : QStringList { refusal });
}

void TestStartupForms::configFolderCreatedOnOk_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("new folder") << "configs/" << true;
    QTest::newRow("existing folder") << "" << true;
    QTest::newRow("no trailing separator") << "plain" << true;
    QTest::newRow("parent missing") << "missing/configs/" << false;
}

void TestStartupForms::configFolderCreatedOnOk()
{
    QFETCH(QString, folder);
    QFETCH(bool, accepted);

    QDir().mkpath(m_dir.path() + "/cfg");
    const QString path = native(m_dir.path() + "/cfg/" + folder);
    AppOptions().ConfigPath = path;
    dlgChangeConfigPath dialog;
    QCOMPARE(dialog.lblConfigPath->text(), path);

    QCOMPARE(staysOpenAfter(dialog, dialog.OKButton), !accepted);
    QCOMPARE(QFileInfo(path).isDir(), accepted);
    QCOMPARE(AppOptions().ConfigPath, accepted ? AddBackslash(path) : path);
    QCOMPARE(m_prompt->messages().size(), accepted ? 0 : 1);
    if (!accepted)
        QVERIFY(m_prompt->transcript().at(0).startsWith(
            "Configuration Path|" + path + " could not be created."));
}

// clang-format off
void TestStartupForms::folderChooserResults_data()
{
    QTest::addColumn<QString>("start"); // "<root>" or a folder inside the temporary directory
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("expected");

    QTest::newRow("drive root") << "<root>" << "OK" << native(QDir::rootPath());
    QTest::newRow("sub-folder") << "a/b" << "OK" << native(m_dir.path() + "/a/b/");
    QTest::newRow("missing folder: deepest that exists") << "a/gone/x" << "OK" << native(m_dir.path() + "/a/");
    QTest::newRow("cancel") << "a" << "Cancel" << "";
}
// clang-format on

void TestStartupForms::folderChooserResults()
{
    QFETCH(QString, start);
    QFETCH(QString, button);
    QFETCH(QString, expected);

    QDir().mkpath(m_dir.path() + "/a/b");
    dlgChangePath &chooser = theForm<dlgChangePath>();
    QCOMPARE(chooser.windowTitle(), "Change Path...");
    // An OK in an earlier showing must not leak into this one.
    whenShown([&] { chooser.OKButton->click(); });
    chooser.exec();
    QVERIFY(!chooser.SelectedFolder.isEmpty());

    chooser.setDrive("C:\\");
    chooser.setPath(start == "<root>" ? QDir::rootPath() : m_dir.path() + "/" + start);
    whenShown([&] { chooser.findChild<QPushButton *>(button + "Button")->click(); });
    chooser.exec();
    QCOMPARE(chooser.SelectedFolder, expected);
}

// clang-format off
void TestStartupForms::folderCreation_data()
{
    QTest::addColumn<QStringList>("typing"); // texts typed one after the other
    QTest::addColumn<QString>("buttonCaption");
    QTest::addColumn<QString>("created");
    QTest::addColumn<QString>("problem");

    QTest::newRow("new folder") << QStringList{"New"} << "Create" << "New" << "";
    QTest::newRow("typed and deleted") << QStringList{"x", ""} << "Cancel" << "" << "";
    QTest::newRow("existing name") << QStringList{"taken"} << "Create" << "" << "A file or folder of that name already exists.";
    QTest::newRow("name with a separator") << QStringList{"a/b"} << "Create" << "" << "A folder name cannot contain \\ or / or be . or ..";
}
// clang-format on

void TestStartupForms::folderCreation()
{
    QFETCH(QStringList, typing);
    QFETCH(QString, buttonCaption);
    QFETCH(QString, created);
    QFETCH(QString, problem);

    QTemporaryDir parent;
    QDir(parent.path()).mkdir("taken");
    dlgChangePath chooser;
    chooser.setPath(parent.path());
    chooser.show();
    chooser.cmdCreateFolder->click();
    QVERIFY(chooser.txtNewFolder->isVisible() && !chooser.OKButton->isEnabled());
    for (const QString &text : typing)
        chooser.txtNewFolder->setText(text);
    QCOMPARE(chooser.cmdCreate->text(), buttonCaption);
    chooser.cmdCreate->click();

    // A refused name keeps the row open for a correction.
    const bool refused = !problem.isEmpty();
    QCOMPARE(chooser.txtNewFolder->isVisible(), refused);
    QCOMPARE(chooser.OKButton->isEnabled(), !refused);
    const QStringList folders
        = created.isEmpty() ? QStringList { "taken" } : QStringList { created, "taken" };
    QCOMPARE(QDir(parent.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot), folders);
    QCOMPARE(m_prompt->messages().size(), refused ? 1 : 0);
    if (refused) {
        QVERIFY(m_prompt->transcript().at(0).startsWith("Create Folder|"));
        QVERIFY(m_prompt->transcript().at(0).endsWith("\r\n\r\n" + problem));
    } else {
        chooser.OKButton->click();
        const QString folder = created.isEmpty() ? parent.path() : parent.path() + "/" + created;
        QCOMPARE(chooser.SelectedFolder, native(folder + "/"));
    }

    // Restored from the task bar, the dialog keeps what is typed; the next
    // showing starts with an empty name and the row closed.
    restoredByWindowSystem(&chooser);
    QCOMPARE(chooser.txtNewFolder->text(), typing.last());
    chooser.hide();
    chooser.show();
    QCOMPARE(chooser.txtNewFolder->text(), QString());
    QCOMPARE(chooser.cmdCreate->text(), "Cancel");
    QVERIFY(!chooser.txtNewFolder->isVisible() && chooser.OKButton->isEnabled());
}

// clang-format off
void TestStartupForms::errorReport_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("detail");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("shownDescription");

    QTest::newRow("file not found") << 53 << "C:\\UT\\pattern.ini" << "Unknown Error has occured in Sub Main" << "File not found: C:\\UT\\pattern.ini";
    QTest::newRow("empty message") << 13 << "" << "" << "Type mismatch";
}
// clang-format on

void TestStartupForms::errorReport()
{
    QFETCH(int, number);
    QFETCH(QString, detail);
    QFETCH(QString, message);
    QFETCH(QString, shownDescription);

    const RunError error(number, detail);
    DialogErrorSink sink;
    installErrorSink(&sink);
    dlgError &dialog = theForm<dlgError>();
    QString caption;
    whenShown([&] {
        caption = dialog.windowTitle();
        dialog.OKButton->click();
    });
    ProcessError(error, message);
    installErrorSink(nullptr);

    const QString report = dialog.lblErrFileLoc->text();
    QVERIFY(report.startsWith(ProgramDir() + "ErrNum" + QString::number(number) + "_"));
    QCOMPARE(caption, "Error Number: " + QString::number(number));
    QCOMPARE(dialog.lblErrDescr->text(), shownDescription);
    QCOMPARE(dialog.lblCustomMsg->text(), message);
    QCOMPARE(dialog.Label1->text(),
        "Please e-mail the following file to support@quorvane.example with subject \"Quorvane "
        "Error\":");
    QCOMPARE(readTestFile(report),
        crlf({ "Error Message: " + message, "Error Number: " + QString::number(number),
            "Description: " + error.description() }));
    QVERIFY(!dialog.isVisible());
    unloadForm<dlgError>();
}

// clang-format off
void TestStartupForms::descriptionEditor_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("expected");

    QTest::newRow("apply") << "cmdSave" << "Fast bots only";
    QTest::newRow("cancel") << "CancelButton" << "Team practice";
}
// clang-format on

void TestStartupForms::descriptionEditor()
{
    QFETCH(QString, button);
    QFETCH(QString, expected);

    Roster().Description = "Team practice";
    dlgDescr dialog;
    dialog.show();
    QCOMPARE(dialog.txtDescr->toPlainText(), "Team practice");
    dialog.txtDescr->setPlainText("Fast bots only");
    restoredByWindowSystem(&dialog);
    QCOMPARE(dialog.txtDescr->toPlainText(), "Fast bots only");
    dialog.findChild<QPushButton *>(button)->click();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(Roster().Description, expected);

    // The next showing starts from the roster again.
    Roster().Description = "Duel";
    dialog.show();
    QCOMPARE(dialog.txtDescr->toPlainText(), "Duel");
}

void TestStartupForms::splashMessages()
{
    frmSplash &splash = theForm<frmSplash>();
    QCOMPARE(splash.lblVersion->text(), "Version 0.1.0 Beta");
    QCOMPARE(splash.lblMessage->text(), QString());
    QVERIFY(!splash.cmdClose->isEnabled());

    Progress *asProgress = &splash;
    installProgress(asProgress);
    currentProgress().step("Loading Options...");
    QCOMPARE(splash.message(), "Loading Options...");
    currentProgress().step("Locate Unreal Tournament && Configuration Directory...");
    QCOMPARE(splash.message(), "Locate Unreal Tournament & Configuration Directory...");
    unloadForm<frmSplash>();
    QVERIFY(&currentProgress() != asProgress); // an unloaded splash no longer shows progress
}

void TestStartupForms::splashBandScrolls_data()
{
    QTest::addColumn<int>("incrementor");
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("calls");
    QTest::addColumn<int>("rotation"); // to the right

    QTest::newRow("splash band, 3 steps") << 2 << 1 << 3 << 6;
    QTest::newRow("wraps around") << 100 << 1 << 4 << 400 - 347;
    QTest::newRow("left with 0") << 5 << 0 << 2 << -10;
    QTest::newRow("left with 2") << 5 << 2 << 1 << -5;
    QTest::newRow("no increment") << 0 << 1 << 3 << 0;
}

void TestStartupForms::splashBandScrolls()
{
    QFETCH(int, incrementor);
    QFETCH(int, direction);
    QFETCH(int, calls);
    QFETCH(int, rotation);

    const QImage start = GradientPicture();
    QCOMPARE(start.size(), QSize(347, 15));
    QCOMPARE(start.pixel(0, 7), qRgb(0, 0, 255));
    QCOMPARE(start.pixel(173, 7), qRgb(254, 254, 255));
    QCOMPARE(start.pixel(346, 7), qRgb(0, 0, 255));

    frmSplash &splash = theForm<frmSplash>();
    splash.show();
    QVERIFY(QTest::qWaitForWindowExposed(&splash));
    // One picture pixel per box pixel, so a step moves the band by exactly
    // the Incrementor.
    QCOMPARE(splash.pbGradient->size(), start.size());
    QVERIFY(!splash.pbGradient->hasScaledContents());
    QCOMPARE(shownBand(splash), start);
    QCOMPARE(splash.GradientBar.Incrementor(), 2);
    splash.GradientBar.setIncrementor(qint16(incrementor));
    splash.GradientBar.setPicDir(direction);
    for (int i = 0; i < calls; ++i)
        splash.advance();
    QCOMPARE(shownBand(splash), rotatedRight(start, rotation));
    unloadForm<frmSplash>();
}

void TestStartupForms::splashHandOver_data()
{
    QTest::addColumn<bool>("ticked");

    QTest::newRow("auto-close ticked") << true;
    QTest::newRow("auto-close unticked") << false;
}

void TestStartupForms::splashHandOver()
{
    QFETCH(bool, ticked);

    AppOptions().AutoCloseSplash = ticked ? 0 : 1;
    frmSplash &splash = theForm<frmSplash>();
    splash.show();
    splash.chkAutoClose->setChecked(ticked);
    bool splashShownAtHandOver = false;
    splash.showMainWindow = [&] { splashShownAtHandOver = splash.isVisible(); };
    splash.cmdClose->setEnabled(true);
    splash.cmdClose->click();

    QVERIFY(splashShownAtHandOver);
    QCOMPARE(AppOptions().AutoCloseSplash, qint16(ticked ? 1 : 0));
    QTRY_VERIFY(!isFormLoaded<frmSplash>());
}

QTEST_MAIN(TestStartupForms)
#include "test_startupforms.moc"
