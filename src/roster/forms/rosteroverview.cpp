#include "rosteroverview.h"

#include "catalogue/modelcatalogue.h"
#include "roster/botroster.h"
#include "roster/classchoices.h"
#include "roster/rostercheck.h"
#include "roster/valueencodings.h"

#include <QHeaderView>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QStyle>

namespace {

bool sameName(const QString &a, const QString &b)
{
    return !a.isEmpty() && a.compare(b, Qt::CaseInsensitive) == 0;
}

// What the editor's lists would show for a slot's class, skin, face and
// voice; a name the catalogue does not know is shown as the slot holds it.
struct Descriptions
{
    QString model;
    QString skin;
    QString face;
    QString voice;
};

Descriptions describe(const BotRoster &roster, int slot, const ModelCatalogue &catalogue)
{
    const QList<MISCLASS> &classes = catalogue.MISCCLASSES;
    Descriptions shown { roster.BotClasses[slot], roster.BotSkins[slot], roster.BotFaces[slot],
        roster.VoiceType[slot] };

    const qsizetype model = FindClassIndex(classes, roster.BotClasses[slot]);
    if (sameName(ClassNameAt(classes, model), roster.BotClasses[slot])) {
        shown.model = classes[model].Description;
        const qsizetype skin = FindSkinIndex(classes, model, roster.BotSkins[slot]);
        if (sameName(SkinNameAt(classes, model, skin), roster.BotSkins[slot])) {
            shown.skin = classes[model].Skins[skin].Description;
            const QString &stored = roster.BotFaces[slot];
            const qsizetype face = FindFaceIndex(classes, model, skin, stored);
            const QString name = FaceNameAt(classes, model, skin, face);
            if (sameName(name, stored) || sameName(GameFaceName(name), stored))
                shown.face = classes[model].Skins[skin].Faces[face].Description;
        }
    }

    const QString &voice = roster.VoiceType[slot];
    if (const QString description = VoiceDescription(catalogue.VoiceList, voice);
        !description.isEmpty())
        shown.voice = description;
    else if (voice.isEmpty() || sameName(voice, NoneItem))
        shown.voice = NoVoiceItem;
    return shown;
}

// A small swatch of the team's colour; none for a bot of no team.
QIcon teamIcon(qint16 team)
{
    static QHash<qint16, QIcon> icons;
    if (const auto found = icons.constFind(team); found != icons.constEnd())
        return *found;
    static const QHash<qint16, QColor> colours { { 0, QColor(0xcc, 0x22, 0x22) },
        { 1, QColor(0x22, 0x55, 0xcc) }, { 2, QColor(0x22, 0x99, 0x33) },
        { 3, QColor(0xd4, 0xa0, 0x17) } };
    QIcon icon;
    if (colours.contains(team)) {
        QPixmap swatch(12, 12);
        swatch.fill(colours.value(team));
        QPainter painter(&swatch);
        painter.setPen(colours.value(team).darker(160));
        painter.drawRect(swatch.rect().adjusted(0, 0, -1, -1));
        icon = QIcon(swatch);
    }
    icons.insert(team, icon);
    return icon;
}

QString teamCaption(qint16 team)
{
    const std::optional<int> index = TeamIndex(team);
    return index ? TeamCaptions().at(*index) : QString::number(team);
}

QString weaponCaption(const QString &code)
{
    const std::optional<int> index = WeaponIndex(code);
    return index ? WeaponCaptions().at(*index) : code;
}

} // namespace

RosterOverview::RosterOverview(QWidget *parent)
    : QTableWidget(BotSlotCount, ColumnCount, parent)
{
    setObjectName(QStringLiteral("grdBots"));
    setAccessibleName(QStringLiteral("All bots"));
    setHorizontalHeaderLabels(
        { QStringLiteral("No."), QStringLiteral("Name"), QStringLiteral("Team"),
            QStringLiteral("Class (Model)"), QStringLiteral("Skin"), QStringLiteral("Face"),
            QStringLiteral("Voice"), QStringLiteral("Skill"), QStringLiteral("Favorite Weapon") });
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(
        qMax(fontMetrics().height(), style()->pixelMetric(QStyle::PM_SmallIconSize)) + 6);
    // Widths that hold the usual names, kept whatever the rows show, so
    // that the table does not jump while a name is typed; longer names are
    // elided, and a column can be widened by hand.
    const int letter = fontMetrics().averageCharWidth();
    const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize) + 8;
    const int letters[ColumnCount] = { 3, 12, 6, 18, 18, 16, 15, 4, 16 };
    for (int column = 0; column < ColumnCount; ++column)
        setColumnWidth(column,
            letters[column] * letter + 12 + (column == Number || column == Team ? icon : 0));
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    // Tab leaves the table for the next control; the arrows move in it.
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAlternatingRowColors(true);

    for (int row = 0; row < BotSlotCount; ++row) {
        for (int column = 0; column < ColumnCount; ++column) {
            auto *item = new QTableWidgetItem;
            item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
            setItem(row, column, item);
        }
        item(row, Number)->setText(QString::number(row));
        item(row, Number)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        item(row, Skill)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }

    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
        [this](const QModelIndex &current) { currentRowChanged(current.row()); });
}

void RosterOverview::refreshSlot(int slot)
{
    if (slot < 0 || slot >= BotSlotCount)
        return;
    const BotRoster &roster = Roster();
    const Descriptions shown = describe(roster, slot, Catalogue());
    const QStringList texts { QString::number(slot), roster.BotNames[slot],
        teamCaption(roster.BotTeams[slot]), shown.model, shown.skin, shown.face, shown.voice,
        GetSkillText(roster.BotSkills[slot], false), weaponCaption(roster.FavoriteWeapon[slot]) };
    for (int column = 0; column < ColumnCount; ++column)
        item(slot, column)->setText(texts.at(column));
    item(slot, Team)->setIcon(teamIcon(roster.BotTeams[slot]));

    if (!m_installed)
        m_installed.emplace(Catalogue());
    const QString problems = ProblemsText(m_installed->check(roster, slot));
    item(slot, Number)
        ->setIcon(problems.isEmpty()
                ? QIcon()
                : style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this));
    for (int column = 0; column < ColumnCount; ++column) {
        item(slot, column)->setToolTip(problems);
        item(slot, column)->setData(Qt::AccessibleDescriptionRole, problems);
    }
}

void RosterOverview::refreshAll()
{
    m_installed.emplace(Catalogue());
    for (int slot = 0; slot < BotSlotCount; ++slot)
        refreshSlot(slot);
}

void RosterOverview::showSlot(int slot)
{
    if (slot < 0 || slot >= BotSlotCount || slot == currentRow())
        return;
    m_showing = true;
    setCurrentCell(slot, currentColumn() < 0 ? int(Name) : currentColumn());
    m_showing = false;
}

void RosterOverview::currentRowChanged(int row)
{
    if (!m_showing && row >= 0)
        emit slotChosen(row);
}

// Room for every column and about ten bots; the rest scrolls.
QSize RosterOverview::sizeHint() const
{
    int width = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < ColumnCount; ++column)
        width += horizontalHeader()->sectionSize(column);
    const int height = 2 * frameWidth() + horizontalHeader()->sizeHint().height()
        + 10 * verticalHeader()->defaultSectionSize();
    return { width, height };
}
