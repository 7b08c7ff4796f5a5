#include "bosspackage.h"
#include "formtesting.h"
#include "samplecatalogue.h"

#include "catalogue/bossmode.h"
#include "catalogue/forms/dlgNewBoss.h"
#include "catalogue/forms/frmBadFiles.h"
#include "catalogue/forms/frmPattern.h"
#include "catalogue/forms/scanforms.h"
#include "catalogue/patternfile.h"
#include "catalogue/unmatchedlist.h"

#include <QDesktopServices>
#include <QUrl>

namespace {

const QString guy = "/ut/System/MyGuy.int";
const QString tin = "/ut/System/Tin.int";
const QString zed = "/ut/System/Zed.int";

// Each row as one text: folder and name, then " - " and the model if any.
QStringList itemTexts(const QTreeWidget *list)
{
    QStringList texts;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = list->topLevelItem(row);
        const QString model = list->columnCount() == 3 ? item->text(1) : QString();
        texts << item->text(list->columnCount() - 1) + item->text(0)
                + (model.isEmpty() ? QString() : " - " + model);
    }
    return texts;
}

// The saved patterns as the tree shows them, one "model,skin type,..." each.
QStringList treeLines(const QTreeWidget *tree)
{
    QStringList lines;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *model = tree->topLevelItem(i);
        QString line = model->data(0, Qt::UserRole).toString();
        for (int c = 0; c < model->childCount(); ++c)
            line += ',' + model->child(c)->text(0);
        lines << line;
    }
    return lines;
}

// One step in the pattern editor: on the handed-over files "set <row>
// <model>", "setall <model>", "remove <row> yes|no"; on the saved patterns
// "move <skin type> <model>", "delete <model or skin type> yes|no".
void editorStep(frmPattern &editor, const QString &step)
{
    const QString verb = step.section(' ', 0, 0);
    const QString what = step.section(' ', 1, 1);
    const QString rest = step.section(' ', 2);
    if (verb == "move" || verb == "delete") {
        for (QTreeWidgetItemIterator it(editor.tvwPatterns); *it; ++it)
            if ((*it)->data(0, Qt::UserRole).toString() == what)
                editor.tvwPatterns->setCurrentItem(*it);
    } else if (verb == "setall") {
        editor.lstFiles->selectAll();
    } else {
        editor.lstFiles->setCurrentItem(editor.lstFiles->topLevelItem(what.toInt()), 0,
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    if (verb == "remove" || verb == "delete") {
        static_cast<ScriptedPrompt &>(currentPrompt())
            .answerNext(rest == "yes" ? MessageAnswer::Yes : MessageAnswer::No);
        (verb == "remove" ? editor.cmdRemovePattern : editor.cmdDeletePattern)->click();
        return;
    }
    QPushButton *button = verb == "move" ? editor.cmdMoveSkinType : editor.cmdSetPattern;
    editor.cmbModelAssoc->setCurrentText(verb == "setall" ? step.section(' ', 1) : rest);
    QVERIFY2(button->isEnabled(), qPrintable(step));
    button->click();
}

} // namespace

// Records what the report's "open it" hands to the desktop.
class UrlRecorder : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened.append(url); }
};

