#include "dialogs/newconnection.h"

#include "ui_newconnection.h"

NewConnection::NewConnection(QWidget *parent)
    : QDialog(parent), ui(new Ui::NewConnection)
{
    ui->setupUi(this);
}

NewConnection::~NewConnection()
{
    delete ui;
}

void NewConnection::on_buttonBox_accepted()
{
    // Closing is wired in the form; the chosen kind changes nothing yet.
}
