#include <QtTest>

#include <QAbstractButton>
#include <QClipboard>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <functional>

#include "session/serialportwidget.h"
#include "testsupport.h"
#include "view/ansiparser.h"
#include "view/highlightrules.h"
#include "view/receiveview.h"
#include "view/viewactions.h"

using Gesture = std::function<void(ReceiveView *, const std::function<QPointF(int, int)> &)>;
Q_DECLARE_METATYPE(Gesture)

namespace {

// Records the keys with text a child left to its parent, as the session gets them.
class KeyRecorder : public QWidget
{
public:
    QStringList seen;

protected:
    void keyPressEvent(QKeyEvent *event) override { record(QStringLiteral("press "), event); }
    void keyReleaseEvent(QKeyEvent *event) override { record(QStringLiteral("release "), event); }

private:
    void record(const QString &what, const QKeyEvent *event)
    {
        if (!event->text().isEmpty())
            seen << what + event->text();
    }
};

// Runs as "text@rrggbb" (foreground set) or "text".
QStringList described(const QVector<AnsiParser::Run> &runs)
{
    QStringList result;
    for (const AnsiParser::Run &run : runs) {
        const QString colour = run.style.has(TextStyle::Foreground)
            ? QLatin1Char('@') + QColor(run.style.foreground).name().mid(1) : QString();
        result << run.text + colour;
    }
    return result;
}

} // namespace

// The receive view, mostly driven through the session's own pipeline: chunks
// are queued with pushByteArray and shown by one refresh.
class TestReceiveView : public QObject
{
    Q_OBJECT

private slots:
    void init() { session = std::make_unique<SerialPortWidget>(); }

    void bufferIsCutByHalfTheLimit_data()
    {
        QTest::addColumn<QList<int>>("ticks");   // characters shown per refresh
        QTest::addColumn<int>("expectedLength");
        QTest::newRow("at the limit, no cut") << QList<int>{600, 400} << 1000;
        QTest::newRow("one past the limit") << QList<int>{600, 401} << 501;
        QTest::newRow("cut twice") << QList<int>{900, 200, 500} << 600;
        QTest::newRow("ten times the limit in one tick") << QList<int>{10000} << 1000;
        QTest::newRow("ten times the limit in many ticks") << QList<int>(20, 500) << 1000;
    }

    void bufferIsCutByHalfTheLimit()
    {
        QFETCH(QList<int>, ticks);
        QFETCH(int, expectedLength);
        apply([](FormatSetting &format) { format.DisplayBufferSize = 1000; });
        QByteArray all;
        for (int tick = 0; tick < ticks.size(); ++tick) {
            // Lines of a per-tick letter, so what survives the cut is visible.
            QByteArray data(ticks.at(tick), char('a' + tick));
            for (int i = 39; i < data.size(); i += 40)
                data[i] = '\n';
            all += data;
            receive(data);
        }
        QCOMPARE(view()->toPlainText(), QString::fromLatin1(all.right(expectedLength)));
    }

    void dataMovesOnlyAUserAtTheEnd_data()
    {
        QTest::addColumn<bool>("atEnd");
        QTest::addColumn<bool>("searching");
        QTest::newRow("scrolled up") << false << false;
        QTest::newRow("at the end") << true << false;
        QTest::newRow("at the end, searching") << true << true;
    }

    void dataMovesOnlyAUserAtTheEnd()
    {
        QFETCH(bool, atEnd);
        QFETCH(bool, searching);
        showSession();
        receive(QByteArray("line\n").repeated(300));
        QScrollBar *bar = view()->verticalScrollBar();
        QTRY_VERIFY(bar->maximum() > 40);
        bar->setValue(atEnd ? bar->maximum() : 40);
        if (searching)
            view()->openFindBar();
        const int held = bar->value();
        for (int i = 0; i < 2; ++i) {
            const int oldMaximum = bar->maximum();
            receive(QByteArray("more\n").repeated(20));
            // The bar moves with the text, which a flood draws at its next frame.
            QTRY_VERIFY(bar->maximum() > oldMaximum);
            QCOMPARE(bar->value(), atEnd && !searching ? bar->maximum() : held);
        }
    }

