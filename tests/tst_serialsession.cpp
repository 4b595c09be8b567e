#include <QtTest>

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QCheckBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QSerialPort>

#include "session/serialportwidget.h"
#include "testsupport.h"

// A port session against a real virtual serial pair: the session opens one
// end, the test plays the device on the other.
class TestSerialSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void peerBytesReachTheView();
    void pauseHoldsAndResumeDelivers();
    void missingPortReportsOpenFailed();
    void startingAnOpenPortChangesNothing();
    void vanishedDeviceClosesThePortCalmly();
    void restartAfterTheDeviceIsBack();

    void autoSendWholeText();
    void autoSendLineByLine();
    void uncheckingAutoSendStopsSending();
    void keyboardSendsInTextModeOnly();
    void sentDataIsShownAndCounted();

private:
    template<typename T>
    T *child(const char *name) { return session->findChild<T *>(QString::fromLatin1(name)); }
    QString viewText() { return child<QPlainTextEdit>("receiveView")->toPlainText(); }
    QByteArray readPeer(int count, int timeout = 3000);
    void openSession();

    IsolatedEnvironment *environment = nullptr;
    SocatPair *pair = nullptr;
    SerialPortWidget *session = nullptr;
    QSerialPort *peer = nullptr;
};

void TestSerialSession::initTestCase()
{
    environment = new IsolatedEnvironment;
}

void TestSerialSession::init()
{
    QUORVANE_REQUIRE_SOCAT();
    pair = new SocatPair;
    QVERIFY2(pair->start(), "socat did not create the pty pair");
    session = new SerialPortWidget;
    peer = new QSerialPort(pair->portB());
    QVERIFY(peer->open(QIODevice::ReadWrite));
}

void TestSerialSession::cleanup()
{
    delete session;
    session = nullptr;
    delete peer;
    peer = nullptr;
    delete pair;
    pair = nullptr;
}

void TestSerialSession::openSession()
{
    QVERIFY(session->start(pair->portA()));
    QVERIFY(session->serialPort()->isOpen());
    QCOMPARE(session->runState(), int(Running));
}

QByteArray TestSerialSession::readPeer(int count, int timeout)
{
    QByteArray bytes;
    QDeadlineTimer deadline(timeout);
    while (bytes.size() < count && !deadline.hasExpired()) {
        if (peer->waitForReadyRead(20) || peer->bytesAvailable())
            bytes += peer->readAll();
        QCoreApplication::processEvents();
    }
    return bytes;
}

void TestSerialSession::peerBytesReachTheView()
{
    openSession();
    QByteArray sent;
    for (int i = 0; i < 20; ++i) {
        const QByteArray line = QByteArray("line ") + QByteArray::number(i) + " <&>\n";
        peer->write(line);
        peer->waitForBytesWritten(1000);
        sent += line;
    }
    QTRY_COMPARE_WITH_TIMEOUT(viewText(), QString::fromLatin1(sent), 3000);
    QTRY_COMPARE(session->rxStatusText(), QStringLiteral("Rx: %L1 Bytes").arg(sent.size()));
    QCOMPARE(session->receivedBytes(), qint64(sent.size()));
}

void TestSerialSession::pauseHoldsAndResumeDelivers()
{
    openSession();
    session->pause();
    peer->write("AB");
    peer->waitForBytesWritten(1000);
    QTest::qWait(200);
    QCOMPARE(viewText(), QString());

    session->start();
    QTRY_COMPARE(viewText(), QString("AB"));

    // The held bytes are kept and delivered again on the next resume.
    session->pause();
    peer->write("C");
    peer->waitForBytesWritten(1000);
    QTest::qWait(200);
    session->start();
    QTRY_COMPARE(viewText(), QString("ABABC"));
}

void TestSerialSession::missingPortReportsOpenFailed()
{
    const QString missing = pair->portA() + QStringLiteral("-missing");
    session->start(missing);
    QVERIFY(!session->serialPort()->isOpen());
    QVERIFY(session->hasNewError());
    QVERIFY(session->lastErrorText().contains(QStringLiteral("OPEN FAILED! ERROR: ")));
    QVERIFY(session->lastErrorText().endsWith(session->serialPort()->errorString()));
    // A failed open still leaves the session running, with the port shown closed.
    QCOMPARE(session->runState(), int(Running));
    QTRY_VERIFY(session->connectionStatusText().contains(QStringLiteral("CLOSED")));
}

void TestSerialSession::startingAnOpenPortChangesNothing()
{
    openSession();
    QVERIFY(session->serialPort()->setBaudRate(19200));
    session->clearNewError();
    QVERIFY(session->start(pair->portA()));
    QCOMPARE(session->serialPort()->baudRate(), 19200);
    QVERIFY(!session->hasNewError());
}