class TestCatalogueForms : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        setProgramDir(m_dir->path());
        m_prompt = std::make_unique<ScriptedPrompt>();
        Catalogue() = SampleCatalogue();
        const QStringList skinTypes { "commando", "fcommando", "boss", "Robot", "warrior",
            "robot2" };
        for (qsizetype i = 0; i < skinTypes.size(); ++i)
            Catalogue().MISCCLASSES[i].SkinType = skinTypes.at(i);
        Catalogue().UnmatchedSkins = { { guy, "MyGuy" }, { tin, "Tin" }, { zed, "Zed" }, {} };
        PatternEditorFiles().clear();
        AppOptions().UTPath = m_dir->path() + "/";
    }

    void cleanup()
    {
        unloadForm<frmBadFiles>();
        unloadForm<frmPattern>();
        unloadForm<dlgNewBoss>();
        m_prompt.reset();
    }

    void windows_data()
    {
        QTest::addColumn<MakeWindow>("make");
        QTest::addColumn<QString>("list"); // where a stray Return must not close it

        const QString path = "/home/player/.local/share/Steam/steamapps/common/Unreal Tournament "
                             "Game of the Year Edition/System/SkeletalCharsFix313Skins.int";
        QTest::newRow("frmBadFiles") << MakeWindow([path] {
            auto *report = new frmBadFiles;
            report->setFiles({ path });
            return report;
        }) << "lstFileList";
        QTest::newRow("frmPattern") << MakeWindow([path] {
            ContinueToPatternEditor({ path });
            PatternEditorFiles()[0].modelDescription = "Female Warrior";
            return new frmPattern;
        }) << "lstFiles";
        QTest::newRow("dlgNewBoss") << MakeWindow([] { return new dlgNewBoss; }) << QString();
    }

    // They close only through their own button. At the default size a deep
    // folder gives way, never the file's name, its extension or its model;
    // the full path is the row's tooltip.
    void windows()
    {
        QFETCH(MakeWindow, make);
        QFETCH(QString, list);

        std::unique_ptr<QWidget> window(make());
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY(!window->windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(!spontaneous(window.get(), QCloseEvent()));
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QVERIFY(window->isVisible());
        if (list.isEmpty())
            return;
        const auto *files = window->findChild<QTreeWidget *>(list);
        for (Qt::Key key : { Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape })
            QTest::keyClick(window->findChild<QWidget *>(list), key);
        QVERIFY(window->isVisible());
        QCOMPARE(m_prompt->transcript(), QStringList());

        const QTreeWidgetItem *row = files->topLevelItem(0);
        QCOMPARE(row->text(0), "SkeletalCharsFix313Skins.int");
        QVERIFY(row->toolTip(0).endsWith("Edition/System/SkeletalCharsFix313Skins.int"));
        for (int column = 0; column + 1 < files->columnCount(); ++column) {
            const QRect cell = files->visualRect(files->model()->index(0, column));
            QVERIFY(files->viewport()->rect().contains(cell));
            QVERIFY(cell.width() > files->fontMetrics().horizontalAdvance(row->text(column)));
        }
    }

    // clang-format off
    void reportHandsCheckedFilesOver_data()
    {
        QTest::addColumn<QStringList>("paths");
        QTest::addColumn<int>("byHand"); // checked with the Space key first; -1: none
        QTest::addColumn<QList<int>>("checkedRows");
        QTest::addColumn<QStringList>("handedOver");

        QTest::newRow("some checked") << QStringList { guy, tin, zed } << 1 << QList<int> { 0, 2 } << QStringList { guy, zed };
        QTest::newRow("nothing checked") << QStringList { guy, tin } << -1 << QList<int> {} << QStringList {};
        QTest::newRow("empty list") << QStringList {} << -1 << QList<int> {} << QStringList {};
    }
    // clang-format on

    // Through the scan's hook, as the scan shows it; Check All toggles, and
    // what an earlier showing left must not survive.
    void reportHandsCheckedFilesOver()
    {
        QFETCH(QStringList, paths);
        QFETCH(int, byHand);
        QFETCH(QList<int>, checkedRows);
        QFETCH(QStringList, handedOver);

        Catalogue().PatternsRequested = true;
        PatternEditorFiles() = { { tin, "Boss" } };
        theForm<frmPattern>(); // already loaded, as after an earlier scan
        frmBadFiles &report = theForm<frmBadFiles>();
        report.setFiles({ tin });
        report.cmdCheckAll->click();
        QList<bool> wasShown;
        whenShown([&] {
            const auto leave = qScopeGuard([&] { report.cmdContinue->click(); });
            wasShown << report.isVisible();
            QCOMPARE(itemTexts(report.lstFileList), paths);
            QCOMPARE(report.cmdCheckAll->text(), "Check All");
            QCOMPARE(report.checkedFiles(), QStringList());
            if (byHand >= 0) {
                report.lstFileList->setCurrentItem(report.lstFileList->topLevelItem(byHand));
                QTest::keyClick(report.lstFileList, Qt::Key_Space);
                QCOMPARE(report.checkedFiles(), QStringList { paths.at(byHand) });
            }
            report.cmdCheckAll->click();
            QCOMPARE(report.cmdCheckAll->text(), "Uncheck All");
            QCOMPARE(report.checkedFiles(), paths);
            report.cmdCheckAll->click();
            QCOMPARE(report.cmdCheckAll->text(), "Check All");
            QCOMPARE(report.checkedFiles(), QStringList());
            for (int row : checkedRows)
                report.lstFileList->topLevelItem(row)->setCheckState(0, Qt::Checked);
        });
        CatalogueScanForms().showUnmatchedReport(paths);

        QCOMPARE(wasShown, QList<bool> { true });
        QVERIFY(!report.isVisible());
        QCOMPARE(Catalogue().PatternsRequested, !handedOver.isEmpty());
        QCOMPARE(itemTexts(theForm<frmPattern>().lstFiles), handedOver);
        QCOMPARE(m_prompt->transcript(), QStringList());
    }

    // clang-format off
    void buttonsSayOrOpen_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("message"); // "title|text", %1 the saved list's path
        QTest::addColumn<QString>("opened");  // in the program's directory, %1 the saved list

        QTest::newRow("report help") << "frmBadFiles" << "cmdHelp" << "" << "help/index.html#unmatched-skins";
        QTest::newRow("save list") << "frmBadFiles" << "cmdSaveToFile" << "File Created|File Created:\r\n%1" << "";
        QTest::newRow("save list and open it") << "frmBadFiles" << "cmdSaveOpen" << "" << "%1";
        QTest::newRow("set pattern help") << "frmPattern" << "cmdHelpAddPattern"
            << "This is how to set a pattern...|1. Choose one Skin at a time in the list box.\r\n2. Choose the Model in the combo box.\r\n"
               "3. Click the SET PATTERN button.\r\n4. Repeat and then click FINISHED when done." << "";
        QTest::newRow("remove pattern help") << "frmPattern" << "cmdHelpRemovePattern"
            << "This is how to remove a pattern...|1. Choose one Skin at a time in the list box.\r\n"
               "2. Click the REMOVE PATTERN button.\r\n3. Repeat on each pattern you want to remove." << "";
    }
    // clang-format on

    void buttonsSayOrOpen()
    {
        QFETCH(QString, form);
        QFETCH(QString, button);
        QFETCH(QString, message);
        QFETCH(QString, opened);

        QWidget *window = form == "frmBadFiles" ? static_cast<QWidget *>(&theForm<frmBadFiles>())
                                                : &theForm<frmPattern>();
        UrlRecorder recorder;
        QDesktopServices::setUrlHandler("file", &recorder, "open");
        window->findChild<QPushButton *>(button)->click();
        QDesktopServices::unsetUrlHandler("file");

        const QStringList saved = QDir(m_dir->path()).entryList({ "UnMatched_Files_*.txt" });
        const QString savedPath = saved.isEmpty() ? QString() : ProgramDir() + saved.constFirst();
        QCOMPARE(m_prompt->transcript().join(""), QString(message).replace("%1", savedPath));
        QStringList urls;
        for (const QUrl &url : std::as_const(recorder.opened))
            urls << QDir::cleanPath(url.toLocalFile())
                    + (url.hasFragment() ? '#' + url.fragment() : QString());
        const QString expected = opened == "%1" ? savedPath : m_dir->filePath(opened);
        QCOMPARE(
            urls, opened.isEmpty() ? QStringList() : QStringList { QDir::cleanPath(expected) });
    }

    // clang-format off
    void patternEditor_data()
    {
        QTest::addColumn<QByteArray>("before"); // pattern.ini
        QTest::addColumn<QStringList>("steps"); // see editorStep()
        QTest::addColumn<QStringList>("items"); // the handed-over files as shown at the end
        QTest::addColumn<QStringList>("tree");  // the saved patterns shown at the end; empty: as before
        QTest::addColumn<QByteArray>("after");  // written by Finished; null: the file stays as it was
        QTest::addColumn<QStringList>("reparse");
        QTest::addColumn<QStringList>("messages");

        const QString remove = "Remove Pattern|Are you sure? [No]";
        const QByteArray saved("commando,MyGuy,Tin\r\nboss,Zed\r\n");
        const QString deleteTin = "Delete Pattern|Delete the skin type Tin from pattern.ini? [No]";
        const QString deleteCommando = "Delete Pattern|Delete the pattern of the model commando with all its skin types from pattern.ini? [No]";
        const QStringList unassigned { guy, tin, zed };
        const QStringList none { {}, {} };
        QTest::newRow("joins the model's pattern") << QByteArray("commando,A\r\n") << QStringList { "set 0 Male Commando" }
            << QStringList { guy + " - Male Commando", tin, zed } << QStringList {} << QByteArray("commando,A,MyGuy\r\n") << QStringList { guy, {} } << QStringList {};
        QTest::newRow("two new patterns") << QByteArray() << QStringList { "set 0 Boss", "set 2 Female Warrior" }
            << QStringList { guy + " - Boss", tin, zed + " - Female Warrior" } << QStringList {} << QByteArray("boss,MyGuy\r\nwarrior,Zed\r\n") << QStringList { guy, {}, zed, {} } << QStringList {};
        QTest::newRow("assigned twice keeps the last") << QByteArray() << QStringList { "set 1 Boss", "set 1 Female Warrior" }
            << QStringList { guy, tin + " - Female Warrior", zed } << QStringList {} << QByteArray("warrior,Tin\r\n") << QStringList { {}, tin, {} } << QStringList {};
        QTest::newRow("No keeps the assignment") << QByteArray() << QStringList { "set 0 Boss", "remove 0 no" }
            << QStringList { guy + " - Boss", tin, zed } << QStringList {} << QByteArray("boss,MyGuy\r\n") << QStringList { guy, {} } << QStringList { remove };
        QTest::newRow("Yes undoes it, nothing written") << QByteArray("boss,A\r\n") << QStringList { "set 0 Boss", "remove 0 yes" }
            << unassigned << QStringList {} << QByteArray() << none << QStringList { remove };
        QTest::newRow("several files at once") << QByteArray() << QStringList { "setall Female Commando" }
            << QStringList { guy + " - Female Commando", tin + " - Female Commando", zed + " - Female Commando" } << QStringList {}
            << QByteArray("fcommando,MyGuy,Tin,Zed\r\n") << QStringList { guy, tin, zed, {} } << QStringList {};
        QTest::newRow("set on a mixed selection") << QByteArray() << QStringList { "setall Boss", "set 1 Robot", "setall Boss" }
            << QStringList { guy + " - Boss", tin + " - Boss", zed + " - Boss" } << QStringList {}
            << QByteArray("boss,MyGuy,Tin,Zed\r\n") << QStringList { guy, tin, zed, {} } << QStringList {};
        QTest::newRow("move a skin type") << saved << QStringList { "move Tin Boss" }
            << unassigned << QStringList { "commando,MyGuy", "boss,Zed,Tin" } << QByteArray("commando,MyGuy\r\nboss,Zed,Tin\r\n") << none << QStringList {};
        QTest::newRow("move the last one empties the pattern") << saved << QStringList { "move Zed Male Commando" }
            << unassigned << QStringList { "commando,MyGuy,Tin,Zed" } << QByteArray("commando,MyGuy,Tin,Zed\r\n") << none << QStringList {};
        QTest::newRow("delete a skin type") << saved << QStringList { "delete Tin yes" }
            << unassigned << QStringList { "commando,MyGuy", "boss,Zed" } << QByteArray("commando,MyGuy\r\nboss,Zed\r\n") << none << QStringList { deleteTin };
        QTest::newRow("delete a pattern") << saved << QStringList { "delete commando yes" }
            << unassigned << QStringList { "boss,Zed" } << QByteArray("boss,Zed\r\n") << none << QStringList { deleteCommando };
        QTest::newRow("No keeps it") << saved << QStringList { "delete commando no" }
            << unassigned << QStringList {} << QByteArray() << none << QStringList { deleteCommando };
    }
    // clang-format on

    // Through the scan's hook, as the scan shows it after the report.
    // Finished writes the assignments and every change to the saved
    // patterns, and asks for the assigned files to be parsed again.
    void patternEditor()
    {
        QFETCH(QByteArray, before);
        QFETCH(QStringList, steps);
        QFETCH(QStringList, items);
        QFETCH(QStringList, tree);
        QFETCH(QByteArray, after);
        QFETCH(QStringList, reparse);
        QFETCH(QStringList, messages);

        QVERIFY(writeTestFile(PatternFilePath(), before));
        LoadPatternList();
        ContinueToPatternEditor({ guy, tin, zed });
        frmPattern &editor = theForm<frmPattern>();
        const QStringList saved = QString(before).split("\r\n", Qt::SkipEmptyParts);
        QStringList choices;
        QStringList shown;
        whenShown([&] {
            const auto finish = qScopeGuard([&] { editor.cmdFinished->click(); });
            // Free slots of the catalogue give no choice.
            for (int i = 0; i < editor.cmbModelAssoc->count(); ++i)
                choices << editor.cmbModelAssoc->itemText(i);
            QCOMPARE(editor.cmbModelAssoc->currentIndex(), 0);
            QCOMPARE(editor.lstFiles->currentItem(), editor.lstFiles->topLevelItem(0));
            QCOMPARE(treeLines(editor.tvwPatterns), saved);
            for (const QString &step : std::as_const(steps))
                editorStep(editor, step);
            shown = itemTexts(editor.lstFiles) + QStringList { "tree:" }
                + treeLines(editor.tvwPatterns);
            QCOMPARE(readTestFile(PatternFilePath()), before); // nothing written before Finished
        });
        CatalogueScanForms().showPatternEditor();

        QCOMPARE(choices,
            QStringList({ "Male Commando", "Female Commando", "Boss", "Robot", "Female Warrior",
                "ROBOT" }));
        QCOMPARE(shown, items + QStringList { "tree:" } + (tree.isEmpty() ? saved : tree));
        QVERIFY(!editor.isVisible());
        QCOMPARE(readTestFile(PatternFilePath()), after.isNull() ? before : after);
        QCOMPARE(Catalogue().ReparseFiles, reparse);
        QCOMPARE(Catalogue().ReparseRequested, reparse.join("") != "");
        QCOMPARE(askedMarkingNo(*m_prompt), messages);
    }

    void noModelsNoPattern()
    {
        Catalogue().MISCCLASSES = { newClassSlot(), newClassSlot() };
        ContinueToPatternEditor({ guy });
        frmPattern &editor = theForm<frmPattern>();
        editor.loadFiles();
        QCOMPARE(editor.cmbModelAssoc->count(), 1);
        QCOMPARE(editor.cmbModelAssoc->itemText(0), "(NONE)");
        QVERIFY(!editor.cmdSetPattern->isEnabled());
    }

    // clang-format off
    void failedWriteAsksToTryAgain_data()
    {
        QTest::addColumn<bool>("pattern"); // the pattern editor, else the boss dialog
        QTest::addColumn<bool>("tryAgain");
        QTest::addColumn<QString>("message"); // %1 the test directory

        const QString pattern = "pattern.ini|The skin pattern file could not be written:\r\nCan't create the lock file pattern.ini.lock: %1/gone/pattern.ini.lock\r\n\r\nTry again? (No goes on with pattern.ini as it was.)";
        const QString boss = "Which WarBoss and Xan II models to use?|skeletalcharsfix313.int could not be changed:\r\nCan't create the lock file skeletalcharsfix313.int.lock: %1/System/skeletalcharsfix313.int.lock\r\n\r\nTry again? (No leaves the file as it is.)";
        QTest::newRow("pattern.ini, Yes stays") << true << true << pattern;
        QTest::newRow("pattern.ini, No goes on without patterns") << true << false << pattern;
        QTest::newRow("boss package, Yes stays") << false << true << boss;
        QTest::newRow("boss package, No closes") << false << false << boss;
    }
    // clang-format on

    void failedWriteAsksToTryAgain()
    {
        QFETCH(bool, pattern);
        QFETCH(bool, tryAgain);
        QFETCH(QString, message);

        QDialog *dialog = nullptr;
        QPushButton *ok = nullptr;
        if (pattern) {
            ContinueToPatternEditor({ guy });
            frmPattern &editor = theForm<frmPattern>();
            editor.loadFiles();
            editor.show();
            editorStep(editor, "set 0 Boss");
            setProgramDir(m_dir->filePath("gone"));
            dialog = &editor;
            ok = editor.cmdFinished;
        } else {
            dlgNewBoss &boss = theForm<dlgNewBoss>(); // the game has no boss package
            boss.show();
            boss.optChoice.at(0)->click();
            dialog = &boss;
            ok = boss.OKButton;
        }
        m_prompt->answerNext(tryAgain ? MessageAnswer::Yes : MessageAnswer::No);
        ok->click();

        QCOMPARE(dialog->isVisible(), tryAgain);
        QCOMPARE(m_prompt->transcript(),
            QStringList { message.arg(QDir::toNativeSeparators(m_dir->path())) });
        QCOMPARE(m_prompt->messages().constFirst().buttons, MessageButtons::YesNo);
        QVERIFY(!Catalogue().ReparseRequested);
        if (!pattern) {
            QCOMPARE(theForm<dlgNewBoss>().BossMode, short(2));
            QVERIFY(!QFile::exists(BossPackagePath(AppOptions().UTPath)));
        }
    }

    void bossDialogWritesTheMode_data()
    {
        QTest::addColumn<bool>("plainOn");
        QTest::addColumn<bool>("maleOn");
        QTest::addColumn<int>("shownOption");
        QTest::addColumn<QString>("shownText");
        QTest::addColumn<int>("chosenOption");
        QTest::addColumn<int>("writtenMode");

        const QString both = "Currently both boss models are turned on.  You only need one turned "
                             "on.  I recommend the first choice below.";
        const QString marked = "Your current choice is marked below.";
        QTest::newRow("both on, keep") << true << true << 2 << both << 2 << 0;
        QTest::newRow("both on, choose plain") << true << true << 2 << both << 0 << 1;
        QTest::newRow("plain on, choose male") << true << false << 0 << marked << 1 << 2;
        QTest::newRow("male on, choose both") << false << true << 1 << marked << 2 << 0;
        QTest::newRow("neither on reads as male") << false << false << 1 << marked << 1 << 2;
    }

    void bossDialogWritesTheMode()
    {
        QFETCH(bool, plainOn);
        QFETCH(bool, maleOn);
        QFETCH(int, shownOption);
        QFETCH(QString, shownText);
        QFETCH(int, chosenOption);
        QFETCH(int, writtenMode);

        QVERIFY(writeTestFile(
            m_dir->filePath("System/SkeletalCharsFix313.int"), bossPackageText(plainOn, maleOn)));
        dlgNewBoss &dialog = theForm<dlgNewBoss>();
        dialog.show();
        QCOMPARE(dialog.lblBossChoice->text(), shownText);
        QCOMPARE(dialog.findChildren<QRadioButton *>("optChoice"), dialog.optChoice);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(dialog.optChoice.at(i)->isChecked(), i == shownOption);
        QCOMPARE(dialog.focusWidget(), dialog.optChoice.at(shownOption));

        dialog.optChoice.at(chosenOption)->click();
        dialog.OKButton->click();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.BossMode, short(writtenMode));
        QCOMPARE(ReadBossMode(AppOptions().UTPath), short(writtenMode));
        QCOMPARE(m_prompt->transcript(), QStringList());
    }

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

QTEST_MAIN(TestCatalogueForms)
#include "test_catalogueforms.moc"
