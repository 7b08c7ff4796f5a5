#include "catalogue/bossmode.h"

#include "childprocess.h"
#include "testfiles.h"

#include "configfiles/runerror.h"

#include <QDir>
#include <QLockFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString declaration(const QString &name, const QString &description)
{
    return QString("Object=(Name=SkeletalCharsFix313.%1,Class=Class,MetaClass=Botpack.Bot,"
                   "Description=\"%2\")")
        .arg(name, description);
}

const QString war = declaration("WarBossFixed", "WarBoss [Fixed]");
const QString xan = declaration("XanFixed", "Xan II [Fixed]");
const QString maleWar = declaration("WarBossFixedMale", "WarBoss [Fixed/Male Voices]");
const QString maleXan = declaration("XanFixedMale", "Xan II [Fixed/Male Voices]");
const QString maleMk2 = declaration("XanMk2Male", "Xan Mark II [Fixed/Male Voices]");
const QString other = declaration("Helper", "Helper");

QString off(const QString &line)
{
    return ';' + line;
}

} // namespace

class TestBossMode : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;

    QString gameDir() const { return m_dir->path() + QDir::separator(); }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_file = m_dir->filePath("System/skeletalcharsfix313.int");
    }

    void readsTheActiveDeclarations_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("mode");
        // The other modes are read back after each rewrite below.
        QTest::newRow("Xan Mark II") << QStringList { xan, maleMk2 } << 0;
        QTest::newRow("neither") << QStringList { off(war), off(maleWar), other } << 2;
        QTest::newRow("lower case") << QStringList { war.toLower(), maleXan.toLower() } << 0;
        QTest::newRow("'; Object' is a comment") << QStringList { war, "; " + maleWar } << 1;
        QTest::newRow("indented is not active") << QStringList { ' ' + war, maleWar } << 2;
        QTest::newRow("trailing spaces") << QStringList { war + "  ", maleWar + " " } << 0;
        QTest::newRow("empty file") << QStringList {} << 2;
    }

    void readsTheActiveDeclarations()
    {
        QFETCH(QStringList, lines);
        QFETCH(int, mode);
        QVERIFY(writeTestFile(m_file, crlf(lines)));
        QCOMPARE(ReadBossMode(gameDir()), short(mode));
    }

    void findsTheFileWithoutRegardToCaseAndNeverCreatesIt()
    {
        QCOMPARE(ReadBossMode(gameDir()), short(2));
        QVERIFY(!BossPackageExists(gameDir()));
        QVERIFY_THROWS_EXCEPTION(RunError, SetBossMode(1, gameDir()));
        QVERIFY(!QFile::exists(m_file));

        m_file = m_dir->filePath("SYSTEM/SkeletalCharsFix313.INT");
        QVERIFY(writeTestFile(m_file, crlf({ war, off(maleWar) })));
        QCOMPARE(QDir::fromNativeSeparators(BossPackagePath(gameDir())), m_file);
        QVERIFY(BossPackageExists(gameDir()));
        QCOMPARE(ReadBossMode(gameDir()), short(1));
    }

    // Declarations start the wrong way round, the unrelated one included.
    void rewritesTheDeclarationsForTheMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("plainOn");
        QTest::addColumn<bool>("maleOn");
        QTest::newRow("both") << 0 << true << true;
        QTest::newRow("plain") << 1 << true << false;
        QTest::newRow("male") << 2 << false << true;
        QTest::newRow("out of range") << 7 << false << true;
        QTest::newRow("negative") << -1 << false << true;
    }

    void rewritesTheDeclarationsForTheMode()
    {
        QFETCH(int, mode);
        QFETCH(bool, plainOn);
        QFETCH(bool, maleOn);
        const QString aside = "; Object=(Name=Kept.Aside)";
        QVERIFY(writeTestFile(m_file,
            crlf({ "[Public]  ", "", off(other), off(war), xan + "  ", maleWar, off(maleXan),
                aside })));
        SetBossMode(short(mode), gameDir());
        const auto on = [](bool isOn, const QString &line) { return isOn ? line : off(line); };
        QCOMPARE(readTestFile(m_file),
            crlf({ "[Public]", "", other, on(plainOn, war), on(plainOn, xan), on(maleOn, maleWar),
                on(maleOn, maleXan), aside }));
        QCOMPARE(ReadBossMode(gameDir()), short(mode == 0 || mode == 1 ? mode : 2));
    }

    void keepsEncodingAndLineEnds_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const QString before = "; Caf\u00e9\r\n" + war + "\r\n" + maleWar + "\r\n";
        const QString after = "; Caf\u00e9\r\n" + war + "\r\n;" + maleWar + "\r\n";
        QStringEncoder utf16(QStringConverter::Utf16LE);
        QTest::newRow("UTF-16LE") << "\xFF\xFE" + QByteArray(utf16(before))
                                  << "\xFF\xFE" + QByteArray(utf16(after));
        QTest::newRow("ANSI, LF, last line unended")
            << before.toLatin1().replace("\r\n", "\n").chopped(1)
            << after.toLatin1().replace("\r\n", "\n").chopped(1);
    }

    void keepsEncodingAndLineEnds()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QVERIFY(writeTestFile(m_file, before));
        SetBossMode(1, gameDir());
        QCOMPARE(readTestFile(m_file), after);
    }

    void aFailedRewriteLeavesTheFileWhole_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("error");
        QTest::newRow("disk full") << "disk full" << int(ErrNum::DiskFull);
        QTest::newRow("read-only") << "read-only" << int(ErrNum::PermissionDenied);
        QTest::newRow("being changed") << "locked" << int(ErrNum::FileAlreadyOpen);
    }

    void aFailedRewriteLeavesTheFileWhole()
    {
        QFETCH(QString, fault);
        QFETCH(int, error);
        const QByteArray original = crlf({ off(war), maleWar }).repeated(200);
        QVERIFY(writeTestFile(m_file, original));
        if (fault == "read-only")
            QVERIFY(QFile::setPermissions(m_file, QFile::ReadOwner));
        QLockFile lock(m_file + ".lock");
        QVERIFY(fault != "locked" || lock.lock());
        const QString dir = gameDir();
        const int status = runWithFileSizeLimit(
            fault == "disk full" ? original.size() / 2 : qint64(1) << 40, [&] {
                try {
                    SetBossMode(0, dir);
                } catch (const RunError &failure) {
                    return failure.number();
                }
                return 0;
            });
        lock.unlock();
        if (status == -1)
            QSKIP("no file size limits here");
        QCOMPARE(status, error);
        QCOMPARE(readTestFile(m_file), original);
        QCOMPARE(QDir(m_dir->filePath("System")).entryList(QDir::Files),
            QStringList { "skeletalcharsfix313.int" });
    }
};

QTEST_GUILESS_MAIN(TestBossMode)
#include "test_bossmode.moc"
