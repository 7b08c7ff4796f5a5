#include "editorfixture.h"
#include "samplecatalogue.h"
#include "scriptedprompt.h"

#include "catalogue/modelcatalogue.h"
#include "configfiles/forms/dlgDescr.h"
#include "configfiles/forms/formregistry.h"
#include "roster/botroster.h"
#include "roster/forms/frmBots.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSet>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QtTest/qtestspontaneevent.h>

namespace {

constexpr int LargeClass = 4;
constexpr int LargeSkinCount = 2000;

QString items(const QComboBox *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->itemText(i);
    return texts.join(u',');
}

QStringList entries(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (action->isVisible())
            texts << (action->isSeparator() ? "-" : action->objectName() + "=" + action->text());
    }
    return texts;
}

// What the window shows of the current slot, field after field.
QString shownSlot(const frmBots &f)
{
    return QStringList(
        { f.txtName->text(), f.cmbColor->currentText(), f.cmbClass->currentText(),
            f.cmbSkin->currentText(), f.cmbFace->currentText(), f.cmbVoice->currentText(),
            f.cmbCombatStyle->currentText(), f.lblSANum->text(), f.lblNumAccuracy->text(),
            f.lblNumAlertness->text(), f.lblNumCamping->text(), f.lblNumStrafing->text(),
            f.chkJumpy->isChecked() ? "jumpy" : "calm" })
        .join(u'|');
}

const QStringList EditingControls = { "lblAccuracy", "lblAlertness", "lblBot", "lblCamping",
    "lblClass", "lblColor", "lblCombatStyle", "lblFace", "lblFavWep", "lblJumpyBehavior", "lblName",
    "lblSkillAdjust", "lblSkin", "lblStrafing", "lblVoice", "lblSANum", "lblSAValues",
    "lblNumAccuracy", "lblMaxAccuracy", "lblNumAlertness", "lblMaxAlertness", "lblNumCamping",
    "lblMaxCamping", "lblNumStrafing", "lblMaxStrafing", "lblDifficulty", "lblBotConfigLine",
    "cmbBot", "cmbClass", "cmbColor", "cmbCombatStyle", "cmbFace", "cmbFavWep", "cmbSkin",
    "cmbVoice", "cmbDifficulty", "txtName", "chkJumpy", "chkAdjustSkill", "chkRandomOrder",
    "hsSkillAdjust", "hsAccuracy", "hsAlertness", "hsStrafing", "hsCamping", "cmdDescr" };

// A close request as the window system sends it (title bar, Alt+F4).
bool closedByWindowSystem(QWidget *window)
{
    QCloseEvent event;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
    return event.isAccepted();
}

void drag(QSlider *slider, int position)
{
    slider->setSliderDown(true);
    slider->setSliderPosition(position);
    slider->setSliderDown(false);
}

// One user edit of slot 0 and what it must store.
struct Edit
{
    const char *name;
    void (*apply)(frmBots &);
    bool (*stored)(const frmBots &, const BotRoster &);
};

