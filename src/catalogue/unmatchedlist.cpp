#include "unmatchedlist.h"

#include "patternfile.h"

#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "configfiles/textfile.h"
#include "startup/programdirectory.h"

namespace {

const QString crlf = QStringLiteral("\r\n");

QString longDate(const QDate &date, const QLocale &locale)
{
    return locale.dayName(date.dayOfWeek(), QLocale::LongFormat) + QStringLiteral(", ")
           + locale.monthName(date.month(), QLocale::LongFormat) + QLatin1Char(' ')
           + QString::number(date.day()) + QStringLiteral(", ") + QString::number(date.year());
}

// The locale's long time format names the time zone too, which the user's
// clock does not show.
QString clockTime(const QTime &time, const QLocale &locale)
{
    QString format = locale.timeFormat(QLocale::LongFormat);
    format.remove(QLatin1Char('t'));
    return locale.toString(time, format.trimmed());
}

} // namespace

QString UnmatchedListFileName(const QDateTime &when)
{
    const QDate date = when.date();
    const QTime time = when.time();
    return QStringLiteral("UnMatched_Files_%1-%2-%3_h%4m%5s%6.txt")
        .arg(date.month())
        .arg(date.day())
        .arg(date.year())
        .arg(time.hour())
        .arg(time.minute())
        .arg(time.second());
}

QStringList UnmatchedListLines(
    const QList<UnmatchedSkin> &skins, const QDateTime &when, const QLocale &locale)
{
    const QString stars(70, QLatin1Char('*'));
    QStringList lines {
        stars,
        QStringLiteral("* UNMATCHED SKIN FILE LIST OUTPUT"),
        QStringLiteral("* Date: ") + longDate(when.date(), locale),
        QStringLiteral("* Time: ") + clockTime(when.time(), locale),
        stars,
        QStringLiteral(" "),
    };
    for (const UnmatchedSkin &skin : skins)
        lines.append(skin.FilePath);
    lines.append(QStringLiteral(" "));
    lines.append(QStringLiteral("End of List"));
    return lines;
}

QString SaveUnmatchedList(const QString &directory, const QDateTime &when)
{
    const QString path = directory + UnmatchedListFileName(when);
    writeAnsiLines(path, UnmatchedListLines(Catalogue().UnmatchedSkins, when));
    return path;
}

QString SaveUnmatchedListFile()
{
    try {
        return SaveUnmatchedList(ProgramDir());
    } catch (const RunError &error) {
        showMessage(QStringLiteral("Save List to File"),
            QStringLiteral("The list of unmatched skin files could not be saved:") + crlf
                + error.message(),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return {};
    }
}

void SaveUnmatchedListAndSay()
{
    const QString path = SaveUnmatchedListFile();
    if (!path.isEmpty())
        showMessage(QStringLiteral("File Created"), QStringLiteral("File Created:") + crlf + path,
            MessageButtons::Ok, MessageIcon::Information);
}

void ContinueToPatternEditor(const QStringList &checkedPaths)
{
    ModelCatalogue &catalogue = Catalogue();
    catalogue.PatternsRequested = false;
    QList<PatternAssignment> &files = PatternEditorFiles();
    files.clear();
    for (const QString &path : checkedPaths) {
        files.append({path, QString()});
        catalogue.PatternsRequested = true;
    }
}
