#include "samplecatalogue.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include "catalogue/bossmode.h"
#include "catalogue/forms/dlgNewBoss.h"
#include "catalogue/forms/frmBadFiles.h"
#include "catalogue/forms/frmPattern.h"
#include "catalogue/forms/scanforms.h"
#include "catalogue/patternfile.h"
#include "catalogue/unmatchedlist.h"
#include "configfiles/forms/formregistry.h"
#include "startup/options.h"
#include "startup/programdirectory.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest/qtestspontaneevent.h>

#include <functional>

using namespace Qt::StringLiterals;

using MakeWindow = std::function<QWidget *()>;
Q_DECLARE_METATYPE(MakeWindow)

namespace {

const QString guy = u"/ut/System/MyGuy.int"_s;
const QString tin = u"/ut/System/Tin.int"_s;
const QString zed = u"/ut/System/Zed.int"_s;

void setUpCatalogue()
{
    Catalogue() = SampleCatalogue();
    const QStringList skinTypes { u"commando"_s, u"fcommando"_s, u"boss"_s, u"Robot"_s,
        u"warrior"_s, u"robot2"_s };
    for (qsizetype i = 0; i < skinTypes.size(); ++i)
        Catalogue().MISCCLASSES[i].SkinType = skinTypes.at(i);
    Catalogue().UnmatchedSkins = { { guy, u"MyGuy"_s }, { tin, u"Tin"_s }, { zed, u"Zed"_s }, {} };
    PatternEditorFiles().clear();
}

void whenShown(std::function<void()> action)
{
    QTimer::singleShot(0, qApp, std::move(action));
}

// A close request as the window system sends it; notify() keeps it spontaneous.
bool closedByWindowSystem(QWidget *window)
{
    QCloseEvent event;
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
    return event.isAccepted();
}

// Each row as one text: folder and name, then " - " and the model if any.
QStringList itemTexts(const QTreeWidget *list)
{
    QStringList texts;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = list->topLevelItem(row);
        const QString model = list->columnCount() == 3 ? item->text(1) : QString();
        texts.append(item->text(list->columnCount() - 1) + item->text(0)
            + (model.isEmpty() ? QString() : u" - "_s + model));
    }
    return texts;
}

QList<bool> checks(const QTreeWidget *list)
{
    QList<bool> checked;
    for (int row = 0; row < list->topLevelItemCount(); ++row)
        checked.append(list->topLevelItem(row)->checkState(0) == Qt::Checked);
    return checked;
}

QList<MessageDefault> defaultButtons(const ScriptedPrompt &prompt)
{
    QList<MessageDefault> defaults;
    for (const Message &message : prompt.messages())
        defaults.append(message.defaultButton);
    return defaults;
}

// Runs one editor step: "set <row> <model>", "setall <model>", "remove <row> yes|no".
void editorStep(frmPattern &editor, const QString &step)
{
    const QString verb = step.section(u' ', 0, 0);
    if (verb == u"setall"_s) {
        editor.lstFiles->selectAll();
        editor.cmbModelAssoc->setCurrentText(step.section(u' ', 1));
        editor.cmdSetPattern->click();
        return;
    }
    editor.lstFiles->setCurrentItem(editor.lstFiles->topLevelItem(step.section(u' ', 1, 1).toInt()),
        0, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (verb == u"set"_s) {
        editor.cmbModelAssoc->setCurrentText(step.section(u' ', 2));
        QVERIFY(editor.cmdSetPattern->isEnabled());
        editor.cmdSetPattern->click();
    } else {
        auto *prompt = static_cast<ScriptedPrompt *>(&currentPrompt());
        prompt->answerNext(step.endsWith(u"yes"_s) ? MessageAnswer::Yes : MessageAnswer::No);
        editor.cmdRemovePattern->click();
    }
}

// The saved patterns as the tree shows them, one "model,skin type,..." each.
QStringList treeLines(const QTreeWidget *tree)
{
    QStringList lines;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *model = tree->topLevelItem(i);
        QString line = model->data(0, Qt::UserRole).toString();
        for (int c = 0; c < model->childCount(); ++c)
            line += u',' + model->child(c)->text(0);
        lines.append(line);
    }
    return lines;
}

QTreeWidgetItem *savedItem(QTreeWidget *tree, const QString &key)
{
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == key)
            return *it;
    }
    return nullptr;
}

