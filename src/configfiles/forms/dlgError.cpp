#include "dlgError.h"

#include "formregistry.h"
#include "windowtools.h"

#include "startup/programdirectory.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

// Texts the user may want to copy into a mail.
QLabel *valueLabel(QWidget *parent, const char *name)
{
    QLabel *label = namedLabel(parent, name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

dlgError::dlgError(QWidget *parent)
    : QDialog(parent)
    , lblErrDescrLabel(namedLabel(this, "lblErrDescrLabel", "Error Description:"))
    , lblErrDescr(valueLabel(this, "lblErrDescr"))
    , lblCustomDescrLabel(namedLabel(this, "lblCustomDescrLabel", "Custom Error Msg:"))
    , lblCustomMsg(valueLabel(this, "lblCustomMsg"))
    , Label1(namedLabel(this, "Label1",
          QStringLiteral("Please e-mail the following file to ") + QLatin1String(SupportAddress)
              + QStringLiteral(" with subject \"Quorvane Error\":")))
    , lblErrFileLoc(valueLabel(this, "lblErrFileLoc"))
    , OKButton(new QPushButton("OK", this))
{
    setObjectName("dlgError");
    OKButton->setObjectName("OKButton");
    OKButton->setDefault(true);
    Label1->setWordWrap(true);
    QFont strong = lblErrDescrLabel->font();
    strong.setBold(true);
    lblErrDescrLabel->setFont(strong);
    lblCustomDescrLabel->setFont(strong);

    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(OKButton, QDialogButtonBox::AcceptRole);

    auto *layout = new QGridLayout(this);
    layout->setColumnStretch(1, 1);
    layout->addWidget(lblErrDescrLabel, 0, 0, Qt::AlignTop);
    layout->addWidget(lblErrDescr, 0, 1, Qt::AlignTop);
    layout->addWidget(lblCustomDescrLabel, 1, 0, Qt::AlignTop);
    layout->addWidget(lblCustomMsg, 1, 1, Qt::AlignTop);
    layout->setRowMinimumHeight(2, fontMetrics().height() / 2);
    layout->addWidget(Label1, 3, 0, 1, 2);
    layout->addWidget(lblErrFileLoc, 4, 0, 1, 2);
    layout->addWidget(buttons, 5, 0, 1, 2);

    connect(OKButton, &QPushButton::clicked, this, &QDialog::accept);
    RemoveCloseMenu(this);
    // Wrapped labels would otherwise squeeze the dialog to a narrow column.
    setMinimumWidth(fontMetrics().averageCharWidth() * 78);
}

bool dlgError::ProcessError(const RunError &error, const QString &message)
{
    // A report that cannot be written must not hide the error itself.
    try {
        lblErrFileLoc->setText(WriteErrorReport(ProgramDir(), error, message));
    } catch (const RunError &failure) {
        lblErrFileLoc->setText(QStringLiteral("(The report could not be written: ")
            + failure.message() + QLatin1Char(')'));
    }
    setWindowTitle(QStringLiteral("Error Number: ") + QString::number(error.number()));
    lblErrDescr->setText(error.message());
    lblCustomMsg->setText(message);
    adjustSize();
    exec();
    return false;
}

void DialogErrorSink::processError(const RunError &error, const QString &message)
{
    theForm<dlgError>().ProcessError(error, message);
}
