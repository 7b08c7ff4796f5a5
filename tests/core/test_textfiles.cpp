#include "catalogue/intfile.h"
#include "childprocess.h"
#include "configfiles/fieldreader.h"
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
        return "read";
    } catch (const RunError &error) {
        return QString::number(error.number()) + '|' + error.message();
    }
}

QByteArray utf16(const char *text)
{
    QByteArray bytes("\xFF\xFE");
    for (const char *c = text; *c; ++c)
        bytes += QByteArray(1, *c) + '\0';
    return bytes;
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

class TestTextFiles : public QObject
{
    Q_OBJECT

private slots:
    // The game ends a line at CR LF, at LF or at a CR alone; every reader
    // does. A document keeps every byte, its encoding and its first line end.
    void readersSplitLines_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QByteArray>("newline"); // a document's own, for lines it adds
        QTest::addColumn<int>("encoding");

        const int ansi = int(TextDocument::Encoding::Ansi),
                  utf8 = int(TextDocument::Encoding::Utf8);
        const int utf16le = int(TextDocument::Encoding::Utf16LE);
        const QStringList ab { "[A]", "b=1" };
        const QByteArray crlf("\r\n");
        QTest::newRow("CR LF, empty last line")
            << QByteArray("a\r\nb\r\n\r\n") << QStringList { "a", "b", "" } << crlf << ansi;
        QTest::newRow("LF, last line unended")
            << QByteArray("a\n\nb") << QStringList { "a", "", "b" } << QByteArray("\n") << ansi;
        QTest::newRow("mixed") << QByteArray("a\r\r\nb\n\rc")
                               << QStringList { "a", "", "b", "", "c" } << QByteArray("\r") << ansi;
        QTest::newRow("windows-1252") << QByteArray("Zo\xEB \x80\r\n")
                                      << QStringList { u"Zo\u00eb \u20ac"_s } << crlf << ansi;
        QTest::newRow("empty") << QByteArray() << QStringList() << crlf << ansi;
        // Over 256 bytes, the letter beyond ASCII early.
        QTest::newRow("utf-8 without bom")
            << QByteArray("n=Zo\xC3\xAB\n") + QByteArray(300, 'a')
            << QStringList { u"n=Zo\u00eb"_s, QString(300, 'a') } << QByteArray("\n") << utf8;
        QTest::newRow("utf-8 bom")
            << QByteArray("\xEF\xBB\xBF[A]\r\nb=1\r\n") << ab << crlf << utf8;
        QTest::newRow("utf-16le crlf")
            << utf16("[A]\r\nb=1\r\n") << ab << QByteArray("\r\0\n\0", 4) << utf16le;
        QTest::newRow("utf-16le cr")
            << utf16("[A]\rb=1\r") << ab << QByteArray("\r\0", 2) << utf16le;
    }

    void readersSplitLines()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QFETCH(QByteArray, newline);
        QFETCH(int, encoding);
        QTemporaryDir dir;
        const QString path = dir.filePath("lines.ini");
        QVERIFY(writeTestFile(path, bytes));

        const TextDocument document = TextDocument::load(path);
        QStringList texts;
        for (qsizetype i = 0; i < document.lineCount(); ++i)
            texts.append(document.text(i));
        QCOMPARE(texts, lines);
        QCOMPARE(document.newline(), newline);
        QCOMPARE(int(document.encoding()), encoding);
        QCOMPARE(document.toBytes(), bytes);
        if (encoding == int(TextDocument::Encoding::Utf8) && !bytes.startsWith("\xEF"))
            return; // the .int files know UTF-8 only by its mark
        QCOMPARE(decodeIntLines(bytes), lines);
        if (encoding != int(TextDocument::Encoding::Ansi))
            return;
        QStringList split;
        for (const QByteArray &line : splitLines(bytes))
            split.append(decodeAnsi(line));
        QCOMPARE(split, lines);
        QCOMPARE(readAnsiLines(path), lines);
    }

    // Only regular files are read, and only up to a size their kind never
    // reaches: the game's files up to 64 MB, the program's own up to 4 MB.
    void readersRefuseWhatIsNotAFile_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<qint64>("size");
        QTest::addColumn<QString>("gameFile"); // @ the path
        QTest::addColumn<QString>("programFile");

        const auto row = [](const char *tag, const QString &kind, qint64 size, const QString &game,
                             const QString &program) {
            QTest::newRow(tag) << kind << size << game << program;
        };
        const QString notRegular = "75|x.ini is not a regular file: @";
#ifdef Q_OS_UNIX
        row("FIFO", "fifo", 0, notRegular, notRegular);
