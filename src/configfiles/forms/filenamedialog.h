#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

// What Save As and Open share: the files of the configuration folder in a
// list, and a box for the bare file name, which a click in the list fills.
// Every showing starts afresh from the folder as it is now.
class FileNameDialog : public QDialog
{
    Q_OBJECT

public:
    QLabel *lblFilelist;
    QListWidget *fileOne;
    QLabel *lblFilename;

protected:
    explicit FileNameDialog(QWidget *parent);
    // The box for the file name, which the dialog names after itself.
    QLineEdit *nameBox() const { return m_nameBox; }
    // `nameRow` is what stands in the name's row (the box and anything
    // after it), `buttons` the dialog's buttons, the first the main one.
    void finishLayout(QLayout *nameRow, const QList<QPushButton *> &buttons);

    void showEvent(QShowEvent *event) override;
    // A fresh showing: clear the dialog's results.
    virtual void load() = 0;
    // A double-click in the list: the dialog's main button.
    virtual void choose() = 0;

private:
    void fillFileList();
    void takeName();

    QLineEdit *m_nameBox;
};
