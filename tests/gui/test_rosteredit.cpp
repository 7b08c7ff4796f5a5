#include "editorfixture.h"
#include "samplecatalogue.h"
#include "scriptedprompt.h"

#include "catalogue/modelcatalogue.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/formregistry.h"
#include "roster/forms/rosteroverview.h"
#include "startup/programdirectory.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

namespace {

// A row of the overview as "text|text|...", "!" first for a warning.
QString row(const RosterOverview *overview, int slot)
{
    QStringList texts;
    for (int column = 0; column < RosterOverview::ColumnCount; ++column)
        texts << overview->item(slot, column)->text();
    if (!overview->item(slot, RosterOverview::Number)->icon().isNull())
        texts.prepend("!");
    return texts.join(u'|');
}

// One thing the user does: "name:TEXT" (typed), "team:INDEX",
// "class:INDEX", "skin:INDEX", "drag:POSITION" (accuracy, a pixel at a
// time), "arrow" (accuracy, one step), "difficulty:INDEX", "descr:TEXT",
// "slot:N" (a row of the overview), or an Edit entry: "copy", "paste",
// "up", "down", "undo".
void act(frmBots &f, const QString &step)
{
    const QString verb = step.section(':', 0, 0);
    const QString value = step.section(':', 1);
    const QHash<QString, QComboBox *> lists { { "team", f.cmbColor }, { "class", f.cmbClass },
        { "skin", f.cmbSkin }, { "difficulty", f.cmbDifficulty } };
    const QHash<QString, QAction *> entries { { "copy", f.mnuEditCopy },
        { "paste", f.mnuEditPaste }, { "up", f.mnuEditMoveUp }, { "down", f.mnuEditMoveDown },
        { "undo", f.mnuEditUndo } };
    if (verb == "name") {
        f.txtName->selectAll();
        QTest::keyClicks(f.txtName, value);
    } else if (lists.contains(verb)) {
        lists.value(verb)->setCurrentIndex(value.toInt());
    } else if (verb == "drag") {
        f.hsAccuracy->setSliderDown(true);
        for (int position = f.hsAccuracy->value(); position <= value.toInt(); ++position)
            f.hsAccuracy->setSliderPosition(position);
        f.hsAccuracy->setSliderDown(false);
    } else if (verb == "arrow") {
        f.hsAccuracy->triggerAction(QSlider::SliderSingleStepAdd);
    } else if (verb == "descr") {
        QTimer::singleShot(0, &f, [value] {
            theForm<dlgDescr>().txtDescr->setPlainText(value);
            theForm<dlgDescr>().cmdSave->click();
        });
        f.cmdDescr->click();
    } else if (verb == "slot") {
        f.grdBots->setCurrentCell(value.toInt(), RosterOverview::Name);
    } else {
        QVERIFY2(entries.contains(verb), qPrintable(step));
        entries.value(verb)->trigger();
    }
}

} // namespace

// The overview of all bots beside the editor, and the Edit menu: undo and
// redo of every change to the roster, copying, pasting and moving bots.
class TestRosterEdit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void overviewRows_data();
    void overviewRows();
    void overviewFollowsTheEditor();
    void copyPasteMove_data();
    void copyPasteMove();
    void undoRedo_data();
    void undoRedo();
    void shortcuts();

private:
    QTemporaryDir m_programDir;
    ScriptedPrompt *m_prompt = nullptr;
    frmBots *form = nullptr;
};

void TestRosterEdit::initTestCase()
{
    QVERIFY(m_programDir.isValid());
    setProgramDir(m_programDir.path() + "/");
    Catalogue() = SampleCatalogue();
}

// The window as File, New leaves it.
void TestRosterEdit::init()
{
    m_prompt = new ScriptedPrompt;
    Roster() = BotRoster();
    form = new frmBots;
    prepareLikeStartup(*form);
    form->show();
    form->mnuFileNew->trigger();
}

void TestRosterEdit::cleanup()
{
    delete form;
    unloadForm<dlgDescr>();
    delete m_prompt;
}