#endif
        const QString folder = "75|x.ini is a folder, not a file: @";
        const QString over4 = "75|x.ini is larger than 4 MB: @";
        const qint64 mb = 1024 * 1024;
        row("folder", "folder", 0, folder, folder);
        row("4 MB", "file", 4 * mb, "read", "read");
        row("4 MB and a byte", "file", 4 * mb + 1, "read", over4);
        row("64 MB and a byte", "file", 64 * mb + 1, "75|x.ini is larger than 64 MB: @", over4);
    }

    void readersRefuseWhatIsNotAFile()
    {
        QFETCH(QString, kind);
        QFETCH(qint64, size);
        QFETCH(QString, gameFile);
        QFETCH(QString, programFile);
        QTemporaryDir dir;
        const QString path = dir.filePath("x.ini");
#ifdef Q_OS_UNIX
        QVERIFY(kind != "fifo" || mkfifo(QFile::encodeName(path).constData(), 0600) == 0);
#endif
        QVERIFY(kind != "folder" || QDir(dir.path()).mkdir("x.ini"));
        QFile file(path);
        QVERIFY(kind != "file" || (file.open(QIODevice::WriteOnly) && file.resize(size))); // sparse

        const QString game = gameFile.replace('@', path), program = programFile.replace('@', path);
        QCOMPARE(outcome([&] { readFileBytes(path); }), game);
        QCOMPARE(outcome([&] { TextDocument::load(path); }), game);
        QCOMPARE(outcome([&] { ReadIntText(path); }), game);
        QCOMPARE(outcome([&] { readAnsiLines(path); }), program);
        QCOMPARE(outcome([&] { ReadIntFile(path); }), program);
    }

    // A replacement keeps what the player set on the file, refuses what it
    // would undo, names the real cause when it fails and then leaves the old
    // file alone.
    void writerKeepsOrRefuses_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("expected"); // @ the path; the old content stays unless read

        const auto row = [](const char *tag, const QString &kind, const QString &expected) {
            QTest::newRow(tag) << kind << expected;
        };
        row("plain file", "file", "read");
        row("read-only", "read-only", "70|x.ini is read-only: @");
        row("folder", "folder", "75|x.ini is a folder, not a file: @");
#ifdef Q_OS_UNIX
        row("hard link", "hard link",
            "75|x.ini has another name (a hard link), which a replacement would leave with the old "
            "content: @");
        row("disk full", "disk full", "61|The disk is full: @");
#endif
#ifdef __GLIBC__
        row("held for a moment", "held 2", "read");
        row("held", "held 100", "75|x.ini is in use by another program: @");
#endif
    }

    void writerKeepsOrRefuses()
    {
        QFETCH(QString, kind);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const QString path = dir.filePath("x.ini");
        expected.replace('@', path);
        QVERIFY(
            kind == "folder" ? QDir(dir.path()).mkdir("x.ini") : writeTestFile(path, "old\r\n"));
        const auto permissions = kind == "read-only"
            ? QFile::ReadOwner | QFile::ReadGroup
            : QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        QVERIFY(kind == "folder" || QFile::setPermissions(path, permissions));
        const auto write = [&] { return outcome([&] { writeFileAtomically(path, "new\r\n"); }); };
#ifdef Q_OS_UNIX
        // Only root may give the file away, and then the new file must go
        // to the same owner.
        const bool givenAway = chown(QFile::encodeName(path).constData(), 4321, 4322) == 0;
        QVERIFY(kind != "hard link" || addHardLink(path, dir.filePath("y.ini")));
        if (kind == "disk full")
            QCOMPARE(runWithFileSizeLimit(3, [&] { return write() == expected ? 0 : 1; }), 0);
#endif
#ifdef __GLIBC__
        blockedRenames = kind.startsWith("held ") ? kind.sliced(5).toInt() : 0;
#endif
        if (kind != "disk full")
            QCOMPARE(write(), expected);
#ifdef __GLIBC__
        blockedRenames = 0;
#endif
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot),
            kind == "hard link" ? QStringList({ "x.ini", "y.ini" }) : QStringList("x.ini"));
        if (kind == "folder")
            return;
        QCOMPARE(readTestFile(path), expected == "read" ? "new\r\n" : "old\r\n");
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
        const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const TextDocument document = TextDocument::fromBytes(bytes);
        const size_t held = mallinfo2().uordblks + mallinfo2().hblkhd - before;
        QCOMPARE(document.lineCount(), 2'000'000);
        QVERIFY2(held < size_t(2 * bytes.size()), qPrintable(QString::number(held)));
#else
        QSKIP("needs glibc's heap statistics");
#endif
    }

    // Options files are read field by field: a field ends at a comma or the
    // line's end, leading blanks go, a quoted one keeps its commas.
    void fieldReader_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("calls"); // f readField, l readLine; empty: fields to the end
        QTest::addColumn<QStringList>("read"); // "error 62" for a read past the end

        const auto row = [](const char *tag, const QStringList &lines, const QStringList &read,
                             const QString &calls = QString()) {
            QTest::newRow(tag) << lines << calls << read;
        };
        row("leading blanks skipped, trailing kept", { "   a  ", "\tb" }, { "a  ", "b" });
        row("comma splits a line", { "C:\\Games,UT\\", "next" }, { "C:\\Games", "UT\\", "next" });
        row("quoted value keeps commas", { "\"a, b\"", "c" }, { "a, b", "c" });
        row("text after closing quote dropped", { "\"a\" junk,b" }, { "a", "b" });
        row("unclosed quote runs to line end", { "\"abc", "d" }, { "abc", "d" });
        row("empty line is an empty field", { "", "x" }, { "", "x" });
        row("trailing comma", { "a,", "b" }, { "a", "", "b" });
        row("readLine takes the rest of the line", { "first,rest, of it", "[Header]" },
            { "first", "rest, of it", "[Header]" }, "fll");
        row("past the end", { "only" }, { "only", "error 62" }, "ff");
        row("line past the end", { "a" }, { "a", "error 62" }, "ll");
    }

    void fieldReader()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, calls);
        QFETCH(QStringList, read);
        FieldReader reader(lines);
        QStringList got;
        try {
            for (qsizetype i = 0; calls.isEmpty() ? !reader.atEnd() : i < calls.size(); ++i)
                got.append(calls.mid(i, 1) == "l" ? reader.readLine() : reader.readField());
        } catch (const RunError &error) {
            got.append("error " + QString::number(error.number()));
        }
        QCOMPARE(got, read);
    }
};

QTEST_GUILESS_MAIN(TestTextFiles)
#include "test_textfiles.moc"
