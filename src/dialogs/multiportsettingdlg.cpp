#include "dialogs/multiportsettingdlg.h"

#include "dialogs/settingsdialog.h"
#include "ui_multiportsettingdlg.h"

MultiPortSettingDlg::MultiPortSettingDlg(QWidget *parent, int count)
    : QDialog(parent), ui(new Ui::MultiPortSettingDlg)
{
    ui->setupUi(this);
    const int pageTotal = qBound(0, count, MaxPages);

    if (pageTotal == 1) {
        // A single session is edited without a tab bar.
        ui->tabWidget->hide();
        ui->mainLayout->removeWidget(ui->tabWidget);
        auto *single = new SettingsDialog(this);
        single->setWindowFlags(Qt::Widget);
        ui->mainLayout->insertWidget(0, single);
        pages.append(single);
        return;
    }
    for (int i = 0; i < pageTotal; ++i) {
        auto *tabPage = new SettingsDialog(this);
        tabPage->setWindowFlags(Qt::Widget);
        ui->tabWidget->addTab(tabPage, tr("Connection %1").arg(i + 1));
        pages.append(tabPage);
    }
}

MultiPortSettingDlg::~MultiPortSettingDlg()
{
    delete ui;
}

SettingsDialog *MultiPortSettingDlg::page(int index) const
{
    return pages.value(index, nullptr);
}

void MultiPortSettingDlg::updateDisplay()
{
    for (SettingsDialog *settings : std::as_const(pages))
        settings->updateDisplay();
}

void MultiPortSettingDlg::on_pbOK_clicked()
{
    for (int i = 0; i < pages.size(); ++i) {
        if (!pages[i]->updatePara()) {
            // Stay open on the page that needs correcting.
            ui->tabWidget->setCurrentIndex(i);
            return;
        }
    }
    accept();
}

void MultiPortSettingDlg::on_pbApply_clicked()
{
    for (SettingsDialog *settings : std::as_const(pages))
        settings->updatePara();
}

void MultiPortSettingDlg::on_pbCancel_clicked()
{
    reject();
}
