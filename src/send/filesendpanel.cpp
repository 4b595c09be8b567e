#include "send/filesendpanel.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "send/filesender.h"

FileSendPanel::FileSendPanel(FileSender *sender, QWidget *parent)
    : QWidget(parent)
    , sender(sender)
    , sendFileButton(new QPushButton(tr("Send File..."), this))
    , progress(new QProgressBar(this))
    , cancelButton(new QPushButton(tr("Cancel"), this))
    , summary(new QLabel(this))
{
    setObjectName(QStringLiteral("fileSendPanel"));
    sendFileButton->setObjectName(QStringLiteral("sendFileButton"));
    cancelButton->setObjectName(QStringLiteral("cancelFileButton"));
    progress->setMaximumWidth(200);
    progress->hide();
    cancelButton->hide();
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(summary, 1);
    layout->addWidget(progress);
    layout->addWidget(cancelButton);
    layout->addWidget(sendFileButton);

    connect(sendFileButton, &QPushButton::clicked, this, &FileSendPanel::chooseFile);
    connect(cancelButton, &QPushButton::clicked, sender, &FileSender::cancel);
    connect(sender, &FileSender::progressed, this, [this](qint64 sent, qint64 total) {
        // Per mille keeps files past 2 GiB inside the bar's int range.
        progress->setValue(total > 0 ? int(sent * 1000 / total) : 1000);
    });
    connect(sender, &FileSender::finished, this, &FileSendPanel::showFinished);
}

void FileSendPanel::chooseFile()
{
    auto *dialog = new QFileDialog(this, tr("Send File"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        if (!sender->start(path)) {
            summary->setText(tr("Cannot read %1: %2").arg(path, sender->errorString()));
            return;
        }
        summary->setText(tr("Sending %1").arg(sender->fileName()));
        progress->setRange(0, 1000);
        progress->show();
        cancelButton->show();
        sendFileButton->setEnabled(false);
    });
    dialog->open();
}

void FileSendPanel::showFinished(bool complete)
{
    progress->hide();
    cancelButton->hide();
    sendFileButton->setEnabled(true);
    const QString counts = tr("%1: %2 of %3 bytes sent")
                               .arg(sender->fileName())
                               .arg(sender->sentBytes())
                               .arg(sender->totalBytes());
    if (complete)
        summary->setText(counts);
    else if (sender->errorString().isEmpty())
        summary->setText(tr("%1 (cancelled)").arg(counts));
    else
        summary->setText(tr("%1 (%2)").arg(counts, sender->errorString()));
}
