#include "bosspackage.h"
#include "expectedfile.h"
#include "formtesting.h"
#include "urlrecorder.h"

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
                + (model.isEmpty() ? "" : " - " + model);
    }
    return texts;
}

// One step in the pattern editor: on the handed-over files "set <row>
// <model>", "setall <model>", "remove <row> yes|no"; on the saved patterns
// "move <skin type> <model>", "delete <model or skin type> yes|no".
void editorStep(frmPattern &editor, const QString &step)
{
    const QString verb = step.section(' ', 0, 0), what = step.section(' ', 1, 1),
                  rest = step.section(' ', 2);
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
    if (verb == "remove" || verb == "delete")
        static_cast<ScriptedPrompt &>(currentPrompt())
            .answerNext(rest == "yes" ? MessageAnswer::Yes : MessageAnswer::No);
    const QMap<QString, QPushButton *> buttons { { "move", editor.cmdMoveSkinType },
        { "remove", editor.cmdRemovePattern }, { "delete", editor.cmdDeletePattern } };
    editor.cmbModelAssoc->setCurrentText(verb == "setall" ? step.section(' ', 1) : rest);
    QPushButton *button = buttons.value(verb, editor.cmdSetPattern);
    QVERIFY2(button->isEnabled(), qPrintable(step));
    button->click();
}

} // namespace

class TestCatalogueForms : public QObject
{
    Q_OBJECT

    struct EditorCase
    {
        QByteArray before;
        QStringList steps, items;
        QByteArray after;
        QStringList messages;
    };

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        setProgramDir(m_dir->path());
        m_prompt = std::make_unique<ScriptedPrompt>();
        loadPatternCatalogue();
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

    // A stray Return in a list does not close them; the full path of a deep
    // folder is the row's tooltip.
    void lists()
    {
        const QString path = "/home/player/.local/share/Steam/steamapps/common/Unreal Tournament "
                             "Game of the Year Edition/System/SkeletalCharsFix313Skins.int";
        ContinueToPatternEditor({ path });
        PatternEditorFiles()[0].modelDescription = "Female Warrior";
        theForm<frmBadFiles>().setFiles({ path });
        for (QTreeWidget *files :
            { theForm<frmBadFiles>().lstFileList, theForm<frmPattern>().lstFiles }) {
            files->window()->show();
            QVERIFY(QTest::qWaitForWindowExposed(files->window()));
            for (Qt::Key key : { Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape })
                QTest::keyClick(files, key);
            QVERIFY(files->window()->isVisible() && m_prompt->messages().isEmpty());
            const QTreeWidgetItem *row = files->topLevelItem(0);
            QVERIFY(row->text(0) == "SkeletalCharsFix313Skins.int"
                && row->toolTip(0).endsWith("Edition/System/SkeletalCharsFix313Skins.int"));
        }
    }

    // Through the scan's hook, as the scan shows it; Check All toggles, and
    // what an earlier showing left must not survive.
    void reportHandsCheckedFilesOver()
    {
        Catalogue().PatternsRequested = true;
        PatternEditorFiles() = { { tin, "Boss" } };
        theForm<frmPattern>(); // already loaded, as after an earlier scan
        frmBadFiles &report = theForm<frmBadFiles>();
        report.setFiles({ tin });
        report.cmdCheckAll->click();
        QStringList seen;
        whenShown([&] {
            const auto leave = qScopeGuard([&] { report.cmdContinue->click(); });
            const auto state = [&] {
                seen << report.cmdCheckAll->text() + ":" + report.checkedFiles().join(',');
            };
            seen << itemTexts(report.lstFileList);
            state();
            report.lstFileList->setCurrentItem(report.lstFileList->topLevelItem(1));
            QTest::keyClick(report.lstFileList, Qt::Key_Space);
            state();
            report.cmdCheckAll->click();
            state();
            report.cmdCheckAll->click();
            state();
            report.lstFileList->topLevelItem(0)->setCheckState(0, Qt::Checked);
            report.lstFileList->topLevelItem(2)->setCheckState(0, Qt::Checked);
        });
        CatalogueScanForms().showUnmatchedReport({ guy, tin, zed });

        QCOMPARE(seen,
            QStringList({ guy, tin, zed, "Check All:", "Check All:" + tin,
                "Uncheck All:" + guy + "," + tin + "," + zed, "Check All:" }));
        QVERIFY(!report.isVisible() && Catalogue().PatternsRequested);
        QCOMPARE(itemTexts(theForm<frmPattern>().lstFiles), QStringList({ guy, zed }));
        QVERIFY(m_prompt->messages().isEmpty());
    }

