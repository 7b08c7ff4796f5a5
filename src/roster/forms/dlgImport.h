#pragma once

#include <QDialog>
#include <QStringList>

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

// Where the game reads several user.ini files (the 64-bit game keeps its
// own), the one whose bot list File, Import from Game takes: each file with
// a preview of the bots it holds.
class dlgImport : public QDialog
{
    Q_OBJECT

public:
    explicit dlgImport(QWidget *parent = nullptr);

    // The user.ini files to offer, the first chosen.
    void setFiles(const QStringList &userIniFiles);

    QLabel *lblFiles;
    QListWidget *lstFiles;
    QLabel *lblPreview;
    QPlainTextEdit *txtPreview;
    QPushButton *cmdImport;
    QPushButton *CancelButton;

    // The file chosen at the last showing; empty when it was cancelled.
    QString ChosenFile;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void lstFiles_Click();
    void cmdImport_Click();
};
