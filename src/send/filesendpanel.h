#ifndef QUORVANE_FILESENDPANEL_H
#define QUORVANE_FILESENDPANEL_H

#include <QWidget>

class FileSender;
class QLabel;
class QProgressBar;
class QPushButton;

// "Send File..." with the progress, Cancel and a one-line summary of the
// last file sent.
class FileSendPanel : public QWidget
{
    Q_OBJECT

public:
    FileSendPanel(FileSender *sender, QWidget *parent = nullptr);

private:
    void chooseFile();
    void showFinished(bool complete);

    FileSender *sender;
    QPushButton *sendFileButton;
    QProgressBar *progress;
    QPushButton *cancelButton;
    QLabel *summary;
};

#endif