QString bossLine(const QString &name, const QString &description)
{
    return u"Object=(Name=SkeletalCharsFix313.%1,Class=Class,MetaClass=Botpack.Bot,"
           "Description=\"%2\")"_s.arg(name, description);
}

QStringList bossFile(bool plain, bool male)
{
    const QString plainOff = plain ? QString() : u";"_s;
    const QString maleOff = male ? QString() : u";"_s;
    return { u"[Public]"_s, plainOff + bossLine(u"WarBossFixed"_s, u"WarBoss [Fixed]"_s),
        plainOff + bossLine(u"XanFixed"_s, u"Xan II [Fixed]"_s),
        maleOff + bossLine(u"WarBossMale"_s, u"WarBoss [Fixed/Male Voices]"_s),
        maleOff + bossLine(u"XanMale"_s, u"Xan II [Fixed/Male Voices]"_s) };
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
    void init();
    void cleanup();

    void closeControl_data();
    void closeControl();
    void namesAndModelsInView_data();
    void namesAndModelsInView();
    void checkAllToggles_data();
    void checkAllToggles();
    void continueHandsCheckedFilesOver_data();
    void continueHandsCheckedFilesOver();
    void buttonsSayOrOpen_data();
    void buttonsSayOrOpen();
    void finishedWritesPatterns_data();
    void finishedWritesPatterns();
    void failedFinishedAsksToTryAgain_data();
    void failedFinishedAsksToTryAgain();
    void modelChoicesSkipFreeSlots_data();
    void modelChoicesSkipFreeSlots();
    void savedPatternsChange_data();
    void savedPatternsChange();
    void scanFormsRunReportThenEditor();
    void bossDialogShowsAndWritesTheMode_data();
    void bossDialogShowsAndWritesTheMode();
    void bossDialogFailedWrite_data();
    void bossDialogFailedWrite();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ScriptedPrompt> m_prompt;
};

void TestCatalogueForms::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    setProgramDir(m_dir->path());
    m_prompt = std::make_unique<ScriptedPrompt>();
    setUpCatalogue();
}

void TestCatalogueForms::cleanup()
{
    unloadForm<frmBadFiles>();
    unloadForm<frmPattern>();
    unloadForm<dlgNewBoss>();
    m_prompt.reset();
}

void TestCatalogueForms::closeControl_data()
{
    QTest::addColumn<MakeWindow>("make");
    QTest::addColumn<QString>("list"); // where a stray Return must not close it
    QTest::newRow("frmBadFiles") << MakeWindow([] { return new frmBadFiles; }) << u"lstFileList"_s;
    QTest::newRow("frmPattern") << MakeWindow([] { return new frmPattern; }) << u"lstFiles"_s;
    QTest::newRow("dlgNewBoss") << MakeWindow([] { return new dlgNewBoss; }) << QString();
}

void TestCatalogueForms::closeControl()
{
    QFETCH(MakeWindow, make);
    QFETCH(QString, list);

    ContinueToPatternEditor({ guy });
    std::unique_ptr<QWidget> window(make());
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    QVERIFY(!window->windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QVERIFY(!closedByWindowSystem(window.get()));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    QVERIFY(window->isVisible());
    if (list.isEmpty())
        return;
    for (Qt::Key key : { Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape })
        QTest::keyClick(window->findChild<QWidget *>(list), key);
    QVERIFY(window->isVisible());
    QCOMPARE(m_prompt->transcript(), QStringList());
}

void TestCatalogueForms::namesAndModelsInView_data()
{
    QTest::addColumn<MakeWindow>("make");
    QTest::addColumn<QString>("list");
    const QString path = u"/home/player/.local/share/Steam/steamapps/common/Unreal Tournament "
                         "Game of the Year Edition/System/SkeletalCharsFix313Skins.int"_s;
    QTest::newRow("frmBadFiles") << MakeWindow([path] {
        auto *report = new frmBadFiles;
        report->setFiles({ path });
        return report;
    }) << u"lstFileList"_s;
    QTest::newRow("frmPattern") << MakeWindow([path] {
        ContinueToPatternEditor({ path });
        PatternEditorFiles()[0].modelDescription = u"Female Warrior"_s;
        return new frmPattern;
    }) << u"lstFiles"_s;
}

// At the default size a deep folder gives way, never the file's name, its
// extension or its model; the full path is the row's tooltip.
void TestCatalogueForms::namesAndModelsInView()
{
    QFETCH(MakeWindow, make);
    QFETCH(QString, list);

    std::unique_ptr<QWidget> window(make());
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    const auto *files = window->findChild<QTreeWidget *>(list);
    const QTreeWidgetItem *row = files->topLevelItem(0);
    QCOMPARE(row->text(0), u"SkeletalCharsFix313Skins.int"_s);
    QVERIFY(row->toolTip(0).endsWith(u"Edition/System/SkeletalCharsFix313Skins.int"_s));
    for (int column = 0; column + 1 < files->columnCount(); ++column) {
        const QRect cell = files->visualRect(files->model()->index(0, column));
        QVERIFY(files->viewport()->rect().contains(cell));
        QVERIFY(cell.width() > files->fontMetrics().horizontalAdvance(row->text(column)));
    }
}

void TestCatalogueForms::checkAllToggles_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<int>("checkedByHand"); // with the Space key; -1: none

    QTest::newRow("three files") << QStringList { guy, tin, zed } << -1;
    QTest::newRow("one checked by hand first") << QStringList { guy, tin, zed } << 1;
    QTest::newRow("empty list") << QStringList {} << -1;
}

