#pragma once

#include <QDialog>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

// What the two path dialogs share: a message, the path (typed, pasted or
// browsed for), Browse and OK. The path field and ChosenPath are always the
// same text.
class PathDialog : public QDialog
{
    Q_OBJECT

public:
    QLabel *lblMessage;
    QLabel *lblPath;
    QLabel *Label2;
    QPushButton *cmdBrowse;
    QLabel *lblOK;
    QPushButton *OKButton;

    // The path shown and, once OK has been accepted, the one confirmed.
    QString ChosenPath;

    // Shows `path` in the path field and makes it the chosen path.
    void showPath(const QString &path);

protected:
    PathDialog(const char *pathFieldName, const QString &message, QWidget *parent);

    QLineEdit *pathField() const { return m_pathField; }
    // Adds a line under everything else.
    void addFootnote(QLabel *note);
    // Lets the user pick a folder with the folder chooser; an empty choice
    // leaves the shown path as it is.
    void browse(const QString &caption, bool allowCreateFolder);
    virtual void cmdBrowse_Click() = 0;
    virtual void OKButton_Click() = 0;

private:
    QLineEdit *m_pathField;
    QGridLayout *m_layout;
};