    // Devices send markup and escape sequences; the view shows what came,
    // and repaints once for a refresh that brought something, never without.
    void textIsShownAsReceived_data()
    {
        QTest::addColumn<bool>("ansi");
        QTest::addColumn<QString>("received");
        QTest::addColumn<QString>("shown");
        const QString markup = QStringLiteral("<b>&amp;</b> <font color=red>x</font>");
        QTest::newRow("markup") << false << markup << markup;
        QTest::newRow("escapes without ANSI colours") << false << "\x1b[31mred" << "\x1b[31mred";
        QTest::newRow("escapes with ANSI colours") << true << "\x1b[31mred\x1b[0m" << "red";
        const QString wide = QStringLiteral("x").repeated(70) + QStringLiteral("\u6e29\u5ea6 25\u00b0C\r\n");
        QTest::newRow("beyond Latin-1 after plain text") << false << wide << wide.chopped(2) + '\n';
    }

    void textIsShownAsReceived()
    {
        QFETCH(bool, ansi);
        QFETCH(QString, received);
        apply([ansi](FormatSetting &format) { format.View.ansiColours = ansi; });
        showSession();
        int paints = 0;
        EventCounter counter(QEvent::Paint, &paints);
        view()->viewport()->installEventFilter(&counter);
        receive(received.toUtf8());
        QTest::qWait(50);
        QTEST(view()->property("plainText").toString(), "shown");
        QCOMPARE(paints, 1);
        view()->flush(1000);
        session->displayPortBuffer();
        QTest::qWait(50);
        QCOMPARE(paints, 1);
    }

    // Once the slider is at its shortest and at the end, lines that come in
    // leave it where it is on screen, and a new count fits its label: neither
    // the bar is painted again nor the session laid out again.
    void streamingTouchesOnlyTheTextAndTheCounts()
    {
        showSession();
        receive(QByteArray("line\n").repeated(1000));
        QTest::qWait(50);
        int paints = 0;
        int layouts = 0;
        EventCounter paintCounter(QEvent::Paint, &paints);
        EventCounter layoutCounter(QEvent::LayoutRequest, &layouts);
        view()->verticalScrollBar()->installEventFilter(&paintCounter);
        session->installEventFilter(&layoutCounter);
        for (int i = 0; i < 3; ++i) {
            receive("more\n");
            QTest::qWait(30);
        }
        QCOMPARE(paints, 0);
        QCOMPARE(layouts, 0);
    }

    // Pages at every refresh are drawn at a lower rate, but the last of them
    // is always drawn, also when nothing comes after it.
    void aFloodEndsDrawnWithItsLastPage()
    {
        showSession();
        apply([](FormatSetting &format) { format.DisplayBufferSize = 2000; });
        int paints = 0;
        EventCounter counter(QEvent::Paint, &paints);
        view()->viewport()->installEventFilter(&counter);
        for (int page = 0; page < 4; ++page)
            receive(QByteArray("page ").append(QByteArray::number(page)).append('\n').repeated(200));
        QTRY_VERIFY(paints > 0);
        const int painted = paints;
        receive(QByteArray("last\n").repeated(600));
        // Until that is drawn, the mouse and keys work on the page shown,
        // whose text the cut took away.
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
        QTest::keyClick(view(), Qt::Key_PageUp, Qt::ShiftModifier);
        QTRY_VERIFY(paints > painted);
        QVERIFY(!view()->selectedText().isEmpty());
    }

