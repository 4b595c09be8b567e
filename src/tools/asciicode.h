#ifndef QUORVANE_ASCIICODE_H
#define QUORVANE_ASCIICODE_H

#include <QDialog>
#include <QStringList>

namespace Ui {
class AsciiCode;
}

// The 128 ASCII codes in binary, decimal and hexadecimal, with their
// abbreviation or glyph and, for control codes, a description.
class AsciiCode : public QDialog
{
    Q_OBJECT

public:
    explicit AsciiCode(QWidget *parent = nullptr);
    ~AsciiCode() override;

private:
    void fillTable();

    Ui::AsciiCode *ui;
    QStringList abbreviations;
    QStringList descriptions;
};

#endif
