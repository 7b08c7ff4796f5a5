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

const QString finished = "Finished...Click the Close button.";

} // namespace

// Plays the user: answers every modal dialog the start-up opens, and writes
// down what appeared, messages included, in order. A path dialog is noted
// with the splash's message, its caption and question, and its distance
// from the place a little above the splash's centre.
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
        if (path) {
            const frmSplash &splash = theForm<frmSplash>();
            const QRect place = splash.frameGeometry();
            const QPoint off = dialog->pos()
                - QPoint(place.left() + (place.width() - dialog->width()) / 2,
                    place.top() + (place.height() - dialog->height()) / 2 - PathDialogLift(splash));
            seen += "|" + splash.message() + "|" + dialog->windowTitle() + "|"
                + path->lblMessage->text() + QString("|%1,%2").arg(off.x()).arg(off.y());
        }
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

    struct HandOverCase
    {
        QString autoClose;
        int tickWhileStarting, boxAtClose;
        bool enter;
        int stored;
    };

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
                m_user->note("report:" + names.join(',') + "|"
                    + (isFormLoaded<frmSplash>() ? theForm<frmSplash>().message() : ""));
                if (m_reportAction)
                    m_reportAction();
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
        m_reportAction = nullptr;
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
    }
    // clang-format on

    // Setup words: "options=valid|first run|game gone|short|line 2 <value>|demo"
    // (none: no options.ini), "boss" (the game has the boss package),
    // "missing=<program file>", "throw=<error>" (the boss dialog's, one per
    // showing), "escape" (the game dialog is escaped, and the question
    // answered No, then Yes).
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
            { "demo", optionsFile("0", "0", m_configs, demo) } };
        if (!options.isEmpty())
            writeOptions(files.value(options));
        if (setup.contains("boss"))
            QVERIFY(
                writeTestFile(m_game + native("System/SkeletalCharsFix313.int"), "[Public]\r\n"));
        for (const QString &word : setup) {
            if (word.startsWith("missing="))
                QVERIFY(QFile::remove(m_program + word.section('=', 1)));
            else if (word.startsWith("throw="))
                m_bossErrors << word.section('=', 1).toInt();
        }
        if (setup.contains("escape")) {
            m_user->gameDir = "<Escape>";
            m_prompt->answerNext(MessageAnswer::No);
            m_prompt->answerNext(MessageAnswer::Yes);
        }

        Main();
        m_user->note(QString());
        for (const RecordingErrorSink::Entry &error : std::as_const(m_errors->errors))
            m_user->log << "error:" + QString::number(error.number) + "|" + error.message;
        // What the user met, in order, errors last.
        QCOMPARE(writtenDown(m_user->log, m_program), expectedSection("startup/sequence.txt"));
        if (end == "ended") {
            // Nothing is left to go on with: the program ends.
            QVERIFY(!isFormLoaded<frmSplash>() && !isFormLoaded<frmBots>()
                && std::ranges::none_of(QApplication::topLevelWidgets(), &QWidget::isVisible));
            return;
        }
        // Ended or not, the splash can always be left.
        QVERIFY(theForm<frmSplash>().cmdClose->isEnabled());
        if (end == "stopped") {
            // Closing it then shows no half-built editor.
            theForm<frmSplash>().cmdClose->click();
            QVERIFY(!isFormLoaded<frmBots>() || !theForm<frmBots>().isVisible());
            return;
        }
        // The editor as the start-up leaves it, hidden: a new list of
        // defaults, nothing to edit or save yet, every model to choose from.
        const frmBots &bots = theForm<frmBots>();
        QCOMPARE(bots.cmbBot->itemText(bots.cmbBot->count() - 1), "Bot 31");
        QVERIFY(bots.cmbBot->currentIndex() == 0 && bots.cmbClass->currentIndex() == 0
            && bots.cmbClass->count() >= (end == "demo" ? 5 : 1) && !bots.txtName->isEnabled()
            && !bots.cmbClass->isEnabled() && !bots.mnuFileSave->isEnabled()
            && !bots.mnuFileSaveAs->isEnabled() && bots.chkJumpy->text().isEmpty() && bots.IsSaved()
            && !bots.isVisible());
        BotRoster defaults;
        SetDefaults(defaults);
        QVERIFY(Roster() == defaults);
        QCOMPARE(theForm<frmSplash>().message() + "|" + AppOptions().UTPath + "|"
                + AppOptions().ConfigPath,
            finished + "|" + (end == "demo" ? demo : m_game) + "|" + m_configs);
        QCOMPARE(QFileInfo(m_configs).isDir(),
            m_user->log.join(",").contains("dlg:dlgChangeConfigPath"));
        // Main never writes the options; the main window does when it
        // closes, which also repairs the file.
        QCOMPARE(QFileInfo::exists(m_program + "options.ini"), !options.isEmpty());
        theForm<frmSplash>().cmdClose->click();
        theForm<frmBots>().close();
        QCOMPARE(readTestFile(m_program + "options.ini"),
            end == "demo" ? files.value("demo") : validOptions());
    }

    // clang-format off
    void handOver_data()
    {
        QTest::addColumn<HandOverCase>("c"); // line 2 of options.ini; the box ticked while starting (-1: left) and at
                                             // the end (-1: the splash closes itself); Enter for Close; AutoCloseSplash after
        QTest::newRow("auto-close") << HandOverCase { "1", -1, -1, false, 1 };
        QTest::newRow("ticked while starting") << HandOverCase { "0", Qt::Checked, -1, false, 1 };
        QTest::newRow("wait for Close, ticked then") << HandOverCase { "0", -1, Qt::Checked, false, 1 };
        QTest::newRow("unticked while starting, Enter") << HandOverCase { "1", Qt::Unchecked, Qt::Unchecked, true, 0 };
        QTest::newRow("half-ticked box waits and stays") << HandOverCase { "2", -1, Qt::PartiallyChecked, true, 2 };
    }
    // clang-format on

    // The splash is the start-up's progress until it hands over to the main
    // window, itself or through Close.
    void handOver()
    {
        QFETCH(HandOverCase, c);
        writeOptions(validOptions(c.autoClose));
        QPointer<frmSplash> splash;
        m_reportAction = [&] {
            splash = &theForm<frmSplash>();
            // The box as the file has it (0, 1 or 2); Enter does nothing until
            // Close can be pressed; the path dialogs' lift is a little less
            // than half an inch.
            QTest::keyClick(splash->chkAutoClose, Qt::Key_Return);
            QVERIFY(splash && &currentProgress() == static_cast<Progress *>(splash.data())
                && splash->chkAutoClose->checkState()
                    == (QList { Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked })
                           .at(c.autoClose.toInt())
                && !splash->cmdClose->isEnabled() && splash->isVisible()
                && PathDialogLift(*splash) > 30 && PathDialogLift(*splash) < 60);
            if (c.tickWhileStarting >= 0)
                splash->chkAutoClose->setCheckState(Qt::CheckState(c.tickWhileStarting));
        };
        Main();
        QVERIFY(splash);
        const Progress *splashProgress = splash.data();

        const bool waits = c.boxAtClose >= 0;
        QVERIFY(AppOptions().AutoCloseSplash == !waits && theForm<frmBots>().isVisible() == !waits
            && splash->isVisible() == waits);
        if (waits) {
            QCOMPARE(splash->message(), finished);
            splash->chkAutoClose->setCheckState(Qt::CheckState(c.boxAtClose));
            // The main window shows before the splash goes, so that there is
            // always a window.
            QList<bool> splashShownAtHandOver;
            splash->showMainWindow = [&, show = splash->showMainWindow] {
                splashShownAtHandOver << splash->isVisible();
                show();
            };
            c.enter ? QTest::keyClick(splash->chkAutoClose, Qt::Key_Return)
                    : splash->cmdClose->click();
            QVERIFY(
                splashShownAtHandOver == QList<bool> { true } && theForm<frmBots>().isVisible());
        }
        QCOMPARE(AppOptions().AutoCloseSplash, qint16(c.stored));
        QTRY_VERIFY(!splash);
        QVERIFY(&currentProgress() != splashProgress); // a splash gone no longer shows progress
    }

private:
    void writeOptions(const QByteArray &content)
    {
        QVERIFY(writeTestFile(m_program + "options.ini", content));
    }

    QByteArray validOptions(const QString &autoClose = "0") const
    {
        return optionsFile(autoClose, "0", m_configs, m_game);
    }

    QTemporaryDir m_dir;
    QString m_program;
    QString m_game;
    QString m_configs;
    std::unique_ptr<ScriptedPrompt> m_prompt;
    std::unique_ptr<RecordingErrorSink> m_errors;
    std::unique_ptr<StartupUser> m_user;
    QList<int> m_bossErrors; // thrown by the boss dialog, one per showing
    std::function<void()> m_reportAction;
};

QTEST_MAIN(TestStartupSequence)
#include "test_startupsequence.moc"
