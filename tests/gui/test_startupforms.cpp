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
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QShowEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
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
            dialog.done(QDialog::Rejected); // reject() may ask first
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
// label's, field's or button's text.
QString shownText(const QWidget &window, const QString &control)
{
    if (control.isEmpty())
        return window.windowTitle();
    if (const auto *label = window.findChild<QLabel *>(control))
        return label->text();
    if (const auto *field = window.findChild<QLineEdit *>(control))
        return field->text();
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
    void leavingGameDialog_data();
    void leavingGameDialog();
    void invalidUTPathRefused_data();
    void invalidUTPathRefused();
    void configFolderCreatedOnOk_data();
    void configFolderCreatedOnOk();
    void browsing_data();
    void browsing();
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
        "lblPath=&Path:", "txtUTPath=",
        "Label2=If it is not click the BROWSE button.", "cmdBrowse=Browse",
        "lblOK=If it is correct click the OK button.", "OKButton=OK",
#ifdef Q_OS_LINUX
        "lblGameFolder=A game folder holds the System folder and the game's User.ini: System/User.ini, System64/User.ini or ~/.utpg/System/User.ini."};
#else
        };
#endif
    QTest::newRow("config path") << MakeWindow([] { return new dlgChangeConfigPath; }) << QStringList{
        "=Is this your correct Configuration path?",
        "lblMessage=Is the path below where you want your configurations saved?",
        "lblPath=&Path:",
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
void TestStartupForms::leavingGameDialog_data()
{
    QTest::addColumn<bool>("gameFolderSet"); // AppOptions().UTPath is a game folder
    QTest::addColumn<bool>("escape");        // else the title bar's close
    QTest::addColumn<int>("answer");         // to the question, when it comes
    QTest::addColumn<bool>("closed");
    QTest::addColumn<bool>("quit");

    QTest::newRow("no game folder, Escape, No") << false << true << int(MessageAnswer::No) << false << false;
    QTest::newRow("no game folder, title bar, Yes") << false << false << int(MessageAnswer::Yes) << true << true;
    QTest::newRow("game folder set: it is kept") << true << true << int(MessageAnswer::Yes) << true << false;
}
// clang-format on

// Without a game folder the program cannot go on, so closing the dialog
// asks whether to quit rather than leave the user trapped in it.
void TestStartupForms::leavingGameDialog()
{
    QFETCH(bool, gameFolderSet);
    QFETCH(bool, escape);
    QFETCH(int, answer);
    QFETCH(bool, closed);
    QFETCH(bool, quit);

    const QString game = native(m_dir.path() + "/kept/");
    QVERIFY(writeTestFile(game + "System/User.ini", "[URL]\r\n"));
    if (gameFolderSet)
        AppOptions().UTPath = game;
    m_prompt->answerNext(MessageAnswer(answer));
    dlgCorrectUTPath dialog;
    dialog.showPath("typed");
    dialog.show();
    QVERIFY(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    if (escape)
        QTest::keyClick(&dialog, Qt::Key_Escape);
    else
        closedByWindowSystem(&dialog);

    QCOMPARE(dialog.isVisible(), !closed);
    QCOMPARE(dialog.QuitChosen, quit);
    QCOMPARE(dialog.ChosenPath, gameFolderSet ? game : "typed");
    const QString question
        = "Quit Quorvane?|Quorvane cannot start without the game folder. Quit Quorvane?";
    QCOMPARE(m_prompt->transcript(), gameFolderSet ? QStringList() : QStringList { question });
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
#ifdef Q_OS_LINUX
    QTest::newRow("user.ini in ~/.utpg") << "patched" << "System/Core.int|~/.utpg/System/User.ini" << true;
#endif
}
// clang-format on

void TestStartupForms::invalidUTPathRefused()
{
    QFETCH(QString, folder);
    QFETCH(QString, userIni);
    QFETCH(bool, accepted);

    const QString path = folder == "-" ? QString() : native(m_dir.path() + "/" + folder + "/");
    QDir().mkpath(path);
    dlgCorrectUTPath dialog;
    QCOMPARE(dialog.ChosenPath, QString()); // the home folder holds no game
    const auto clearHome
        = qScopeGuard([] { QDir(QDir::homePath() + "/.utpg").removeRecursively(); });
    for (const QString &file : userIni.split('|', Qt::SkipEmptyParts))
        QVERIFY(writeTestFile(
            file.startsWith("~/") ? QDir::homePath() + file.mid(1) : path + file, "[URL]\r\n"));

    // Typed as a paste often brings it, with a blank at the end.
    dialog.txtUTPath->clear();
    QTest::keyClicks(dialog.txtUTPath, path + " ");
    QCOMPARE(dialog.ChosenPath, path + " ");

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
    QCOMPARE(dialog.txtConfigPath->text(), path);

    QCOMPARE(staysOpenAfter(dialog, dialog.OKButton), !accepted);
    QCOMPARE(QFileInfo(path).isDir(), accepted);
    QCOMPARE(AppOptions().ConfigPath, accepted ? AddBackslash(path) : path);
    QCOMPARE(m_prompt->messages().size(), accepted ? 0 : 1);
    if (!accepted)
        QVERIFY(m_prompt->transcript().at(0).startsWith(
            "Configuration Path|" + path + " could not be created."));
}

// clang-format off
void TestStartupForms::browsing_data()
{
    QTest::addColumn<bool>("game");        // the game dialog, else the configuration one
    QTest::addColumn<QString>("shown");    // inside the temporary directory
    QTest::addColumn<QString>("button");   // pressed in the folder chooser
    QTest::addColumn<QString>("expected"); // shown afterwards

    QTest::newRow("game: chosen") << true << "a/b" << "OK" << "a/b/";
    QTest::newRow("game: cancelled") << true << "a/b" << "Cancel" << "a/b";
    QTest::newRow("config: opens at the nearest folder that exists") << false << "a/new/" << "OK" << "a/";
}
// clang-format on

void TestStartupForms::browsing()
{
    QFETCH(bool, game);
    QFETCH(QString, shown);
    QFETCH(QString, button);
    QFETCH(QString, expected);

    QDir().mkpath(m_dir.path() + "/a/b");
    std::unique_ptr<PathDialog> dialog(
        game ? static_cast<PathDialog *>(new dlgCorrectUTPath) : new dlgChangeConfigPath);
    dialog->showPath(native(m_dir.path() + "/" + shown));
    dlgChangePath &chooser = theForm<dlgChangePath>();
    QString caption;
    bool canCreate = false;
    whenShown([&] {
        caption = chooser.windowTitle();
        canCreate = chooser.cmdCreateFolder->isVisible();
        chooser.findChild<QPushButton *>(button + "Button")->click();
    });
    dialog->cmdBrowse->click();

    QCOMPARE(caption, game ? "Choose a New UT Path" : "Choose Configuration Directory...");
    QCOMPARE(canCreate, !game);
    QCOMPARE(dialog->ChosenPath, native(m_dir.path() + "/" + expected));
    QCOMPARE(dialog->findChild<QLineEdit *>()->text(), dialog->ChosenPath);
    QCOMPARE(dialog->focusWidget(), dialog->OKButton);
    // The field is named by its label, for screen readers.
    QCOMPARE(QAccessible::queryAccessibleInterface(dialog->findChild<QLineEdit *>())
                 ->text(QAccessible::Name),
        "Path:");
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
    QTest::addColumn<bool>("escape");        // pressed instead of the button
    QTest::addColumn<QString>("created");
    QTest::addColumn<QString>("problem");

    QTest::newRow("new folder") << QStringList{"New"} << "Create" << false << "New" << "";
    QTest::newRow("typed and deleted") << QStringList{"x", ""} << "Cancel" << false << "" << "";
    QTest::newRow("Escape closes only the row") << QStringList{"x"} << "Create" << true << "" << "";
    QTest::newRow("existing name") << QStringList{"taken"} << "Create" << false << "" << "A file or folder of that name already exists.";
    QTest::newRow("name with a separator") << QStringList{"a/b"} << "Create" << false << "" << "A folder name cannot contain \\ or / or be . or ..";
}
// clang-format on

void TestStartupForms::folderCreation()
{
    QFETCH(QStringList, typing);
    QFETCH(QString, buttonCaption);
    QFETCH(bool, escape);
    QFETCH(QString, created);
    QFETCH(QString, problem);

    QTemporaryDir parent;
    QDir(parent.path()).mkdir("taken");
    dlgChangePath chooser;
    chooser.setPath(parent.path());
    chooser.show();
    const int treeHeight = chooser.dirOne->height();
    chooser.cmdCreateFolder->click();
    QVERIFY(chooser.txtNewFolder->isVisible() && !chooser.OKButton->isEnabled());
    // The row takes no room from the tree, so the parent stays in view.
    QCOMPARE(chooser.dirOne->height(), treeHeight);
    for (const QString &text : typing)
        chooser.txtNewFolder->setText(text);
    QCOMPARE(chooser.cmdCreate->text(), buttonCaption);
    if (escape)
        QTest::keyClick(chooser.txtNewFolder, Qt::Key_Escape);
    else
        chooser.cmdCreate->click();

    // A refused name keeps the row open for a correction.
    const bool refused = !problem.isEmpty();
    QVERIFY(chooser.isVisible());
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

    // A created folder's name is gone, so a second Create cannot nest a
    // folder of the same name in it. Restored from the task bar, the dialog
    // keeps what is typed; the next showing starts with an empty name and
    // the row closed.
    restoredByWindowSystem(&chooser);
    QCOMPARE(chooser.txtNewFolder->text(), created.isEmpty() ? typing.last() : QString());
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
    QCoreApplication::processEvents(); // where the band is drawn
    QCOMPARE(shownBand(splash), rotatedRight(start, rotation));
    unloadForm<frmSplash>();
}

void TestStartupForms::splashHandOver_data()
{
    QTest::addColumn<int>("box"); // the auto-close box's state
    QTest::addColumn<bool>("enter"); // pressed instead of a click on Close
    QTest::addColumn<int>("stored"); // AutoCloseSplash afterwards

    QTest::newRow("ticked, clicked") << int(Qt::Checked) << false << 1;
    QTest::newRow("unticked, Enter") << int(Qt::Unchecked) << true << 0;
    QTest::newRow("greyed stays greyed") << int(Qt::PartiallyChecked) << true << 2;
}

void TestStartupForms::splashHandOver()
{
    QFETCH(int, box);
    QFETCH(bool, enter);
    QFETCH(int, stored);

    AppOptions().AutoCloseSplash = -1;
    frmSplash &splash = theForm<frmSplash>();
    splash.show();
    splash.chkAutoClose->setCheckState(Qt::CheckState(box));
    int handOvers = 0;
    bool splashShownAtHandOver = false;
    splash.showMainWindow = [&] {
        ++handOvers;
        splashShownAtHandOver = splash.isVisible();
    };
    // Enter does nothing until Close can be pressed.
    QTest::keyClick(splash.chkAutoClose, Qt::Key_Return);
    QCOMPARE(handOvers, 0);
    splash.cmdClose->setEnabled(true);
    if (enter)
        QTest::keyClick(splash.chkAutoClose, Qt::Key_Return);
    else
        splash.cmdClose->click();

    QCOMPARE(handOvers, 1);
    QVERIFY(splashShownAtHandOver);
    QCOMPARE(AppOptions().AutoCloseSplash, qint16(stored));
    QTRY_VERIFY(!isFormLoaded<frmSplash>());
}

QTEST_MAIN(TestStartupForms)
#include "test_startupforms.moc"
