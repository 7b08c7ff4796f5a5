#include "catalogue/intfile.h"
#include "childprocess.h"
#include "configfiles/errorreport.h"
#include "configfiles/fieldreader.h"
#include "configfiles/fileops.h"
#include "configfiles/runerror.h"
#include "configfiles/textdocument.h"
#include "configfiles/textfile.h"
#include "scriptedprompt.h"
#include "testfiles.h"

#include <QDir>
#include <QFile>
#include <QStringEncoder>
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

QByteArray utf16(const QString &text)
{
    return "\xFF\xFE" + QByteArray(QStringEncoder(QStringConverter::Utf16LE).encode(text));
}

#ifdef __GLIBC__
// How many of the next renames fail as they do on Windows while another
// program holds the target open, and whether that program puts a folder in
// the target's place meanwhile.
int blockedRenames = 0;
bool folderInstead = false;
#endif

} // namespace

#ifdef __GLIBC__
// Takes the place of the C library's rename for Qt's calls.
extern "C" int rename(const char *from, const char *to)
{
    if (blockedRenames > 0) {
        --blockedRenames;
        if (folderInstead && ::unlink(to) == 0)
            ::mkdir(to, 0700);
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
        const auto row = [](const char *tag, const QByteArray &bytes, const QStringList &lines,
                             const QByteArray &newline, int encoding) {
            QTest::newRow(tag) << bytes << lines << newline << encoding;
        };
        const QStringList ab { "[A]", "b=1" };
        row("CR LF, empty last line", "a\r\nb\r\n\r\n", { "a", "b", "" }, "\r\n", ansi);
        row("LF, last line unended", "a\n\nb", { "a", "", "b" }, "\n", ansi);
        row("mixed", "a\r\r\nb\n\rc", { "a", "", "b", "", "c" }, "\r", ansi);
        row("CR first", "\ra\r", { "", "a" }, "\r", ansi);
        row("windows-1252", "Zo\xEB \x80\r\n", { u"Zo\u00eb \u20ac"_s }, "\r\n", ansi);
        row("empty", {}, {}, "\r\n", ansi);
        row("utf-8 bom", "\xEF\xBB\xBF[A]\r\nb=1\r\n", ab, "\r\n", utf8);
        const int utf16le = int(TextDocument::Encoding::Utf16LE);
        row("utf-16le crlf", utf16("[A]\r\nb=1\r\n"), ab, QByteArray("\r\0\n\0", 4), utf16le);
        row("utf-16le cr", utf16("[A]\rb=1\r"), ab, QByteArray("\r\0", 2), utf16le);
    }

    void readersSplitLines()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QFETCH(int, encoding);
        QTemporaryDir dir;
        const QString path = dir.filePath("lines.ini");
        QVERIFY(writeTestFile(path, bytes));

        const TextDocument document = TextDocument::load(path);
        QStringList texts;
        for (qsizetype i = 0; i < document.lineCount(); ++i)
            texts.append(document.text(i));
        QCOMPARE(texts, lines);
        QTEST(document.newline(), "newline");
        QCOMPARE(int(document.encoding()), encoding);
        QCOMPARE(document.toBytes(), bytes);
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
        row("held, then a folder in its place", "held 1 folder",
            "75|x.ini is a folder, not a file: @");
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
        blockedRenames = kind.startsWith("held ") ? kind.section(' ', 1, 1).toInt() : 0;
        folderInstead = kind.endsWith("folder");
#endif
        if (kind != "disk full")
            QCOMPARE(write(), expected);
#ifdef __GLIBC__
        blockedRenames = 0;
#endif
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot),
            kind == "hard link" ? QStringList({ "x.ini", "y.ini" }) : QStringList("x.ini"));
        if (kind.endsWith("folder"))
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
        row("plain, quoted and empty fields",
            { "   a  ", "\tb", "C:\\Games,UT\\", "\"a, b\"", "\"a\" junk,b", "\"abc", "", "a,",
                ",x" },
            { "a  ", "b", "C:\\Games", "UT\\", "a, b", "a", "b", "abc", "", "a", "", "", "x" });
        row("readLine takes the rest of the line", { "first,rest, of it", "[Header]" },
            { "first", "rest, of it", "[Header]", "error 62" }, "flll");
        row("past the end", { "only" }, { "only", "error 62" }, "ff");
    }

    void fieldReader()
    {
        QFETCH(QStringList, lines);
        QFETCH(QString, calls);
        FieldReader reader(lines);
        QStringList got;
        try {
            for (qsizetype i = 0; calls.isEmpty() ? !reader.atEnd() : i < calls.size(); ++i)
                got.append(calls.mid(i, 1) == "l" ? reader.readLine() : reader.readField());
        } catch (const RunError &error) {
            got.append("error " + QString::number(error.number()));
        }
        QTEST(got, "read");
    }

    // Missing files are passed over without a word, other failures reported;
    // a move whose copy fails keeps its source. (Moves and deletions of a
    // configuration folder's listing, folders among them: the options dialog's
    // test.)
    void fileOp_data()
    {
        QTest::addColumn<short>("operation");
        QTest::addColumn<QString>("source"); // "new" in it, unless it is "gone"
        QTest::addColumn<QString>("destination"); // b.qvn holds "old"
        QTest::addColumn<QStringList>("after"); // every file=content
        QTest::addColumn<QString>("message");

        const auto row
            = [](const char *tag, short operation, const QString &source, const QStringList &after,
                  const QString &destination = "b.qvn", const QString &message = QString()) {
                  QTest::newRow(tag) << operation << source << destination << after << message;
              };
        row("copy replaces", 2, "a.qvn", { "a.qvn=new", "b.qvn=new" });
        row("4 copies", 4, "a.qvn", { "a.qvn=new", "b.qvn=new" });
        row("missing source", 1, "gone", { "b.qvn=old" });
        row("a dot file is moved", 1, ".a.qvn", { "b.qvn=new" });
        row("move into a missing folder", 1, "a.qvn", { "a.qvn=new", "b.qvn=old" }, "missing/b.qvn",
            "76|Error in modCommon.FileOP.\r\n\r\nError Desc: Path not found\r\n\r\nSkipping "
            "file: @");
    }

    void fileOp()
    {
        QFETCH(short, operation);
        QFETCH(QString, source);
        QFETCH(QString, destination);
        QFETCH(QString, message);

        QTemporaryDir dir;
        const QString sourcePath = QDir::toNativeSeparators(dir.filePath(source));
        QVERIFY(source == "gone" || writeTestFile(sourcePath, "new"));
        QVERIFY(writeTestFile(dir.filePath("b.qvn"), "old"));
        ScriptedPrompt prompt;

        FileOP(sourcePath, dir.filePath(destination), operation);

        QCOMPARE(prompt.transcript(),
            message.isEmpty() ? QStringList() : QStringList(message.replace('@', sourcePath)));
        QStringList files;
        for (const QString &name : QDir(dir.path()).entryList(QDir::Files | QDir::Hidden))
            files << name + '=' + readTestFile(dir.filePath(name));
        QTEST(files, "after");
    }

    // Month and day unpadded: 2 November and 12 January share a name, and a
    // second report of the number on the day replaces the first.
    void errorReport()
    {
        QTemporaryDir dir;
        const QString directory = AddBackslash(QDir::toNativeSeparators(dir.path()));
        WriteErrorReport(directory, RunError(53), "earlier", QDate(2001, 1, 12));
        const QString path
            = WriteErrorReport(directory, RunError(53), QString(), QDate(2001, 11, 2));
        QCOMPARE(QStringList(
                     { path, WriteErrorReport(directory, RunError(53), "", QDate(2001, 3, 17)) }),
            QStringList(
                { directory + "ErrNum53_1122001.txt", directory + "ErrNum53_3172001.txt" }));
        QCOMPARE(readTestFile(path),
            crlf({ "Error Message: ", "Error Number: 53", "Description: File not found" }));
    }
};

QTEST_GUILESS_MAIN(TestTextFiles)
#include "test_textfiles.moc"