void TestCatalogueForms::checkAllToggles()
{
    QFETCH(QStringList, paths);
    QFETCH(int, checkedByHand);

    frmBadFiles &report = theForm<frmBadFiles>();
    report.setFiles(paths);
    if (checkedByHand >= 0) {
        report.lstFileList->setCurrentItem(report.lstFileList->topLevelItem(checkedByHand));
        QTest::keyClick(report.lstFileList, Qt::Key_Space);
        QCOMPARE(report.checkedFiles(), QStringList { paths.at(checkedByHand) });
    }
    QCOMPARE(itemTexts(report.lstFileList), paths);

    report.cmdCheckAll->click();
    QCOMPARE(report.cmdCheckAll->text(), u"Uncheck All"_s);
    QCOMPARE(checks(report.lstFileList), QList<bool>(paths.size(), true));
    report.cmdCheckAll->click();
    QCOMPARE(report.cmdCheckAll->text(), u"Check All"_s);
    QCOMPARE(checks(report.lstFileList), QList<bool>(paths.size(), false));

    // A new list starts unchecked, with the caption to match.
    report.cmdCheckAll->click();
    report.setFiles(paths);
    QCOMPARE(report.cmdCheckAll->text(), u"Check All"_s);
    QCOMPARE(report.checkedFiles(), QStringList());
}

void TestCatalogueForms::continueHandsCheckedFilesOver_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QList<int>>("checkedRows");
    QTest::addColumn<QStringList>("handedOver");

    QTest::newRow("some checked") << QStringList { guy, tin, zed } << QList<int> { 0, 2 }
                                  << QStringList { guy, zed };
    QTest::newRow("nothing checked") << QStringList { guy, tin } << QList<int> {} << QStringList {};
    QTest::newRow("empty list") << QStringList {} << QList<int> {} << QStringList {};
}

void TestCatalogueForms::continueHandsCheckedFilesOver()
{
    QFETCH(QStringList, paths);
    QFETCH(QList<int>, checkedRows);
    QFETCH(QStringList, handedOver);

    // What an earlier showing left must not survive.
    Catalogue().PatternsRequested = true;
    PatternEditorFiles() = { { tin, u"Boss"_s } };
    theForm<frmPattern>(); // already loaded, as after an earlier scan
    frmBadFiles &report = theForm<frmBadFiles>();
    bool wasShown = false;
    whenShown([&] {
        wasShown = report.isVisible();
        for (int row : checkedRows)
            report.lstFileList->topLevelItem(row)->setCheckState(0, Qt::Checked);
        report.cmdContinue->click();
    });
    report.ShowReport(paths);

    QVERIFY(wasShown);
    QVERIFY(!report.isVisible());
    QCOMPARE(Catalogue().PatternsRequested, !handedOver.isEmpty());
    QCOMPARE(itemTexts(theForm<frmPattern>().lstFiles), handedOver);
    QCOMPARE(m_prompt->transcript(), QStringList());
}

