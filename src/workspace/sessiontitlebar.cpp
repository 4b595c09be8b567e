#include "workspace/sessiontitlebar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

#include "common/connectionchoices.h"
#include "common/statuscolors.h"
#include "common/types.h"

namespace {
const int lampDiameter = 10;
}

SessionTitleBar::SessionTitleBar(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("sessionTitleBar"));
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setToolTip(tr("Double-click to give this session the whole workspace, or to give it back"));

    lampLabel = new QLabel(this);
    lampLabel->setObjectName(QStringLiteral("lampLabel"));
    lampLabel->setFixedSize(lampDiameter + 4, lampDiameter + 4);
    titleLabel = new QLabel(this);
    titleLabel->setObjectName(QStringLiteral("titleLabel"));
    titleLabel->setTextFormat(Qt::PlainText);
    // A long device name is cut rather than widening the session.
    titleLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    closeButton = new QToolButton(this);
    closeButton->setObjectName(QStringLiteral("closeButton"));
    closeButton->setAutoRaise(true);
    closeButton->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    closeButton->setIconSize(QSize(12, 12));
    closeButton->setToolTip(tr("Close this session"));
    connect(closeButton, &QToolButton::clicked, this, &SessionTitleBar::closeRequested);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 1, 1, 1);
    layout->setSpacing(4);
    layout->addWidget(lampLabel);
    layout->addWidget(titleLabel, 1);
    layout->addWidget(closeButton);
    paintLamp();
}

QString SessionTitleBar::titleFor(int connMode, const QString &portName, const QString &host, const QString &port)
{
    const QString mode = networkModeName(connMode);
    if (connMode == SerialPortMode || mode.isEmpty())
        return portName;
    const bool everyAddress = connMode == TcpServerMode || connMode == UdpServerMode;
    return QStringLiteral("%1 %2:%3").arg(mode, everyAddress ? QString() : host.trimmed(), port.trimmed());
}

SessionTitleBar::Lamp SessionTitleBar::lampFor(bool started, int runState, bool connectionOk)
{
    if (runState == Paused)
        return LampPaused;
    if (!started)
        return LampStopped;
    return connectionOk ? LampRunning : LampError;
}

void SessionTitleBar::setTitle(const QString &title)
{
    if (titleLabel->text() == title)
        return;
    titleLabel->setText(title);
    titleLabel->setToolTip(title);
}

QString SessionTitleBar::title() const
{
    return titleLabel->text();
}

void SessionTitleBar::setLamp(Lamp lamp)
{
    if (lamp == currentLamp)
        return;
    currentLamp = lamp;
    paintLamp();
}

void SessionTitleBar::setClosable(bool closable)
{
    closeButton->setEnabled(closable);
}

void SessionTitleBar::setCurrent(bool current)
{
    QFont font = titleLabel->font();
    if (font.bold() == current)
        return;
    font.setBold(current);
    titleLabel->setFont(font);
}

void SessionTitleBar::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit maximizeToggled();
    QWidget::mouseDoubleClickEvent(event);
}

void SessionTitleBar::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange && lampLabel)
        paintLamp();
    QWidget::changeEvent(event);
}

void SessionTitleBar::paintLamp()
{
    static const char *const states[] = {QT_TR_NOOP("Stopped"), QT_TR_NOOP("Running"), QT_TR_NOOP("Paused"),
                                         QT_TR_NOOP("Error")};
    QColor color;
    switch (currentLamp) {
    case LampRunning: color = StatusColors::good(palette()); break;
    case LampPaused: color = StatusColors::warning(palette()); break;
    case LampError: color = StatusColors::bad(palette()); break;
    case LampStopped: color = palette().color(QPalette::Disabled, QPalette::WindowText); break;
    }
    const qreal ratio = devicePixelRatioF();
    QPixmap pixmap(lampLabel->size() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color.darker(140), 1));
    painter.setBrush(color);
    painter.drawEllipse(QRectF(2.5, 2.5, lampDiameter - 1, lampDiameter - 1));
    painter.end();
    lampLabel->setPixmap(pixmap);
    lampLabel->setToolTip(tr(states[currentLamp]));
}
