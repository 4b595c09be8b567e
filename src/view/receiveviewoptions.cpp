#include "view/receiveviewoptions.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QRadioButton>

#include "view/viewsettings.h"

ReceiveViewOptions::ReceiveViewOptions(QGridLayout *receiveGroup, QRadioButton *hexRadio, QObject *parent)
    : QObject(parent)
    , hexAsciiRadio(new QRadioButton(tr("Hex+ASCII"), hexRadio->parentWidget()))
    , ansiBox(new QCheckBox(tr("ANSI Colours"), hexRadio->parentWidget()))
{
    hexAsciiRadio->setObjectName(QStringLiteral("hexAsciiRadio"));
    hexAsciiRadio->setToolTip(tr("Received bytes in rows of 16: offset, hex bytes and their ASCII characters"));
    ansiBox->setObjectName(QStringLiteral("ansiColourBox"));
    ansiBox->setToolTip(tr("Draw the ANSI colour sequences a device sends as colours, without showing them"));

    struct Placed {
        QLayoutItem *item;
        int row, column, rowSpan, columnSpan;
    };
    QList<Placed> below;
    for (int i = receiveGroup->count() - 1; i >= 0; --i) {
        Placed placed{nullptr, 0, 0, 0, 0};
        receiveGroup->getItemPosition(i, &placed.row, &placed.column, &placed.rowSpan, &placed.columnSpan);
        if (placed.row < 1)
            continue;
        placed.item = receiveGroup->takeAt(i);
        below.append(placed);
    }
    for (const Placed &placed : std::as_const(below))
        receiveGroup->addItem(placed.item, placed.row + 1, placed.column, placed.rowSpan, placed.columnSpan);
    receiveGroup->addWidget(ansiBox, 1, 0);
    receiveGroup->addWidget(hexAsciiRadio, 1, 1);
    QWidget::setTabOrder(hexRadio, ansiBox);
    QWidget::setTabOrder(ansiBox, hexAsciiRadio);
}

void ReceiveViewOptions::show(const ViewSettings &settings, bool hexFormat)
{
    if (hexFormat && settings.hexAscii)
        hexAsciiRadio->setChecked(true);
    ansiBox->setChecked(settings.ansiColours);
}

void ReceiveViewOptions::copyTo(ViewSettings &settings) const
{
    settings.hexAscii = hexAsciiRadio->isChecked();
    settings.ansiColours = ansiBox->isChecked();
}