// clang-format off
const Edit Edits[] = {
    { "name", [](frmBots &f) { f.txtName->setText("Zed"); }, [](const frmBots &, const BotRoster &r) { return r.BotNames[0] == "Zed"; } },
    { "team", [](frmBots &f) { f.cmbColor->setCurrentIndex(2); }, [](const frmBots &, const BotRoster &r) { return r.BotTeams[0] == 1; } },
    // A new class takes the first skin, face and voice it shows.
    { "class", [](frmBots &f) { f.cmbClass->setCurrentIndex(1); }, [](const frmBots &, const BotRoster &r) {
        return r.BotClasses[0] == "BotPack.TFemale1Bot" && r.BotSkins[0] == "FCommandoSkins.goth"
            && r.BotFaces[0] == "FCommandoSkins.Cryss" && r.VoiceType[0] == "BotPack.VoiceFemaleOne"; } },
    { "skin", [](frmBots &f) { f.cmbSkin->setCurrentIndex(1); }, [](const frmBots &, const BotRoster &r) {
        return r.BotSkins[0] == "CommandoSkins.daco" && r.BotFaces[0] == "CommandoSkins.Luthor"; } },
    // The game's form of the face, not the texture's name.
    { "face", [](frmBots &f) { f.cmbFace->setCurrentIndex(1); }, [](const frmBots &, const BotRoster &r) { return r.BotFaces[0] == "CommandoSkins.Gorn"; } },
    { "voice", [](frmBots &f) { f.cmbVoice->setCurrentIndex(1); }, [](const frmBots &, const BotRoster &r) { return r.VoiceType[0] == "BotPack.VoiceMaleTwo"; } },
    { "combat style", [](frmBots &f) { f.cmbCombatStyle->setCurrentIndex(0); }, [](const frmBots &, const BotRoster &r) { return r.CombatStyle[0] == "0.500000"; } },
    { "weapon", [](frmBots &f) { f.cmbFavWep->setCurrentIndex(4); }, [](const frmBots &, const BotRoster &r) { return r.FavoriteWeapon[0] == "BotPack.UT_FlakCannon"; } },
    { "difficulty", [](frmBots &f) { f.cmbDifficulty->setCurrentIndex(3); }, [](const frmBots &, const BotRoster &r) { return r.Difficulty == 3; } },
    { "jumpy", [](frmBots &f) { f.chkJumpy->click(); }, [](const frmBots &, const BotRoster &r) { return r.BotJumpy[0] == 1; } },
    { "adjust skill", [](frmBots &f) { f.chkAdjustSkill->click(); }, [](const frmBots &, const BotRoster &r) { return r.bAdjustSkill; } },
    { "random order", [](frmBots &f) { f.chkRandomOrder->click(); }, [](const frmBots &, const BotRoster &r) { return r.bRandomOrder; } },
    { "slider arrow", [](frmBots &f) { f.hsAccuracy->triggerAction(QSlider::SliderSingleStepAdd); }, [](const frmBots &, const BotRoster &r) { return r.BotAccuracy[0] == 5; } },
    // The slot keeps a position off the step; the label shows it snapped.
    { "slider drag", [](frmBots &f) { drag(f.hsAccuracy, 37); }, [](const frmBots &f, const BotRoster &r) { return r.BotAccuracy[0] == 37 && f.lblNumAccuracy->text() == "0.35"; } },
};
// clang-format on

} // namespace

class TestFrmBots : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void preparedWhileHiddenThenEnabled();
    void menuBar();
    void layout_data();
    void layout();
    void slotDisplay_data();
    void slotDisplay();
    void switchingSlots_data();
    void switchingSlots();
    void edits_data();
    void edits();
    void gates_data();
    void gates();
    void classChoice_data();
    void classChoice();
    void description_data();
    void description();
    void largeClassSwitchesQuickly();

private:
    void openForEditing();

    QTemporaryDir m_programDir;
    ScriptedPrompt *m_prompt = nullptr;
    frmBots *form = nullptr;
};

void TestFrmBots::initTestCase()
{
    QVERIFY(m_programDir.isValid());
    setProgramDir(m_programDir.path() + "/");
    Catalogue() = SampleCatalogue(LargeSkinCount);
}

void TestFrmBots::init()
{
    m_prompt = new ScriptedPrompt;
    Roster() = BotRoster();
    form = new frmBots;
    prepareLikeStartup(*form);
}

void TestFrmBots::cleanup()
{
    delete form;
    delete m_prompt;
}

// The window shown with its controls enabled and slot 0 in view, saved.
void TestFrmBots::openForEditing()
{
    form->show();
    form->EnableAll(true);
    form->PositionSlot();
    form->OtherData(0);
    form->SavedFunc(true);
}

void TestFrmBots::preparedWhileHiddenThenEnabled()
{
    BotRoster defaults;
    SetDefaults(defaults);
    QCOMPARE(Roster(), defaults);
    QCOMPARE(shownSlot(*form),
        "Archon|None|Male Commando|Commando|Blake|(None Choosen)|Normal|-3|0.0|0.0|0.0|0.0|calm");
    QCOMPARE(form->cmbBot->count(), 32);
    QCOMPARE(form->cmbBot->itemText(31), "Bot 31");

    QVERIFY(form->IsSaved());
    QVERIFY(!form->imgNotSaved->isHidden());
    QCOMPARE(form->lblSaved->text(), "Saved");
    QVERIFY(!form->lblSaved->isEnabled());
    QCOMPARE(form->lblCurrentFile->text(), QString());
    QVERIFY(!form->mnuFileSave->isEnabled() && !form->mnuFileSaveAs->isEnabled());
    for (const QString &name : EditingControls)
        QVERIFY2(!form->findChild<QWidget *>(name)->isEnabled(), qPrintable(name));

    form->EnableAll(true);
    for (const QString &name : EditingControls) {
        const QWidget *control = form->findChild<QWidget *>(name);
        QVERIFY2(control->isEnabled(), qPrintable(name));
        QVERIFY2(control->font().family() == "Arial", qPrintable(name));
    }
    QVERIFY(!form->lblSaved->isEnabled());

    // Only File, Exit ends the program, after offering to save.
    form->show();
    QVERIFY(!form->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!closedByWindowSystem(form));
    QVERIFY(form->isVisible());
}

