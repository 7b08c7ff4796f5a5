#include "dlgOpen.h"

#include "configfiles/configfile.h"
#include "configfiles/configname.h"
#include "configfiles/prompt.h"
#include "configfiles/runerror.h"
#include "startup/options.h"
#include "windowtools.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace {

const QString OpenTitle = QStringLiteral("Open Configuration");

void refuse(const QString &title, const QString &text)
{
    showMessage(title, text, MessageButtons::Ok, MessageIcon::Exclamation);
}

} // namespace

dlgOpen::dlgOpen(QWidget *parent)
    : FileNameDialog(parent)
    , txtName(nameBox())
    , cmdOpen(new QPushButton(QStringLiteral("Open"), this))
    , CancelButton(new QPushButton(QStringLiteral("Cancel"), this))
{
    setObjectName("dlgOpen");
    setWindowTitle("Open Existing Configuration...");
    txtName->setObjectName("txtName");
    cmdOpen->setObjectName("cmdOpen");
    CancelButton->setObjectName("CancelButton");
    cmdOpen->setDefault(true);

    auto *nameRow = new QHBoxLayout;
    nameRow->addWidget(txtName);
    finishLayout(nameRow, { cmdOpen, CancelButton });

    connect(cmdOpen, &QPushButton::clicked, this, &dlgOpen::cmdOpen_Click);
    connect(CancelButton, &QPushButton::clicked, this, &QDialog::reject);
    RemoveCloseMenu(this);
}

void dlgOpen::load()
{
    FileOpened = false;
}

void dlgOpen::choose()
{
    cmdOpen->click();
}

QString dlgOpen::existingName(const QString &typed) const
{
    if (typed.isEmpty()) {
        refuse(OpenTitle,
            QStringLiteral("Type the name of a configuration to open, or pick one from the list."));
        return {};
    }
    if (const QString problem = ConfigNameProblem(typed); !problem.isEmpty()) {
        refuse(InvalidConfigNameTitle(), problem);
        return {};
    }
    const QString folder = AppOptions().ConfigPath;
    for (const QString &name : { typed, typed + QLatin1String(".qvn") }) {
        if (QFileInfo(folder + name).isFile())
            return name;
    }
    refuse(OpenTitle,
        QStringLiteral("Can't find ") + typed + QStringLiteral(" in the configuration folder ")
            + folder + QLatin1Char('.'));
    return {};
}

void dlgOpen::cmdOpen_Click()
{
    const QString name = existingName(txtName->text());
    if (name.isEmpty())
        return;
    // The reader lets the event loop run: nothing here may be pressed
    // meanwhile.
    EnableControls(false);
    try {
        const BusyPointer busy;
        OpenConfiguration(AppOptions().ConfigPath, name);
    } catch (const RunError &error) {
        EnableControls(true);
        refuse(QStringLiteral("Configuration Not Opened"),
            QStringLiteral("The configuration ") + name
                + QStringLiteral(" could not be opened; nothing was changed.\r\n")
                + error.message());
        return;
    }
    EnableControls(true);
    FileOpened = true;
    OpenedFileName = name;
    accept();
}

void dlgOpen::EnableControls(bool enabled)
{
    for (QWidget *control : std::initializer_list<QWidget *> {
             lblFilelist, lblFilename, cmdOpen, CancelButton, txtName, fileOne })
        control->setEnabled(enabled);
}