void TestCatalogueForms::buttonsSayOrOpen_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("message"); // "title|text", %1 the saved list's path
    QTest::addColumn<QString>("opened"); // in the program's directory, %1 the saved list

    QTest::newRow("report help") << u"frmBadFiles"_s << u"cmdHelp"_s << QString()
                                 << u"help/index.html#unmatched-skins"_s;
    QTest::newRow("save list") << u"frmBadFiles"_s << u"cmdSaveToFile"_s
                               << u"File Created|File Created:\r\n%1"_s << QString();
    QTest::newRow("save list and open it")
        << u"frmBadFiles"_s << u"cmdSaveOpen"_s << QString() << u"%1"_s;
    QTest::newRow("set pattern help")
        << u"frmPattern"_s << u"cmdHelpAddPattern"_s
        << u"This is how to set a pattern...|1. Choose one Skin at a time in the list box.\r\n"
           "2. Choose the Model in the combo box.\r\n3. Click the SET PATTERN button.\r\n"
           "4. Repeat and then click FINISHED when done."_s
        << QString();
    QTest::newRow("remove pattern help")
        << u"frmPattern"_s << u"cmdHelpRemovePattern"_s
        << u"This is how to remove a pattern...|1. Choose one Skin at a time in the list box.\r\n"
           "2. Click the REMOVE PATTERN button.\r\n3. Repeat on each pattern you want to remove."_s
        << QString();
}

void TestCatalogueForms::buttonsSayOrOpen()
{
    QFETCH(QString, form);
    QFETCH(QString, button);
    QFETCH(QString, message);
    QFETCH(QString, opened);

    QWidget *window = form == u"frmBadFiles"_s ? static_cast<QWidget *>(&theForm<frmBadFiles>())
                                               : &theForm<frmPattern>();
    UrlRecorder recorder;
    QDesktopServices::setUrlHandler(u"file"_s, &recorder, "open");
    window->findChild<QPushButton *>(button)->click();
    QDesktopServices::unsetUrlHandler(u"file"_s);

    const QStringList saved = QDir(m_dir->path()).entryList({ u"UnMatched_Files_*.txt"_s });
    const QString savedPath = saved.isEmpty() ? QString() : ProgramDir() + saved.constFirst();
    QCOMPARE(m_prompt->transcript(),
        message.isEmpty() ? QStringList() : QStringList { message.arg(savedPath) });
    QStringList urls;
    for (const QUrl &url : std::as_const(recorder.opened))
        urls.append(QDir::cleanPath(url.toLocalFile())
            + (url.hasFragment() ? u'#' + url.fragment() : QString()));
    QCOMPARE(urls,
        opened.isEmpty() ? QStringList()
                         : QStringList { QDir::cleanPath(
                             opened == u"%1"_s ? savedPath : m_dir->filePath(opened)) });
}

void TestCatalogueForms::finishedWritesPatterns_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QByteArray>("after"); // null: the file stays as it was
    QTest::addColumn<QStringList>("reparse");
    QTest::addColumn<int>("questions");

    QTest::newRow("joins the model's pattern")
        << QByteArray("commando,A\r\n") << QStringList { u"set 0 Male Commando"_s }
        << QStringList { guy + u" - Male Commando"_s, tin, zed }
        << QByteArray("commando,A,MyGuy\r\n") << QStringList { guy, {} } << 0;
    QTest::newRow("two new patterns")
        << QByteArray() << QStringList { u"set 0 Boss"_s, u"set 2 Female Warrior"_s }
        << QStringList { guy + u" - Boss"_s, tin, zed + u" - Female Warrior"_s }
        << QByteArray("boss,MyGuy\r\nwarrior,Zed\r\n") << QStringList { guy, {}, zed, {} } << 0;
    QTest::newRow("assigned twice keeps the last")
        << QByteArray() << QStringList { u"set 1 Boss"_s, u"set 1 Female Warrior"_s }
        << QStringList { guy, tin + u" - Female Warrior"_s, zed } << QByteArray("warrior,Tin\r\n")
        << QStringList { {}, tin, {} } << 0;
    QTest::newRow("descriptions alike but for case: the first model")
        << QByteArray() << QStringList { u"set 1 ROBOT"_s }
        << QStringList { guy, tin + u" - ROBOT"_s, zed } << QByteArray("Robot,Tin\r\n")
        << QStringList { {}, tin, {} } << 0;
    QTest::newRow("No keeps the assignment")
        << QByteArray() << QStringList { u"set 0 Boss"_s, u"remove 0 no"_s }
        << QStringList { guy + u" - Boss"_s, tin, zed } << QByteArray("boss,MyGuy\r\n")
        << QStringList { guy, {} } << 1;
    QTest::newRow("Yes undoes it, nothing written")
        << QByteArray("boss,A\r\n") << QStringList { u"set 0 Boss"_s, u"remove 0 yes"_s }
        << QStringList { guy, tin, zed } << QByteArray() << QStringList { {}, {} } << 1;
    QTest::newRow("several files at once")
        << QByteArray() << QStringList { u"setall Female Commando"_s }
        << QStringList { guy + u" - Female Commando"_s, tin + u" - Female Commando"_s,
               zed + u" - Female Commando"_s }
        << QByteArray("fcommando,MyGuy,Tin,Zed\r\n") << QStringList { guy, tin, zed, {} } << 0;
    QTest::newRow("remove asks once for all selected")
        << QByteArray() << QStringList { u"setall Boss"_s, u"set 1 Robot"_s, u"setall Boss"_s }
        << QStringList { guy + u" - Boss"_s, tin + u" - Boss"_s, zed + u" - Boss"_s }
        << QByteArray("boss,MyGuy,Tin,Zed\r\n") << QStringList { guy, tin, zed, {} } << 0;
}

