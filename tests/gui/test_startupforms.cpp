#include "expectedfile.h"
#include "formtesting.h"

#include "configfiles/fileops.h"
#include "configfiles/forms/dlgChangePath.h"
#include "configfiles/forms/dlgError.h"
#include "startup/forms/dlgChangeConfigPath.h"
#include "startup/forms/dlgCorrectUTPath.h"

class TestStartupForms : public QObject
{
    Q_OBJECT

    struct PathCase
    {
        bool game;
        QString typed, key;
        MessageAnswer answer;
        bool gameFolderSet;
    };
    struct FolderCase
    {
        QStringList typing;
        bool escape;
        QString created, problem;
    };

private slots:
    void initTestCase()
    {
        // A home folder without the game, so nothing is proposed.
        for (const char *folder : { "home", "a/b", "cfg" })
            QVERIFY(QDir(m_dir.path()).mkpath(folder));
        qputenv("HOME", QFile::encodeName(m_dir.path() + "/home"));
        setProgramDir(m_dir.path());
        QVERIFY(writeTestFile(m_dir.filePath("kept/System/User.ini"), "[URL]\r\n"));
    }

    void init()
    {
        m_prompt = std::make_unique<ScriptedPrompt>();
        AppOptions() = Options();
    }

    void cleanup()
    {
        m_prompt.reset();
        unloadForm<dlgChangePath>();
    }

    // clang-format off
    void pathDialogOk_data()
    {
        QTest::addColumn<PathCase>("c"); // typed: "folder|file,..." made in the temporary directory
        QTest::newRow("game: folder without user.ini") << PathCase { true, "empty/|Core.int", "OK", MessageAnswer::No, false };
        QTest::newRow("game: game folder") << PathCase { true, "game/|system/User.ini", "OK", MessageAnswer::No, false };
        QTest::newRow("game: none, Escape, No") << PathCase { true, "", "Escape", MessageAnswer::No, false };
        QTest::newRow("game: none, title bar, Yes") << PathCase { true, "", "close", MessageAnswer::Yes, false };
        QTest::newRow("game: folder set, it is kept") << PathCase { true, "", "Escape", MessageAnswer::Yes, true };
        QTest::newRow("config: new folder") << PathCase { false, "cfg/configs/", "OK", {}, false };
        QTest::newRow("config: existing folder") << PathCase { false, "cfg/", "OK", {}, false };
        QTest::newRow("config: no trailing separator") << PathCase { false, "cfg/plain", "OK", {}, false };
        QTest::newRow("config: parent missing") << PathCase { false, "cfg/missing/configs/", "OK", {}, false };
    }
    // clang-format on

    // Only a game folder is taken; without one the program cannot go on, so
    // closing the dialog asks whether to quit rather than trap the user. Of
    // a configuration folder only the last level is made: a missing parent
    // is more likely a typing mistake than a wish for a new tree of folders.
    void pathDialogOk()
    {
        QFETCH(PathCase, c);
        const QString folder = c.typed.section('|', 0, 0);
        const QString path = folder.isEmpty() ? QString() : native(m_dir.path() + "/" + folder);
        for (const QString &file : c.typed.section('|', 1).split(',', Qt::SkipEmptyParts))
            QVERIFY(writeTestFile(path + file, "[URL]\r\n"));
        AppOptions().UTPath = c.gameFolderSet ? native(m_dir.filePath("kept") + "/") : QString();
        // With a blank at the end, as a paste often brings it.
        AppOptions().ConfigPath = c.game ? QString() : path + " ";
        std::unique_ptr<PathDialog> dialog(
            c.game ? static_cast<PathDialog *>(new dlgCorrectUTPath) : new dlgChangeConfigPath);
        if (c.game) {
            QCOMPARE(dialog->ChosenPath, QString()); // the home folder holds no game
            QTest::keyClicks(dialog->findChild<QLineEdit *>(), path + " ");
        }
        QVERIFY(dialog->ChosenPath == path + " "
            && dialog->windowFlags().testFlag(Qt::WindowCloseButtonHint) == c.game);
        m_prompt->answerNext(c.answer);
        QStringList seen;
        whenShown([&] {
            c.key == "OK"           ? dialog->OKButton->click()
                : c.key == "Escape" ? QTest::keyClick(dialog.get(), Qt::Key_Escape)
                                    : void(spontaneous(dialog.get(), QCloseEvent()));
            const auto *gameDialog = qobject_cast<dlgCorrectUTPath *>(dialog.get());
            seen << (dialog->isVisible()                   ? "open"
                    : gameDialog && gameDialog->QuitChosen ? "quit"
                                                           : "closed");
            if (dialog->isVisible())
                dialog->done(QDialog::Rejected); // reject() would ask again
        });
        dialog->exec();

        seen << "folder:" + (c.game ? AppOptions().UTPath : AppOptions().ConfigPath) + "|"
             << m_prompt->transcript();
        // Whether it is still open, the folder taken and the messages.
        QCOMPARE(writtenDown(seen, native(m_dir.path() + "/")),
            expectedSection("startup/pathdialogs.txt"));
        QVERIFY(c.game || QFileInfo(path).isDir() == (seen.first() == "closed"));
    }

    // clang-format off
    void browsing_data()
    {
        QTest::addColumn<bool>("game");        // the game dialog, else the configuration one
        QTest::addColumn<QStringList>("paths");// shown, the button pressed in the folder chooser, shown after
        QTest::newRow("game: chosen") << true << QStringList { "a/b", "OK", "a/b/" };
        QTest::newRow("game: cancelled") << true << QStringList { "a/b", "Cancel", "a/b" };
        QTest::newRow("game: drive root") << true << QStringList { "<root>", "OK", "<root>" };
        QTest::newRow("config: opens at the nearest folder that exists") << false << QStringList { "a/new/x", "OK", "a/" };
    }
    // clang-format on

