#include "view/highlightrulesdialog.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

// New rules take these in turn: red, amber, green, blue.
const QRgb suggestedColours[] = {qRgb(0xd0, 0x20, 0x20), qRgb(0xc8, 0x80, 0x00), qRgb(0x20, 0x90, 0x30),
                                 qRgb(0x20, 0x60, 0xd0)};

QTableWidgetItem *checkItem(bool checked)
{
    auto *item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    return item;
}

} // namespace

HighlightRulesDialog::HighlightRulesDialog(const HighlightRuleList &rules, QWidget *parent)
    : QDialog(parent)
    , table(new QTableWidget(0, ColumnCount, this))
{
    setWindowTitle(tr("Highlight Rules"));
    setObjectName(QStringLiteral("highlightRulesDialog"));
    table->setHorizontalHeaderLabels(
        {tr("Pattern"), tr("Regular expression"), tr("Match case"), tr("Whole line"), tr("Colour")});
    table->horizontalHeader()->setSectionResizeMode(PatternColumn, QHeaderView::Stretch);
    for (int column = RegexColumn; column < ColumnCount; ++column)
        table->horizontalHeader()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    table->verticalHeader()->hide();
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    for (const HighlightRule &rule : rules)
        addRow(rule);

    auto *add = new QPushButton(tr("Add"), this);
    auto *remove = new QPushButton(tr("Remove"), this);
    auto *up = new QPushButton(tr("Up"), this);
    auto *down = new QPushButton(tr("Down"), this);
    auto *colour = new QPushButton(tr("Colour..."), this);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *button : {add, remove, up, down, colour})
        buttons->addWidget(button);
    buttons->addStretch();
    auto *dialogButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addLayout(buttons);
    layout->addWidget(dialogButtons);

    connect(add, &QPushButton::clicked, this, [this] {
        HighlightRule rule;
        rule.colour = QColor(suggestedColours[table->rowCount() % std::size(suggestedColours)]);
        addRow(rule);
        table->setCurrentCell(table->rowCount() - 1, PatternColumn);
        table->editItem(table->currentItem());
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        if (table->currentRow() >= 0)
            table->removeRow(table->currentRow());
    });
    connect(up, &QPushButton::clicked, this, [this] { moveCurrent(-1); });
    connect(down, &QPushButton::clicked, this, [this] { moveCurrent(1); });
    connect(colour, &QPushButton::clicked, this, [this] { chooseColour(table->currentRow()); });
    connect(table, &QTableWidget::cellDoubleClicked, this, [this](int row, int column) {
        if (column == ColourColumn)
            chooseColour(row);
    });
    connect(dialogButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(dialogButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    add->setEnabled(rules.size() < MaxHighlightRules);
    connect(table->model(), &QAbstractItemModel::rowsInserted, add,
            [this, add] { add->setEnabled(table->rowCount() < MaxHighlightRules); });
    connect(table->model(), &QAbstractItemModel::rowsRemoved, add,
            [this, add] { add->setEnabled(table->rowCount() < MaxHighlightRules); });
    resize(640, 320);
}

void HighlightRulesDialog::addRow(const HighlightRule &rule)
{
    const int row = table->rowCount();
    table->insertRow(row);
    table->setItem(row, PatternColumn, new QTableWidgetItem(rule.pattern.text));
    table->setItem(row, RegexColumn, checkItem(rule.pattern.regex));
    table->setItem(row, CaseColumn, checkItem(rule.pattern.matchCase));
    table->setItem(row, LineColumn, checkItem(rule.wholeLine));
    auto *colour = new QTableWidgetItem;
    colour->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    colour->setData(Qt::DecorationRole, rule.colour);
    colour->setData(Qt::DisplayRole, rule.colour.name());
    table->setItem(row, ColourColumn, colour);
}

void HighlightRulesDialog::moveCurrent(int step)
{
    const int row = table->currentRow();
    const int target = row + step;
    if (row < 0 || target < 0 || target >= table->rowCount())
        return;
    for (int column = 0; column < ColumnCount; ++column) {
        QTableWidgetItem *moving = table->takeItem(row, column);
        table->setItem(row, column, table->takeItem(target, column));
        table->setItem(target, column, moving);
    }
    table->setCurrentCell(target, table->currentColumn());
}

void HighlightRulesDialog::chooseColour(int row)
{
    if (row < 0)
        return;
    QTableWidgetItem *item = table->item(row, ColourColumn);
    const QColor colour = QColorDialog::getColor(item->data(Qt::DecorationRole).value<QColor>(), this,
                                                 tr("Rule Colour"));
    if (!colour.isValid())
        return;
    item->setData(Qt::DecorationRole, colour);
    item->setData(Qt::DisplayRole, colour.name());
}

HighlightRuleList HighlightRulesDialog::rules() const
{
    HighlightRuleList list;
    for (int row = 0; row < table->rowCount(); ++row) {
        HighlightRule rule;
        rule.pattern.text = table->item(row, PatternColumn)->text().left(MaxHighlightPatternLength);
        rule.pattern.regex = table->item(row, RegexColumn)->checkState() == Qt::Checked;
        rule.pattern.matchCase = table->item(row, CaseColumn)->checkState() == Qt::Checked;
        rule.wholeLine = table->item(row, LineColumn)->checkState() == Qt::Checked;
        rule.colour = table->item(row, ColourColumn)->data(Qt::DecorationRole).value<QColor>();
        if (!rule.pattern.text.isEmpty())
            list.append(rule);
    }
    return list;
}

void HighlightRulesDialog::done(int result)
{
    if (result == Accepted) {
        const HighlightRuleList list = rules();
        for (int i = 0; i < list.size(); ++i) {
            const TextMatcher matcher(list.at(i).pattern);
            if (!matcher.isValid()) {
                QMessageBox::warning(this, windowTitle(),
                                     tr("The pattern \"%1\" is not a valid regular expression: %2")
                                         .arg(list.at(i).pattern.text, matcher.errorText()));
                return;
            }
        }
    }
    QDialog::done(result);
}
