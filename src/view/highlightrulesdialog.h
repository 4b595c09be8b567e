#ifndef QUORVANE_HIGHLIGHTRULESDIALOG_H
#define QUORVANE_HIGHLIGHTRULESDIALOG_H

#include <QDialog>

#include "view/highlightrules.h"

class QTableWidget;

// Edits a session's highlight rules in a table: pattern, whether it is a
// regular expression, whether case matters, whole line or matches only,
// colour. Rows without a pattern are dropped; a pattern that does not
// compile keeps the dialog open with the reason.
class HighlightRulesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit HighlightRulesDialog(const HighlightRuleList &rules, QWidget *parent = nullptr);

    HighlightRuleList rules() const;

    void done(int result) override;

private:
    enum Column { PatternColumn, RegexColumn, CaseColumn, LineColumn, ColourColumn, ColumnCount };

    void addRow(const HighlightRule &rule);
    void moveCurrent(int step);
    void chooseColour(int row);

    QTableWidget *table;
};

#endif
