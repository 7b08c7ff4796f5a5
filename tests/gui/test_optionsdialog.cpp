#include "bosspackage.h"
#include "dialogscript.h"
#include "expectedfile.h"
#include "formtesting.h"

#include "catalogue/bossmode.h"
#include "roster/forms/frmBots.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgOptions.h"
#include "startup/forms/frmSplash.h"
#include "startup/forms/startupsequence.h"

#include <QAction>
#include <QGroupBox>
#include <QRegularExpression>
#include <QTabWidget>

namespace {

// Files as "name=content", folders as "name/", in name order; "gone" for a
// folder that is not there.
QStringList listing(const QString &directory)
{
    QStringList entries;
    for (const QFileInfo &info : QDir(directory).entryInfoList(
             QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name))
        entries << info.fileName() + (info.isDir() ? "/" : "=" + readTestFile(info.filePath()));
    return QFileInfo::exists(directory) ? entries : QStringList { "gone" };
}

} // namespace

// The options dialog opened from a main window that the start-up built for
// game A; game B is a second installation to change to.
class TestOptionsDialog : public QObject
{
    Q_OBJECT

    struct MoveCase
    {
        QString oldFiles, newFiles, newFolder, answers;
    };
    struct GameCase
    {
        QStringList games;
        bool autoClose;
        QString unsaved;
    };
    struct BossCase
    {
        int fileMode, click;
        bool reopen, written;
    };

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
        m_root = native(m_dir->path() + "/");
        // Nothing to propose: the path dialogs show what they are given.
        qputenv("HOME", QFile::encodeName(m_root + "home"));
        setProgramDir(m_root + "program");
        m_configs = m_root + native("configs/");
        m_gameA = m_root + native("gameA/");
        QVERIFY(QDir().mkpath(m_configs)
            && copyTestData("startup/program", m_root + native("program/"))
            && copyTestData("startup/gameA", m_gameA)
            && copyTestData("startup/gameB", m_root + native("gameB/")));
        QVERIFY(
            writeTestFile(m_gameA + native("System/SkeletalCharsFix313.int"), bossPackageText(0)));
        QVERIFY(writeTestFile(m_root + native("program/options.ini"),
            crlf({ "[SplashScreen]", "0", "", "[UTPath]", "0", m_configs, m_gameA })));
        AppOptions() = Options();
        m_reports.clear();
        {
            // Should the start-up misread the options and ask for anything,
            // its dialogs are cancelled and the quit it then offers is taken.
            ScriptedPrompt quit;
            quit.answerNext(MessageAnswer::Yes);
            DialogScript script;
            Main();
            QVERIFY2(script.playedOut(), qPrintable(script.seen.join(',')));
        }
        theForm<frmSplash>().cmdClose->click();
        QVERIFY(theForm<frmBots>().isVisible());
        // The splash keeps its box's state in the options when it goes.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // What the start-up leaves in the path dialogs when it asks for them.
        theForm<dlgCorrectUTPath>().setWindowTitle("Locate Unreal Tournament Directory...");
        theForm<dlgCorrectUTPath>().lblMessage->clear();
        theForm<dlgChangeConfigPath>().setWindowTitle("Locate Configuration Directory...");
        theForm<dlgChangeConfigPath>().lblMessage->clear();
        // Last, as a failed start leaves no cleanup() to remove it.
        m_prompt = std::make_unique<ScriptedPrompt>();
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

    // Its texts, in name order, the folders as the start-up left them; the
    // splash's greyed box (2) shows unticked here, and a click stores 0 or 1.
    void controls()
    {
        dlgOptions &dialog = openOptions();
        QStringList texts { dialog.windowTitle(), dialog.Frame1->title() };
        for (int tab = 0; tab < dialog.SSTab1->count(); ++tab)
            texts << dialog.SSTab1->tabText(tab);
        // The tab bar's scroll arrows have no text.
        for (const QWidget *control : dialog.findChildren<QWidget *>())
            if (const QVariant text = control->property("text"); text.isValid())
                texts << control->objectName() + "=" + text.toString();
        texts.sort();
        QCOMPARE(
            texts.filter(QRegularExpression("[^=]$")).join('\n').replace(m_root, "<root>/") + '\n',
            readTestFile(testDataDir() + "startup/dlgOptions.txt"));
        QVERIFY(dialog.SSTab1->currentIndex() == 0 && dialog.optPathChange.at(0)->isChecked()
            && !dialog.PathsChanged);
        theForm<frmBots>().closeAllForms();
        QVERIFY(!isFormLoaded<dlgOptions>());
        for (int fromFile : { 1, 2 }) {
            AppOptions().AutoCloseSplash = qint16(fromFile);
            QCheckBox *box = openOptions().chkAutoClose;
            QVERIFY(
                box->isChecked() == (fromFile == 1) && AppOptions().AutoCloseSplash == fromFile);
            box->click();
            QCOMPARE(AppOptions().AutoCloseSplash, qint16(fromFile != 1));
            unloadForm<dlgOptions>();
        }
    }

