#include "catalogue/modelcatalogue.h"
#include "configfiles/configfile.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/runerror.h"
#include "roster/forms/openatstart.h"
#include "startup/programdirectory.h"
#include "startup/recentfiles.h"

#include "editorfixture.h"
#include "samplecatalogue.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

namespace {

MessageAnswer answerNamed(const QString &name)
{
    return name == "Yes" ? MessageAnswer::Yes
        : name == "No"   ? MessageAnswer::No
                         : MessageAnswer::Cancel;
}

} // namespace

// A bot list handed over from outside the program (a double-click in a file
// manager, a drop on the window, File's recent list) opens in the main
// window as File, Open would, by way of the configuration folder.
class TestOpenAtStart : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void opens_data();
    void opens();
    void drops_data();
    void drops();
    void recentFiles();

private:
    // Saves a list whose first bot is `name` as `file` (relative to the
    // test's folder).
    void save(const QString &file, const QString &name);
    QString path(const QString &file) const
    {
        return QDir::toNativeSeparators(m_dir->filePath(file));
    }

    std::unique_ptr<QTemporaryDir> m_dir;
    ScriptedPrompt *m_prompt = nullptr;
};

void TestOpenAtStart::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    setProgramDir(m_dir->path() + "/");
    AppOptions().ConfigPath = path("configs") + QDir::separator();
    QVERIFY(QDir().mkpath(AppOptions().ConfigPath));
    Catalogue() = SampleCatalogue();
    m_prompt = new ScriptedPrompt;
    Roster() = BotRoster();
    frmBots &form = theForm<frmBots>();
    prepareLikeStartup(form);
    form.show();
}

void TestOpenAtStart::cleanup()
{
    unloadForm<frmBots>();
    delete m_prompt;
    m_dir.reset();
}

void TestOpenAtStart::save(const QString &file, const QString &name)
{
    BotRoster saved;
    SetDefaults(saved);
    saved.BotNames[0] = name;
    const QFileInfo info(m_dir->filePath(file));
    QVERIFY(QDir().mkpath(info.absolutePath()));
    QVERIFY(SaveConfigAs(info.absolutePath() + "/", info.fileName(), true, saved));
}

void TestOpenAtStart::opens_data()
{
    QTest::addColumn<QString>("files"); // saved first, "file=first bot" each
    QTest::addColumn<QString>("given"); // the path handed over
    QTest::addColumn<bool>("unsaved"); // the window holds an edited list
    QTest::addColumn<QString>("answers");
    QTest::addColumn<QString>("messages"); // titles; @copy, @taken and @read stand for texts
    QTest::addColumn<QString>("opened"); // first bot shown; "" nothing opened
    QTest::addColumn<QString>("inFolder"); // first bot of configs/Team.qvn after; "" none

    const QString outside = "Downloads/Team.qvn=Fetched";
    // clang-format off
    QTest::newRow("in the configuration folder") << "configs/Team.qvn=Ours" << "configs/Team.qvn" << false << "" << "" << "Ours" << "Ours";
    QTest::newRow("by another path") << "configs/Team.qvn=Ours" << "configs/../configs/./Team.qvn" << false << "" << "" << "Ours" << "Ours";
    QTest::newRow("outside, copied") << outside << "Downloads/Team.qvn" << false << "Yes" << "@copy" << "Fetched" << "Fetched";
    QTest::newRow("outside, declined") << outside << "Downloads/Team.qvn" << false << "No" << "@copy" << "" << "";
    QTest::newRow("name taken, replaced") << outside + ",configs/Team.qvn=Ours" << "Downloads/Team.qvn" << false << "Yes,Yes" << "@copy,@taken" << "Fetched" << "Fetched";
    QTest::newRow("name taken, kept") << outside + ",configs/Team.qvn=Ours" << "Downloads/Team.qvn" << false << "Yes,No" << "@copy,@taken" << "" << "Ours";
    QTest::newRow("same file there already") << outside + ",configs/Team.qvn=Fetched" << "Downloads/Team.qvn" << false << "Yes" << "@copy" << "Fetched" << "Fetched";
    QTest::newRow("unsaved list dropped") << outside << "Downloads/Team.qvn" << true << "No,Yes" << "@save,@copy" << "Fetched" << "Fetched";
    QTest::newRow("a missing file") << "" << "Downloads/Team.qvn" << false << "" << "@read" << "" << "";
    // clang-format on
}

