#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

// What the two path dialogs share: a message, the shown path, Browse and
// OK. The shown path and ChosenPath are always the same text.
class PathDialog : public QDialog
{
    Q_OBJECT

public:
    QLabel *lblMessage;
    QLabel *Label2;
    QPushButton *cmdBrowse;
    QLabel *lblOK;
    QPushButton *OKButton;

    // The path shown and, once OK has been accepted, the one confirmed.
    QString ChosenPath;

    // Shows `path` in the path label and makes it the chosen path.
    void showPath(const QString &path);

protected:
    PathDialog(const char *pathLabelName, const QString &message, QWidget *parent);

    QLabel *pathLabel() const { return m_pathLabel; }
    // Lets the user pick a folder with the folder chooser; an empty choice
    // leaves the shown path as it is.
    void browse(const QString &caption, bool allowCreateFolder);
    virtual void cmdBrowse_Click() = 0;
    virtual void OKButton_Click() = 0;

private:
    QLabel *m_pathLabel;
};