    // clang-format off
    void configFolderMove_data()
    {
        QTest::addColumn<MoveCase>("c"); // fixtures of the old and new folders (startup/moves/), the new folder, the answers
        QTest::newRow("no configurations") << MoveCase { "notes", "", "new/", "" };
        QTest::newRow("No keeps them") << MoveCase { "two", "", "new/", "N" };
        QTest::newRow("moved, replacing, folder removed") << MoveCase { "two", "older", "new/", "Y" };
        QTest::newRow("backup left, Yes deletes it") << MoveCase { "backup", "", "new/", "YY" };
        QTest::newRow("backup left, No keeps it") << MoveCase { "backup", "", "new/", "YN" };
        QTest::newRow("a subfolder keeps the folder") << MoveCase { "subfolder", "", "new/", "YY" };
        QTest::newRow("a folder in the way") << MoveCase { "three", "folder", "new/", "Y" };
        QTest::newRow("the same folder by another name") << MoveCase { "two", "", "configs/./", "" };
    }
    // clang-format on

    // The messages, the folders after and the folder the dialog shows.
    void configFolderMove()
    {
        QFETCH(MoveCase, c);
        const QString newDir = m_root + native(c.newFolder);
        QVERIFY(copyTestData("startup/moves/" + c.oldFiles, m_configs)
            && (c.newFiles.isEmpty() || copyTestData("startup/moves/" + c.newFiles, newDir)));
        for (const QChar answer : std::as_const(c.answers))
            m_prompt->answerNext(answer == 'Y' ? MessageAnswer::Yes : MessageAnswer::No);
        dlgOptions &dialog = openOptions();

        QCOMPARE(change(1, newDir),
            "Is this your correct Configuration path?|" + m_configs + "|" + m_configs);
        const QStringList seen = askedMarkingNo(*m_prompt);
        QCOMPARE(writtenDown(seen
                         + QStringList { "old:" + listing(m_configs).join(','),
                             "new:" + listing(newDir).join(','),
                             "shown:" + dialog.lblConfigPath->text() },
                     m_root),
            expectedSection("startup/configmove.txt"));
        QVERIFY(dialog.PathsChanged && AppOptions().ConfigPath == newDir);
        // The same folder again changes nothing, even after a change.
        QCOMPARE(change(1, newDir).section('|', 2), newDir);
        QVERIFY(!dialog.PathsChanged);
        QCOMPARE(askedMarkingNo(*m_prompt), seen);
    }

    // clang-format off
    void gameFolderChange_data()
    {
        QTest::addColumn<GameCase>("c"); // games chosen in turn, the box ticked before; the answer to save an unsaved list
        QTest::newRow("same folder") << GameCase { { "A" }, false, "" };
        QTest::newRow("new folder, splash would wait") << GameCase { { "B" }, false, "" };
        QTest::newRow("new folder, splash closes itself") << GameCase { { "B" }, true, "" };
        QTest::newRow("new, then the same again") << GameCase { { "B", "B" }, false, "" };
        QTest::newRow("there and back") << GameCase { { "B", "A" }, true, "" };
        QTest::newRow("unsaved list, No drops it") << GameCase { { "B" }, false, "No" };
        QTest::newRow("unsaved list, Cancel keeps the game folder") << GameCase { { "B" }, false, "Cancel" };
    }
    // clang-format on

