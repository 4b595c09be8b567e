#include "tools/toolbox.h"

#include "common/logging.h"
#include "common/texthelpers.h"
#include "tools/crc.h"
#include "ui_toolbox.h"

namespace {

// "1A" -> "1a ": the converter's output, one lower-case pair per byte.
QString lowerHexPairs(const QByteArray &bytes)
{
    QString text;
    text.reserve(bytes.size() * 3);
    for (const char byte : bytes)
        text += QStringLiteral("%1 ").arg(quint8(byte), 2, 16, QLatin1Char('0'));
    return text;
}

QString paddedHex(quint64 value, quint32 width, QChar padding)
{
    return QStringLiteral("%1").arg(value, int(width / 4), 16, padding).toUpper();
}

} // namespace

ToolBox::ToolBox(QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::ToolBox)
{
    ui->setupUi(this);
    // Filling the box selects the first model, which shows its parameters
    // and the CRC of the (empty) input through the index-changed slot.
    ui->cbName->addItems(crcModelNames());
}

ToolBox::~ToolBox()
{
    delete ui;
}

void ToolBox::flushPara()
{
    // The parameters come from the catalogue; they are shown, never edited.
    const QList<QWidget *> parameterFields = {ui->leWidth, ui->lePoly,  ui->leInit,
                                              ui->leXorout, ui->cbRefin, ui->cbRefout};
    for (QWidget *field : parameterFields)
        field->setEnabled(false);

    const QString name = ui->cbName->currentText();
    if (name == QLatin1String("CRC-16/MODBUS"))
        qCDebug(lcDefault) << "CRC_NAME_CRC16_MODBUS";
    const CrcModel model = crcModelByName(name);
    updatePara(model.width, model.poly, model.init, model.xorout, model.refin, model.refout);
}

void ToolBox::updatePara(quint32 width, quint64 poly, quint64 init, quint64 xorout, bool refin,
                         bool refout)
{
    ui->leWidth->setText(QString::number(width));
    ui->lePoly->setText(paddedHex(poly, width, QLatin1Char(' ')));
    ui->leInit->setText(paddedHex(init, width, QLatin1Char(' ')));
    ui->leXorout->setText(paddedHex(xorout, width, QLatin1Char('0')));
    ui->cbRefin->setChecked(refin);
    ui->cbRefout->setChecked(refout);
}

quint64 ToolBox::calcCRC(const QByteArray &data) const
{
    return ::calcCRC(data, crcComputationModel(ui->cbName->currentText()));
}

QByteArray ToolBox::crcInputBytes() const
{
    const QString text = ui->inputCrc->toPlainText();
    return ui->rbAscii->isChecked() ? text.toLocal8Bit() : GetHexValue(text);
}

void ToolBox::on_calculateCRC_clicked()
{
    const quint64 crc = calcCRC(crcInputBytes());
    ui->leResult->setText(QString::number(crc, 16).toUpper());
    qCDebug(lcDefault) << "Computed CRC: " << Qt::hex << crc;
}

void ToolBox::on_inputCrc_textChanged()
{
    on_calculateCRC_clicked();
}

void ToolBox::on_rbHex_toggled(bool)
{
    on_calculateCRC_clicked();
}

void ToolBox::on_cbName_currentIndexChanged(int index)
{
    qCDebug(lcDefault) << "CRC: " << ui->cbName->itemText(index);
    flushPara();
    on_calculateCRC_clicked();
}

void ToolBox::on_textToHex_clicked()
{
    ui->outputText->setPlainText(lowerHexPairs(ui->inputText->toPlainText().toLocal8Bit()));
}

void ToolBox::on_hexToText_clicked()
{
    ui->outputText->setPlainText(QString::fromLocal8Bit(GetHexValue(ui->inputText->toPlainText())));
}
