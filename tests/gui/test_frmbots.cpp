#include "editorsession.h"
#include "expectedfile.h"

#include "configfiles/configfile.h"
#include "roster/forms/rosteroverview.h"

#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSlider>
#include <QUndoStack>

#include <memory>

namespace {

constexpr int LargeSkinCount = 2000;

// What the window shows of the current slot, then its row in the overview
// ("!" first for a warning, its problems last).
QString shown(const frmBots &f)
{
    QStringList texts { f.txtName->text(), f.cmbColor->currentText(), f.cmbClass->currentText(),
        f.cmbSkin->currentText(), f.cmbFace->currentText(), f.cmbVoice->currentText(),
        f.cmbCombatStyle->currentText(), f.lblSANum->text(), f.lblNumAccuracy->text(),
        f.lblNumAlertness->text(), f.lblNumCamping->text(), f.lblNumStrafing->text(),
        f.chkJumpy->isChecked() ? "jumpy" : "calm", "" };
    const int slot = f.grdBots->currentRow();
    if (!f.grdBots->item(slot, RosterOverview::Number)->icon().isNull())
        texts << "!";
    for (int column = 0; column < RosterOverview::ColumnCount; ++column)
        texts << f.grdBots->item(slot, column)->text();
    return (texts << f.grdBots->item(slot, RosterOverview::Skin)->toolTip()).join(u'|');
}

// The lines a file of the roster would have now that one of `before` has
// not: what an edit stored.
QString changes(BotRoster before)
{
    BotRoster now = Roster();
    const QStringList was = ConfigurationLines("x", before);
    QStringList lines = ConfigurationLines("x", now);
    lines.removeIf([&was](const QString &line) { return was.contains(line); });
    return lines.join(u',');
}

// What the user does, steps separated by commas: a control by its name,
// "cmbName:I" for a list's entry, "chkName" for a box, "mnuEditName" for an
// Edit entry; "name:TEXT" (typed), "drag:P" (accuracy, a pixel at a time),
// "arrow" (accuracy, one step), "descr:TEXT" (the description dialog,
// showing the list's own, applied; "nodescr:TEXT" cancelled), "slot:N" (a
// row of the overview), "slots" (every slot in turn, then 30), "focus:NAME",
// "key:SEQUENCE" (to the control with the focus).
void act(frmBots &f, const QString &steps)
{
    for (const QString &step : steps.split(u',', Qt::SkipEmptyParts)) {
        const QString verb = step.section(':', 0, 0);
        const QString value = step.section(':', 1);
        QObject *control = f.findChild<QObject *>(verb);
        if (auto *list = qobject_cast<QComboBox *>(control)) {
            list->setCurrentIndex(value.toInt());
        } else if (auto *box = qobject_cast<QAbstractButton *>(control)) {
            box->click();
        } else if (auto *entry = qobject_cast<QAction *>(control)) {
            entry->trigger();
        } else if (verb == "name") {
            f.txtName->selectAll();
            QTest::keyClicks(f.txtName, value);
        } else if (verb == "drag") {
            f.hsAccuracy->setSliderDown(true);
            for (int position = f.hsAccuracy->value(); position <= value.toInt(); ++position)
                f.hsAccuracy->setSliderPosition(position);
            f.hsAccuracy->setSliderDown(false);
        } else if (verb == "arrow") {
            f.hsAccuracy->triggerAction(QSlider::SliderSingleStepAdd);
        } else if (verb.endsWith("descr")) {
            whenShown([value, apply = verb == "descr"] {
                dlgDescr &d = theForm<dlgDescr>();
                QCOMPARE(d.txtDescr->toPlainText(), Roster().Description);
                d.txtDescr->setPlainText(value);
                // Restored from the task bar, it keeps what was typed.
                spontaneous(&d, QShowEvent());
                (apply ? d.cmdSave : d.CancelButton)->click();
            });
            f.cmdDescr->click();
        } else if (verb == "focus") {
            f.findChild<QWidget *>(value)->setFocus();
        } else if (verb == "key") {
            QTest::keySequence(QApplication::focusWidget(), QKeySequence(value));
        } else if (verb == "slot") {
            f.grdBots->setCurrentCell(value.toInt(), RosterOverview::Name);
        } else {
            QCOMPARE(verb, "slots");
            for (int slot = 1; slot < BotSlotCount; ++slot)
                f.cmbBot->setCurrentIndex(slot);
            f.cmbBot->setCurrentIndex(30);
        }
    }
}

} // namespace