    // A new game folder runs the start-up again for a fresh editor; a list
    // not yet saved is offered for saving first. Noted: the path dialogs, the
    // messages, the unmatched files reported, the first model and the first
    // bot's name, the game folder shown and the options file.
    void gameFolderChange()
    {
        QFETCH(GameCase, c);
        if (!c.unsaved.isEmpty()) {
            theForm<frmBots>().mnuFileNew->trigger();
            m_prompt->answerNext(c.unsaved == "No" ? MessageAnswer::No : MessageAnswer::Cancel);
        }
        Roster().BotNames[0] = "Edited";
        dlgOptions &dialog = openOptions();
        dialog.chkAutoClose->setChecked(c.autoClose);
        QStringList seen;
        QString game = m_gameA;
        for (const QString &name : std::as_const(c.games)) {
            const QPointer<frmBots> before = &theForm<frmBots>();
            const QString chosen = m_root + native("game" + name + "/");
            seen << change(0, chosen);
            // The start-up runs again once Change has returned.
            QVERIFY(before);
            if (chosen != game && c.unsaved != "Cancel") {
                QTRY_VERIFY(!before && isFormLoaded<frmBots>() && dialog.OKButton->isEnabled());
                QTRY_COMPARE(QApplication::activeWindow(), &dialog);
                game = chosen;
            }
        }
        QVERIFY(!RestartRequested());
        QTRY_VERIFY(!isFormLoaded<frmSplash>());
        // The new main window, with the dialog still open and usable over it;
        // only game A has the boss package.
        QVERIFY(dialog.isVisible() && dialog.SSTab1->isEnabled()
            && QApplication::activeModalWidget() == &dialog);
        const QString optionsFile = m_root + native("program/options.ini");
        seen += askedMarkingNo(*m_prompt) + m_reports;
        seen << theForm<frmBots>().cmbClass->itemText(0) + "|" + Roster().BotNames[0]
             << dialog.lblUTPath->text() + (dialog.Frame1->isEnabled() ? "|boss" : "")
                + (dialog.PathsChanged ? "|changed" : "")
             << "options.ini:" + readTestFile(optionsFile);
        QCOMPARE(writtenDown(seen, m_root), expectedSection("startup/gamechange.txt"));
        QVERIFY(QFile::remove(optionsFile));
        const bool pathsChanged = dialog.PathsChanged;
        theForm<dlgOptions>().OKButton->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!isFormLoaded<dlgOptions>() && theForm<frmBots>().isVisible());
        // Only a change of folders writes the options again.
        QCOMPARE(QFileInfo::exists(optionsFile), pathsChanged);
    }

    void bossChoice_data()
    {
        QTest::addColumn<BossCase>(
            "c"); // the file's mode (-1: no boss package), the choice clicked (-1: none)
        QTest::newRow("both on, kept") << BossCase { 0, -1, false, false };
        QTest::newRow("plain chosen") << BossCase { 0, 0, false, true };
        QTest::newRow("both chosen") << BossCase { 2, 2, false, true };
        QTest::newRow("current choice clicked") << BossCase { 1, 0, false, false };
        QTest::newRow("closed without OK, reopened") << BossCase { 0, 0, true, false };
        QTest::newRow("no boss package") << BossCase { -1, -1, false, false };
    }

    void bossChoice()
    {
        QFETCH(BossCase, c);
        const QString package = m_gameA + native("System/SkeletalCharsFix313.int");
        QVERIFY(c.fileMode < 0 ? QFile::remove(package)
                               : writeTestFile(package, bossPackageText(c.fileMode)));
        const QByteArray before = readTestFile(package);
        dlgOptions *dialog = &openOptions();
        const int shown = BossChoiceOfMode(c.fileMode < 0 ? 2 : c.fileMode);
        QVERIFY(dialog->optChoice.at(shown)->isChecked()
            && dialog->Frame1->isEnabled() == (c.fileMode >= 0));
        if (c.click >= 0)
            dialog->optChoice.at(c.click)->click();
        if (c.reopen) {
            unloadForm<dlgOptions>();
            dialog = &openOptions();
            QVERIFY(dialog->optChoice.at(shown)->isChecked());
        }
        theForm<dlgOptions>().OKButton->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY((readTestFile(package) != before) == c.written && m_prompt->messages().isEmpty());
        if (c.click >= 0 && !c.reopen)
            QCOMPARE(ReadBossMode(m_gameA), BossModeOfChoice(c.click));
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

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_root;
    QString m_gameA;
    QString m_configs;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    QStringList m_reports;
};

QTEST_MAIN(TestOptionsDialog)
#include "test_optionsdialog.moc"