void TestRosterEdit::overviewRows_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<QString>("skin"); // put into the slot first; "" keeps the default's
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("problems");

    // clang-format off
    QTest::newRow("installed") << 0 << "" << "0|Archon|None|Male Commando|Commando|Blake|(None Choosen)|-3|(No Favorite)" << "";
    QTest::newRow("uninstalled skin") << 0 << "GoneSkins.gone" << "!|0|Archon|None|Male Commando|GoneSkins.gone|CommandoSkins.Blake|(None Choosen)|-3|(No Favorite)"
        << "Skin \"GoneSkins.gone\" is not installed";
    QTest::newRow("model not installed") << 18 << "" << "!|18|Tamerlane|None|BotPack.TMale2Bot|SoldierSkins.blkt|SoldierSkins.Riker|(None Choosen)|-3|Botpack.SniperRifle"
        << "Class \"BotPack.TMale2Bot\" is not installed\nSkin \"SoldierSkins.blkt\" is not installed\nFace \"SoldierSkins.Riker\" is not installed";
    // clang-format on
}

void TestRosterEdit::overviewRows()
{
    QFETCH(int, slot);
    QFETCH(QString, skin);
    QFETCH(QString, shown);
    QFETCH(QString, problems);

    if (!skin.isEmpty()) {
        Roster().BotSkins[slot] = skin;
        form->ResetHistory();
    }

    QCOMPARE(row(form->grdBots, slot), shown);
    QCOMPARE(form->grdBots->item(slot, RosterOverview::Skin)->toolTip(), problems);
}

// Choosing a row shows its bot in the editor and the other way round; an
// edit shows in its row at once, a warning going when the slot is fixed.
void TestRosterEdit::overviewFollowsTheEditor()
{
    RosterOverview *overview = form->grdBots;
    QTest::keyClick(overview, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(form->txtName->text(), "Kragoth");
    form->cmbBot->setCurrentIndex(3);
    QCOMPARE(overview->currentRow(), 3);

    form->cmbBot->setCurrentIndex(31);
    form->txtName->setText("Krag");
    QCOMPARE(overview->item(31, RosterOverview::Name)->text(), "Krag");
    form->cmbClass->setCurrentIndex(2);
    QCOMPARE(row(overview, 31), "31|Krag|Gold|Boss|Boss|Xan|Boss Voice|-3|(No Favorite)");
    QVERIFY(!overview->item(31, RosterOverview::Team)->icon().isNull());

    // A drag shows while it goes on.
    form->hsSkillAdjust->setSliderDown(true);
    form->hsSkillAdjust->setSliderPosition(5);
    QCOMPARE(overview->item(31, RosterOverview::Skill)->text(), "2");
    form->hsSkillAdjust->setSliderDown(false);

    // Before New or Open nothing can be chosen.
    form->EnableAll(false);
    QVERIFY(!overview->isEnabled() && !form->mnuEditCopy->isEnabled());
}

void TestRosterEdit::copyPasteMove_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("moved"); // "slot<-from" per slot changed
    QTest::addColumn<int>("shown"); // the slot shown at the end

    QTest::newRow("copy and paste") << "slot:4,copy,slot:9,paste"
                                    << "9<-4" << 9;
    QTest::newRow("move up") << "slot:5,up"
                             << "4<-5,5<-4" << 4;
    QTest::newRow("move down twice") << "slot:5,down,down"
                                     << "5<-6,6<-7,7<-5" << 7;
    QTest::newRow("first cannot go up") << "slot:0,up"
                                        << "" << 0;
    QTest::newRow("last cannot go down") << "slot:31,down"
                                         << "" << 31;
    QTest::newRow("nothing copied") << "slot:3,paste"
                                    << "" << 3;
}

// A bot travels whole; a moved one stays shown.
void TestRosterEdit::copyPasteMove()
{
    QFETCH(QString, steps);
    QFETCH(QString, moved);
    QFETCH(int, shown);

    const BotRoster before = Roster();
    for (const QString &step : steps.split(','))
        act(*form, step);

    BotRoster expected = before;
    for (const QString &change : moved.split(',', Qt::SkipEmptyParts))
        BotSlot::fromRoster(before, change.section("<-", 1).toInt())
            .toRoster(expected, change.section("<-", 0, 0).toInt());
    QCOMPARE(Roster(), expected);
    QCOMPARE(form->grdBots->currentRow(), shown);
    QCOMPARE(form->txtName->text(), Roster().BotNames[shown]);
    for (int slot = 0; slot < BotSlotCount; ++slot)
        QCOMPARE(form->grdBots->item(slot, RosterOverview::Name)->text(), Roster().BotNames[slot]);
    QCOMPARE(form->mnuEditMoveUp->isEnabled(), shown > 0);
    QCOMPARE(form->mnuEditMoveDown->isEnabled(), shown < 31);
    QCOMPARE(form->grdBots->actions(),
        QList<QAction *>(
            { form->mnuEditCopy, form->mnuEditPaste, form->mnuEditMoveUp, form->mnuEditMoveDown }));
}

