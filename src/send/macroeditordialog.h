#ifndef QUORVANE_MACROEDITORDIALOG_H
#define QUORVANE_MACROEDITORDIALOG_H

#include <QDialog>

#include "send/sendmacro.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;

// Adds, edits, reorders and removes the macros of one session; the result
// is taken from macros() once accepted.
class MacroEditorDialog : public QDialog
{
    Q_OBJECT

public:
    explicit MacroEditorDialog(const SendMacroList &macros, QWidget *parent = nullptr);

    SendMacroList macros();

private:
    void addMacro();
    void removeMacro();
    void moveMacro(int step);
    void showMacro(int row);
    void storeShown();
    void updatePreview();
    SendMacro shownMacro() const;

    SendMacroList list;
    int shownRow = -1;

    QListWidget *names;
    QPushButton *addButton;
    QPushButton *removeButton;
    QPushButton *upButton;
    QPushButton *downButton;
    QWidget *form;
    QLineEdit *nameEdit;
    QPlainTextEdit *payloadEdit;
    QComboBox *formatBox;
    QComboBox *lineEndingBox;
    QComboBox *checksumBox;
    QComboBox *byteOrderBox;
    QSpinBox *repeatBox;
    QLabel *preview;
};

#endif