void TestCatalogueForms::finishedWritesPatterns()
{
    QFETCH(QByteArray, before);
    QFETCH(QStringList, steps);
    QFETCH(QStringList, items);
    QFETCH(QByteArray, after);
    QFETCH(QStringList, reparse);
    QFETCH(int, questions);

    QVERIFY(writeTestFile(PatternFilePath(), before));
    LoadPatternList();
    ContinueToPatternEditor({ guy, tin, zed });
    frmPattern &editor = theForm<frmPattern>();
    editor.loadFiles();
    editor.show();
    for (const QString &step : std::as_const(steps))
        editorStep(editor, step);
    QCOMPARE(itemTexts(editor.lstFiles), items);

    editor.cmdFinished->click();
    QVERIFY(!editor.isVisible());
    QCOMPARE(readTestFile(PatternFilePath()), after.isNull() ? before : after);
    QCOMPARE(Catalogue().ReparseFiles, reparse);
    QCOMPARE(Catalogue().ReparseRequested, !after.isNull());
    QCOMPARE(m_prompt->transcript(), QStringList(questions, u"Remove Pattern|Are you sure?"_s));
    QCOMPARE(defaultButtons(*m_prompt), QList<MessageDefault>(questions, MessageDefault::No));
}

void TestCatalogueForms::failedFinishedAsksToTryAgain_data()
{
    QTest::addColumn<bool>("tryAgain");
    QTest::newRow("Yes stays") << true;
    QTest::newRow("No goes on without patterns") << false;
}

void TestCatalogueForms::failedFinishedAsksToTryAgain()
{
    QFETCH(bool, tryAgain);

    ContinueToPatternEditor({ guy });
    frmPattern &editor = theForm<frmPattern>();
    editor.loadFiles();
    editor.show();
    editorStep(editor, u"set 0 Boss"_s);
    setProgramDir(m_dir->filePath(u"gone"_s));
    m_prompt->answerNext(tryAgain ? MessageAnswer::Yes : MessageAnswer::No);
    editor.cmdFinished->click();

    QCOMPARE(editor.isVisible(), tryAgain);
    QVERIFY(!Catalogue().ReparseRequested);
    QCOMPARE(m_prompt->messages().size(), 1);
    const Message asked = m_prompt->messages().constFirst();
    QCOMPARE(asked.title, u"pattern.ini"_s);
    QVERIFY(asked.text.startsWith(u"The skin pattern file could not be written:\r\n"_s));
    QVERIFY(asked.text.endsWith(u"\r\n\r\nTry again? (No goes on with pattern.ini as it was.)"_s));
    QCOMPARE(asked.buttons, MessageButtons::YesNo);
}

void TestCatalogueForms::modelChoicesSkipFreeSlots_data()
{
    QTest::addColumn<int>("models"); // of the sample catalogue; -1: the whole sample
    QTest::addColumn<QStringList>("choices");
    QTest::addColumn<bool>("canSet");

    QTest::newRow("sample") << -1
                            << QStringList { u"Male Commando"_s, u"Female Commando"_s, u"Boss"_s,
                                   u"Robot"_s, u"Female Warrior"_s, u"ROBOT"_s }
                            << true;
    QTest::newRow("only free slots") << 0 << QStringList { u"(NONE)"_s } << false;
}

