#ifndef QUORVANE_SETCONFIGFILEPATHDIALOG_H
#define QUORVANE_SETCONFIGFILEPATHDIALOG_H

#include <QDialog>
#include <QSettings>
#include <QString>
#include <memory>

namespace Ui {
class SetConfigFilePathDialog;
}

// Asked once, on the first run: where configuration data is to be kept.
// Accepting creates the folder and remembers it in the settings store.
class SetConfigFilePathDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SetConfigFilePathDialog(QWidget *parent = nullptr);
    ~SetConfigFilePathDialog() override;

    static QString defaultConfigFilePath();
    QString getConfigFilePath() const { return configFilePath; }

private slots:
    void on_config_file_path_tb_clicked();
    void on_buttonBox_accepted();

private:
    std::unique_ptr<Ui::SetConfigFilePathDialog> ui;
    QSettings settings;
    QString configFilePath;
};

#endif