// The main window: its state as start-up leaves it, each edit of a slot and
// of the list, the overview of all bots beside it, and the Edit menu.
class TestFrmBots : public QObject
{
    Q_OBJECT

    struct Edit
    {
        QString step, context, stored, after; // the document's state before and after, or a gate
    };
    struct Walk
    {
        QString steps, moved; // see act; "slot<-from" per slot changed, "-" for other edits
    };

private slots:
    void initTestCase() { m_session = std::make_unique<EditorSession>(LargeSkinCount); }
    void init() { m_session->restart(); }
    void cleanupTestCase() { m_session.reset(); }

    // Nothing to edit before New or Open (its screenshot shows that only its
    // own commands close it), and the menus as a user reads them.
    void asStarted()
    {
        frmBots &form = m_session->form();
        const auto editable = [&form](bool enabled) {
            QStringList wrong;
            for (QWidget *control : form.centralWidget()->findChildren<QWidget *>()) {
                if ((control->focusPolicy() & Qt::TabFocus) && control->isEnabled() != enabled)
                    wrong << control->objectName();
            }
            return wrong.join(',');
        };
        QCOMPARE(editable(false), "");
        QVERIFY(!form.grdBots->isEnabled() && !form.mnuEditCopy->isEnabled());
        form.EnableAll(true);
        QCOMPARE(editable(true), "");
        QVERIFY(!form.lblSaved->isEnabled());

        QStringList entries;
        for (const QAction *title : form.menuBar()->actions()) {
            entries << title->menu()->objectName() + "=" + title->text();
            for (const QAction *action : title->menu()->actions()) {
                if (action->isVisible())
                    entries << (action->isSeparator()
                            ? "-"
                            : action->objectName() + "=" + action->text());
            }
        }
        QCOMPARE(entries.join('\n') + '\n', readTestFile(testDataDir() + "documents/menus.txt"));
    }

    void edits_data()
    {
        QTest::addColumn<Edit>("e");

        // clang-format off
        const QList<std::pair<QString, QString>> edits {
            { "name:Zed", "BotNames[0]=Zed" },
            { "cmbColor:2", "BotTeams[0]=1" },
            // A new class takes the first skin, face and voice it shows.
            { "cmbClass:1", "BotFaces[0]=FCommandoSkins.Cryss,BotClasses[0]=BotPack.TFemale1Bot,BotSkins[0]=FCommandoSkins.goth,VoiceType[0]=BotPack.VoiceFemaleOne" },
            { "cmbSkin:1", "BotFaces[0]=CommandoSkins.Luthor,BotSkins[0]=CommandoSkins.daco" },
            // The game's form of the face, not the texture's name.
            { "cmbFace:1", "BotFaces[0]=CommandoSkins.Gorn" },
            { "cmbVoice:1", "VoiceType[0]=BotPack.VoiceMaleTwo" },
            { "cmbCombatStyle:0", "CombatStyle[0]=0.500000" },
            { "cmbFavWep:4", "FavoriteWeapon[0]=BotPack.UT_FlakCannon" },
            { "cmbDifficulty:3", "Difficulty=3" },
            { "chkJumpy", "BotJumpy[0]=1" }, { "chkAdjustSkill", "bAdjustSkill=True" }, { "chkRandomOrder", "bRandomOrder=True" },
            { "arrow", "BotAccuracy[0]=0.050000" },
            { "drag:37", "BotAccuracy[0]=0.350000" },
            // Showing every slot stores back exactly what each held.
            { "slots", "" },
        };
        for (const auto &[step, stored] : edits) {
            const bool box = step.startsWith("chk");
            const bool list = QRegularExpression("^cmb(Class|Skin|Face|Voice):").match(step).hasMatch();
            const QByteArray name = step.toLatin1();
            QTest::addRow("%s, saved", name.data()) << Edit { step, "Saved", stored, "Modified" };
            // Only a drag turns a loaded list into a modified one.
            QTest::addRow("%s, loaded", name.data()) << Edit { step, "Loaded", stored, step.startsWith("drag") ? "Modified" : "Loaded" };
            QTest::addRow("%s, opening", name.data()) << Edit { step, "opening", stored, "Saved" };
            // The window fills itself while hidden; only the check boxes store then.
            QTest::addRow("%s, hidden", name.data()) << Edit { step, "hidden", box ? stored : "", box ? "Modified" : "Saved" };
            // While it positions its lists, they store nothing.
            QTest::addRow("%s, refreshing", name.data()) << Edit { step, "refreshing", list ? "" : stored, list ? "Saved" : "Modified" };
        }
        // The description changes only when applied with another.
        QTest::newRow("description") << Edit { "descr:Team games", "Saved", "* Team games", "Modified" };
        QTest::newRow("description unchanged") << Edit { "descr:Old text", "Saved", "", "Saved" };
        QTest::newRow("description cancelled") << Edit { "nodescr:Team games", "Saved", "", "Saved" };
        // clang-format on
    }