void TestCatalogueForms::modelChoicesSkipFreeSlots()
{
    QFETCH(int, models);
    QFETCH(QStringList, choices);
    QFETCH(bool, canSet);

    if (models == 0)
        Catalogue().MISCCLASSES = { newClassSlot(), newClassSlot() };
    ContinueToPatternEditor({ guy });
    frmPattern &editor = theForm<frmPattern>();
    editor.loadFiles();
    QStringList shown;
    for (int i = 0; i < editor.cmbModelAssoc->count(); ++i)
        shown.append(editor.cmbModelAssoc->itemText(i));
    QCOMPARE(shown, choices);
    QCOMPARE(editor.cmbModelAssoc->currentIndex(), 0);
    QCOMPARE(editor.lstFiles->currentItem(), editor.lstFiles->topLevelItem(0));
    QCOMPARE(editor.cmdSetPattern->isEnabled(), canSet);
}

void TestCatalogueForms::savedPatternsChange_data()
{
    QTest::addColumn<QString>("selected");
    QTest::addColumn<QString>("action"); // "move <model description>", "delete"
    QTest::addColumn<int>("answer"); // for the question, as MessageAnswer
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QStringList>("messages");

    const QByteArray before("commando,MyGuy,Tin\r\nboss,Zed\r\n");
    const QString deleteTin = u"Delete Pattern|Delete the skin type Tin from pattern.ini?"_s;
    const QString deleteCommando = u"Delete Pattern|Delete the pattern of the model commando "
                                   "with all its skin types from pattern.ini?"_s;
    QTest::newRow("move a skin type")
        << u"Tin"_s << u"move Boss"_s << int(MessageAnswer::Ok)
        << QByteArray("commando,MyGuy\r\nboss,Zed,Tin\r\n") << QStringList {};
    QTest::newRow("move the last one empties the pattern")
        << u"Zed"_s << u"move Male Commando"_s << int(MessageAnswer::Ok)
        << QByteArray("commando,MyGuy,Tin,Zed\r\n") << QStringList {};
    QTest::newRow("delete a skin type")
        << u"Tin"_s << u"delete"_s << int(MessageAnswer::Yes)
        << QByteArray("commando,MyGuy\r\nboss,Zed\r\n") << QStringList { deleteTin };
    QTest::newRow("delete a pattern")
        << u"commando"_s << u"delete"_s << int(MessageAnswer::Yes) << QByteArray("boss,Zed\r\n")
        << QStringList { deleteCommando };
    QTest::newRow("No keeps it") << u"commando"_s << u"delete"_s << int(MessageAnswer::No) << before
                                 << QStringList { deleteCommando };
}

void TestCatalogueForms::savedPatternsChange()
{
    QFETCH(QString, selected);
    QFETCH(QString, action);
    QFETCH(int, answer);
    QFETCH(QByteArray, after);
    QFETCH(QStringList, messages);

    QVERIFY(writeTestFile(PatternFilePath(), "commando,MyGuy,Tin\r\nboss,Zed\r\n"));
    LoadPatternList();
    frmPattern &editor = theForm<frmPattern>();
    editor.loadFiles();
    QCOMPARE(
        treeLines(editor.tvwPatterns), (QStringList { u"commando,MyGuy,Tin"_s, u"boss,Zed"_s }));
    QCOMPARE(editor.tvwPatterns->topLevelItem(0)->text(0), u"commando (Male Commando)"_s);

    editor.tvwPatterns->setCurrentItem(savedItem(editor.tvwPatterns, selected));
    m_prompt->answerNext(MessageAnswer(answer));
    if (action.startsWith(u"move"_s)) {
        editor.cmbModelAssoc->setCurrentText(action.section(u' ', 1));
        QVERIFY(editor.cmdMoveSkinType->isEnabled());
        editor.cmdMoveSkinType->click();
    } else {
        editor.cmdDeletePattern->click();
    }

    QCOMPARE(treeLines(editor.tvwPatterns),
        QString::fromLatin1(after).split(u"\r\n"_s, Qt::SkipEmptyParts));
    QCOMPARE(m_prompt->transcript(), messages);
    QCOMPARE(defaultButtons(*m_prompt), QList<MessageDefault>(messages.size(), MessageDefault::No));
    // Saved, like the new patterns, by Finished.
    QCOMPARE(readTestFile(PatternFilePath()), QByteArray("commando,MyGuy,Tin\r\nboss,Zed\r\n"));
    editor.cmdFinished->click();
    QCOMPARE(readTestFile(PatternFilePath()), after);
    QVERIFY(!Catalogue().ReparseRequested);
}

