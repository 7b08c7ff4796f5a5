#include "bosspackage.h"
#include "dialogscript.h"
#include "formtesting.h"

#include "catalogue/bossmode.h"
#include "roster/forms/frmBots.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgOptions.h"
#include "startup/forms/frmSplash.h"
#include "startup/forms/startupsequence.h"

#include <QAccessible>
#include <QAction>
#include <QGroupBox>
#include <QTabWidget>

namespace {

// Files as "name=content", folders as "name/", in name order.
QStringList listing(const QString &directory)
{
    QStringList entries;
    const QFileInfoList infos = QDir(directory).entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo &info : infos)
        entries << (info.isDir() ? info.fileName() + "/"
                                 : info.fileName() + "=" + readTestFile(info.filePath()));
    return entries;
}

void makeEntries(const QString &directory, const QStringList &entries)
{
    QVERIFY(QDir().mkpath(directory));
    for (const QString &entry : entries) {
        if (entry.endsWith('/'))
            QVERIFY(QDir(directory).mkdir(entry.chopped(1)));
        else
            QVERIFY(writeTestFile(
                directory + entry.section('=', 0, 0), entry.section('=', 1).toUtf8()));
    }
}

const QString MoveQuestion = "Configuration Files Exist!|Move files to new directory?\r\n\r\n"
                             "Yes will move files and remove the old directory.\r\n\r\n"
                             "No will not move or remove the old directory.";
const QString LeftQuestion = "Files Exist in Old Directory!|Yes = Remove directory and existing "
                             "files.\r\n\r\n No = Do not remove files or directory. [No]";
const QString RestartMessage
    = "Restart Quorvane|Quorvane must be restarted for changes to take affect.";

} // namespace

