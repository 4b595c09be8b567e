#ifndef QUORVANE_SETTINGSDIALOG_H
#define QUORVANE_SETTINGSDIALOG_H

#include <QColor>
#include <QDialog>
#include <QFont>

#include "session/portsettings.h"

class QAbstractButton;
class QCheckBox;
class QIntValidator;
class QLineEdit;

namespace Ui {
class SettingsDialog;
}

// Edits copies of one port session's two records. The caller copies the
// records into the public members, calls updateDisplay(), and after
// updatePara() returned true copies them back. Used on its own or as a page
// of MultiPortSettingDlg.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    explicit SettingsDialog(QWidget *parent = nullptr);
    ~SettingsDialog() override;

    // Widgets -> records. False (after a warning) when the input cannot be
    // taken; the records are then left as they were.
    bool updatePara();
    // Records -> widgets.
    void updateDisplay();

    PortSettings portSettings;
    FormatSetting formatSetting;

    static const QString NetworkPortEntry;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    void on_portBox_currentIndexChanged(int index);
    void on_baudRateBox_currentIndexChanged(int index);
    void on_rxTimeFormatLE_textChanged(const QString &text);
    void on_txTimeFormatLE_textChanged(const QString &text);
    void on_logFileNameLE_textChanged(const QString &text);
    void on_sendInterUnitCB_currentIndexChanged(int index);
    void on_filePathButton_clicked();
    void on_fontPB_clicked();
    void on_sendTextColorPB_clicked();
    void on_receiveTextColorPB_clicked();

private:
    void initialPara();
    void fillPortsInfo();
    void fillPortsParameters();
    void fillTcpParameters();
    void applyNetworkRows(qint32 mode);
    void checkCustomBaudRatePolicy(int index);
    void addRawLogOptions();
    void selectPort(const QString &portName);
    bool networkPanelShown() const;

    void showConnectionSettings();
    void showSerialParameters();
    void showReceiveSettings();
    void showSendSettings();
    void showLogSettings();
    void showDisplaySettings();

    void takeSerialSettings(PortSettings &port) const;
    void takeNetworkSettings(PortSettings &port) const;
    void takeReceiveSettings(FormatSetting &format) const;
    void takeSendSettings(FormatSetting &format) const;
    void takeLogSettings(FormatSetting &format) const;
    void takeDisplaySettings(FormatSetting &format) const;

    void chooseColor(QColor &color, QLineEdit *display);

    Ui::SettingsDialog *ui;
    QIntValidator *baudRateValidator;
    QIntValidator *portValidator;
    QList<QAbstractButton *> lineEndingButtons;
    bool networkPanel = false;
    qint32 shownSendUnit = 1;  // the unit the interval spin box shows now
    QCheckBox *rawLogBox = nullptr;
    QCheckBox *rawLogSentBox = nullptr;

    // Chosen through the font and colour dialogs; the line edits only show them.
    QFont chosenFont;
    QColor chosenSendColor;
    QColor chosenReceiveColor;
};

#endif