void TestRosterEdit::undoRedo_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<int>("recorded"); // steps in the history

    // Each edit is one step, whatever it touched and however it was made.
    QTest::newRow("typing a name") << "name:Zed" << 1;
    QTest::newRow("a name typed as it was") << "name:Archon" << 0;
    QTest::newRow("names of two bots") << "name:Zed,slot:3,name:Quinn" << 2;
    QTest::newRow("a class with its skin, face and voice") << "slot:31,class:2" << 1;
    QTest::newRow("a skin with its face") << "skin:1" << 1;
    QTest::newRow("a drag") << "drag:37" << 1;
    QTest::newRow("arrows") << "arrow,arrow" << 2;
    QTest::newRow("list-wide and description") << "difficulty:5,descr:Friday games" << 2;
    QTest::newRow("paste and move") << "slot:2,copy,slot:8,paste,down" << 2;
    // A new edit after an undo drops what could have been redone.
    QTest::newRow("edit after undo") << "team:2,name:Zed,undo,class:2" << 2;
    QTest::newRow("showing bots is no edit") << "slot:5,slot:18,slot:31" << 0;
}

// Undoing every step walks back through each roster the user had, the
// editor and the overview showing it, and marks a saved list; redoing walks
// forward again. New starts afresh.
void TestRosterEdit::undoRedo()
{
    QFETCH(QString, steps);
    QFETCH(int, recorded);

    QList<BotRoster> rosters { Roster() };
    for (const QString &step : steps.split(',')) {
        act(*form, step);
        if (step == "undo")
            rosters.removeLast();
        else if (Roster() != rosters.constLast())
            rosters.append(Roster());
    }
    QCOMPARE(form->History->count(), recorded);
    QCOMPARE(rosters.size(), recorded + 1);
    form->SavedFunc(true);

    const auto shown = [this] {
        const int slot = form->CurrentSlot();
        QCOMPARE(form->txtName->text(), Roster().BotNames[slot]);
        QCOMPARE(form->hsAccuracy->value(), Roster().BotAccuracy[slot]);
        QCOMPARE(form->cmbDifficulty->currentIndex(), Roster().Difficulty);
        QCOMPARE(form->grdBots->currentRow(), slot);
        for (int s = 0; s < BotSlotCount; ++s)
            QCOMPARE(form->grdBots->item(s, RosterOverview::Name)->text(), Roster().BotNames[s]);
    };
    for (int i = recorded - 1; i >= 0; --i) {
        form->mnuEditUndo->trigger();
        QCOMPARE(Roster(), rosters.at(i));
        shown();
        QCOMPARE(form->lblSaved->text(), "Modified");
    }
    QVERIFY(!form->mnuEditUndo->isEnabled());
    for (int i = 1; i <= recorded; ++i) {
        form->mnuEditRedo->trigger();
        QCOMPARE(Roster(), rosters.at(i));
        shown();
    }
    QVERIFY(!form->mnuEditRedo->isEnabled());

    m_prompt->answerNext(MessageAnswer::No);
    form->mnuFileNew->trigger();
    QCOMPARE(form->History->count(), 0);
}

// The usual keys, from the name box too: there the window's Undo takes the
// place of the box's own, so that typing is undone as one step.
void TestRosterEdit::shortcuts()
{
    QApplication::setActiveWindow(form);
    QVERIFY(QTest::qWaitForWindowActive(form));
    form->txtName->setFocus();
    act(*form, "name:Zed");

    QTest::keyClick(form->txtName, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(Roster().BotNames[0], "Archon");
    QTest::keyClick(form->txtName, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Roster().BotNames[0], "Zed");
    QTest::keyClick(form->txtName, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(form->txtName, Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(form->txtName->text(), "Zed");

    // In the overview: copy, move down, paste over the bot now above.
    form->grdBots->setFocus();
    QTest::keyClick(form->grdBots, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(form->grdBots, Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(Roster().BotNames[1], "Zed");
    QTest::keyClick(form->grdBots, Qt::Key_Up);
    QTest::keyClick(form->grdBots, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(Roster().BotNames[0], "Zed");
    QCOMPARE(form->History->count(), 3);
}

QTEST_MAIN(TestRosterEdit)
#include "test_rosteredit.moc"
