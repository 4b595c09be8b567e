#include "send/macroeditordialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "send/checksum.h"
#include "send/hexinputfeedback.h"

MacroEditorDialog::MacroEditorDialog(const SendMacroList &macros, QWidget *parent)
    : QDialog(parent)
    , list(macros)
    , names(new QListWidget(this))
    , addButton(new QPushButton(tr("Add"), this))
    , removeButton(new QPushButton(tr("Remove"), this))
    , upButton(new QPushButton(tr("Up"), this))
    , downButton(new QPushButton(tr("Down"), this))
    , form(new QWidget(this))
    , nameEdit(new QLineEdit(form))
    , payloadEdit(new QPlainTextEdit(form))
    , formatBox(new QComboBox(form))
    , lineEndingBox(new QComboBox(form))
    , checksumBox(new QComboBox(form))
    , byteOrderBox(new QComboBox(form))
    , repeatBox(new QSpinBox(form))
    , preview(new QLabel(form))
{
    setWindowTitle(tr("Macros"));
    setObjectName(QStringLiteral("macroEditor"));
    formatBox->addItems({tr("Text"), tr("Hex")});
    lineEndingBox->addItems({tr("None"), QStringLiteral("LF"), QStringLiteral("CR"), QStringLiteral("CR LF")});
    checksumBox->addItem(tr("None"));
    checksumBox->addItems(Checksum::names());
    byteOrderBox->addItems({tr("Low byte first"), tr("High byte first")});
    repeatBox->setRange(0, 24 * 3600 * 1000);
    repeatBox->setSuffix(tr(" ms"));
    repeatBox->setSpecialValueText(tr("Off"));
    preview->setWordWrap(true);
    preview->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto *formLayout = new QFormLayout(form);
    formLayout->addRow(tr("Name"), nameEdit);
    formLayout->addRow(tr("Payload"), payloadEdit);
    formLayout->addRow(tr("Format"), formatBox);
    formLayout->addRow(tr("Line ending"), lineEndingBox);
    formLayout->addRow(tr("Checksum"), checksumBox);
    formLayout->addRow(tr("Byte order"), byteOrderBox);
    formLayout->addRow(tr("Repeat every"), repeatBox);
    formLayout->addRow(tr("Sends"), preview);

    auto *listButtons = new QHBoxLayout;
    for (QPushButton *button : {addButton, removeButton, upButton, downButton})
        listButtons->addWidget(button);
    auto *listColumn = new QVBoxLayout;
    listColumn->addWidget(names);
    listColumn->addLayout(listButtons);
    auto *columns = new QHBoxLayout;
    columns->addLayout(listColumn, 1);
    columns->addWidget(form, 2);
    auto *dialogButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addWidget(dialogButtons);

    connect(dialogButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(dialogButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(addButton, &QPushButton::clicked, this, &MacroEditorDialog::addMacro);
    connect(removeButton, &QPushButton::clicked, this, &MacroEditorDialog::removeMacro);
    connect(upButton, &QPushButton::clicked, this, [this] { moveMacro(-1); });
    connect(downButton, &QPushButton::clicked, this, [this] { moveMacro(1); });
    connect(names, &QListWidget::currentRowChanged, this, &MacroEditorDialog::showMacro);
    connect(nameEdit, &QLineEdit::textEdited, this, [this](const QString &name) {
        if (QListWidgetItem *item = names->currentItem())
            item->setText(name);
    });
    connect(payloadEdit, &QPlainTextEdit::textChanged, this, &MacroEditorDialog::updatePreview);
    for (QComboBox *box : {formatBox, lineEndingBox, checksumBox, byteOrderBox})
        connect(box, &QComboBox::currentIndexChanged, this, &MacroEditorDialog::updatePreview);

    for (const SendMacro &macro : std::as_const(list))
        names->addItem(macro.name);
    names->setCurrentRow(list.isEmpty() ? -1 : 0);
    showMacro(names->currentRow());
    resize(640, 380);
}

SendMacroList MacroEditorDialog::macros()
{
    storeShown();
    return list;
}

void MacroEditorDialog::addMacro()
{
    if (list.size() >= MaxSendMacros)
        return;
    storeShown();
    SendMacro macro;
    macro.name = tr("Macro %1").arg(list.size() + 1);
    list.append(macro);
    shownRow = -1;
    names->addItem(macro.name);
    names->setCurrentRow(list.size() - 1);
    nameEdit->setFocus();
    nameEdit->selectAll();
}

void MacroEditorDialog::removeMacro()
{
    const int row = names->currentRow();
    if (row < 0)
        return;
    shownRow = -1;
    list.removeAt(row);
    delete names->takeItem(row);
    showMacro(names->currentRow());
}

void MacroEditorDialog::moveMacro(int step)
{
    const int row = names->currentRow();
    const int target = row + step;
    if (row < 0 || target < 0 || target >= list.size())
        return;
    storeShown();
    shownRow = -1;
    list.move(row, target);
    names->insertItem(target, names->takeItem(row));
    names->setCurrentRow(target);
}

void MacroEditorDialog::showMacro(int row)
{
    storeShown();
    shownRow = row;
    const bool valid = row >= 0 && row < list.size();
    form->setEnabled(valid);
    removeButton->setEnabled(valid);
    upButton->setEnabled(valid && row > 0);
    downButton->setEnabled(valid && row + 1 < list.size());
    addButton->setEnabled(list.size() < MaxSendMacros);
    const SendMacro macro = valid ? list.at(row) : SendMacro();
    nameEdit->setText(macro.name);
    payloadEdit->setPlainText(macro.payload);
    formatBox->setCurrentIndex(macro.hex ? 1 : 0);
    lineEndingBox->setCurrentIndex(macro.lineEnding);
    checksumBox->setCurrentIndex(qMax(0, checksumBox->findText(macro.checksum)));
    byteOrderBox->setCurrentIndex(macro.bigEndian ? 1 : 0);
    repeatBox->setValue(macro.repeatMs);
    updatePreview();
}

void MacroEditorDialog::storeShown()
{
    if (shownRow >= 0 && shownRow < list.size())
        list[shownRow] = shownMacro();
}

SendMacro MacroEditorDialog::shownMacro() const
{
    SendMacro macro;
    macro.name = nameEdit->text();
    macro.payload = payloadEdit->toPlainText();
    macro.hex = formatBox->currentIndex() == 1;
    macro.lineEnding = lineEndingBox->currentIndex();
    macro.checksum = checksumBox->currentIndex() > 0 ? checksumBox->currentText() : QString();
    macro.bigEndian = byteOrderBox->currentIndex() == 1;
    macro.repeatMs = repeatBox->value();
    return macro;
}

void MacroEditorDialog::updatePreview()
{
    lineEndingBox->setEnabled(formatBox->currentIndex() == 0);
    preview->setText(hexSendHint(encodeMacro(shownMacro()), 32));
}
