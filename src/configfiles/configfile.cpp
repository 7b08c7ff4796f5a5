#include "configfile.h"

#include "progress.h"
#include "prompt.h"
#include "roster/valueencodings.h"
#include "runerror.h"
#include "textfile.h"

#include <QFileInfo>

#include <array>
#include <limits>

namespace {

const QString RuleLine(80, QLatin1Char('*'));
const QString DescriptionLine = QStringLiteral("* Description:");
const QString SectionLine = QStringLiteral("[Botpack.ChallengeBotInfo]");
// "* " and the text fit in the 80 columns of the rule lines.
constexpr qsizetype DescriptionWidth = 78;

// Everything after the first "="; the whole line when there is none.
QString valueOf(const QString &line)
{
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    return equals < 0 ? line : line.mid(equals + 1);
}

qint16 wholeNumber(const QString &line)
{
    bool ok = false;
    const int number = valueOf(line).trimmed().toInt(&ok);
    if (!ok)
        throw RunError(ErrNum::TypeMismatch);
    if (number < std::numeric_limits<qint16>::min() || number > std::numeric_limits<qint16>::max())
        throw RunError(ErrNum::Overflow);
    return static_cast<qint16>(number);
}

QString boolText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

// Only the exact "False" turns a switch off; "false" and an empty value
// leave it on.
bool readBool(const QString &line)
{
    return !line.endsWith(QLatin1String("False"));
}

// One key of the section: how a slot's (or the list's) value is written and
// read back. The list-wide keys ignore the slot.
struct KeyGroup
{
    QLatin1StringView key;
    bool perSlot;
    QString (*write)(BotRoster &roster, int slot);
    void (*read)(BotRoster &roster, int slot, const QString &line);
};

// The order of the game's own section, faces first and the three list-wide
// values between the faces and the names.
const std::array<KeyGroup, 17> KeyGroups { {
    { QLatin1StringView("BotFaces"), true, [](BotRoster &r, int i) { return r.BotFaces[i]; },
        [](BotRoster &r, int i, const QString &l) { r.BotFaces[i] = valueOf(l); } },
    { QLatin1StringView("bAdjustSkill"), false,
        [](BotRoster &r, int) { return boolText(r.bAdjustSkill); },
        [](BotRoster &r, int, const QString &l) { r.bAdjustSkill = readBool(l); } },
    { QLatin1StringView("bRandomOrder"), false,
        [](BotRoster &r, int) { return boolText(r.bRandomOrder); },
        [](BotRoster &r, int, const QString &l) { r.bRandomOrder = readBool(l); } },
    { QLatin1StringView("Difficulty"), false,
        [](BotRoster &r, int) { return QString::number(r.Difficulty); },
        [](BotRoster &r, int, const QString &l) { r.Difficulty = wholeNumber(l); } },
    { QLatin1StringView("BotNames"), true, [](BotRoster &r, int i) { return r.BotNames[i]; },
        [](BotRoster &r, int i, const QString &l) { r.BotNames[i] = valueOf(l); } },
    { QLatin1StringView("BotTeams"), true,
        [](BotRoster &r, int i) { return QString::number(r.BotTeams[i]); },
        [](BotRoster &r, int i, const QString &l) { r.BotTeams[i] = wholeNumber(l); } },
    { QLatin1StringView("BotClasses"), true, [](BotRoster &r, int i) { return r.BotClasses[i]; },
        [](BotRoster &r, int i, const QString &l) { r.BotClasses[i] = valueOf(l); } },
    { QLatin1StringView("BotSkins"), true, [](BotRoster &r, int i) { return r.BotSkins[i]; },
        [](BotRoster &r, int i, const QString &l) { r.BotSkins[i] = valueOf(l); } },
    { QLatin1StringView("VoiceType"), true, [](BotRoster &r, int i) { return r.VoiceType[i]; },
        [](BotRoster &r, int i, const QString &l) { r.VoiceType[i] = valueOf(l); } },
    { QLatin1StringView("BotSkills"), true,
        [](BotRoster &r, int i) { return GetSkillText(r.BotSkills[i], true); },
        [](BotRoster &r, int i, const QString &l) { r.BotSkills[i] = GetSkillPosition(l); } },
    { QLatin1StringView("BotAccuracy"), true,
        [](BotRoster &r, int i) { return GetAccuracyText(r.BotAccuracy[i], true); },
        [](BotRoster &r, int i, const QString &l) { r.BotAccuracy[i] = GetAccuracyPosition(l); } },
    { QLatin1StringView("CombatStyle"), true, [](BotRoster &r, int i) { return r.CombatStyle[i]; },
        [](BotRoster &r, int i, const QString &l) { r.CombatStyle[i] = valueOf(l); } },
    { QLatin1StringView("Alertness"), true,
        [](BotRoster &r, int i) { return GetAlertnessText(r.Alertness[i], true); },
        [](BotRoster &r, int i, const QString &l) { r.Alertness[i] = GetAlertnessPosition(l); } },
    { QLatin1StringView("Camping"), true,
        [](BotRoster &r, int i) { return GetCampingText(r.Camping[i], true); },
        [](BotRoster &r, int i, const QString &l) { r.Camping[i] = GetCampingPosition(l); } },
    { QLatin1StringView("StrafingAbility"), true,
        [](BotRoster &r, int i) { return GetStrafingText(r.StrafingAbility[i], true); },
        [](BotRoster &r, int i, const QString &l) {
            r.StrafingAbility[i] = GetStrafingPosition(l);
        } },
    { QLatin1StringView("FavoriteWeapon"), true,
        [](BotRoster &r, int i) { return r.FavoriteWeapon[i]; },
        [](BotRoster &r, int i, const QString &l) { r.FavoriteWeapon[i] = valueOf(l); } },
    { QLatin1StringView("BotJumpy"), true,
        [](BotRoster &r, int i) { return QString::number(r.BotJumpy[i]); },
        [](BotRoster &r, int i, const QString &l) { r.BotJumpy[i] = wholeNumber(l); } },
} };

int lineCount(const KeyGroup &group)
{
    return group.perSlot ? BotSlotCount : 1;
}

// Every value stands on one line: a line break inside one would shift every
// later line for the positional reader, and an empty line would end the
// header (or the section) for the apply.
QString oneLine(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
}

QString keyLine(const KeyGroup &group, int slot, QString value)
{
    value = oneLine(value);
    const QString key(group.key);
    if (!group.perSlot)
        return key + QLatin1Char('=') + value;
    return key + QLatin1Char('[') + QString::number(slot) + QStringLiteral("]=") + value;
}

// The description in lines of at most 78 characters, broken after the last
// space that fits; a wrapped line keeps that space. A run with no space to
// break at is cut at the full width.
QStringList descriptionBlock(const QString &description)
{
    const QString text = oneLine(description);
    QStringList lines;
    qsizetype position = 0;
    while (text.size() - position > DescriptionWidth) {
        const QString chunk = text.mid(position, DescriptionWidth);
        qsizetype length = chunk.lastIndexOf(QLatin1Char(' ')) + 1;
        if (length == 0)
            length = DescriptionWidth;
        lines.append(QStringLiteral("* ") + chunk.left(length));
        position += length;
    }
    lines.append(QStringLiteral("* ") + text.mid(position));
    return lines;
}

QString withoutTrailingSpaces(QString line)
{
    while (line.endsWith(QLatin1Char(' ')))
        line.chop(1);
    return line;
}

// The lines of a configuration being read, with the errors that name the
// file and the line.
class ConfigLines
{
public:
    ConfigLines(QString path, QStringList lines)
        : m_path(std::move(path))
        , m_lines(std::move(lines))
    {
    }