    void selectionCopiesWhatWasReceived_data()
    {
        QTest::addColumn<Gesture>("gesture");
        QTest::addColumn<QString>("selected");
        const QString words = QStringLiteral("word ").repeated(1500);
        QTest::newRow("select all") << Gesture([](ReceiveView *view, auto) {
            QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
        }) << "red plain bold green\n" + words + "\nend";
        QTest::newRow("click, then shift+right across colours") << Gesture([](ReceiveView *view, auto at) {
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at(1, 0).toPoint());
            for (int i = 0; i < 6; ++i)
                QTest::keyClick(view, Qt::Key_Right, Qt::ShiftModifier);
        }) << "ed pla";
        QTest::newRow("drag across colours") << Gesture([](ReceiveView *view, auto at) {
            QTest::mousePress(view->viewport(), Qt::LeftButton, {}, at(2, 0).toPoint());
            QTest::mouseMove(view->viewport(), at(12, 0).toPoint());
            QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, at(12, 0).toPoint());
        }) << "d plain bo";
        QTest::newRow("double-click a word") << Gesture([](ReceiveView *view, auto at) {
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at(5, 0).toPoint());
        }) << "plain";
        // The long line is wrapped and laid out in pieces, and copied whole.
        QTest::newRow("click, then shift+ctrl+end over a long line") << Gesture([](ReceiveView *view, auto at) {
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at(0, 1).toPoint());
            QTest::keyClick(view, Qt::Key_End, Qt::ShiftModifier | Qt::ControlModifier);
        }) << words + "\nend";
    }

    void selectionCopiesWhatWasReceived()
    {
        QFETCH(Gesture, gesture);
        QFETCH(QString, selected);
        const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        apply([&font](FormatSetting &format) {
            format.View.ansiColours = true;
            format.LogFont = font;
        });
        showSession();
        receive("\x1b[31mred\x1b[0m plain \x1b[1;32mbold green\x1b[0m\n" + QByteArray("word ").repeated(1500)
                + "\nend");
        view()->verticalScrollBar()->setValue(0);
        const QFontMetricsF metrics(font);
        // Where character column of row is on screen, inside the 4 pixel margin.
        gesture(view(), [&metrics](int column, int row) {
            return QPointF(4 + (column + 0.2) * metrics.horizontalAdvance(QLatin1Char('x')),
                           4 + (row + 0.5) * metrics.height());
        });
        QCOMPARE(view()->selectedText(), selected);
        QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), selected);
    }

    void findMovesBetweenMatches_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("regex");
        QTest::addColumn<bool>("matchCase");
        // n, p: Enter and Shift+Enter in the find bar; N, P: F3 and Shift+F3 in the view.
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QStringList>("counts");   // after typing, then after each key
        QTest::addColumn<QString>("selected");
        QTest::newRow("plain, any case, wrapping")
            << "alpha" << false << false << "nnNP"
            << QStringList{"1 of 3", "2 of 3", "3 of 3", "1 of 3", "3 of 3"} << "alpha";
        QTest::newRow("case matters") << "alpha" << false << true << "np"
                                      << QStringList{"1 of 2", "2 of 2", "1 of 2"} << "alpha";
        QTest::newRow("expression over whole lines") << "^al\\w+t$" << true << false << "n"
                                                     << QStringList{"1 of 1", "1 of 1"} << "alphabet";
        QTest::newRow("no match") << "zeta" << false << false << "n" << QStringList{"No matches", "No matches"}
                                  << QString();
        QTest::newRow("invalid expression") << "(" << true << false << "" << QStringList{"Invalid expression"}
                                            << QString();
    }

    void findMovesBetweenMatches()
    {
        QFETCH(QString, pattern);
        QFETCH(bool, regex);
        QFETCH(bool, matchCase);
        QFETCH(QString, keys);
        QFETCH(QStringList, counts);
        showSession();
        receive("alpha beta\nALPHA gamma\nalphabet\n");
        view()->setFocus();
        QTest::keyClick(view(), Qt::Key_F, Qt::ControlModifier);
        auto *edit = view()->findChild<QLineEdit *>(QStringLiteral("findEdit"));
        QVERIFY(edit->isVisible());
        view()->findChild<QAbstractButton *>(QStringLiteral("findRegex"))->setChecked(regex);
        view()->findChild<QAbstractButton *>(QStringLiteral("findCase"))->setChecked(matchCase);
        QTest::keyClicks(edit, pattern);
        QTest::keyClick(edit, Qt::Key_Return);   // searches at once, without waiting for a pause
        auto *count = view()->findChild<QLabel *>(QStringLiteral("findCount"));
        QStringList seen{count->text()};
        for (const QChar key : keys) {
            if (key.isLower())
                QTest::keyClick(edit, Qt::Key_Return, key == 'p' ? Qt::ShiftModifier : Qt::NoModifier);
            else
                QTest::keyClick(view(), Qt::Key_F3, key == 'P' ? Qt::ShiftModifier : Qt::NoModifier);
            seen << count->text();
        }
        QCOMPARE(seen, counts);
        QTEST(view()->selectedText(), "selected");
    }

    void highlightRulesColourLinesOrMatches_data()
    {
        QTest::addColumn<HighlightRuleList>("rules");
        QTest::addColumn<QString>("line");
        QTest::addColumn<QList<QList<int>>>("spans");   // start, length, index of the rule's colour
        const QColor red(Qt::red);
        const QColor amber(0xc8, 0x80, 0x00);
        QTest::newRow("whole line, any case") << HighlightRuleList{{{"error"}, red, true}} << "boot ERROR 5"
                                              << QList<QList<int>>{{0, 12, 0}};
        QTest::newRow("matches only") << HighlightRuleList{{{"o"}, red, false}} << "foo bo"
                                      << QList<QList<int>>{{1, 1, 0}, {2, 1, 0}, {5, 1, 0}};
        QTest::newRow("the earlier rule is painted last")
            << HighlightRuleList{{{"error"}, red, true}, {{"warn"}, amber, true}} << "warn: error"
            << QList<QList<int>>{{0, 11, 1}, {0, 11, 0}};
        QTest::newRow("expression where case matters") << HighlightRuleList{{{"^E\\d+", true, true}, red, false}}
                                                       << "E42 e43 E44" << QList<QList<int>>{{0, 3, 0}};
        QTest::newRow("invalid expression is left out") << HighlightRuleList{{{"(", true}, red, true}} << "(x"
                                                        << QList<QList<int>>{};
    }

    void highlightRulesColourLinesOrMatches()
    {
        QFETCH(HighlightRuleList, rules);
        QFETCH(QString, line);
        Highlighter highlighter;
        highlighter.setRules(rules);
        QList<QList<int>> spans;
        for (const Highlighter::Span &span : highlighter.spans(line)) {
            const auto rule = std::find_if(rules.begin(), rules.end(),
                                           [&span](const HighlightRule &r) { return r.colour.rgb() == span.colour; });
            spans << QList<int>{int(span.start), int(span.length), int(rule - rules.begin())};
        }
        QTEST(spans, "spans");
    }

    void hexAsciiRowsAtOddLengths_data()
    {
        QTest::addColumn<QList<QByteArray>>("chunks");   // "tx:" in front: sent, shown with Display Send
        QTest::addColumn<QString>("shown");
        QTest::newRow("one byte") << QList<QByteArray>{"A"}
                                  << "00000000  41                                                |A|";
        QTest::newRow("17 bytes in three chunks")
            << QList<QByteArray>{"0123456", "789ABCDEF", "\n"}
            << "00000000  30 31 32 33 34 35 36 37  38 39 41 42 43 44 45 46  |0123456789ABCDEF|\n"
               "00000010  0A                                                |.|";
        QTest::newRow("past the middle gap") << QList<QByteArray>{QByteArray("\0\1\2\3\4\5\6\7\x7f", 9)}
                                             << "00000000  00 01 02 03 04 05 06 07  7F                       |.........|";
        QTest::newRow("sent data closes the row") << QList<QByteArray>{"AB", "tx:hi", "C"}
                                                  << "00000000  41 42                                             |AB|\n"
                                                     "hi\n"
                                                     "00000002  43                                                |C|";
    }

    void hexAsciiRowsAtOddLengths()
    {
        QFETCH(QList<QByteArray>, chunks);
        apply([](FormatSetting &format) {
            format.ReceiveMsgFormat = HEX;
            format.View.hexAscii = true;
            format.DisplaySendMsg = true;
        });
        for (const QByteArray &chunk : chunks) {
            if (chunk.startsWith("tx:"))
                session->pushByteArray(chunk.mid(3), false, TX);
            else
                session->pushByteArray(chunk, true, RX);
            session->displayPortBuffer();
        }
        QTEST(view()->toPlainText(), "shown");
    }

    void ansiSequencesSplitAcrossChunks_data()
    {
        QTest::addColumn<QStringList>("chunks");
        QTest::addColumn<QStringList>("runs");
        QTest::newRow("cut inside the sequences") << QStringList{"\x1b[3", "1mred\x1b", "[0m ok"}
                                                  << QStringList{"red@cd0000", " ok"};
        QTest::newRow("bright, 256 and default colours") << QStringList{"\x1b[91ma\x1b[38;5;21mb\x1b[39mc"}
                                                         << QStringList{"a@ff0000", "b@0000ff", "c"};
        QTest::newRow("true colour, then reset by an empty SGR") << QStringList{"\x1b[38;2;1;2;3mx\x1b[my"}
                                                                 << QStringList{"x@010203", "y"};
        QTest::newRow("other sequences hidden, a lone escape kept") << QStringList{"a\x1b[2Kb\x1b", "c"}
                                                                    << QStringList{"ab", "\x1b" "c"};
    }

    void ansiSequencesSplitAcrossChunks()
    {
        QFETCH(QStringList, chunks);
        AnsiParser parser;
        QVector<AnsiParser::Run> runs;
        for (const QString &chunk : chunks)
            runs += parser.feed(chunk, TextStyle());
        QTEST(described(runs), "runs");
    }

    // Typed keys go on to the session, which sends them; Space pages down on
    // its press and reaches the session on release.
    void saveViewWritesTheTextOrSaysWhyNot()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("view.txt"));
        QString error;
        QVERIFY(ViewActions::writeText(path, QStringLiteral("a\n\u00b0b"), &error));
        QFile saved(path);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll(), QByteArray("a\n\xc2\xb0" "b"));
        QVERIFY(!ViewActions::writeText(dir.filePath(QStringLiteral("missing/view.txt")), QString(), &error));
        QVERIFY(!error.isEmpty());
    }

    void keysReachTheSession_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QStringList>("seen");
        QTest::newRow("letter") << int(Qt::Key_A) << int(Qt::NoModifier) << QStringList{"press a", "release a"};
        QTest::newRow("space") << int(Qt::Key_Space) << int(Qt::NoModifier) << QStringList{"release  "};
        QTest::newRow("copy") << int(Qt::Key_C) << int(Qt::ControlModifier) << QStringList{"release c"};
        QTest::newRow("bell") << int(Qt::Key_G) << int(Qt::ControlModifier)
                              << QStringList{"press g", "release g"};
    }

    void keysReachTheSession()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        KeyRecorder parent;
        auto *view = new ReceiveView(&parent);
        parent.show();
        QVERIFY(QTest::qWaitForWindowExposed(&parent));
        QTest::keyPress(view, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QTest::keyRelease(view, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QTEST(parent.seen, "seen");
    }

private:
    // Counts the events of one type that reach the object it filters.
    class EventCounter : public QObject
    {
    public:
        EventCounter(QEvent::Type type, int *count) : type(type), count(count) {}
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == type)
                ++*count;
            return false;
        }

    private:
        QEvent::Type type;
        int *count;
    };

    ReceiveView *view() const { return session->receiveView(); }

    void showSession()
    {
        session->resize(800, 600);
        session->show();
        QVERIFY(QTest::qWaitForWindowExposed(session.get()));
        QTest::qWait(20);
    }

    // Records and panel agree, so the periodic refresh keeps the format.
    void apply(const std::function<void(FormatSetting &)> &change)
    {
        FormatSetting format = session->formatSettings();
        change(format);
        session->setFormatSettings(format);
        session->updateDisplay();
    }

    // Queues the data in chunks, as a transport delivers it, for one refresh.
    void receive(const QByteArray &data)
    {
        for (qsizetype from = 0; from < data.size(); from += 64)
            session->pushByteArray(data.mid(from, 64), true, RX);
        session->displayPortBuffer();
    }

    IsolatedEnvironment environment;
    std::unique_ptr<SerialPortWidget> session;
};

QTEST_MAIN(TestReceiveView)
#include "tst_receiveview.moc"
