#include "tools/asciicode.h"

#include <QHeaderView>
#include <QTableWidgetItem>

#include "ui_asciicode.h"

namespace {

constexpr int codeCount = 128;
constexpr int delCode = 127;
constexpr int describedCodes = 38;
constexpr int rowHeight = 21;
constexpr int narrowColumnWidth = 75;
constexpr int descriptionColumnWidth = 190;
constexpr int descriptionColumn = 4;

QStringList makeAbbreviations()
{
    QStringList list = {"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL",
                        "BS",  "HT",  "LF",  "VT",  "FF",  "CR",  "SO",  "SI",
                        "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB",
                        "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};
    for (int code = list.size(); code < delCode; ++code)
        list << QString(QChar(code));
    list << QStringLiteral("DEL");
    return list;
}

// The backslash sequences are shown as typed, not as escapes.
QStringList makeDescriptions()
{
    QStringList list = {
        "\\0 Null character", "Start of Header", "Start of Text", "End of Text",
        "End of Transmission", "Enquiry", "Acknowledgment", "\\a Bell", "\\b Backspace",
        "\\t Horizontal Tab", "\\n Line feed", "\\v Vertical Tab", "\\f Form feed",
        "\\r Carriage return", "Shift Out", "Shift In", "Data Link Escape",
        "Device Control 1 (oft. XON)", "Device Control 2", "Device Control 3 (oft. XOFF)",
        "Device Control 4", "Negative Acknowledgement", "Synchronous idle",
        "End of Transmission Block", "Cancel", "End of Medium", "Substitute", "\\e Escape",
        "File Separator", "Group Separator", "Record Separator", "Unit Separator", "Space"};
    while (list.size() < describedCodes)
        list << QString();
    return list;
}

} // namespace

AsciiCode::AsciiCode(QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::AsciiCode)
    , abbreviations(makeAbbreviations())
    , descriptions(makeDescriptions())
{
    ui->setupUi(this);
    fillTable();
}

AsciiCode::~AsciiCode()
{
    delete ui;
}

void AsciiCode::fillTable()
{
    QTableWidget *table = ui->tableWidget;
    // The header derives its minimum from the font, which would make the
    // compact rows taller than wanted.
    table->verticalHeader()->setMinimumSectionSize(rowHeight);
    for (int code = 0; code < codeCount; ++code) {
        table->insertRow(code);
        table->setItem(code, 0, new QTableWidgetItem(QStringLiteral("%1").arg(code, 8, 2, QLatin1Char(' '))));
        table->setItem(code, 1, new QTableWidgetItem(QString::number(code)));
        table->setItem(code, 2, new QTableWidgetItem(
                                    QStringLiteral("%1").arg(code, 2, 16, QLatin1Char(' ')).toUpper()));
        table->setItem(code, 3, new QTableWidgetItem(abbreviations.at(code)));
        if (code < describedCodes)
            table->setItem(code, descriptionColumn, new QTableWidgetItem(descriptions.at(code)));
        else if (code == delCode)
            // DEL has always been listed with an empty description; the
            // chart is kept the way users know it.
            table->setItem(code, descriptionColumn, new QTableWidgetItem(QString()));
        table->setRowHeight(code, rowHeight);
    }
    for (int column = 0; column < descriptionColumn; ++column)
        table->setColumnWidth(column, narrowColumnWidth);
    table->setColumnWidth(descriptionColumn, descriptionColumnWidth);
}