// The scan calls the two hooks one after the other.
void TestCatalogueForms::scanFormsRunReportThenEditor()
{
    const ScanForms forms = CatalogueScanForms();
    whenShown([] {
        frmBadFiles &report = theForm<frmBadFiles>();
        report.cmdCheckAll->click();
        report.lstFileList->topLevelItem(1)->setCheckState(0, Qt::Unchecked);
        report.cmdContinue->click();
    });
    forms.showUnmatchedReport({ guy, tin, zed });
    QVERIFY(Catalogue().PatternsRequested);

    whenShown([] {
        frmPattern &editor = theForm<frmPattern>();
        editorStep(editor, u"set 1 Robot"_s);
        editor.cmdFinished->click();
    });
    forms.showPatternEditor();
    QCOMPARE(readTestFile(PatternFilePath()), QByteArray("Robot,Zed\r\n"));
    QCOMPARE(Catalogue().ReparseFiles, (QStringList { {}, zed, {} }));
    QVERIFY(Catalogue().ReparseRequested);
}

void TestCatalogueForms::bossDialogShowsAndWritesTheMode_data()
{
    QTest::addColumn<bool>("plainOn");
    QTest::addColumn<bool>("maleOn");
    QTest::addColumn<int>("shownOption");
    QTest::addColumn<QString>("shownText");
    QTest::addColumn<int>("chosenOption");
    QTest::addColumn<int>("writtenMode");

    const QString both = u"Currently both boss models are turned on.  You only need one turned "
                         "on.  I recommend the first choice below."_s;
    const QString marked = u"Your current choice is marked below."_s;
    QTest::newRow("both on, keep") << true << true << 2 << both << 2 << 0;
    QTest::newRow("both on, choose plain") << true << true << 2 << both << 0 << 1;
    QTest::newRow("plain on, choose male") << true << false << 0 << marked << 1 << 2;
    QTest::newRow("male on, choose both") << false << true << 1 << marked << 2 << 0;
    QTest::newRow("neither on reads as male") << false << false << 1 << marked << 1 << 2;
}

void TestCatalogueForms::bossDialogShowsAndWritesTheMode()
{
    QFETCH(bool, plainOn);
    QFETCH(bool, maleOn);
    QFETCH(int, shownOption);
    QFETCH(QString, shownText);
    QFETCH(int, chosenOption);
    QFETCH(int, writtenMode);

    AppOptions().UTPath = m_dir->path() + u"/"_s;
    QVERIFY(writeTestFile(
        m_dir->filePath(u"System/SkeletalCharsFix313.int"_s), crlf(bossFile(plainOn, maleOn))));
    dlgNewBoss &dialog = theForm<dlgNewBoss>();
    dialog.show();
    QCOMPARE(dialog.lblBossChoice->text(), shownText);
    QCOMPARE(dialog.findChildren<QRadioButton *>(u"optChoice"_s), dialog.optChoice);
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

void TestCatalogueForms::bossDialogFailedWrite_data()
{
    QTest::addColumn<bool>("tryAgain");
    QTest::newRow("Yes stays") << true;
    QTest::newRow("No closes") << false;
}

void TestCatalogueForms::bossDialogFailedWrite()
{
    QFETCH(bool, tryAgain);

    AppOptions().UTPath = m_dir->path() + u"/"_s; // no boss package there
    dlgNewBoss &dialog = theForm<dlgNewBoss>();
    dialog.show();
    dialog.optChoice.at(0)->click();
    m_prompt->answerNext(tryAgain ? MessageAnswer::Yes : MessageAnswer::No);
    dialog.OKButton->click();

    QCOMPARE(dialog.isVisible(), tryAgain);
    QCOMPARE(dialog.BossMode, short(2));
    QVERIFY(!QFile::exists(BossPackagePath(AppOptions().UTPath)));
    QCOMPARE(m_prompt->messages().size(), 1);
    const Message asked = m_prompt->messages().constFirst();
    QCOMPARE(asked.title, u"Which WarBoss and Xan II models to use?"_s);
    QVERIFY(asked.text.startsWith(u"skeletalcharsfix313.int could not be changed:\r\n"_s));
    QVERIFY(asked.text.endsWith(u"\r\n\r\nTry again? (No leaves the file as it is.)"_s));
}

QTEST_MAIN(TestCatalogueForms)
#include "test_catalogueforms.moc"
