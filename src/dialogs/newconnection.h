#ifndef QUORVANE_NEWCONNECTION_H
#define QUORVANE_NEWCONNECTION_H

#include <QDialog>

namespace Ui {
class NewConnection;
}

// Asks for the kind of a new connection. The choice is not acted on yet.
class NewConnection : public QDialog
{
    Q_OBJECT

public:
    explicit NewConnection(QWidget *parent = nullptr);
    ~NewConnection() override;

private slots:
    void on_buttonBox_accepted();

private:
    Ui::NewConnection *ui;
};

#endif