void TestFrmBots::menuBar()
{
    QCOMPARE(form->windowTitle(), "Quorvane for Unreal Tournament");
    QCOMPARE(form->mnuFile->title(), "&File");
    QCOMPARE(entries(form->mnuFile),
        QStringList({ "mnuFileNew=&New", "-", "mnuFileOpen=&Open", "-", "mnuFileApply=Apply Config",
            "mnuFileImport=&Import from Game...", "mnuFileRestore=&Restore Backup...", "-",
            "mnuFileOptions=Options", "-", "mnuFileSave=&Save", "mnuFileSaveAs=Save As", "-",
            "mnuFileQuitLaunch=&Quit and Launch UT w/Current Config", "-", "mnuFileExit=E&xit" }));
    QCOMPARE(form->mnuEdit->title(), "&Edit");
    QCOMPARE(entries(form->mnuEdit),
        QStringList({ "mnuEditUndo=&Undo", "mnuEditRedo=&Redo", "-", "mnuEditCopy=&Copy Bot",
            "mnuEditPaste=&Paste Bot", "-", "mnuEditMoveUp=Move &Up",
            "mnuEditMoveDown=Move &Down" }));
    QCOMPARE(form->mnuHelp->title(), "&Help");
    QCOMPARE(entries(form->mnuHelp),
        QStringList({ "mnuHelpWebsite=Website", "mnuHelpSupportSite=Support Site",
            "mnuHelpHelp=&Help", "-", "mnuHelpAbout=About..." }));
}

void TestFrmBots::layout_data()
{
    QTest::addColumn<QSize>("growth");
    QTest::newRow("default size") << QSize();
    QTest::newRow("enlarged") << QSize(300, 400);
}

// One column of captions; the list-wide row and the open file stay right
// under the fields, and nothing is squeezed against the right edge.
void TestFrmBots::layout()
{
    QFETCH(QSize, growth);

    form->show();
    QVERIFY(QTest::qWaitForWindowExposed(form));
    const auto top = [this](const QWidget *w) { return w->mapTo(form, QPoint()).y(); };
    const int fieldsToFile = top(form->lblCurrentFile) - top(form->chkJumpy);
    form->resize(form->size() + growth);
    form->centralWidget()->layout()->activate();

    QCOMPARE(top(form->lblCurrentFile) - top(form->chkJumpy), fieldsToFile);
    QCOMPARE(top(form->cmdDescr), top(form->cmbDifficulty));
    QCOMPARE(top(form->lblSaved), top(form->lblCurrentFile));
    QSet<int> captionEnds;
    for (const QLabel *caption :
        { form->lblBot, form->lblJumpyBehavior, form->lblDifficulty, form->lblConfig })
        captionEnds.insert(caption->mapTo(form, QPoint(caption->width(), 0)).x());
    QCOMPARE(captionEnds.size(), 1);
    const int margin = form->centralWidget()->layout()->contentsMargins().right();
    QVERIFY(form->cmdDescr->mapTo(form, QPoint(form->cmdDescr->width(), 0)).x()
        <= form->width() - margin);
    QVERIFY(form->cmdDescr->width() >= form->cmdDescr->sizeHint().width());
}

void TestFrmBots::slotDisplay_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<QString>("shown");
    // clang-format off
    QTest::newRow("standard bot") << 0 << "Archon|None|Male Commando|Commando|Blake|(None Choosen)|Normal|-3|0.0|0.0|0.0|0.0|calm";
    // Dessloch has a voice his model is not offered: none is selected.
    QTest::newRow("second skin") << 3 << "Dessloch|Blue|Male Commando|Desert|Luthor||Normal|-3|0.0|0.0|0.0|0.0|calm";
    QTest::newRow("voice in small letters") << 4 << "Cryss|None|Female Commando|Goth|Cryss|Female One|Normal|-3|0.0|0.0|0.0|0.0|calm";
    QTest::newRow("model not installed") << 18 << "Tamerlane|None|Male Commando|Commando|Blake|(None Choosen)|Cautious|-3|0.0|-0.30|1.0|0.0|calm";
    QTest::newRow("skin and face not installed") << 31 << "Kragoth|Gold|Female Commando|Goth|Cryss|(None Choosen)|Normal|-3|0.0|0.0|0.0|0.0|jumpy";
    // clang-format on
}

