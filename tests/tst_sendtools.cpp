#include <QtTest>

#include <QPlainTextEdit>
#include <QSettings>

#include "app/sessiondocument.h"
#include "send/checksum.h"
#include "send/hexinputfeedback.h"
#include "send/macrobar.h"
#include "send/sendboxcontroller.h"
#include "send/sendhistorycursor.h"
#include "send/sendmacro.h"
#include "testsupport.h"

class TestSendTools : public QObject
{
    Q_OBJECT

    IsolatedEnvironment environment;

private slots:
    // Check values over "123456789"; CRC-16/USB computes like MODBUS.
    void checksums_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("bigEndian");
        QTest::addColumn<QByteArray>("appended");

        QTest::newRow("CRC-4/ITU") << "CRC-4/ITU" << false << QByteArray::fromHex("07");
        QTest::newRow("CRC-5/ITU") << "CRC-5/ITU" << false << QByteArray::fromHex("07");
        QTest::newRow("CRC-5/USB") << "CRC-5/USB" << false << QByteArray::fromHex("19");
        QTest::newRow("CRC-6/ITU") << "CRC-6/ITU" << false << QByteArray::fromHex("06");
        QTest::newRow("CRC-8") << "CRC-8" << true << QByteArray::fromHex("f4");
        QTest::newRow("MODBUS low first") << "CRC-16/MODBUS" << false << QByteArray::fromHex("374b");
        QTest::newRow("MODBUS high first") << "CRC-16/MODBUS" << true << QByteArray::fromHex("4b37");
        QTest::newRow("CRC-16/USB") << "CRC-16/USB" << false << QByteArray::fromHex("374b");
        QTest::newRow("CRC-32 low first") << "CRC-32" << false << QByteArray::fromHex("2639f4cb");
        QTest::newRow("CRC-32 high first") << "CRC-32" << true << QByteArray::fromHex("cbf43926");
        // 0x31..0x39 add up to 0x1DD; their XOR is 0x31.
        QTest::newRow("SUM-8") << Checksum::Sum8 << true << QByteArray::fromHex("dd");
        QTest::newRow("XOR-8") << Checksum::Xor8 << false << QByteArray::fromHex("31");
        QTest::newRow("LRC-8") << Checksum::Lrc8 << false << QByteArray::fromHex("23");
        QTest::newRow("unknown") << "CRC-99" << false << QByteArray();
    }

    void checksums()
    {
        QFETCH(QString, name);
        QFETCH(bool, bigEndian);
        QFETCH(QByteArray, appended);
        QCOMPARE(Checksum::compute("123456789", name, bigEndian), appended);
        QVERIFY(name == "CRC-99" || Checksum::names().contains(name));
    }

    void macroBytes_data()
    {
        QTest::addColumn<QString>("payload");
        QTest::addColumn<bool>("hex");
        QTest::addColumn<int>("lineEnding");
        QTest::addColumn<QString>("checksum");
        QTest::addColumn<QByteArray>("bytes");

        QTest::newRow("text CRLF") << "AT" << false << int(SendMacro::CarriageReturnLineFeed) << QString()
                                   << QByteArray("AT\r\n");
        QTest::newRow("text, checksum before line ending")
            << "AT" << false << int(SendMacro::CarriageReturn) << Checksum::Xor8 << QByteArray("AT\x15\r");
        QTest::newRow("modbus query, hex ignores line ending")
            << "01 03 00 00 00 01 // read one register" << true << int(SendMacro::LineFeed) << "CRC-16/MODBUS"
            << QByteArray::fromHex("010300000001840a");
        QTest::newRow("empty hex still gets a checksum")
            << "" << true << 0 << Checksum::Sum8 << QByteArray::fromHex("00");
    }

    void macroBytes()
    {
        QFETCH(QString, payload);
        QFETCH(bool, hex);
        QFETCH(int, lineEnding);
        QFETCH(QString, checksum);
        QFETCH(QByteArray, bytes);
        SendMacro macro;
        macro.payload = payload;
        macro.hex = hex;
        macro.lineEnding = lineEnding;
        macro.checksum = checksum;
        QCOMPARE(encodeMacro(macro), bytes);
    }

    // A click sends once; with a period it repeats, held down, until the next
    // click; stopping the session ends every repeat.
    void macroRepeat()
    {
        QWidget session;
        MacroBar bar(&session);
        bar.setMacros({SendMacro{"once", "a", false, SendMacro::NoLineEnding, {}, false, 0},
                       SendMacro{"poll", "b", false, SendMacro::NoLineEnding, {}, false, 10}});
        QSignalSpy sends(&bar, &MacroBar::sendRequested);
        bar.trigger(0);
        QCOMPARE(sends.count(), 1);
        QVERIFY(!bar.isRepeating(0));
        bar.trigger(1);
        QVERIFY(bar.isRepeating(1));
        QTRY_VERIFY(sends.count() >= 4);
        QCOMPARE(sends.last().at(0).toByteArray(), QByteArray("b"));
        bar.trigger(1);
        QVERIFY(!bar.isRepeating(1));
        bar.trigger(1);
        bar.stopRepeats();
        QVERIFY(!bar.isRepeating(1));
        bar.trigger(24);
    }

    // Macros and the send box options come back from a document; a document
    // without them, or with a broken list, opens with none.
    void macrosThroughDocument()
    {
        SendMacro query{"Query", "01 03 00 00 00 01", true, SendMacro::NoLineEnding, "CRC-16/MODBUS", true, 500};
        SendMacro at{QString::fromUtf8("\u67e5\u8be2"), "AT+GMR", false, SendMacro::LineFeed, QString(), false, 0};
        FormatSetting written;
        written.Macros = {query, at};
        written.EnterSends = true;
        written.ClearAfterSend = true;
        const QString name = environment.path() + "/macros.qvn";
        {
            QSettings file(name, QSettings::IniFormat);
            SessionDocument::writeSession(file, 0, PortSettings(), written);
            file.setValue("1/SendMacros", "[{\"name\": 3}, 7, \"broken");
        }
        const QSettings file(name, QSettings::IniFormat);
        PortSettings port;
        FormatSetting read;
        read.EnterSends = true;
        SessionDocument::readSession(file, 0, port, read);
        QCOMPARE(read.Macros, written.Macros);
        QVERIFY(read.EnterSends && read.ClearAfterSend);
        SessionDocument::readSession(file, 1, port, read);
        QVERIFY(read.Macros.isEmpty());
        QVERIFY(!read.EnterSends && !read.ClearAfterSend);
        SessionDocument::readSession(file, 2, port, read);
        QVERIFY(read.Macros.isEmpty());

        SendMacroList many(30, query);
        QCOMPARE(macrosFromText(macrosToText(many)).size(), MaxSendMacros);
    }

    // Characters the parser takes for a zero digit are marked; the bytes are
    // those the send box sends.
    void hexFeedback_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QList<int>>("invalid"); // start, length, start, length...
        QTest::addColumn<QString>("hint");

        QTest::newRow("clean") << "00 7E 00" << QByteArray::fromHex("007e00") << QList<int>{} << "3 bytes: 00 7E 00";
        // Pairs "0x" "7E" ",0" "xA", the lone "5" dropped.
        QTest::newRow("C notation") << "0x7E,0xA5" << QByteArray::fromHex("007e000a") << QList<int>{1, 1, 4, 1, 6, 1}
                                    << "4 bytes: 00 7E 00 0A";
        QTest::newRow("3G") << "3G" << QByteArray::fromHex("30") << QList<int>{1, 1} << "1 byte: 30";
        QTest::newRow("comment ignored") << "01 // xyz" << QByteArray::fromHex("01") << QList<int>{}
                                         << "1 byte: 01";
        QTest::newRow("lone invalid tail") << "01 z" << QByteArray::fromHex("01") << QList<int>{3, 1} << "1 byte: 01";
        QTest::newRow("nothing") << "//" << QByteArray() << QList<int>{} << "0 bytes: ";
    }

    void hexFeedback()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, bytes);
        QFETCH(QList<int>, invalid);
        QFETCH(QString, hint);
        const HexInputCheck check = checkHexInput(text);
        QCOMPARE(check.bytes, bytes);
        QList<int> runs;
        for (const HexInputCheck::Run &run : check.invalid)
            runs << run.start << run.length;
        QCOMPARE(runs, invalid);
        QCOMPARE(hexSendHint(check.bytes), hint.trimmed());
        QVERIFY(hexSendHint(QByteArray(40, 'A')).endsWith(QString::fromUtf8("41 …")));
    }

    // Older walks towards the end of the newest-first list and stops there;
    // newer walks back to the draft typed before the walk.
    void historyOrder()
    {
        const QStringList history{"newest", "middle", "oldest"};
        SendHistoryCursor cursor;
        QCOMPARE(cursor.newer(history), std::nullopt);
        QCOMPARE(cursor.older(history, "draft"), QString("newest"));
        QCOMPARE(cursor.older(history, "newest"), QString("middle"));
        QCOMPARE(cursor.older(history, "middle"), QString("oldest"));
        QCOMPARE(cursor.older(history, "oldest"), std::nullopt);
        QCOMPARE(cursor.newer(history), QString("middle"));
        QCOMPARE(cursor.newer(history), QString("newest"));
        QCOMPARE(cursor.newer(history), QString("draft"));
        QCOMPARE(cursor.newer(history), std::nullopt);
        QCOMPARE(cursor.older(history.mid(0, 1), "again"), QString("newest"));
        cursor.reset();
        QCOMPARE(cursor.older(QStringList(), "x"), std::nullopt);
    }

    void keys_data()
    {
        QTest::addColumn<bool>("enterSends");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("sends");
        QTest::addColumn<QString>("box");

        const int ctrl = Qt::ControlModifier;
        const int shift = Qt::ShiftModifier;
        QTest::newRow("Enter breaks the line by default") << false << int(Qt::Key_Return) << 0 << 0 << "ab\n";
        QTest::newRow("Ctrl+Enter sends") << false << int(Qt::Key_Return) << ctrl << 1 << "ab";
        QTest::newRow("keypad Ctrl+Enter sends") << false << int(Qt::Key_Enter) << ctrl << 1 << "ab";
        QTest::newRow("Enter sends") << true << int(Qt::Key_Return) << 0 << 1 << "ab";
        QTest::newRow("Shift+Enter inserts a line feed") << true << int(Qt::Key_Return) << shift << 0 << "ab\n";
        QTest::newRow("Up recalls in one line") << false << int(Qt::Key_Up) << 0 << 0 << "help";
        QTest::newRow("Ctrl+Up recalls") << true << int(Qt::Key_Up) << ctrl << 0 << "help";
        QTest::newRow("Down without a walk keeps the text") << false << int(Qt::Key_Down) << 0 << 0 << "ab";
    }

    void keys()
    {
        QFETCH(bool, enterSends);
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(int, sends);
        QFETCH(QString, box);

        QWidget window;
        auto *edit = new QPlainTextEdit(&window);
        SendBoxController controller(edit, [] { return QStringList{"help", "version"}; }, &window);
        controller.setOptions(enterSends, false);
        QSignalSpy requests(&controller, &SendBoxController::sendRequested);
        edit->setPlainText("ab");
        edit->moveCursor(QTextCursor::End);
        QTest::keyClick(edit, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(requests.count(), sends);
        QCOMPARE(edit->toPlainText(), box);
    }

    // In a box of several lines plain Up moves the caret, Ctrl+Up recalls;
    // clearing after a send restarts the walk at the newest entry.
    void multiLineRecallAndClear()
    {
        QWidget window;
        auto *edit = new QPlainTextEdit(&window);
        SendBoxController controller(edit, [] { return QStringList{"help", "version"}; }, &window);
        controller.setOptions(true, true);
        edit->setPlainText("a\nb");
        edit->moveCursor(QTextCursor::End);
        QTest::keyClick(edit, Qt::Key_Up);
        QCOMPARE(edit->toPlainText(), QString("a\nb"));
        QTest::keyClick(edit, Qt::Key_Up, Qt::ControlModifier);
        QTest::keyClick(edit, Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(edit->toPlainText(), QString("version"));
        controller.sent();
        QVERIFY(edit->toPlainText().isEmpty());
        QTest::keyClick(edit, Qt::Key_Up);
        QCOMPARE(edit->toPlainText(), QString("help"));
    }
};

QTEST_MAIN(TestSendTools)
#include "tst_sendtools.moc"