void TestOpenAtStart::opens()
{
    QFETCH(QString, files);
    QFETCH(QString, given);
    QFETCH(bool, unsaved);
    QFETCH(QString, answers);
    QFETCH(QString, messages);
    QFETCH(QString, opened);
    QFETCH(QString, inFolder);

    for (const QString &file : files.split(',', Qt::SkipEmptyParts))
        save(file.section('=', 0, 0), file.section('=', 1));
    frmBots &form = theForm<frmBots>();
    if (unsaved) {
        form.mnuFileNew->trigger();
        form.txtName->setText("Edited");
    }
    for (const QString &answer : answers.split(',', Qt::SkipEmptyParts))
        m_prompt->answerNext(answerNamed(answer));
    const QString source = path("Downloads/Team.qvn");
    const QString folder = AppOptions().ConfigPath;
    QString readError;
    try {
        BotRoster scratch;
        OpenConfiguration(path("Downloads") + QDir::separator(), "Team.qvn", scratch);
    } catch (const RunError &error) {
        readError = error.message();
    }
    const QHash<QString, QString> texts {
        { "@copy",
            "Copy Configuration|" + source + " is not in the configuration folder " + folder
                + ".\r\n\r\nCopy it there and open the copy?" },
        { "@taken",
            "File Already Exists|The configuration folder already holds a file named "
            "Team.qvn.\r\n\r\nReplace it with "
                + source + "?" },
        { "@save",
            "Save Current Configuration?|Your current config is not saved.\r\n\r\n   Yes = "
            "Save current configuration and then open a different configuration.\r\n\r\n"
            "    No = Loose current configuration and then open a different "
            "configuration.\r\n\r\nCancel = Cancel this operation." },
        { "@read",
            "Configuration Not Opened|The configuration Team.qvn could not be opened; "
            "nothing was changed.\r\n"
                + readError },
    };
    const int before = int(m_prompt->messages().size());

    QCOMPARE(OpenConfigurationFile(m_dir->filePath(given)), !opened.isEmpty());

    QStringList expected;
    for (const QString &message : messages.split(',', Qt::SkipEmptyParts))
        expected << texts.value(message, message);
    QCOMPARE(m_prompt->transcript().mid(before), expected);
    const QString configuration = folder + "Team.qvn";
    if (inFolder.isEmpty()) {
        QVERIFY(!QFile::exists(configuration));
    } else {
        BotRoster there;
        OpenConfiguration(folder, "Team.qvn", there);
        QCOMPARE(there.BotNames[0], inFolder);
    }
    if (opened.isEmpty()) {
        QCOMPARE(form.lblCurrentFile->text(), unsaved ? "(Un-Named)" : "");
        QCOMPARE(form.txtName->text(), unsaved ? "Edited" : "Archon");
        return;
    }
    QCOMPARE(form.txtName->text(), opened);
    QCOMPARE(Roster().BotNames[0], opened);
    QCOMPARE(form.lblCurrentFile->text(), "Team.qvn");
    QCOMPARE(form.lblSaved->text(), "Loaded");
    QCOMPARE(form.History->count(), 0);
    // What was opened is the file in the configuration folder.
    QCOMPARE(ReadRecentFiles(), QStringList { QFileInfo(configuration).absoluteFilePath() });
}

void TestOpenAtStart::drops_data()
{
    QTest::addColumn<QStringList>("dragged"); // files of the test's folder
    QTest::addColumn<bool>("accepted");

    QTest::newRow("a configuration") << QStringList { "Downloads/Team.qvn" } << true;
    QTest::newRow("another file") << QStringList { "Downloads/User.ini" } << false;
    QTest::newRow("two files") << QStringList { "Downloads/Team.qvn", "Downloads/Team.qvn" }
                               << false;
}

// A configuration dropped on the window opens as one from a file manager,
// once the drop is over.
void TestOpenAtStart::drops()
{
    QFETCH(QStringList, dragged);
    QFETCH(bool, accepted);

    QList<QUrl> urls;
    for (const QString &item : dragged)
        urls << QUrl::fromLocalFile(m_dir->filePath(item));

    save("Downloads/Team.qvn", "Fetched");
    frmBots &form = theForm<frmBots>();
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&form, &enter);
    QCOMPARE(enter.isAccepted(), accepted);
    m_prompt->answerNext(MessageAnswer::Yes);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&form, &drop);
    QCOMPARE(m_prompt->messages().size(), 0);

    QCoreApplication::processEvents();
    QCOMPARE(m_prompt->messages().size(), accepted ? 1 : 0);
    QCOMPARE(form.txtName->text(), accepted ? "Fetched" : "Archon");
}

// File lists the configurations opened and saved last, newest first; one
// that is gone is reported and leaves the list.
void TestOpenAtStart::recentFiles()
{
    save("configs/Alpha.qvn", "Alphonse");
    save("configs/Team.qvn", "Teamster");
    save("configs/Gone.qvn", "Ghost");
    frmBots &form = theForm<frmBots>();
    // Each open after the first asks whether to save the list it replaces.
    const auto open = [&form, this](const QString &name) {
        if (!form.IsSaved())
            m_prompt->answerNext(MessageAnswer::No);
        return OpenConfigurationFile(AppOptions().ConfigPath + name);
    };
    for (const char *name : { "Gone.qvn", "Team.qvn", "Alpha.qvn" })
        QVERIFY(open(name));
    QVERIFY(QFile::remove(AppOptions().ConfigPath + "Gone.qvn"));
    const auto entries = [&form] {
        QStringList texts;
        for (const QAction *entry : std::as_const(form.mnuFileRecent))
            texts << entry->text();
        return texts.join(',');
    };
    QCOMPARE(entries(), "&1 Alpha.qvn,&2 Team.qvn,&3 Gone.qvn");
    QCOMPARE(form.mnuFileRecent.at(1)->toolTip(), AppOptions().ConfigPath + "Team.qvn");

    m_prompt->answerNext(MessageAnswer::No);
    form.mnuFileRecent.at(1)->trigger();
    QCOMPARE(form.txtName->text(), "Teamster");
    QCOMPARE(entries(), "&1 Team.qvn,&2 Alpha.qvn,&3 Gone.qvn");

    const qsizetype asked = m_prompt->messages().size();
    form.mnuFileRecent.at(2)->trigger();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_prompt->messages().size(), asked + 1);
    QCOMPARE(m_prompt->messages().constLast().title, "Configuration Not Opened");
    QCOMPARE(entries(), "&1 Team.qvn,&2 Alpha.qvn");
    QCOMPARE(form.txtName->text(), "Teamster");

    // Kept between runs: a new window lists them too.
    unloadForm<frmBots>();
    QCOMPARE(theForm<frmBots>().mnuFileRecent.size(), 2);
}

QTEST_MAIN(TestOpenAtStart)
#include "test_openatstart.moc"