    void edits()
    {
        QFETCH(Edit, e);

        Roster().Description = "Old text";
        frmBots &form = m_session->form();
        form.EnableAll(true);
        if (e.context == "hidden")
            form.hide();
        else
            form.PositionSlot(), form.OtherData(0), form.SavedFunc(true);
        if (e.context == "Loaded")
            form.LoadedFunc();
        form.bLoadingConfig = e.context == "opening";
        form.bRefreshing = e.context == "refreshing";
        const BotRoster before = Roster();

        act(form, e.step);

        QCOMPARE(changes(before), e.stored);
        QCOMPARE(form.lblSaved->text(), e.after);
        // The slot keeps a position off the step; the label shows it snapped.
        if (e.step.startsWith("drag") && !e.stored.isEmpty())
            QVERIFY(Roster().BotAccuracy[0] == 37 && form.lblNumAccuracy->text() == "0.35");
    }

    void overview_data()
    {
        QTest::addColumn<Walk>("w");

        // clang-format off
        // Choosing a row shows its bot in the editor; showing a slot stores nothing new, not
        // even for a model that is missing.
        QTest::newRow("standard bot") << Walk { "slot:0", "" };
        // Dessloch has a voice his model is not offered: none is selected.
        QTest::newRow("second skin") << Walk { "slot:3", "" };
        QTest::newRow("model not installed") << Walk { "slot:18", "" };
        // A class of many skins finds each slot's, whether its list is kept or built anew.
        QTest::newRow("large class") << Walk { "slot:5,slot:6,slot:7", "" };
        QTest::newRow("large class again") << Walk { "slot:5,slot:6,slot:7,slot:0,slot:6", "" };
        // An edit shows in its row at once, the warning going when the slot is fixed; a class
        // takes the first of its skins, faces and voices, and finds them again when its slot
        // is shown anew.
        QTest::newRow("fixed in the editor") << Walk { "slot:31,name:Krag,cmbClass:2", "-" };
        QTest::newRow("add-on without skins") << Walk { "cmbClass:3,slot:1,slot:0", "-" };
        // A bot travels whole; a moved one stays shown.
        QTest::newRow("copy and paste") << Walk { "slot:4,mnuEditCopy,slot:9,mnuEditPaste", "9<-4" };
        QTest::newRow("move up") << Walk { "slot:5,mnuEditMoveUp", "4<-5,5<-4" };
        QTest::newRow("move down twice") << Walk { "slot:5,mnuEditMoveDown,mnuEditMoveDown", "5<-6,6<-7,7<-5" };
        QTest::newRow("first cannot go up") << Walk { "slot:0,mnuEditMoveUp", "" };
        QTest::newRow("last cannot go down") << Walk { "slot:31,mnuEditMoveDown", "" };
        QTest::newRow("nothing copied") << Walk { "slot:3,mnuEditPaste", "" };
        // Each edit is one step, whatever it touched and however it was made.
        QTest::newRow("typing a name") << Walk { "name:Zed", "-" };
        QTest::newRow("a name typed as it was") << Walk { "name:Archon", "" };
        QTest::newRow("names of two bots") << Walk { "name:Zed,slot:3,name:Quinn", "-" };
        QTest::newRow("a drag") << Walk { "drag:37", "-" };
        QTest::newRow("arrows") << Walk { "arrow,arrow", "-" };
        QTest::newRow("list-wide and description") << Walk { "cmbDifficulty:5,descr:Friday games", "-" };
        // A new edit after an undo drops what could have been redone.
        QTest::newRow("edit after undo") << Walk { "cmbColor:2,name:Zed,mnuEditUndo,cmbClass:2", "-" };
        // clang-format on
    }