    // The next line; a file that ends first is reported as ending before
    // `expected`.
    const QString &next(const QString &expected)
    {
        if (m_next >= m_lines.size())
            throw RunError(ErrNum::InputPastEnd,
                m_path + QStringLiteral(", after line ") + QString::number(m_lines.size())
                    + QStringLiteral(": the file ends before ") + expected);
        return m_lines.at(m_next++);
    }

    RunError errorInLine(const RunError &error) const
    {
        return RunError(error.number(), error.description(),
            m_path + QStringLiteral(", line ") + QString::number(m_next)
                + QStringLiteral(": cannot read \"") + m_lines.at(m_next - 1) + QLatin1Char('"'));
    }

private:
    QString m_path;
    QStringList m_lines;
    qsizetype m_next = 0;
};

} // namespace

QStringList ConfigurationLines(const QString &fileName, BotRoster &roster)
{
    QStringList lines { RuleLine, QStringLiteral("* ") + oneLine(fileName),
        QStringLiteral("* This is a configuration created with Quorvane."),
        QStringLiteral("* This file containes replacement code for the "
                       "[Botpack.ChallengeBotInfo]"),
        QStringLiteral("* section of the user.ini file for Unreal Tournament."),
        QStringLiteral("*"), DescriptionLine };
    lines += descriptionBlock(roster.Description);
    lines += { RuleLine, QString(), SectionLine };
    for (const KeyGroup &group : KeyGroups) {
        for (int slot = 0; slot < lineCount(group); ++slot)
            lines.append(keyLine(group, slot, group.write(roster, slot)));
    }
    return lines;
}

