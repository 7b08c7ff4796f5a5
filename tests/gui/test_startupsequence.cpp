#include "expectedfile.h"
#include "formtesting.h"
#include "recordingprogress.h"

#include "configfiles/forms/dlgError.h"
#include "configfiles/forms/windowtools.h"
#include "roster/botroster.h"
#include "roster/forms/frmBots.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"
#include "startup/forms/dlgFirstRun.h"
#include "startup/forms/frmSplash.h"
#include "startup/forms/startupsequence.h"

#include <QAction>

namespace {

QByteArray optionsFile(
    const QString &autoClose, const QString &firstRun, const QString &configs, const QString &game)
{
    return crlf({ "[SplashScreen]", autoClose, "", "[UTPath]", firstRun, configs, game });
}

} // namespace

// Plays the user: answers every modal dialog the start-up opens, and writes
// down what appeared, messages included, in order. A path dialog is noted
// with the splash's message, its caption and question.
class StartupUser : public QObject
{
public:
    explicit StartupUser(ScriptedPrompt &prompt)
        : m_prompt(prompt)
    {
        connect(&m_timer, &QTimer::timeout, this, &StartupUser::look);
        m_timer.start(5);
    }

    void note(const QString &event)
    {
        for (; m_messagesSeen < m_prompt.messages().size(); ++m_messagesSeen)
            log << "msg:" + m_prompt.transcript().at(m_messagesSeen);
        if (!event.isEmpty())
            log << event;
    }

    QString gameDir; // "<Escape>" closes the game dialog
    QString configDir;
    QStringList log;

private:
    void look()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        auto *path = qobject_cast<PathDialog *>(dialog);
        const bool game = dialog->objectName() == "dlgCorrectUTPath";
        QString seen = "dlg:" + dialog->objectName();
        if (path)
            seen += "|" + theForm<frmSplash>().message() + "|" + dialog->windowTitle() + "|"
                + path->lblMessage->text();
        note(seen);
        if (game && gameDir == "<Escape>")
            return QTest::keyClick(dialog, Qt::Key_Escape);
        if (path)
            path->showPath(game ? gameDir : configDir);
        auto *ok = dialog->findChild<QPushButton *>(
            dialog->objectName() == "dlgFirstRun" ? "cmdContinue" : "OKButton");
        ok ? ok->click() : dialog->reject();
    }

    ScriptedPrompt &m_prompt;
    QTimer m_timer;
    qsizetype m_messagesSeen = 0;
};