void TestSerialSession::vanishedDeviceClosesThePortCalmly()
{
    openSession();
    QSignalSpy errors(session->serialPort(), &QSerialPort::errorOccurred);
    delete peer;
    peer = nullptr;
    pair->kill();

    QTRY_VERIFY_WITH_TIMEOUT(!session->serialPort()->isOpen(), 3000);
    QVERIFY(session->hasNewError());
    QTRY_VERIFY(session->connectionStatusText().contains(QStringLiteral("CLOSED")));

    // Idle afterwards: no stream of further errors.
    const int settled = errors.count();
    QTest::qWait(300);
    QVERIFY2(errors.count() - settled < 5, qPrintable(QString::number(errors.count() - settled)));
    QVERIFY2(settled < 1000, qPrintable(QString::number(settled)));
}

void TestSerialSession::restartAfterTheDeviceIsBack()
{
    openSession();
    delete peer;
    peer = nullptr;
    pair->kill();
    QTRY_VERIFY_WITH_TIMEOUT(!session->serialPort()->isOpen(), 3000);

    QVERIFY(pair->start());
    peer = new QSerialPort(pair->portB());
    QVERIFY(peer->open(QIODevice::ReadWrite));
    session->stop();
    openSession();
    peer->write("back");
    QTRY_VERIFY(viewText().endsWith(QStringLiteral("back")));
}

void TestSerialSession::autoSendWholeText()
{
    openSession();
    child<QPlainTextEdit>("textEdit")->setPlainText("ping");
    child<QSpinBox>("sendIntervelSB")->setValue(30);
    child<QCheckBox>("autoSendBox")->click();
    const QByteArray received = readPeer(18);
    QVERIFY2(received.startsWith("ping\r\nping\r\nping\r\n"), received.constData());
}

void TestSerialSession::autoSendLineByLine()
{
    openSession();
    auto *editor = child<QPlainTextEdit>("textEdit");
    editor->setPlainText("1\n2\n3");
    child<QCheckBox>("cbLinebyLine")->setChecked(true);
    child<QSpinBox>("sendIntervelSB")->setValue(40);
    child<QCheckBox>("autoSendBox")->click();
    QCOMPARE(readPeer(15).left(15), QByteArray("1\r\n2\r\n3\r\n1\r\n2\r\n"));

    // A shorter text continues at the index modulo the new line count.
    child<QCheckBox>("autoSendBox")->click();
    QTest::qWait(100);
    peer->readAll();
    editor->setPlainText("a\nb");
    child<QCheckBox>("autoSendBox")->click();
    const QByteArray next = readPeer(6).left(6);
    QVERIFY2(next == "a\r\nb\r\n" || next == "b\r\na\r\n", next.constData());
    QCOMPARE(editor->toPlainText(), QString("a\nb"));
}

void TestSerialSession::uncheckingAutoSendStopsSending()
{
    openSession();
    child<QPlainTextEdit>("textEdit")->setPlainText("x");
    child<QSpinBox>("sendIntervelSB")->setValue(20);
    auto *autoSend = child<QCheckBox>("autoSendBox");
    autoSend->click();
    QVERIFY(!readPeer(3).isEmpty());
    autoSend->click();
    QTest::qWait(60);
    peer->readAll();
    QTest::qWait(200);
    QCoreApplication::processEvents();
    QVERIFY(!peer->waitForReadyRead(100));
}

void TestSerialSession::keyboardSendsInTextModeOnly()
{
    openSession();
    session->show();
    QVERIFY(QTest::qWaitForWindowExposed(session));
    session->activateWindow();
    auto *view = child<QPlainTextEdit>("receiveView");
    view->setFocus();
    QTRY_VERIFY(view->hasFocus());

    QTest::keyClick(view, Qt::Key_A, Qt::NoModifier);
    QCOMPARE(readPeer(1), QByteArray("a"));

    child<QRadioButton>("hexSendRadio")->setChecked(true);
    QTest::qWait(60);   // the refresh tick takes the panel's send format
    QTest::keyClick(view, Qt::Key_B, Qt::NoModifier);
    QCOMPARE(readPeer(1, 300), QByteArray());
}

void TestSerialSession::sentDataIsShownAndCounted()
{
    openSession();
    child<QCheckBox>("displaySendBox")->setChecked(true);
    QTest::qWait(60);
    child<QPlainTextEdit>("textEdit")->setPlainText("hello");
    child<QPushButton>("sendButton")->click();
    QCOMPARE(readPeer(7), QByteArray("hello\r\n"));
    QCOMPARE(viewText(), QString("hello\n"));
    QTRY_COMPARE(session->txStatusText(), QString("Tx: 7 Bytes"));
    QCOMPARE(session->formatSettings().SendList, QStringList({"hello"}));
}

QTEST_MAIN(TestSerialSession)
#include "tst_serialsession.moc"