bool SaveConfigAs(const QString &directory, const QString &fileName, bool overwriteWithoutAsking,
    BotRoster &roster)
{
    const QString path = directory + fileName;
    if (!overwriteWithoutAsking && QFileInfo::exists(path)
        && showMessage(QStringLiteral("File Already Exists"),
               QStringLiteral("This file exists, do you really want to over write it?"),
               MessageButtons::YesNo, MessageIcon::Question)
            != MessageAnswer::Yes)
        return false;
    writeAnsiLines(path, ConfigurationLines(fileName, roster));
    return true;
}

void OpenConfiguration(const QString &directory, const QString &fileName, BotRoster &roster)
{
    const QString path = directory + fileName;
    ConfigLines in(path, readAnsiLines(path));
    BotRoster read;

    const QString descriptionExpected = QStringLiteral("its \"* Description:\" line");
    while (in.next(descriptionExpected) != DescriptionLine) { }
    const QString ruleExpected = QStringLiteral("the rule line that closes its description");
    for (QString line = in.next(ruleExpected); line != RuleLine; line = in.next(ruleExpected))
        read.Description += line.mid(2) + QLatin1Char(' ');

    const QString sectionExpected = QStringLiteral("its [Botpack.ChallengeBotInfo] section");
    in.next(sectionExpected);
    in.next(sectionExpected);

    for (const KeyGroup &group : KeyGroups) {
        for (int slot = 0; slot < lineCount(group); ++slot) {
            if (group.perSlot)
                letEventLoopRun();
            const QString &line
                = in.next(QStringLiteral("its ") + QString(group.key) + QStringLiteral(" lines"));
            try {
                group.read(read, slot, line);
            } catch (const RunError &error) {
                throw in.errorInLine(error);
            }
        }
    }
    roster = std::move(read);
}

QString ReadDescription(const QString &fileName, const QString &directory)
{
    QStringList lines = readAnsiLines(directory + fileName);
    for (QString &line : lines)
        line = withoutTrailingSpaces(line);

    QString description;
    for (qsizetype i = lines.indexOf(DescriptionLine) + 1; i > 0 && i < lines.size(); ++i) {
        if (lines.at(i) == RuleLine)
            break;
        description += lines.at(i).mid(2) + QLatin1Char(' ');
    }
    return description;
}
