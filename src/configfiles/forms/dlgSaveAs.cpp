#include "dlgSaveAs.h"

#include "configfiles/configfile.h"
#include "configfiles/configname.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "startup/options.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

dlgSaveAs::dlgSaveAs(QWidget *parent)
    : FileNameDialog(parent)
    , txtNewName(nameBox())
    , lblExtention(new QLabel(QStringLiteral(".qvn"), this))
    , cmdSave(new QPushButton(QStringLiteral("Save File"), this))
    , cmdCancel(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName("dlgSaveAs");
    setWindowTitle("Save Configuration As...");
    txtNewName->setObjectName("txtNewName");
    lblExtention->setObjectName("lblExtention");
    cmdSave->setObjectName("cmdSave");
    cmdCancel->setObjectName("cmdCancel");
    cmdSave->setDefault(true);

    auto *nameRow = new QHBoxLayout;
    nameRow->addWidget(txtNewName, 1);
    nameRow->addWidget(lblExtention);
    finishLayout(nameRow, { cmdSave, cmdCancel });

    connect(cmdSave, &QPushButton::clicked, this, &dlgSaveAs::cmdSave_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void dlgSaveAs::load()
{
    SavedFileName.clear();
}

void dlgSaveAs::choose()
{
    cmdSave->click();
}

// The extension is added unless the name already ends with it exactly, so
// "Bots.QVN" becomes "Bots.QVN.qvn".
void dlgSaveAs::cmdSave_Click()
{
    QString fileName = txtNewName->text();
    if (!fileName.endsWith(QLatin1String(".qvn")))
        fileName += QLatin1String(".qvn");
    if (const QString problem = ConfigNameProblem(fileName); !problem.isEmpty()) {
        showMessage(
            InvalidConfigNameTitle(), problem, MessageButtons::Ok, MessageIcon::Exclamation);
        return;
    }
    try {
        if (SaveConfigAs(AppOptions().ConfigPath, fileName, false))
            SavedFileName = fileName;
    } catch (const RunError &error) {
        showMessage(QStringLiteral("Configuration Not Saved"),
            QStringLiteral("The configuration could not be saved as ") + fileName
                + QStringLiteral(":\r\n") + error.message(),
            MessageButtons::Ok, MessageIcon::Exclamation);
        return;
    }
    accept();
}