class TestStartupSequence : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        // A home folder without the game, so that nothing is proposed.
        QVERIFY(QDir(m_dir.path()).mkpath("home"));
        qputenv("HOME", QFile::encodeName(m_dir.path() + "/home"));
        installWidgetEventLoopHook();
        setStartupForms([this] {
            StartupForms forms;
            forms.scan.showUnmatchedReport = [this](const QStringList &paths) {
                QStringList names;
                for (const QString &path : paths)
                    names << QFileInfo(path).fileName();
                m_user->note("report:" + names.join(',') + "|" + splashSeen());
                if (!m_tick.isEmpty())
                    theForm<frmSplash>().chkAutoClose->setCheckState(boxState(m_tick));
            };
            forms.scan.showPatternEditor = [this] { m_user->note("patterns"); };
            forms.showNewBoss = [this](QWidget *owner) {
                m_user->note(
                    owner == formSlot<frmSplash>().data() ? "boss" : "boss without splash");
                if (!m_bossErrors.isEmpty())
                    throw RunError(m_bossErrors.takeFirst());
            };
            return forms;
        });
    }

    void init()
    {
        const QString root = native(m_dir.path() + "/" + QTest::currentDataTag() + "/"
            + QTest::currentTestFunction() + "/");
        m_program = root + native("program/");
        m_game = root + native("game/");
        m_configs = root + native("configs/");
        setProgramDir(m_program);
        QVERIFY(
            copyTestData("startup/program", m_program) && copyTestData("startup/gameA", m_game));
        AppOptions() = Options();
        Roster() = BotRoster();
        RestartRequested() = false;
        m_prompt = std::make_unique<ScriptedPrompt>();
        m_errors = std::make_unique<RecordingErrorSink>();
        m_user = std::make_unique<StartupUser>(*m_prompt);
        m_user->gameDir = m_game;
        m_user->configDir = m_configs;
        m_bossErrors.clear();
    }

    void cleanup()
    {
        m_user.reset();
        m_errors.reset();
        m_prompt.reset();
        unloadForm<frmBots>();
        unloadForm<frmSplash>();
        unloadForm<dlgCorrectUTPath>();
        unloadForm<dlgChangeConfigPath>();
        unloadForm<dlgFirstRun>();
        unloadForm<dlgError>();
    }

    // clang-format off
    void startup_data()
    {
        QTest::addColumn<QStringList>("setup"); // what differs from a fresh install, see startup()
        QTest::addColumn<QString>("end");       // "finished", "stopped" or "ended"
        QTest::newRow("fresh install") << QStringList {} << "finished";
        QTest::newRow("fresh install, boss package") << QStringList { "boss" } << "finished";
        QTest::newRow("first-run flag") << QStringList { "options=first run" } << "finished";
        QTest::newRow("game folder gone") << QStringList { "options=game gone", "boss" } << "finished";
        QTest::newRow("normal start") << QStringList { "options=valid", "boss" } << "finished";
        QTest::newRow("short options file") << QStringList { "options=short" } << "finished";
        // Without its own files the program says so once for each and starts
        // anyway, instead of sending the user round the path dialogs.
        QTest::newRow("no int.ini") << QStringList { "options=valid", "missing=int.ini" } << "finished";
        QTest::newRow("neither") << QStringList { "options=valid", "missing=pattern.ini", "missing=int.ini" } << "finished";
        // What the boss dialog throws decides how the start-up goes on.
        QTest::newRow("52 asks for the paths again") << QStringList { "boss", "throw=52" } << "finished";
        QTest::newRow("52 twice ends") << QStringList { "boss", "throw=52", "throw=52" } << "ended";
        QTest::newRow("55 goes on") << QStringList { "boss", "throw=55" } << "finished";
        QTest::newRow("62 ends quietly") << QStringList { "boss", "throw=62" } << "stopped";
        QTest::newRow("53 is reported") << QStringList { "boss", "throw=53" } << "ended";
        QTest::newRow("unreadable options: first run") << QStringList { "boss", "options=line 2 yes" } << "finished";
        // Without a game folder the program cannot start: the user who will
        // not name one leaves it by closing the dialog, after a question.
        QTest::newRow("quit without a game folder") << QStringList { "escape" } << "ended";
        // The bundled demo game has something in the report.
        QTest::newRow("demo game") << QStringList { "options=demo" } << "demo";
        // The splash hands over to the main window itself, or through Close
        // or Enter, and keeps the state of its box in the options.
        QTest::newRow("auto-close") << QStringList { "options=auto 1" } << "finished";
        QTest::newRow("ticked while starting") << QStringList { "options=valid", "tick=ticked" } << "finished";
        QTest::newRow("wait for Close and tick then") << QStringList { "options=valid", "close=ticked" } << "finished";
        QTest::newRow("unticked while starting and Enter") << QStringList { "options=auto 1", "tick=unticked", "enter" } << "finished";
        QTest::newRow("greyed box waits and stays") << QStringList { "options=auto 2", "close=greyed", "enter" } << "finished";
    }
    // clang-format on

    // Setup words: "options=valid|auto <n>|first run|game gone|short|line 2
    // <value>|demo" (none: no options.ini; auto: line 2 is <n>), "boss" (the
    // game has the boss package), "missing=<program file>", "throw=<error>"
    // (the boss dialog's, one per showing), "escape" (the game dialog is
    // escaped, and the question answered No, then Yes), "tick=<box>" (set
    // while starting) and "close=<box>" (before Close), a box being unticked,
    // greyed or ticked, and "enter" (for Close).
    void startup()
    {
        QFETCH(QStringList, setup);
        QFETCH(QString, end);

        const QString options = setup.filter("options=").join("").mid(8);
        const QString demo
            = native(QStringLiteral(QUORVANE_SOURCE_DIR) + "/demo/UnrealTournament/");
        const QHash<QString, QByteArray> files { { "valid", validOptions() },
            { "first run",
                optionsFile("0", "1", native("/elsewhere/configs/"), native("/elsewhere/game/")) },
            { "game gone", optionsFile("0", "0", m_configs, native(m_dir.path() + "/gone/")) },
            { "short", crlf({ "[SplashScreen]", "0", "" }) },
            { "line 2 yes", optionsFile("yes", "0", m_configs, m_game) },
            { "demo", optionsFile("0", "0", m_configs, demo) }, { "auto 1", validOptions("1") },
            { "auto 2", validOptions("2") } };
        QVERIFY(
            options.isEmpty() || writeTestFile(m_program + "options.ini", files.value(options)));
        if (setup.contains("boss"))
            QVERIFY(
                writeTestFile(m_game + native("System/SkeletalCharsFix313.int"), "[Public]\r\n"));
        for (const QString &word : setup) {
            if (word.startsWith("missing="))
                QVERIFY(QFile::remove(m_program + word.section('=', 1)));
            else if (word.startsWith("throw="))
                m_bossErrors << word.section('=', 1).toInt();
        }
        m_tick = setup.filter("tick=").join("").mid(5);
        if (setup.contains("escape")) {
            m_user->gameDir = "<Escape>";
            m_prompt->answerNext(MessageAnswer::No);
            m_prompt->answerNext(MessageAnswer::Yes);
        }

        Main();
        m_user->note(QString());
        for (const RecordingErrorSink::Entry &error : std::as_const(m_errors->errors))
            m_user->log << "error:" + QString::number(error.number) + "|" + error.message;
        if (end == "ended") {
            // Nothing is left to go on with: the program ends.
            QVERIFY(!isFormLoaded<frmSplash>() && !isFormLoaded<frmBots>()
                && std::ranges::none_of(QApplication::topLevelWidgets(), &QWidget::isVisible));
        } else {
            // The splash and the main window the start-up leaves; then the
            // hand-over, unless the splash closed itself; then the options.
            const QPointer<frmSplash> splash = formSlot<frmSplash>();
            const Progress *splashProgress = splash.data();
            const auto shown
                = [] { return isFormLoaded<frmBots>() && theForm<frmBots>().isVisible(); };
            m_user->log << "started:" + splashSeen() + (shown() ? "|editor shown" : "");
            if (splash && splash->isVisible()) {
                if (const QString box = setup.filter("close=").join("").mid(6); !box.isEmpty())
                    splash->chkAutoClose->setCheckState(boxState(box));
                setup.contains("enter") ? QTest::keyClick(splash->chkAutoClose, Qt::Key_Return)
                                        : splash->cmdClose->click();
                m_user->log << QString("handed over:") + (shown() ? "editor shown" : "no editor");
            }
            QTRY_VERIFY(!splash);
            QVERIFY(&currentProgress() != splashProgress); // a splash gone no longer shows progress
            m_user->log << "stored:" + QString::number(AppOptions().AutoCloseSplash);
        }
        // What the user met, in order, errors, and how the start-up ended.
        QCOMPARE(writtenDown(m_user->log, m_program), expectedSection("startup/sequence.txt"));
        if (end == "ended" || end == "stopped")
            return;
        // The editor as the start-up leaves it: a new list of defaults,
        // nothing to edit or save yet, every model to choose from.
        const frmBots &bots = theForm<frmBots>();
        QCOMPARE(bots.cmbBot->itemText(bots.cmbBot->count() - 1), "Bot 31");
        QVERIFY(bots.cmbBot->currentIndex() == 0 && bots.cmbClass->currentIndex() == 0
            && bots.IsSaved() && bots.cmbClass->count() >= (end == "demo" ? 5 : 1)
            && !bots.txtName->isEnabled() && !bots.cmbClass->isEnabled()
            && !bots.mnuFileSave->isEnabled() && !bots.mnuFileSaveAs->isEnabled()
            && bots.chkJumpy->text().isEmpty());
        BotRoster defaults;
        SetDefaults(defaults);
        QVERIFY(Roster() == defaults);
        const QString game = end == "demo" ? demo : m_game;
        QCOMPARE(AppOptions().UTPath + "|" + AppOptions().ConfigPath, game + "|" + m_configs);
        QCOMPARE(QFileInfo(m_configs).isDir(),
            m_user->log.join(",").contains("dlg:dlgChangeConfigPath"));
        // Main never writes the options; the main window does when it
        // closes, which also repairs the file.
        QCOMPARE(QFileInfo::exists(m_program + "options.ini"), !options.isEmpty());
        theForm<frmBots>().close();
        QCOMPARE(readTestFile(m_program + "options.ini"),
            optionsFile(QString::number(AppOptions().AutoCloseSplash), "0", m_configs, game));
    }

private:
    QByteArray validOptions(const QString &autoClose = "0") const
    {
        return optionsFile(autoClose, "0", m_configs, m_game);
    }

    static inline const QStringList boxStates { "unticked", "greyed", "ticked" };
    static Qt::CheckState boxState(const QString &name)
    {
        return Qt::CheckState(boxStates.indexOf(name));
    }

    // The splash as the user sees it: its message, its box and whether Close
    // can be pressed.
    static QString splashSeen()
    {
        const frmSplash &splash = theForm<frmSplash>();
        return splash.message() + "|" + boxStates.at(splash.chkAutoClose->checkState())
            + (splash.cmdClose->isEnabled() ? "|Close" : "") + (splash.isVisible() ? "" : "|hidden")
            + (&currentProgress() == &splash ? "" : "|not the progress");
    }

    QTemporaryDir m_dir;
    QString m_program;
    QString m_game;
    QString m_configs;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    std::unique_ptr<RecordingErrorSink> m_errors;
    std::unique_ptr<StartupUser> m_user;
    QList<int> m_bossErrors; // thrown by the boss dialog, one per showing
    QString m_tick; // the box set while starting
};

QTEST_MAIN(TestStartupSequence)
#include "test_startupsequence.moc"
