#include "catalogue/bossmode.h"

#include "childprocess.h"
#include "testfiles.h"

#include "configfiles/runerror.h"

#include <QDir>
#include <QLockFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString declaration(const QString &name, const QString &description)
{
    return u"Object=(Name=SkeletalCharsFix313.%1,Class=Class,MetaClass=Botpack.Bot,"
           "Description=\"%2\")"_s.arg(name, description);
}

const QString war = declaration(u"WarBossFixed"_s, u"WarBoss [Fixed]"_s);
const QString xan = declaration(u"XanFixed"_s, u"Xan II [Fixed]"_s);
const QString maleWar = declaration(u"WarBossFixedMale"_s, u"WarBoss [Fixed/Male Voices]"_s);
const QString maleXan = declaration(u"XanFixedMale"_s, u"Xan II [Fixed/Male Voices]"_s);
const QString maleMk2 = declaration(u"XanMk2Male"_s, u"Xan Mark II [Fixed/Male Voices]"_s);
const QString other = declaration(u"Helper"_s, u"Helper"_s);

QString off(const QString &line)
{
    return u';' + line;
}

} // namespace

class TestBossMode : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_file = m_dir->filePath(u"System/skeletalcharsfix313.int"_s);
    }

    void readsTheActiveDeclarations_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("mode");
        QTest::newRow("both") << QStringList { war, xan, maleWar, maleXan, maleMk2 } << 0;
        QTest::newRow("plain") << QStringList { off(war), xan, off(maleWar), off(maleMk2) } << 1;
        QTest::newRow("male") << QStringList { off(war), off(xan), maleMk2 } << 2;
        QTest::newRow("neither") << QStringList { off(war), off(maleWar), other } << 2;
        QTest::newRow("lower case") << QStringList { war.toLower(), maleXan.toLower() } << 0;
        QTest::newRow("'; Object' is a comment") << QStringList { war, u"; "_s + maleWar } << 1;
        QTest::newRow("indented is not active") << QStringList { u" "_s + war, maleWar } << 2;
        QTest::newRow("trailing spaces") << QStringList { war + u"  "_s, maleWar + u" "_s } << 0;
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
        QVERIFY_THROWS_EXCEPTION(RunError, SetBossMode(1, gameDir()));
        QVERIFY(!QFile::exists(m_file));

        m_file = m_dir->filePath(u"SYSTEM/SkeletalCharsFix313.INT"_s);
        QVERIFY(writeTestFile(m_file, crlf({ war, off(maleWar) })));
        QCOMPARE(QDir::fromNativeSeparators(BossPackagePath(gameDir())), m_file);
        QCOMPARE(ReadBossMode(gameDir()), short(1));
    }

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
        // Declarations start the wrong way round, the unrelated one included.
        QVERIFY(writeTestFile(m_file,
            crlf({ u"[Public]  "_s, u""_s, off(other), off(war), xan + u"  "_s, maleWar,
                off(maleXan), u"; Object=(Name=Kept.Aside)"_s })));

        SetBossMode(short(mode), gameDir());

        const auto on = [](bool isOn, const QString &line) { return isOn ? line : off(line); };
        QCOMPARE(QString::fromLatin1(readTestFile(m_file)).split(u"\r\n"_s),
            QString::fromLatin1(
                crlf({ u"[Public]"_s, u""_s, other, on(plainOn, war), on(plainOn, xan),
                    on(maleOn, maleWar), on(maleOn, maleXan), u"; Object=(Name=Kept.Aside)"_s }))
                .split(u"\r\n"_s));
        QCOMPARE(ReadBossMode(gameDir()), short(mode == 0 || mode == 1 ? mode : 2));
    }

    void keepsEncodingAndLineEnds_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const QString before = u"; Caf\u00e9\r\n"_s + war + u"\r\n"_s + maleWar + u"\r\n"_s;
        const QString after = u"; Caf\u00e9\r\n"_s + war + u"\r\n;"_s + maleWar + u"\r\n"_s;
        QStringEncoder utf16(QStringConverter::Utf16LE);
        QStringEncoder utf8(QStringConverter::Utf8);
        QTest::newRow("UTF-16LE") << "\xFF\xFE" + QByteArray(utf16(before))
                                  << "\xFF\xFE" + QByteArray(utf16(after));
        QTest::newRow("UTF-8 BOM") << "\xEF\xBB\xBF" + QByteArray(utf8(before))
                                   << "\xEF\xBB\xBF" + QByteArray(utf8(after));
        QTest::newRow("ANSI, LF") << before.toLatin1().replace("\r\n", "\n")
                                  << after.toLatin1().replace("\r\n", "\n");
        QTest::newRow("no last line end")
            << before.toLatin1().chopped(2) << after.toLatin1().chopped(2);
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
        QTest::newRow("disk full") << u"disk full"_s << int(ErrNum::DiskFull);
        QTest::newRow("read-only") << u"read-only"_s << int(ErrNum::PermissionDenied);
        QTest::newRow("being changed") << u"locked"_s << int(ErrNum::FileAlreadyOpen);
    }

    void aFailedRewriteLeavesTheFileWhole()
    {
        QFETCH(QString, fault);
        QFETCH(int, error);
        QStringList lines;
        for (int i = 0; i < 200; ++i)
            lines << off(war) << maleWar;
        const QByteArray original = crlf(lines);
        QVERIFY(writeTestFile(m_file, original));
        if (fault == u"read-only")
            QVERIFY(QFile::setPermissions(m_file, QFile::ReadOwner));
        QLockFile lock(m_file + u".lock"_s);
        QVERIFY(fault != u"locked" || lock.lock());
        const QString dir = gameDir();
        const qint64 limit = fault == u"disk full" ? original.size() / 2 : qint64(1) << 40;
        const int status = runWithFileSizeLimit(limit, [&] {
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
        QCOMPARE(QDir(m_dir->filePath(u"System"_s)).entryList(QDir::Files),
            QStringList { u"skeletalcharsfix313.int"_s });
    }

    void dialogChoicesMapToModes()
    {
        QCOMPARE((QList<short> { BossModeOfChoice(0), BossModeOfChoice(1), BossModeOfChoice(2) }),
            (QList<short> { 1, 2, 0 }));
        QCOMPARE((QList<int> { BossChoiceOfMode(0), BossChoiceOfMode(1), BossChoiceOfMode(2) }),
            (QList<int> { 2, 0, 1 }));
        QCOMPARE(BossChoiceText(0),
            u"Currently both boss models are turned on.  You only need "
            "one turned on.  I recommend the first choice below."_s);
        QCOMPARE(BossChoiceText(2), u"Your current choice is marked below."_s);
    }

private:
    QString gameDir() const { return m_dir->path() + QDir::separator(); }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
};

QTEST_GUILESS_MAIN(TestBossMode)
#include "test_bossmode.moc"