void TestFrmBots::slotDisplay()
{
    QFETCH(int, slot);
    QFETCH(QString, shown);

    Roster().VoiceType[3] = "BotPack.VoiceFemaleOne";
    Roster().VoiceType[4] = "botpack.voicefemaleone";
    openForEditing();
    const BotRoster before = Roster();

    form->cmbBot->setCurrentIndex(slot);

    QCOMPARE(shownSlot(*form), shown);
    // Showing a slot stores nothing new, not even for a model that is missing.
    QCOMPARE(Roster(), before);
}

void TestFrmBots::switchingSlots_data()
{
    QTest::addColumn<bool>("loaded");
    QTest::addColumn<bool>("opening");
    QTest::addColumn<QString>("after");
    QTest::newRow("saved") << false << false << "Modified";
    QTest::newRow("loaded") << true << false << "Loaded";
    QTest::newRow("while opening") << false << true << "Saved";
}

void TestFrmBots::switchingSlots()
{
    QFETCH(bool, loaded);
    QFETCH(bool, opening);
    QFETCH(QString, after);

    openForEditing();
    if (loaded)
        form->LoadedFunc();
    form->bLoadingConfig = opening;
    const BotRoster before = Roster();

    for (int slot = 1; slot < BotSlotCount; ++slot)
        form->cmbBot->setCurrentIndex(slot);
    form->cmbBot->setCurrentIndex(30);

    QCOMPARE(form->lblSaved->text(), after);
    QVERIFY(!form->bRefreshing);
    // Every slot shown stored back exactly what it held: two jumpy bots in a
    // row stay jumpy.
    QCOMPARE(Roster(), before);
    QVERIFY(form->chkJumpy->isChecked());
}

void TestFrmBots::edits_data()
{
    QTest::addColumn<int>("edit");
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("opening");
    QTest::addColumn<QString>("after");

    for (int i = 0; i < int(std::size(Edits)); ++i) {
        // Only a drag turns a loaded document into a modified one.
        const bool drags = QByteArray(Edits[i].name) == "slider drag";
        QTest::addRow("%s, saved", Edits[i].name) << i << "Saved" << false << "Modified";
        QTest::addRow("%s, modified", Edits[i].name) << i << "Modified" << false << "Modified";
        QTest::addRow("%s, loaded", Edits[i].name)
            << i << "Loaded" << false << (drags ? "Modified" : "Loaded");
        QTest::addRow("%s, opening", Edits[i].name) << i << "Saved" << true << "Saved";
    }
}

void TestFrmBots::edits()
{
    QFETCH(int, edit);
    QFETCH(QString, state);
    QFETCH(bool, opening);
    QFETCH(QString, after);

    openForEditing();
    if (state == "Loaded")
        form->LoadedFunc();
    else
        form->SavedFunc(state == "Saved");
    const bool saveEnabled = form->mnuFileSave->isEnabled();
    form->bLoadingConfig = opening;

    Edits[edit].apply(*form);

    QVERIFY(Edits[edit].stored(*form, Roster()));
    QCOMPARE(form->lblSaved->text(), after);
    QCOMPARE(form->IsSaved(), after == "Saved");
    QCOMPARE(form->imgNotSaved->isHidden(), after == "Saved");
    QCOMPARE(form->mnuFileSave->isEnabled(), after == "Loaded" ? saveEnabled : after == "Modified");
}

void TestFrmBots::gates_data()
{
    QTest::addColumn<int>("edit");
    QTest::addColumn<bool>("hidden");
    QTest::addColumn<bool>("held");

    const QByteArrayList checkBoxes = { "jumpy", "adjust skill", "random order" };
    const QByteArrayList lists = { "class", "skin", "face", "voice" };
    for (int i = 0; i < int(std::size(Edits)); ++i) {
        // The window fills itself while hidden; only the check boxes store then.
        QTest::addRow("%s, hidden", Edits[i].name)
            << i << true << !checkBoxes.contains(Edits[i].name);
        QTest::addRow("%s, refreshing", Edits[i].name)
            << i << false << lists.contains(Edits[i].name);
    }
}

void TestFrmBots::gates()
{
    QFETCH(int, edit);
    QFETCH(bool, hidden);
    QFETCH(bool, held);

    if (hidden)
        form->EnableAll(true);
    else
        openForEditing();
    form->bRefreshing = !hidden;
    const BotRoster before = Roster();

    Edits[edit].apply(*form);

    if (held)
        QCOMPARE(Roster(), before);
    else
        QVERIFY(Edits[edit].stored(*form, Roster()));
    QCOMPARE(form->IsSaved(), held);
}