    void browsing()
    {
        QFETCH(bool, game);
        QFETCH(QStringList, paths);
        const auto where = [this](const QString &folder) {
            return native(folder == "<root>" ? QDir::rootPath() : m_dir.path() + "/" + folder);
        };
        std::unique_ptr<PathDialog> dialog(
            game ? static_cast<PathDialog *>(new dlgCorrectUTPath) : new dlgChangeConfigPath);
        dialog->showPath(where(paths[0]));
        dlgChangePath &chooser = theForm<dlgChangePath>();
        // An OK in an earlier showing must not leak into this one.
        whenShown([&] { chooser.OKButton->click(); });
        chooser.exec();
        QString seen;
        whenShown([&] {
            seen = chooser.windowTitle() + (chooser.cmdCreateFolder->isVisible() ? "|create" : "");
            chooser.findChild<QPushButton *>(paths[1] + "Button")->click();
        });
        dialog->cmdBrowse->click();

        QCOMPARE(seen, game ? "Choose a New UT Path" : "Choose Configuration Directory...|create");
        QCOMPARE(dialog->ChosenPath, where(paths[2]));
        QVERIFY(dialog->findChild<QLineEdit *>()->text() == dialog->ChosenPath
            && dialog->focusWidget() == dialog->OKButton);
    }

    // clang-format off
    void folderCreation_data()
    {
        QTest::addColumn<FolderCase>("c"); // texts typed in turn; Escape instead of the button; made; refusal
        QTest::newRow("new folder") << FolderCase { { "New" }, false, "New", "" };
        QTest::newRow("typed and deleted") << FolderCase { { "x", "" }, false, "", "" };
        QTest::newRow("Escape closes only the row") << FolderCase { { "x" }, true, "", "" };
        QTest::newRow("existing name") << FolderCase { { "taken" }, false, "", "A file or folder of that name already exists." };
        QTest::newRow("name with a separator") << FolderCase { { "a/b" }, false, "", "A folder name cannot contain \\ or / or be . or .." };
    }
    // clang-format on

    // A refused name keeps the row open for a correction; a created one is
    // cleared, so that a second Create cannot nest a folder of the same name
    // in it. Restored from the task bar, the chooser keeps what is typed; the
    // next showing starts with the row closed and empty.
    void folderCreation()
    {
        QFETCH(FolderCase, c);
        QTemporaryDir parent;
        QDir(parent.path()).mkdir("taken");
        dlgChangePath chooser;
        chooser.setPath(parent.path());
        chooser.show();
        const int treeHeight = chooser.dirOne->height();
        chooser.cmdCreateFolder->click();
        // The row takes no room from the tree, so the parent stays in view.
        QVERIFY(chooser.txtNewFolder->isVisible() && !chooser.OKButton->isEnabled()
            && chooser.dirOne->height() == treeHeight);
        for (const QString &text : std::as_const(c.typing))
            chooser.txtNewFolder->setText(text);
        QCOMPARE(chooser.cmdCreate->text(), c.typing.last().isEmpty() ? "Cancel" : "Create");
        c.escape ? QTest::keyClick(chooser.txtNewFolder, Qt::Key_Escape)
                 : chooser.cmdCreate->click();

        const bool refused = !c.problem.isEmpty();
        QVERIFY(chooser.isVisible() && chooser.txtNewFolder->isVisible() == refused
            && chooser.OKButton->isEnabled() != refused);
        QCOMPARE(QDir(parent.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).join(','),
            c.created.isEmpty() ? "taken" : c.created + ",taken");
        QCOMPARE(m_prompt->transcript().join(""),
            refused ? "Create Folder|" + native(parent.path() + "/") + c.typing.last()
                    + " could not be created.\r\n\r\n" + c.problem
                    : "");
        if (!refused) {
            chooser.OKButton->click();
            QCOMPARE(chooser.SelectedFolder,
                native(parent.path() + "/" + c.created + (c.created.isEmpty() ? "" : "/")));
        }
        spontaneous(&chooser, QShowEvent());
        QCOMPARE(chooser.txtNewFolder->text(), c.created.isEmpty() ? c.typing.last() : "");
        chooser.hide();
        chooser.show();
        QVERIFY(chooser.txtNewFolder->text().isEmpty() && chooser.cmdCreate->text() == "Cancel"
            && !chooser.txtNewFolder->isVisible() && chooser.OKButton->isEnabled());
        // Unlike the start-up's windows, it closes like Cancel.
        QVERIFY(spontaneous(&chooser, QCloseEvent()));
    }

    // The window program's errors show in the dialog, with the report's path.
    void errorReport()
    {
        DialogErrorSink sink;
        installErrorSink(&sink);
        const auto unload = qScopeGuard([] {
            installErrorSink(nullptr);
            unloadForm<dlgError>();
        });
        dlgError &dialog = theForm<dlgError>();
        whenShown([&] { dialog.OKButton->click(); });
        ProcessError(RunError(53, "C:\\UT\\pattern.ini"), "Unknown Error has occured in Sub Main");

        QCOMPARE(dialog.windowTitle() + "|" + dialog.lblCustomMsg->text(),
            "Error Number: 53|Unknown Error has occured in Sub Main");
        QVERIFY(dialog.lblErrFileLoc->text().startsWith(ProgramDir() + "ErrNum53_")
            && !dialog.isVisible());
    }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

QTEST_MAIN(TestStartupForms)
#include "test_startupforms.moc"