// The options dialog opened from a main window that the start-up built for
// game A; game B is a second installation to change to.
class TestOptionsDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The report the start-up shows names the unmatched skin files, which
        // tell the two games apart.
        setStartupForms([this] {
            StartupForms forms;
            forms.scan.showUnmatchedReport = [this](const QStringList &paths) {
                for (const QString &path : paths)
                    m_reports << QFileInfo(path).fileName();
            };
            return forms;
        });
    }

    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_root = native(m_dir->path() + "/");
        // Nothing to propose: the path dialogs show what they are given.
        qputenv("HOME", QFile::encodeName(m_root + "home"));
        setProgramDir(m_root + "program");
        QVERIFY(writeTestFile(m_root + native("program/int.ini"), ""));
        QVERIFY(writeTestFile(m_root + native("program/pattern.ini"), ""));
        m_configs = m_root + native("configs/");
        QVERIFY(QDir().mkpath(m_configs));
        for (const QString game : { "A", "B" }) {
            const QString system = m_root + native("game" + game + "/System/");
            QVERIFY(writeTestFile(system + "User.ini", "[URL]\r\n"));
            QVERIFY(writeTestFile(system + "Models.int",
                crlf({ "[Public]",
                    "Object=(Name=Botpack.Model" + game
                        + "Bot,Class=Class,"
                          "MetaClass=Botpack.Bot,Description=\"Model"
                        + game + "\")" })));
            QVERIFY(writeTestFile(system + "Lost" + game + ".int",
                crlf({ "[Public]",
                    "Object=(Name=Lost.skin1,Class=Texture,Description=\"Lost\")" })));
        }
        m_gameA = m_root + native("gameA/");
        QVERIFY(writeTestFile(
            m_gameA + native("System/SkeletalCharsFix313.int"), bossPackageText(true, true)));
        QVERIFY(writeTestFile(m_root + native("program/options.ini"),
            crlf({ "[SplashScreen]", "0", "", "[UTPath]", "0", m_configs, m_gameA })));

        AppOptions() = Options();
        m_reports.clear();
        m_prompt = std::make_unique<ScriptedPrompt>();
        Main();
        QVERIFY(isFormLoaded<frmSplash>());
        theForm<frmSplash>().cmdClose->click();
        QVERIFY(theForm<frmBots>().isVisible());
        // The splash keeps its box's state in the options when it goes.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // What the start-up leaves in the path dialogs when it asks for them.
        theForm<dlgCorrectUTPath>().setWindowTitle("Locate Unreal Tournament Directory...");
        theForm<dlgCorrectUTPath>().lblMessage->clear();
        theForm<dlgChangeConfigPath>().setWindowTitle("Locate Configuration Directory...");
        theForm<dlgChangeConfigPath>().lblMessage->clear();
    }

    void cleanup()
    {
        unloadForm<dlgOptions>();
        unloadForm<dlgCorrectUTPath>();
        unloadForm<dlgChangeConfigPath>();
        unloadForm<frmSplash>();
        unloadForm<frmBots>();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_prompt.reset();
    }

    void controls()
    {
        dlgOptions &dialog = openOptions();
        QStringList texts { dialog.windowTitle(), dialog.Frame1->title() };
        for (int tab = 0; tab < dialog.SSTab1->count(); ++tab)
            texts << dialog.SSTab1->tabText(tab);
        // The tab bar's scroll arrows have no text.
        for (const QAbstractButton *button : dialog.findChildren<QAbstractButton *>())
            if (!button->text().isEmpty())
                texts << button->objectName() + "=" + button->text();
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            texts << label->objectName() + "=" + label->text();
        // clang-format off
        QStringList expected { "Quorvane Options", "Frame1", "Paths", "Boss", "Other",
            "optPathChange=UT Path:", "optPathChange=Save Configuration Path:", "cmdChange=Change",
            "lblUTPath=" + m_gameA, "lblConfigPath=" + m_configs,
            "lblFilename=skeletalcharsfix313.int",
            "lblExplanation=The above file has two choices of models (or classes) in it.  Below is the current setting.",
            "optChoice= WarBoss and Xan II [Fixed] Only",
            "lblFixed=This choice allows you to use only other skins with the new WarBoss and Xan II models.",
            "optChoice= WarBoss and Xan II [Fixed/Male Voices] Only",
            "lblFixedMaleVoice=This choice allows you to use only other skins and any male voice with the new WarBoss and Xan II models.",
            "optChoice= Both [Fixed] and [Fixed/Male Voices] On (default)",
            "Label1=Turns on both models so you can choose to use the new boss skins with new skins or new skins and male voice.",
            "chkAutoClose=Auto Close Splash Screen", "OKButton=OK" };
        // clang-format on
        texts.sort();
        expected.sort();
        QCOMPARE(texts, expected);
        QCOMPARE(dialog.SSTab1->currentIndex(), 0);
        QVERIFY(dialog.optPathChange.at(0)->isChecked());
        QVERIFY(!dialog.PathsChanged);
        // Modal over everything, yet no child of the window a restart replaces.
        QCOMPARE(dialog.parentWidget(), nullptr);
        QCOMPARE(QApplication::activeModalWidget(), &dialog);

        QStringList unnamed;
        for (int tab = 0; tab < dialog.SSTab1->count(); ++tab) {
            dialog.SSTab1->setCurrentIndex(tab);
            for (QWidget *control : dialog.findChildren<QWidget *>()) {
                if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisibleTo(&dialog))
                    continue;
                QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(control);
                if (!accessible || accessible->text(QAccessible::Name).trimmed().isEmpty())
                    unnamed << QString(control->metaObject()->className()) + ":"
                            + control->objectName();
            }
        }
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(", ")));

        theForm<frmBots>().closeAllForms();
        QVERIFY(!isFormLoaded<dlgOptions>());
    }

    // clang-format off
    void configFolderMove_data()
    {
        QTest::addColumn<QStringList>("oldFiles");    // "name=content", "name/" a folder
        QTest::addColumn<QStringList>("newFiles");
        QTest::addColumn<QString>("newFolder");       // inside the test folder
        QTest::addColumn<QStringList>("messages");    // "FileOP:name" for FileOP's failure; a question
                                                      // answered No ends with " No", else Yes
        QTest::addColumn<QStringList>("oldAfter");    // empty: the old folder is gone
        QTest::addColumn<QStringList>("newAfter");
        QTest::addColumn<bool>("labelShowsNew");

        const QStringList two { "B.QVN=B", "a.qvn=A" };
        const QStringList withBackup { ".directory=D", "a.qvn=A", "curconfig_bkup_(1-2-2024-3-4-5).qvn2=K" };
        QTest::newRow("no configurations") << QStringList { "notes.txt=N" } << QStringList {} << "new/" << QStringList {} << QStringList { "notes.txt=N" } << QStringList {} << true;
        QTest::newRow("No keeps them") << two << QStringList {} << "new/" << QStringList { MoveQuestion + " No" } << two << QStringList {} << false;
        QTest::newRow("moved, replacing, folder removed") << two << QStringList { "a.qvn=older" } << "new/" << QStringList { MoveQuestion } << QStringList {} << two << false;
        QTest::newRow("backup left, Yes deletes it") << withBackup << QStringList {} << "new/" << QStringList { MoveQuestion, LeftQuestion } << QStringList {} << QStringList { "a.qvn=A" } << false;
        QTest::newRow("backup left, No keeps it") << withBackup << QStringList {} << "new/" << QStringList { MoveQuestion, LeftQuestion + " No" } << QStringList { ".directory=D", "curconfig_bkup_(1-2-2024-3-4-5).qvn2=K" } << QStringList { "a.qvn=A" } << false;
        QTest::newRow("a subfolder keeps the folder") << QStringList { "a.qvn=A", "sub/" } << QStringList {} << "new/" << QStringList { MoveQuestion, LeftQuestion } << QStringList { "sub/" } << QStringList { "a.qvn=A" } << false;
        QTest::newRow("a folder in the way") << QStringList { "a.qvn=A", "b.qvn=B", "c.qvn2=C" } << QStringList { "b.qvn/" } << "new/" << QStringList { MoveQuestion, "FileOP:b.qvn" } << QStringList { "b.qvn=B", "c.qvn2=C" } << QStringList { "a.qvn=A", "b.qvn/" } << false;
        QTest::newRow("the same folder by another name") << two << QStringList {} << "configs/./" << QStringList {} << two << two << true;
    }
    // clang-format on

    void configFolderMove()
    {
        QFETCH(QStringList, oldFiles);
        QFETCH(QStringList, newFiles);
        QFETCH(QString, newFolder);
        QFETCH(QStringList, messages);
        QFETCH(QStringList, oldAfter);
        QFETCH(QStringList, newAfter);
        QFETCH(bool, labelShowsNew);

        makeEntries(m_configs, oldFiles);
        const QString newDir = m_root + native(newFolder);
        if (!newFiles.isEmpty())
            makeEntries(newDir, newFiles);
        QStringList expected;
        for (QString message : messages) {
            if (message.startsWith("FileOP:")) {
                message = "75|Error in modCommon.FileOP.\r\n\r\nError Desc: Path/File access "
                          "error\r\n\r\nSkipping file: "
                    + m_configs + message.mid(7);
            } else {
                const bool no = message.endsWith(" No");
                m_prompt->answerNext(no ? MessageAnswer::No : MessageAnswer::Yes);
                message.chop(no ? 3 : 0);
            }
            expected << message;
        }
        dlgOptions &dialog = openOptions();

        QCOMPARE(change(1, newDir),
            "Is this your correct Configuration path?|" + m_configs + "|" + m_configs);
        QCOMPARE(askedMarkingNo(*m_prompt), expected);
        QCOMPARE(listing(m_configs), oldAfter);
        QCOMPARE(QFileInfo::exists(m_configs), !oldAfter.isEmpty());
        QCOMPARE(listing(newDir), newAfter);
        QCOMPARE(AppOptions().ConfigPath, newDir);
        QCOMPARE(dialog.lblConfigPath->text(), labelShowsNew ? newDir : m_configs);
        QVERIFY(dialog.PathsChanged);

        // The same folder again changes nothing, even after a change.
        QCOMPARE(change(1, newDir).section('|', 2), newDir);
        QVERIFY(!dialog.PathsChanged);
        QCOMPARE(askedMarkingNo(*m_prompt), expected);
    }

    // clang-format off
    void gameFolderChange_data()
    {
        QTest::addColumn<QStringList>("games");       // chosen in turn
        QTest::addColumn<bool>("autoClose");          // the box, ticked before the changes
        QTest::addColumn<int>("restarts");
        QTest::addColumn<bool>("pathsChanged");

        QTest::newRow("same folder") << QStringList { "A" } << false << 0 << false;
        QTest::newRow("new folder, splash would wait") << QStringList { "B" } << false << 1 << true;
        QTest::newRow("new folder, splash closes itself") << QStringList { "B" } << true << 1 << true;
        QTest::newRow("new, then the same again") << QStringList { "B", "B" } << false << 1 << false;
        QTest::newRow("there and back") << QStringList { "B", "A" } << true << 2 << true;
    }
    // clang-format on

    void gameFolderChange()
    {
        QFETCH(QStringList, games);
        QFETCH(bool, autoClose);
        QFETCH(int, restarts);
        QFETCH(bool, pathsChanged);

        dlgOptions &dialog = openOptions();
        dialog.chkAutoClose->setChecked(autoClose);
        QStringList pathDialogs;
        QStringList expectedPathDialogs;
        QStringList expectedReports { "LostA.int" };
        QString game = m_gameA;
        for (const QString &name : games) {
            expectedPathDialogs << "Is this your correct UT Path?|Is this the correct Unreal "
                                   "Tournament path to use?|"
                    + game;
            const QPointer<frmBots> before = &theForm<frmBots>();
            const QString chosen = m_root + native("game" + name + "/");
            pathDialogs << change(0, chosen);
            // The start-up runs again once Change has returned.
            QVERIFY(before);
            if (chosen != game) {
                expectedReports << "Lost" + name + ".int";
                QTRY_VERIFY(!before && isFormLoaded<frmBots>() && dialog.OKButton->isEnabled());
                QTRY_COMPARE(QApplication::activeWindow(), &dialog);
            }
            QVERIFY(isFormLoaded<frmBots>() && theForm<frmBots>().isVisible());
            game = chosen;
        }

        QCOMPARE(pathDialogs, expectedPathDialogs);
        QCOMPARE(askedMarkingNo(*m_prompt), QStringList(restarts, RestartMessage));
        QCOMPARE(m_reports, expectedReports);
        QCOMPARE(theForm<frmBots>().cmbClass->itemText(0), "Model" + games.last());
        QCOMPARE(AppOptions().UTPath, game);
        QCOMPARE(AppOptions().AutoCloseSplash, qint16(autoClose ? 1 : 0));
        QVERIFY(!RestartRequested());
        QTRY_VERIFY(!isFormLoaded<frmSplash>());
        // The new main window, with the dialog still open and usable over it.
        QVERIFY(dialog.isVisible() && dialog.SSTab1->isEnabled());
        QCOMPARE(QApplication::activeModalWidget(), &dialog);
        QCOMPARE(dialog.lblUTPath->text(), game);
        // Only game A has the boss package.
        QCOMPARE(dialog.Frame1->isEnabled(), game == m_gameA);
        QCOMPARE(dialog.PathsChanged, pathsChanged);

        const QString optionsFile = m_root + native("program/options.ini");
        QCOMPARE(readTestFile(optionsFile),
            crlf({ "[SplashScreen]", restarts ? (autoClose ? "1" : "0") : "0", "", "[UTPath]", "0",
                m_configs, restarts ? game : m_gameA }));
        QVERIFY(QFile::remove(optionsFile));
        okAndWait();
        QVERIFY(!isFormLoaded<dlgOptions>());
        QCOMPARE(QFileInfo::exists(optionsFile), pathsChanged);
        QVERIFY(theForm<frmBots>().isVisible());
    }

    void unsavedListBeforeRestart_data()
    {
        QTest::addColumn<MessageAnswer>("answer");
        QTest::newRow("cancel keeps the game folder") << MessageAnswer::Cancel;
        QTest::newRow("no drops the list") << MessageAnswer::No;
    }

    // A new game folder rebuilds the editor: a list not yet saved is offered
    // for saving first, and Cancel keeps everything as it was.
    void unsavedListBeforeRestart()
    {
        QFETCH(MessageAnswer, answer);

        const bool restarts = answer == MessageAnswer::No;
        theForm<frmBots>().mnuFileNew->trigger();
        const QPointer<frmBots> editor = &theForm<frmBots>();
        openOptions();
        m_prompt->answerNext(answer);
        change(0, m_root + native("gameB/"));

        const QString question
            = "Save Current Configuration?|Your current config is not saved.\r\n\r\n"
              "   Yes = Save current configuration and then restart.\r\n\r\n"
              "    No = Loose current configuration and then restart.\r\n\r\n"
              "Cancel = Cancel this operation.";
        QCOMPARE(askedMarkingNo(*m_prompt),
            QStringList({ question, RestartMessage }).mid(0, restarts ? 2 : 1));
        QCOMPARE(AppOptions().UTPath, restarts ? m_root + native("gameB/") : m_gameA);
        if (restarts)
            QTRY_VERIFY(
                !editor && isFormLoaded<frmBots>() && theForm<dlgOptions>().OKButton->isEnabled());
        else
            QCOMPARE(editor->lblCurrentFile->text(), "(Un-Named)");
        okAndWait();
    }

    // clang-format off
    void bossChoice_data()
    {
        QTest::addColumn<int>("fileMode");   // -1: the game has no boss package
        QTest::addColumn<int>("click");      // -1: none
        QTest::addColumn<bool>("reopen");    // closed without OK and opened again first
        QTest::addColumn<bool>("written");

        QTest::newRow("both on, kept") << 0 << -1 << false << false;
        QTest::newRow("plain chosen") << 0 << 0 << false << true;
        QTest::newRow("male voices chosen") << 1 << 1 << false << true;
        QTest::newRow("both chosen") << 2 << 2 << false << true;
        QTest::newRow("current choice clicked") << 1 << 0 << false << false;
        QTest::newRow("reopened without OK") << 0 << 0 << true << false;
        QTest::newRow("no boss package") << -1 << -1 << false << false;
    }
    // clang-format on

    void bossChoice()
    {
        QFETCH(int, fileMode);
        QFETCH(int, click);
        QFETCH(bool, reopen);
        QFETCH(bool, written);

        const QString package = m_gameA + native("System/SkeletalCharsFix313.int");
        QVERIFY(fileMode < 0
                ? QFile::remove(package)
                : writeTestFile(package, bossPackageText(fileMode != 2, fileMode != 1)));
        const QByteArray before = readTestFile(package);
        dlgOptions *dialog = &openOptions();
        const int shown = BossChoiceOfMode(fileMode < 0 ? 2 : fileMode);
        QVERIFY(dialog->optChoice.at(shown)->isChecked());
        QCOMPARE(dialog->Frame1->isEnabled(), fileMode >= 0);
        if (fileMode >= 0) {
            // From inside the dialog's pages, the Boss tab takes the keyboard
            // to the choice that is on.
            dialog->cmdChange->setFocus();
            QTest::keyClick(dialog->cmdChange, Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(dialog->SSTab1->currentIndex(), 1);
            QCOMPARE(QApplication::focusWidget(), dialog->optChoice.at(shown));
        }
        if (click >= 0)
            dialog->optChoice.at(click)->click();
        if (reopen) {
            unloadForm<dlgOptions>();
            dialog = &openOptions();
            QVERIFY(dialog->optChoice.at(shown)->isChecked());
        }
        okAndWait();

        QCOMPARE(readTestFile(package) != before, written);
        if (click >= 0 && !reopen)
            QCOMPARE(ReadBossMode(m_gameA), BossModeOfChoice(click));
        QCOMPARE(askedMarkingNo(*m_prompt), QStringList());
    }

    // The splash's greyed box (2) shows unticked here; a click stores 0 or 1.
    void autoCloseBox()
    {
        for (int fromFile : { 0, 1, 2 }) {
            AppOptions().AutoCloseSplash = qint16(fromFile);
            dlgOptions &dialog = openOptions();
            QCOMPARE(dialog.chkAutoClose->isChecked(), fromFile == 1);
            QCOMPARE(AppOptions().AutoCloseSplash, qint16(fromFile));
            dialog.SSTab1->setCurrentIndex(2);
            for (int click = 0; click < 2; ++click) {
                dialog.chkAutoClose->click();
                QCOMPARE(AppOptions().AutoCloseSplash, qint16(dialog.chkAutoClose->isChecked()));
            }
            unloadForm<dlgOptions>();
        }
    }

private:
    dlgOptions &openOptions()
    {
        theForm<frmBots>().mnuFileOptions->trigger();
        dlgOptions &dialog = theForm<dlgOptions>();
        [&] { QVERIFY(QTest::qWaitForWindowActive(&dialog)); }();
        return dialog;
    }

    // Presses Change for the path of `option`, confirms `path` in the path
    // dialog and returns what that dialog showed: "caption|message|path".
    QString change(int option, const QString &path)
    {
        dlgOptions &dialog = theForm<dlgOptions>();
        QString seen;
        // Scoped to the click: once the path dialog has gone, the options
        // dialog is the modal one in front, and the script would close it.
        // The event loop gets no turn before that, as no hook lets the file
        // work yield.
        DialogScript script;
        script.then<PathDialog>([&](PathDialog &pathDialog) {
            seen = pathDialog.windowTitle() + "|" + pathDialog.lblMessage->text() + "|"
                + pathDialog.ChosenPath;
            pathDialog.showPath(path);
            pathDialog.OKButton->click();
        });
        dialog.optPathChange.at(option)->click();
        dialog.cmdChange->click();
        return script.playedOut() ? seen : "not played out: " + script.seen.join(',');
    }

    void okAndWait()
    {
        theForm<dlgOptions>().OKButton->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_root;
    QString m_gameA;
    QString m_configs;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    QStringList m_reports;
};

QTEST_MAIN(TestOptionsDialog)
#include "test_optionsdialog.moc"