    // What each button of the report and of the editor says, or opens on
    // the desktop, is in catalogue/forms.txt.
    void buttonsSayOrOpen_data()
    {
        QTest::addColumn<QString>("button"); // of frmBadFiles, or of frmPattern
        for (const char *button : { "cmdHelp", "cmdSaveToFile", "cmdSaveOpen", "cmdHelpAddPattern",
                 "cmdHelpRemovePattern" })
            QTest::newRow(button) << QString(button);
    }

    void buttonsSayOrOpen()
    {
        QFETCH(QString, button);
        UrlRecorder recorder;
        QDesktopServices::setUrlHandler("file", &recorder, "open");
        auto *pushed = theForm<frmBadFiles>().findChild<QPushButton *>(button);
        (pushed ? pushed : theForm<frmPattern>().findChild<QPushButton *>(button))->click();
        QDesktopServices::unsetUrlHandler("file");
        QStringList said = m_prompt->transcript();
        for (const QUrl &url : std::as_const(recorder.opened))
            said << "opened " + QDir::cleanPath(url.toLocalFile())
                    + (url.hasFragment() ? '#' + url.fragment() : "");
        QCOMPARE(
            saidHere(said.replaceInStrings(QRegularExpression("_Files_[^.]+"), "_Files_<time>")),
            expectedSection("catalogue/forms.txt"));
    }

    // clang-format off
    void patternEditor_data()
    {
        QTest::addColumn<EditorCase>("c"); // pattern.ini; steps, see editorStep(); the handed-over files shown at
            // the end; pattern.ini after Finished (null: as it was)
        const QString remove = "Remove Pattern|Are you sure? [No]";
        const QByteArray saved("commando,MyGuy,Tin\r\nboss,Zed\r\n");
        const QString deleteCommando = "Delete Pattern|Delete the pattern of the model commando with all its skin types from pattern.ini? [No]";
        const QStringList unassigned { guy, tin, zed };
        QTest::newRow("joins the model's pattern") << EditorCase { "commando,A\r\n", { "set 0 Male Commando" }, { guy + " - Male Commando", tin, zed }, "commando,A,MyGuy\r\n", {} };
        QTest::newRow("assigned twice keeps the last") << EditorCase { {}, { "set 1 Boss", "set 1 Female Warrior" }, { guy, tin + " - Female Warrior", zed }, "warrior,Tin\r\n", {} };
        QTest::newRow("No keeps the assignment") << EditorCase { {}, { "set 0 Boss", "remove 0 no" }, { guy + " - Boss", tin, zed }, "boss,MyGuy\r\n", { remove } };
        QTest::newRow("Yes undoes it, nothing written") << EditorCase { "boss,A\r\n", { "set 0 Boss", "remove 0 yes" }, unassigned, {}, { remove } };
        QTest::newRow("several files at once") << EditorCase { {}, { "setall Female Commando" }, { guy + " - Female Commando", tin + " - Female Commando", zed + " - Female Commando" }, "fcommando,MyGuy,Tin,Zed\r\n", {} };
        QTest::newRow("move a skin type") << EditorCase { saved, { "move Tin Boss" }, unassigned, "commando,MyGuy\r\nboss,Zed,Tin\r\n", {} };
        QTest::newRow("delete a skin type") << EditorCase { saved, { "delete Tin yes" }, unassigned, "commando,MyGuy\r\nboss,Zed\r\n", { "Delete Pattern|Delete the skin type Tin from pattern.ini? [No]" } };
        QTest::newRow("delete a pattern") << EditorCase { saved, { "delete commando yes" }, unassigned, "boss,Zed\r\n", { deleteCommando } };
        QTest::newRow("No keeps it") << EditorCase { saved, { "delete commando no" }, unassigned, {}, { deleteCommando } };
    }
    // clang-format on

    // Through the scan's hook, as the scan shows it after the report, with
    // every model the catalogue has to choose from. Finished writes the
    // assignments and every change to the saved patterns, and asks for the
    // assigned files to be parsed again.
    void patternEditor()
    {
        QFETCH(EditorCase, c);
        QVERIFY(writeTestFile(PatternFilePath(), c.before));
        LoadPatternList();
        ContinueToPatternEditor({ guy, tin, zed });
        frmPattern &editor = theForm<frmPattern>();
        QStringList seen;
        whenShown([&] {
            const auto finish = qScopeGuard([&] { editor.cmdFinished->click(); });
            for (int i = 0; i < editor.cmbModelAssoc->count(); ++i)
                seen << editor.cmbModelAssoc->itemText(i);
            QCOMPARE(editor.lstFiles->currentItem(), editor.lstFiles->topLevelItem(0));
            for (const QString &step : std::as_const(c.steps))
                editorStep(editor, step);
            seen << itemTexts(editor.lstFiles) << readTestFile(PatternFilePath());
        });
        CatalogueScanForms().showPatternEditor();

        QCOMPARE(seen,
            QStringList(
                { "Male Commando", "Female Commando", "Boss", "Robot", "Female Warrior", "ROBOT" })
                + c.items + QStringList(c.before));
        QVERIFY(!editor.isVisible());
        QCOMPARE(readTestFile(PatternFilePath()), c.after.isNull() ? c.before : c.after);
        QCOMPARE(Catalogue().ReparseRequested, c.items.join(',').contains(" - "));
        QCOMPARE(askedMarkingNo(*m_prompt), c.messages);
    }