void TestFrmBots::classChoice_data()
{
    QTest::addColumn<int>("classIndex");
    QTest::addColumn<QString>("lists"); // skins / faces / voices
    QTest::addColumn<QString>("stored"); // class, skin, face, voice
    // clang-format off
    QTest::newRow("standard") << 1 << "Goth / Cryss,Visse / Female One,Female Two,(None Choosen)" << "BotPack.TFemale1Bot,FCommandoSkins.goth,FCommandoSkins.Cryss,BotPack.VoiceFemaleOne";
    QTest::newRow("boss") << 2 << "Boss / Xan / Boss Voice,(None Choosen)" << "BotPack.TBoss,BossSkins.boss,BossSkins.Xan,BotPack.VoiceBoss";
    QTest::newRow("add-on without skins") << 3 << "(NONE) / (NONE) / Male One,Male Two,Male One,Male Two,(None Choosen)" << "MyMods.Robot,,,BotPack.VoiceMaleOne";
    QTest::newRow("add-on, female") << LargeClass << "2000 skins / Ace / Female One,Female Two,(None Choosen)" << "MyMods.Warrior,WarSkins.w0000,WarSkins.Ace,BotPack.VoiceFemaleOne";
    // clang-format on
}

void TestFrmBots::classChoice()
{
    QFETCH(int, classIndex);
    QFETCH(QString, lists);
    QFETCH(QString, stored);

    openForEditing();
    form->cmbClass->setCurrentIndex(classIndex);

    const QString skins
        = form->cmbSkin->count() == LargeSkinCount ? "2000 skins" : items(form->cmbSkin);
    QCOMPARE(
        QStringList({ skins, items(form->cmbFace), items(form->cmbVoice) }).join(" / "), lists);
    const BotRoster &r = Roster();
    QCOMPARE(
        QStringList({ r.BotClasses[0], r.BotSkins[0], r.BotFaces[0], r.VoiceType[0] }).join(u','),
        stored);

    // Shown again, the slot finds its choices in the rebuilt lists.
    form->cmbBot->setCurrentIndex(1);
    form->cmbBot->setCurrentIndex(0);
    QCOMPARE(form->cmbClass->currentIndex(), classIndex);
    QCOMPARE(form->cmbSkin->currentIndex(), 0);
    QCOMPARE(form->cmbFace->currentIndex(), 0);
    QCOMPARE(form->cmbVoice->currentIndex(), 0);
}

void TestFrmBots::description_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("apply");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("after");
    QTest::newRow("applied") << "Team games" << true << "Team games"
                             << "Modified";
    QTest::newRow("applied unchanged") << "Old text" << true << "Old text"
                                       << "Saved";
    QTest::newRow("cancelled") << "Team games" << false << "Old text"
                               << "Saved";
}

void TestFrmBots::description()
{
    QFETCH(QString, typed);
    QFETCH(bool, apply);
    QFETCH(QString, description);
    QFETCH(QString, after);

    Roster().Description = "Old text";
    openForEditing();
    QString shownAtStart;
    QTimer::singleShot(0, form, [&] {
        dlgDescr &dialog = theForm<dlgDescr>();
        shownAtStart = dialog.txtDescr->toPlainText();
        dialog.txtDescr->setPlainText(typed);
        (apply ? dialog.cmdSave : dialog.CancelButton)->click();
    });
    form->cmdDescr->click();

    QCOMPARE(shownAtStart, "Old text");
    QCOMPARE(Roster().Description, description);
    QCOMPARE(form->lblSaved->text(), after);
}

void TestFrmBots::largeClassSwitchesQuickly()
{
    for (int slot : { 5, 6, 7 }) {
        Roster().BotClasses[slot] = "MyMods.Warrior";
        Roster().BotSkins[slot] = QString("WarSkins.w%1").arg(1990 + slot);
    }
    openForEditing();
    form->cmbBot->setCurrentIndex(5);
    QCOMPARE(form->cmbSkin->currentText(), "Warrior 1995");

    // Slots of the same class keep the skin list as it is.
    QSignalSpy rebuilt(form->cmbSkin->model(), &QAbstractItemModel::rowsInserted);
    form->cmbBot->setCurrentIndex(6);
    form->cmbBot->setCurrentIndex(7);
    QCOMPARE(rebuilt.count(), 0);
    QCOMPARE(form->cmbSkin->currentText(), "Warrior 1997");

    // Alternating with another class rebuilds it every time (the benchmarks
    // measure how fast).
    for (int round = 0; round < 10; ++round) {
        form->cmbBot->setCurrentIndex(0);
        form->cmbBot->setCurrentIndex(6);
    }
    QCOMPARE(form->cmbSkin->currentText(), "Warrior 1996");
}

QTEST_MAIN(TestFrmBots)
#include "test_frmbots.moc"
