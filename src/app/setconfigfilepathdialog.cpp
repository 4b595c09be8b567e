#include "app/setconfigfilepathdialog.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

#include "app/startup.h"
#include "common/logging.h"
#include "ui_setconfigfilepathdialog.h"

SetConfigFilePathDialog::SetConfigFilePathDialog(QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::SetConfigFilePathDialog>())
{
    ui->setupUi(this);
    configFilePath = settings.value(StartupKeys::configFilePath).toString();
    if (configFilePath.isNull())
        configFilePath = defaultConfigFilePath();
    ui->config_file_path_le->setText(configFilePath);
}

SetConfigFilePathDialog::~SetConfigFilePathDialog() = default;

QString SetConfigFilePathDialog::defaultConfigFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/Config");
}

void SetConfigFilePathDialog::on_config_file_path_tb_clicked()
{
    const QString folder = QFileDialog::getExistingDirectory(this);
    if (!folder.isEmpty())
        ui->config_file_path_le->setText(folder);
}

void SetConfigFilePathDialog::on_buttonBox_accepted()
{
    configFilePath = ui->config_file_path_le->text();
    // The choice is remembered even when the folder cannot be made, so the
    // question is not asked again on every start.
    if (!configFilePath.isEmpty() && !QDir().mkpath(configFilePath))
        qCWarning(lcDefault) << "SetConfigFilePathDialog: cannot create" << configFilePath;
    settings.setValue(StartupKeys::configFilePath, configFilePath);
}