    // What the failure says is in catalogue/forms.txt.
    void failedWriteAsksToTryAgain_data()
    {
        QTest::addColumn<bool>("pattern"); // the pattern editor, else the boss dialog
        QTest::addColumn<bool>("tryAgain");
        QTest::newRow("pattern.ini, Yes stays") << true << true;
        QTest::newRow("pattern.ini, No goes on without patterns") << true << false;
        QTest::newRow("boss package, Yes stays") << false << true;
        QTest::newRow("boss package, No closes") << false << false;
    }

    void failedWriteAsksToTryAgain()
    {
        QFETCH(bool, pattern);
        QFETCH(bool, tryAgain);
        QDialog *dialog = &theForm<dlgNewBoss>(); // the game has no boss package
        if (pattern) {
            ContinueToPatternEditor({ guy });
            dialog = &theForm<frmPattern>();
            theForm<frmPattern>().loadFiles();
        }
        dialog->show();
        if (pattern)
            editorStep(theForm<frmPattern>(), "set 0 Boss");
        else
            theForm<dlgNewBoss>().optChoice.at(0)->click();
        setProgramDir(m_dir->filePath("gone"));
        m_prompt->answerNext(tryAgain ? MessageAnswer::Yes : MessageAnswer::No);
        dialog->findChild<QPushButton *>(pattern ? "cmdFinished" : "OKButton")->click();

        QCOMPARE(dialog->isVisible(), tryAgain);
        QCOMPARE(saidHere(m_prompt->transcript()), expectedSection("catalogue/forms.txt"));
        QCOMPARE(m_prompt->messages().constFirst().buttons, MessageButtons::YesNo);
        QVERIFY(!Catalogue().ReparseRequested);
        if (!pattern)
            QVERIFY(theForm<dlgNewBoss>().BossMode == 2
                && !QFile::exists(BossPackagePath(AppOptions().UTPath)));
    }

    // What the dialog says of the file's mode is in catalogue/forms.txt.
    void bossDialogWritesTheMode_data()
    {
        // the file's mode, the choice shown, the one chosen, the mode written
        QTest::addColumn<QList<int>>("modes");
        QTest::newRow("both on, keep") << QList<int> { 0, 2, 2, 0 };
        QTest::newRow("both on, choose plain") << QList<int> { 0, 2, 0, 1 };
        QTest::newRow("plain on, choose male") << QList<int> { 1, 0, 1, 2 };
        QTest::newRow("male on, choose both") << QList<int> { 2, 1, 2, 0 };
    }

    void bossDialogWritesTheMode()
    {
        QFETCH(QList<int>, modes);
        QVERIFY(writeTestFile(
            m_dir->filePath("System/SkeletalCharsFix313.int"), bossPackageText(modes[0])));
        dlgNewBoss &dialog = theForm<dlgNewBoss>();
        dialog.show();
        QCOMPARE(QStringList(dialog.lblBossChoice->text()), expectedSection("catalogue/forms.txt"));
        QCOMPARE(dialog.findChildren<QRadioButton *>("optChoice"), dialog.optChoice);
        QVERIFY(dialog.optChoice.at(modes[1])->isChecked());
        QCOMPARE(dialog.focusWidget(), dialog.optChoice.at(modes[1]));
        dialog.optChoice.at(modes[2])->click();
        dialog.OKButton->click();
        QVERIFY(!dialog.isVisible() && m_prompt->messages().isEmpty());
        QCOMPARE(QList<int>({ dialog.BossMode, ReadBossMode(AppOptions().UTPath) }),
            QList<int>(2, modes[3]));
    }

private:
    QStringList saidHere(const QStringList &said) const
    {
        return writtenDown(said, QDir::toNativeSeparators(m_dir->path() + '/'));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

QTEST_MAIN(TestCatalogueForms)
#include "test_catalogueforms.moc"