    // The overview follows the editor and the other way round. Undoing every
    // step brings back the roster the user began with, the editor and the
    // overview showing it, and marks a saved list; redoing brings back the
    // last. New starts afresh.
    void overview()
    {
        QFETCH(Walk, w);

        frmBots &form = renewed();
        Roster().VoiceType[3] = "BotPack.VoiceFemaleOne";
        for (int warrior : { 5, 6, 7 }) {
            Roster().BotClasses[warrior] = "MyMods.Warrior";
            Roster().BotSkins[warrior] = QString("WarSkins.w%1").arg(1990 + warrior);
        }
        form.ResetHistory();
        const BotRoster before = Roster();
        act(form, w.steps);
        const BotRoster after = Roster();
        if (w.moved != "-") {
            BotRoster expected = before;
            for (const QString &change : w.moved.split(',', Qt::SkipEmptyParts))
                BotSlot::fromRoster(before, change.section("<-", 1).toInt())
                    .toRoster(expected, change.section("<-", 0, 0).toInt());
            QCOMPARE(after, expected);
        }
        const int recorded = int(form.History->count());
        QCOMPARE(QStringList(QString("slot %1|row %2|%3 steps|up %4|down %5")
                                 .arg(form.CurrentSlot())
                                 .arg(form.grdBots->currentRow())
                                 .arg(recorded)
                                 .arg(int(form.mnuEditMoveUp->isEnabled()))
                                 .arg(int(form.mnuEditMoveDown->isEnabled())))
                + shown(form).split('\n'),
            expectedSection("documents/overview.txt"));

        const auto walk = [&form, recorded](QAction *entry, const BotRoster &roster) {
            for (int i = 0; i < recorded; ++i)
                entry->trigger();
            QVERIFY(!entry->isEnabled());
            QCOMPARE(Roster(), roster);
            const int slot = form.CurrentSlot();
            QCOMPARE(form.txtName->text(), roster.BotNames[slot]);
            QCOMPARE(form.hsAccuracy->value(), roster.BotAccuracy[slot]);
            QCOMPARE(form.cmbDifficulty->currentIndex(), roster.Difficulty);
            QCOMPARE(form.grdBots->currentRow(), slot);
            for (int s = 0; s < BotSlotCount; ++s)
                QCOMPARE(form.grdBots->item(s, RosterOverview::Name)->text(), roster.BotNames[s]);
        };
        form.SavedFunc(true);
        walk(form.mnuEditUndo, before);
        QCOMPARE(form.lblSaved->text(), recorded ? "Modified" : "Saved");
        walk(form.mnuEditRedo, after);

        form.cmbBot->setCurrentIndex(3);
        QCOMPARE(form.grdBots->currentRow(), 3);
        // A drag shows while it goes on.
        form.hsSkillAdjust->setSliderDown(true);
        form.hsSkillAdjust->setSliderPosition(5);
        QCOMPARE(form.grdBots->item(3, RosterOverview::Skill)->text(), "2");
        m_session->prompt.answerNext(MessageAnswer::No);
        form.mnuFileNew->trigger();
        QCOMPARE(form.History->count(), 0);
    }

    // The usual keys, from the name box too: there the window's Undo takes the
    // place of the box's own, so that typing is undone as one step. In the
    // overview: to the last bot, back to the first; copy, move down, paste over
    // the bot now above.
    void shortcuts()
    {
        frmBots &form = renewed();
        QApplication::setActiveWindow(&form);
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QStringList names;
        for (const char *keys : { "focus:txtName,name:Zed,key:Ctrl+Z", "key:Ctrl+Shift+Z",
                 "key:Ctrl+Z,key:Ctrl+Y", "focus:grdBots,key:Ctrl+End",
                 "key:Ctrl+Home,key:Ctrl+C,key:Ctrl+Down", "key:Up,key:Ctrl+V" }) {
            act(form, keys);
            names << Roster().BotNames[0] + "," + Roster().BotNames[1] + "," + form.txtName->text();
        }
        QCOMPARE(names,
            QStringList({ "Archon,Aryss,Archon", "Zed,Aryss,Zed", "Zed,Aryss,Zed",
                "Zed,Aryss,Kragoth", "Aryss,Zed,Zed", "Zed,Zed,Zed" }));
        QCOMPARE(form.History->count(), 3);
    }

private:
    // The window as File, New leaves it.
    frmBots &renewed()
    {
        m_session->form().mnuFileNew->trigger();
        return m_session->form();
    }

    std::unique_ptr<EditorSession> m_session;
};

QTEST_MAIN(TestFrmBots)
#include "test_frmbots.moc"
