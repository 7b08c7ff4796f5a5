#include "catalogue/intfile.h"
#include "childprocess.h"
#include "configfiles/runerror.h"
#include "configfiles/textdocument.h"
#include "configfiles/textfile.h"
#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef __GLIBC__
#include <dlfcn.h>
#include <malloc.h>
#endif

using namespace Qt::StringLiterals;

namespace {

// "number|message" of the RunError `read` throws, or "read" when it reads.
QString outcome(const std::function<void()> &read)
{
    try {
        read();
        return u"read"_s;
    } catch (const RunError &error) {
        return QString::number(error.number()) + u'|' + error.message();
    }
}

#ifdef __GLIBC__
// How many of the next renames fail as they do on Windows while another
// program holds the target open.
int blockedRenames = 0;
#endif

} // namespace

#ifdef __GLIBC__
// Takes the place of the C library's rename for Qt's calls.
extern "C" int rename(const char *from, const char *to)
{
    if (blockedRenames > 0) {
        --blockedRenames;
        errno = EACCES;
        return -1;
    }
    using Rename = int (*)(const char *, const char *);
    static const auto real = reinterpret_cast<Rename>(dlsym(RTLD_NEXT, "rename"));
    return real(from, to);
}
#endif

namespace {

#ifdef __GLIBC__
size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}
#endif

} // namespace

class TestTextFiles : public QObject
{
    Q_OBJECT

private slots:
    // The game ends a line at CR LF, at LF or at a CR alone; every reader does.
    void readersSplitLinesAtCrOrLf_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QByteArray>("newline"); // a document's own, for lines it adds

        QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << QStringList { "a", "b" }
                               << QByteArray("\r\n");
        QTest::newRow("LF, last line unended")
            << QByteArray("a\n\nb") << QStringList { "a", "", "b" } << QByteArray("\n");
        QTest::newRow("CR only") << QByteArray("[A]\rb=1\r") << QStringList { "[A]", "b=1" }
                                 << QByteArray("\r");
        QTest::newRow("mixed") << QByteArray("a\r\r\nb\n\rc")
                               << QStringList { "a", "", "b", "", "c" } << QByteArray("\r");
        QTest::newRow("windows-1252") << QByteArray("Zo\xEB \x80\r\n")
                                      << QStringList { u"Zo\u00eb \u20ac"_s } << QByteArray("\r\n");
        QTest::newRow("empty") << QByteArray() << QStringList() << QByteArray("\r\n");
    }

    void readersSplitLinesAtCrOrLf()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QFETCH(QByteArray, newline);
        QTemporaryDir dir;
        const QString path = dir.filePath(u"lines.ini"_s);
        QVERIFY(writeTestFile(path, bytes));

        QStringList split;
        for (const QByteArray &line : splitLines(bytes))
            split.append(decodeAnsi(line));
        QCOMPARE(split, lines);
        QCOMPARE(readAnsiLines(path), lines);
        QCOMPARE(decodeIntLines(bytes), lines);

        const TextDocument document = TextDocument::load(path);
        QStringList texts;
        for (qsizetype i = 0; i < document.lineCount(); ++i)
            texts.append(document.text(i));
        QCOMPARE(texts, lines);
        QCOMPARE(document.newline(), newline);
        QCOMPARE(document.toBytes(), bytes);
    }

    // Only regular files are read, and only up to a size their kind never
    // reaches: the game's files up to 64 MB, the program's own up to 4 MB.
    void readersRefuseWhatIsNotAFile_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<qint64>("size");
        QTest::addColumn<QString>("gameFile"); // %1 the path
        QTest::addColumn<QString>("programFile");

        const QString notRegular = u"75|x.ini is not a regular file: %1"_s;
#ifdef Q_OS_UNIX
        QTest::newRow("FIFO") << u"fifo"_s << 0LL << notRegular << notRegular;
        QTest::newRow("link to /dev/zero") << u"zero"_s << 0LL << notRegular << notRegular;
