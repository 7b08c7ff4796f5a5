#include "frmBadFiles.h"

#include "frmPattern.h"
#include "skinfilelist.h"

#include "catalogue/unmatchedlist.h"
#include "configfiles/forms/formregistry.h"
#include "configfiles/forms/windowtools.h"
#include "configfiles/prompt.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const QString CheckAllCaption = QStringLiteral("Check All");
const QString UncheckAllCaption = QStringLiteral("Uncheck All");

QPushButton *namedButton(QWidget *parent, const char *name, const QString &caption)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

frmBadFiles::frmBadFiles(QWidget *parent)
    : QDialog(parent)
    , lblExplained(new QLabel(
          "What this means is that this program could not properly decide what models these "
          "skin files belonged too.  Put a check next to each file that you want to specify a "
          "pattern for then click Continue.",
          this))
    , lblListHeader(new QLabel("PATH", this))
    , lstFileList(skinFileList(this, "lstFileList", { "File", "Folder" }))
    , cmdCheckAll(namedButton(this, "cmdCheckAll", CheckAllCaption))
    , cmdSaveToFile(namedButton(this, "cmdSaveToFile", "Save List to File"))
    , cmdSaveOpen(namedButton(this, "cmdSaveOpen", "Save List to File and Open It"))
    , cmdContinue(namedButton(this, "cmdContinue", "Continue"))
    , cmdHelp(namedButton(this, "cmdHelp", "HELP!!! What does this all mean???"))
{
    setObjectName("frmBadFiles");
    setWindowTitle("These Skin files could not be matched to any Models...");
    lblExplained->setObjectName("lblExplained");
    lblExplained->setWordWrap(true);
    lblListHeader->setObjectName("lblListHeader");
    QFont header = lblListHeader->font();
    header.setBold(true);
    lblListHeader->setFont(header);
    lblListHeader->setBuddy(lstFileList);

    auto *listButtons = new QVBoxLayout;
    listButtons->addWidget(cmdCheckAll);
    listButtons->addSpacing(fontMetrics().height() / 2);
    listButtons->addWidget(cmdSaveToFile);
    listButtons->addWidget(cmdSaveOpen);
    listButtons->addStretch(1);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(cmdHelp);
    buttons->addStretch(1);
    buttons->addWidget(cmdContinue);

    auto *layout = new QGridLayout(this);
    layout->setColumnStretch(0, 1);
    layout->setRowStretch(2, 1);
    layout->addWidget(lblExplained, 0, 0, 1, 2);
    layout->addWidget(lblListHeader, 1, 0);
    layout->addWidget(lstFileList, 2, 0);
    layout->addLayout(listButtons, 2, 1);
    layout->addLayout(buttons, 3, 0, 1, 2);

    connect(cmdCheckAll, &QPushButton::clicked, this, &frmBadFiles::cmdCheckAll_Click);
    connect(cmdSaveToFile, &QPushButton::clicked, this, [] { SaveUnmatchedListAndSay(); });
    connect(cmdSaveOpen, &QPushButton::clicked, this, &frmBadFiles::cmdSaveOpen_Click);
    connect(cmdContinue, &QPushButton::clicked, this, &frmBadFiles::cmdContinue_Click);
    connect(cmdHelp, &QPushButton::clicked, this, &frmBadFiles::cmdHelp_Click);

    RemoveCloseMenu(this);
    const int chars = fontMetrics().averageCharWidth();
    resize(chars * 110, fontMetrics().height() * 26);
}

void frmBadFiles::setFiles(const QStringList &paths)
{
    lstFileList->clear();
    for (const QString &path : paths) {
        QTreeWidgetItem *item = addSkinFile(lstFileList, path);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable
            | Qt::ItemNeverHasChildren);
        item->setCheckState(0, Qt::Unchecked);
    }
    cmdCheckAll->setText(CheckAllCaption);
}

QStringList frmBadFiles::checkedFiles() const
{
    QStringList paths;
    for (int row = 0; row < lstFileList->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = lstFileList->topLevelItem(row);
        if (item->checkState(0) == Qt::Checked)
            paths.append(skinFilePath(item));
    }
    return paths;
}

void frmBadFiles::ShowReport(const QStringList &paths)
{
    setFiles(paths);
    exec();
}

void frmBadFiles::cmdCheckAll_Click()
{
    const bool check = cmdCheckAll->text() == CheckAllCaption;
    for (int row = 0; row < lstFileList->topLevelItemCount(); ++row)
        lstFileList->topLevelItem(row)->setCheckState(0, check ? Qt::Checked : Qt::Unchecked);
    cmdCheckAll->setText(check ? UncheckAllCaption : CheckAllCaption);
}

void frmBadFiles::cmdSaveOpen_Click()
{
    const QString path = SaveUnmatchedListFile();
    if (path.isEmpty())
        return;
    // Without a viewer the saved file is still worth knowing about.
    if (!PerformShellAction(path))
        showMessage(QStringLiteral("Save List to File and Open It"),
            QStringLiteral("The list was saved, but no program could open it:\r\n") + path,
            MessageButtons::Ok, MessageIcon::Exclamation);
}

void frmBadFiles::cmdContinue_Click()
{
    ContinueToPatternEditor(checkedFiles());
    theForm<frmPattern>().loadFiles();
    accept();
}

void frmBadFiles::cmdHelp_Click()
{
    OpenUserGuide(QStringLiteral("unmatched-skins"));
}
