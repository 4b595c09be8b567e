#ifndef QUORVANE_TOOLBOX_H
#define QUORVANE_TOOLBOX_H

#include <QByteArray>
#include <QDialog>

namespace Ui {
class ToolBox;
}

// Text <-> hexadecimal converter and a CRC calculator over a fixed
// catalogue of named models. Keeps nothing between openings.
class ToolBox : public QDialog
{
    Q_OBJECT

public:
    explicit ToolBox(QWidget *parent = nullptr);
    ~ToolBox() override;

    // Shows the parameters of the model named in cbName (read-only fields).
    void flushPara();
    void updatePara(quint32 width, quint64 poly, quint64 init, quint64 xorout, bool refin,
                    bool refout);
    // CRC of the bytes for the model named in cbName.
    quint64 calcCRC(const QByteArray &data) const;

private slots:
    void on_hexToText_clicked();
    void on_textToHex_clicked();
    void on_calculateCRC_clicked();
    void on_inputCrc_textChanged();
    void on_cbName_currentIndexChanged(int index);
    void on_rbHex_toggled(bool checked);

private:
    QByteArray crcInputBytes() const;

    Ui::ToolBox *ui;
};

#endif