#endif
        const QString folder = u"75|x.ini is a folder, not a file: %1"_s;
        QTest::newRow("folder") << u"folder"_s << 0LL << folder << folder;
        const QString over4 = u"75|x.ini is larger than 4 MB: %1"_s;
        QTest::newRow("4 MB") << u"file"_s << 4LL * 1024 * 1024 << u"read"_s << u"read"_s;
        QTest::newRow("4 MB and a byte")
            << u"file"_s << 4LL * 1024 * 1024 + 1 << u"read"_s << over4;
        QTest::newRow("64 MB and a byte") << u"file"_s << 64LL * 1024 * 1024 + 1
                                          << u"75|x.ini is larger than 64 MB: %1"_s << over4;
    }

    void readersRefuseWhatIsNotAFile()
    {
        QFETCH(QString, kind);
        QFETCH(qint64, size);
        QFETCH(QString, gameFile);
        QFETCH(QString, programFile);
        QTemporaryDir dir;
        const QString path = dir.filePath(u"x.ini"_s);
#ifdef Q_OS_UNIX
        if (kind == u"fifo")
            QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        if (kind == u"zero")
            QVERIFY(QFile::link(u"/dev/zero"_s, path));
#endif
        if (kind == u"folder")
            QVERIFY(QDir(dir.path()).mkdir(u"x.ini"_s));
        if (kind == u"file") {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(size)); // sparse
        }

        const QString game = gameFile.arg(path);
        QCOMPARE(outcome([&] { readFileBytes(path); }), game);
        QCOMPARE(outcome([&] { TextDocument::load(path); }), game);
        QCOMPARE(outcome([&] { ReadIntText(path); }), game);
        const QString program = programFile.arg(path);
        QCOMPARE(outcome([&] { readAnsiLines(path); }), program);
        QCOMPARE(outcome([&] { ReadIntFile(path); }), program);
    }

    // A replacement keeps what the player set on the file, refuses what it
    // would undo and names the real cause when it fails.
    void writerKeepsOrRefuses_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("expected"); // %1 the path
        QTest::addColumn<QByteArray>("content"); // afterwards

        const QByteArray old("old\r\n");
        QTest::newRow("plain file") << u"file"_s << u"read"_s << QByteArray("new");
        QTest::newRow("read-only") << u"read-only"_s << u"70|x.ini is read-only: %1"_s << old;
        QTest::newRow("folder") << u"folder"_s << u"75|x.ini is a folder, not a file: %1"_s
                                << QByteArray();
#ifdef Q_OS_UNIX
        QTest::newRow("hard link") << u"hard link"_s
                                   << u"75|x.ini has another name (a hard link), which a "
                                      "replacement would leave with the old content: %1"_s
                                   << old;
        QTest::newRow("disk full") << u"disk full"_s << u"61|The disk is full: %1"_s << old;
#endif
#ifdef __GLIBC__
        QTest::newRow("held for a moment") << u"held 2"_s << u"read"_s << QByteArray("new");
        QTest::newRow("held") << u"held 100"_s << u"75|x.ini is in use by another program: %1"_s
                              << old;
#endif
    }

    void writerKeepsOrRefuses()
    {
        QFETCH(QString, kind);
        QFETCH(QString, expected);
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        const QString path = dir.filePath(u"x.ini"_s);
        expected.replace(u"%1"_s, path);
        if (kind == u"folder")
            QVERIFY(QDir(dir.path()).mkdir(u"x.ini"_s));
        else
            QVERIFY(writeTestFile(path, "old\r\n"));
        const auto permissions = kind == u"read-only"
            ? QFile::ReadOwner | QFile::ReadGroup
            : QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        QVERIFY(kind == u"folder" || QFile::setPermissions(path, permissions));
#ifdef Q_OS_UNIX
        // Only root may give the file away, and then the new file must go
        // to the same owner.
        const bool givenAway = chown(QFile::encodeName(path).constData(), 4321, 4322) == 0;
        if (kind == u"hard link")
            QCOMPARE(::link(QFile::encodeName(path).constData(),
                         QFile::encodeName(dir.filePath(u"y.ini"_s)).constData()),
                0);
        if (kind == u"disk full") {
            const int code = runWithFileSizeLimit(3, [&] {
                const QString got = outcome([&] { writeFileAtomically(path, "new\r\n"); });
                if (got != expected)
                    qWarning("%s", qPrintable(got));
                return got == expected ? 0 : 1;
            });
            QCOMPARE(code, 0);
        }
#endif
#ifdef __GLIBC__
        if (kind.startsWith(u"held "))
            blockedRenames = kind.sliced(5).toInt();
#endif
        if (kind != u"disk full")
            QCOMPARE(outcome([&] { writeFileAtomically(path, "new"); }), expected);

#ifdef __GLIBC__
        blockedRenames = 0;
#endif
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot),
            QStringList(kind == u"hard link" ? QStringList { u"x.ini"_s, u"y.ini"_s }
                                             : QStringList { u"x.ini"_s }));
        if (kind == u"folder")
            return;
        QCOMPARE(readTestFile(path), content);
        QCOMPARE(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser), permissions);
#ifdef Q_OS_UNIX
        struct stat info = {};
        QCOMPARE(stat(QFile::encodeName(path).constData(), &info), 0);
        if (givenAway)
            QCOMPARE(QList<uint>({ info.st_uid, info.st_gid }), QList<uint>({ 4321, 4322 }));
#endif
    }

    // A document keeps its lines in one buffer, however short they are.
    void documentOfShortLinesStaysSmall()
    {
#ifdef __GLIBC__
        const QByteArray bytes = QByteArray("a=1\r\n").repeated(2'000'000);
        const size_t before = heapInUse();
        const TextDocument document = TextDocument::fromBytes(bytes);
        const size_t held = heapInUse() - before;
        QCOMPARE(document.lineCount(), 2'000'000);
        QVERIFY2(held < size_t(2 * bytes.size()), qPrintable(QString::number(held)));
#else
        QSKIP("needs glibc's heap statistics");
#endif
    }
};

QTEST_GUILESS_MAIN(TestTextFiles)
#include "test_textfiles.moc"
