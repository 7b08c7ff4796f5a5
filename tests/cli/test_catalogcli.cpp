#include "clirun.h"
#include "testfiles.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

class TestCatalogCli : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(writeTestFile(
            programDir() + "int.ini", readTestFile(QUORVANE_SOURCE_DIR "/src/data/int.ini")));
        QVERIFY(writeTestFile(programDir() + "pattern.ini", {}));
        // One add-on model, a skin package for it whose name does not say
        // so, and the boss package with both variants on.
        const QString game = testDataDir() + "cli/catalog-game/System/";
        for (const QString &name : QDir(game).entryList(QDir::Files))
            QVERIFY(writeTestFile(systemFile(name), readTestFile(game + name)));
    }

    // The commands one after another on the same folders, with what each
    // printed and left in pattern.ini: refusals change nothing, a taught
    // pattern matches the skin file, forgetting it leaves the file unmatched.
    void commandsInTurn()
    {
        const QString none = m_dir->filePath("none");
        QString transcript;
        for (const QStringList &arguments :
            QList<QStringList> { { "scan" }, { "boss" }, { "boss", "--set", "3" },
                { "boss", "--set", "2" }, { "boss" }, { "--game-dir", none, "boss", "--set", "1" },
                { "teach", "Robots.int", "Tin Man" }, { "teach", "Tin.int", "Warlord" },
                { "forget", "Tin" }, { "teach", "tin.INT", "tin man" }, { "patterns", "--json" },
                { "scan" }, { "forget", "Tin" }, { "scan" } }) {
            const CliRun run = cli(QStringList { "--game-dir", gameDir() } + arguments);
            transcript += QString("$ %1\n%2%3exit %4, pattern.ini [%5]\n")
                              .arg(arguments.join(' '), QString::fromUtf8(run.out), run.err)
                              .arg(run.exitCode)
                              .arg(QString::fromUtf8(readTestFile(programDir() + "pattern.ini"))
                                       .replace("\r\n", "\\r\\n"));
        }
        QCOMPARE(transcript.replace(QDir::toNativeSeparators(m_dir->path()), "@")
                     .split('\n', Qt::SkipEmptyParts),
            testDataLines("cli/catalog-commands.txt"));
    }

    // A taught skin file's skins and faces, and the voices, in the scan's
    // JSON, indented, with "@/" for the game folder.
    void taughtScan()
    {
        QVERIFY(writeTestFile(programDir() + "pattern.ini", "TinMan,Tin\r\n"));
        const QByteArray game = QJsonDocument(QJsonArray { QDir::toNativeSeparators(gameDir()) })
                                    .toJson(QJsonDocument::Compact);
        QCOMPARE(QJsonDocument(cli({ "--game-dir", gameDir(), "scan", "--json" }).json().toObject())
                     .toJson()
                     .replace(game.mid(2).chopped(2), "@/"),
            readTestFile(testDataDir() + "cli/taught-scan.json"));
    }

    void savesTheUnmatchedListAndHelps()
    {
        const CliRun save = cli({ "--game-dir", gameDir(), "unmatched", "--save" });
        QCOMPARE(save.exitCode, 0);
        const QString path = QString::fromUtf8(save.out).trimmed();
        QVERIFY2(path.startsWith(programDir() + "UnMatched_Files_"), qPrintable(path));
        QVERIFY(readTestFile(path).contains("\r\n" + systemFile("Tin.int").toUtf8() + "\r\n"));

        for (const QString command :
            { "scan", "boss", "patterns", "teach", "forget", "unmatched" }) {
            const CliRun help = cli({ command, "--help" });
            QCOMPARE(help.exitCode, 0);
            QVERIFY(help.out.startsWith("Usage: quorvane-cli " + command.toUtf8()));
        }
    }

private:
    CliRun cli(const QStringList &arguments)
    {
        return runCli(QStringList { "--program-dir", programDir() } + arguments);
    }
    QString programDir() const { return m_dir->filePath("program") + QDir::separator(); }
    QString gameDir() const { return m_dir->filePath("game") + QDir::separator(); }
    QString systemFile(const QString &name) const
    {
        return QDir::toNativeSeparators(gameDir() + "System/" + name);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

QTEST_GUILESS_MAIN(TestCatalogCli)
#include "test_catalogcli.moc"
