#ifndef QUORVANE_MULTIPORTSETTINGDLG_H
#define QUORVANE_MULTIPORTSETTINGDLG_H

#include <QDialog>
#include <QList>

class SettingsDialog;

namespace Ui {
class MultiPortSettingDlg;
}

// One SettingsDialog page per port session: a single page without tabs, or
// tabs "Connection 1".."Connection N". The caller copies records into the
// pages, calls updateDisplay(), and copies them back after acceptance.
class MultiPortSettingDlg : public QDialog
{
    Q_OBJECT

public:
    // As many pages as the workspace holds sessions at most.
    static constexpr int MaxPages = 16;

    MultiPortSettingDlg(QWidget *parent, int count);
    ~MultiPortSettingDlg() override;

    int pageCount() const { return pages.size(); }
    SettingsDialog *page(int index) const; // nullptr outside 0..pageCount()-1

    void updateDisplay();

private slots:
    void on_pbOK_clicked();
    void on_pbApply_clicked();
    void on_pbCancel_clicked();

private:
    Ui::MultiPortSettingDlg *ui;
    QList<SettingsDialog *> pages; // children of this dialog
};

#endif
