#include <QtTest>

#include <QBuffer>
#include <QLineSeries>
#include <QSplitter>

#include <cmath>

#include "plot/plotchartview.h"
#include "plot/plotdecimation.h"
#include "plot/plotexport.h"
#include "plot/plotstream.h"
#include "plot/sessionplot.h"
#include "session/serialportwidget.h"
#include "testsupport.h"

using Values = QList<double>;
Q_DECLARE_METATYPE(PlotFormat)

// Rows of a stream as text: "1,2;3,nan" for two rows of two channels.
static QString rowsOf(const PlotSampleStore &store)
{
    QStringList rows;
    for (qsizetype r = 0; r < store.size(); ++r) {
        QStringList cells;
        for (int c = 0; c < store.channelCount(); ++c)
            cells << QString::number(store.value(c, r));
        rows << cells.join(',');
    }
    return rows.join(';');
}

class TestPlot : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { env.reset(new IsolatedEnvironment); }

    void parseLine_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<PlotFormat>("format");
        QTest::addColumn<int>("kind");
        QTest::addColumn<Values>("values");
        QTest::addColumn<QStringList>("names");
        const auto A = PlotFormat::Auto;
        QTest::newRow("commas") << QByteArray("1,2.5,-3") << A << int(PlotLine::Numbers) << Values{1, 2.5, -3} << QStringList();
        QTest::newRow("mixed separators") << QByteArray(" 1 \t2;3 , 4 ") << A << int(PlotLine::Numbers) << Values{1, 2, 3, 4} << QStringList();
        QTest::newRow("exponent and signs") << QByteArray("1e-3 -0 +7 .5") << A << int(PlotLine::Numbers) << Values{0.001, -0.0, 7, 0.5} << QStringList();
        QTest::newRow("seventeen fields keep sixteen") << QByteArray("1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17") << A << int(PlotLine::Numbers)
                                                       << Values{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16} << QStringList();
        QTest::newRow("colon pairs") << QByteArray("temp:21.5,hum:40") << A << int(PlotLine::Pairs) << Values{21.5, 40} << QStringList{"temp", "hum"};
        QTest::newRow("equals pairs") << QByteArray("a=1 b=-2e2") << A << int(PlotLine::Pairs) << Values{1, -200} << QStringList{"a", "b"};
        QTest::newRow("value after the mark") << QByteArray("rpm: 1200, duty%: 0.5") << A << int(PlotLine::Pairs) << Values{1200, 0.5} << QStringList{"rpm", "duty%"};
        QTest::newRow("header") << QByteArray("time,volts(V),amps") << A << int(PlotLine::Header) << Values() << QStringList{"time", "volts(V)", "amps"};
        QTest::newRow("blank") << QByteArray(" \t ") << A << int(PlotLine::Empty) << Values() << QStringList();
        QTest::newRow("junk word and number") << QByteArray("temp 12") << A << int(PlotLine::Junk) << Values() << QStringList();
        QTest::newRow("junk clock") << QByteArray("12:30:01") << A << int(PlotLine::Junk) << Values() << QStringList();
        QTest::newRow("junk unit on value") << QByteArray("t=12ms") << A << int(PlotLine::Junk) << Values() << QStringList();
        QTest::newRow("junk pair without value") << QByteArray("a:") << A << int(PlotLine::Junk) << Values() << QStringList();
        QTest::newRow("junk banner") << QByteArray("Boot OK!") << A << int(PlotLine::Junk) << Values() << QStringList();
        QTest::newRow("numbers format refuses pairs") << QByteArray("a:1") << PlotFormat::Numbers << int(PlotLine::Junk) << Values() << QStringList();
        QTest::newRow("pairs format refuses numbers") << QByteArray("1,2") << PlotFormat::Pairs << int(PlotLine::Junk) << Values() << QStringList();
    }

    void parseLine()
    {
        QFETCH(QByteArray, line);
        QFETCH(PlotFormat, format);
        QFETCH(int, kind);
        QFETCH(Values, values);
        QFETCH(QStringList, names);
        const PlotLine parsed = parsePlotLine(line, format);
        QCOMPARE(int(parsed.kind), kind);
        QCOMPARE(Values(parsed.values.begin(), parsed.values.end()), values);
        for (qsizetype i = 0; i < values.size(); ++i)
            QCOMPARE(std::signbit(parsed.values[i]), std::signbit(values[i]));
        QStringList parsedNames;
        for (QByteArrayView name : parsed.names)
            parsedNames << QString::fromUtf8(name);
        QCOMPARE(parsedNames, names);
    }

    void nanIsAValue()
    {
        const PlotLine parsed = parsePlotLine("nan,1", PlotFormat::Auto);
        QCOMPARE(parsed.kind, PlotLine::Numbers);
        QVERIFY(std::isnan(parsed.values[0]));
    }

    // Chunks joined by '|' go in one by one; rows, names and skipped lines come out.
    void stream_data()
    {
        QTest::addColumn<QByteArray>("chunks");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<int>("skipped");
        QTest::newRow("lines split across chunks, CR LF") << QByteArray("1,2\r|\n3,|4\r\n5,6") << "1,2;3,4" << QStringList() << 0;
        QTest::newRow("CR alone ends a line") << QByteArray("1\r2\r") << "1;2" << QStringList() << 0;
        QTest::newRow("header names channels") << QByteArray("x,y\n1,2\n") << "1,2" << QStringList{"x", "y"} << 0;
        QTest::newRow("banner after numbers is skipped") << QByteArray("1,2\nBooting\nx,y\n3,4\n") << "1,2;3,4" << QStringList{"x", "y"} << 1;
        QTest::newRow("pairs fill their own channels") << QByteArray("a:1\nb:2\na:3,b:4\n") << "1,nan;nan,2;3,4" << QStringList{"a", "b"} << 0;
        QTest::newRow("junk counted") << QByteArray("oops!\n1\n??\n") << "1" << QStringList() << 2;
        QTest::newRow("overlong line dropped once")
            << QByteArray(5000, '7') + "|" + QByteArray(100, '7') + "\n8\n" << "8" << QStringList() << 1;
    }

    void stream()
    {
        QFETCH(QByteArray, chunks);
        QFETCH(QString, rows);
        QFETCH(QStringList, names);
        QFETCH(int, skipped);
        PlotStream plot;
        for (const QByteArray &chunk : chunks.split('|'))
            plot.feed(chunk, 1000);
        const QString shown = rowsOf(plot.store());
        QCOMPARE(shown, rows);
        QCOMPARE(plot.names(), names);
        QCOMPARE(plot.skippedLines(), qint64(skipped));
    }

    void storeKeepsNewestWithinLimit()
    {
        PlotSampleStore store(100000);
        for (int i = 0; i < 250000; ++i) {
            const double v[8] = {double(i)};
            store.append(i, v, 8);
        }
        QCOMPARE(store.size(), qsizetype(100000));
        QCOMPARE(store.firstIndex(), qint64(150000));
        QCOMPARE(store.value(0, 0), 150000.0);
        QCOMPARE(store.value(0, 99999), 249999.0);
        QVERIFY(store.allocatedBytes() <= 16 * 8 * store.size());
        store.setKeepLimit(3);
        QCOMPARE(store.value(0, 0), 249997.0);
    }

    void decimationKeepsExtremes_data()
    {
        QTest::addColumn<int>("axis");
        QTest::newRow("sample index") << int(PlotXAxis::SampleIndex);
        QTest::newRow("receive time") << int(PlotXAxis::ReceiveTime);
    }

    void decimationKeepsExtremes()
    {
        QFETCH(int, axis);
        PlotSampleStore store;
        for (int i = 0; i < 100000; ++i) {
            const double v = i == 51234 ? 1000.0 : i == 70001 ? -1000.0 : std::sin(i / 500.0);
            store.append(qint64(i) * 10, &v, 1);
        }
        const PlotXMapping map{PlotXAxis(axis), 0};
        const double x0 = plotX(store, 0, map);
        const double x1 = plotX(store, store.size() - 1, map);
        const int columns = 300;
        const QList<QPointF> points =
            decimateMinMax(store, 0, plotRows(store, x0, x1, map), x0, x1, columns, map);
        QVERIFY(points.size() <= 2 * columns + 2);
        QVERIFY(points.size() >= columns);
        double low = 0;
        double high = 0;
        for (int i = 0; i < points.size(); ++i) {
            low = qMin(low, points[i].y());
            high = qMax(high, points[i].y());
            if (i > 0)
                QVERIFY(points[i].x() > points[i - 1].x());
        }
        QCOMPARE(high, 1000.0);
        QCOMPARE(low, -1000.0);
    }

    void csvRoundTrip()
    {
        PlotSampleStore store;
        const qint64 t0 = QDateTime(QDate(2026, 3, 1), QTime(12, 0, 0, 5)).toMSecsSinceEpoch();
        const QList<Values> rows = {{1.0 / 3, -0.0}, {1e-3, std::nan("")}, {-1234567.125, 2e300}};
        for (int i = 0; i < rows.size(); ++i)
            store.append(t0 + i * 250, rows[i].constData(), int(rows[i].size()));
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(writePlotCsv(buffer, store, {"a,b", "c"}));

        const QList<QByteArray> lines = buffer.data().split('\n');
        QCOMPARE(lines.value(0), QByteArray("time,\"a,b\",c"));
        QCOMPARE(lines.size(), rows.size() + 2); // the last line is empty
        for (int i = 0; i < rows.size(); ++i) {
            const QList<QByteArray> cells = lines[i + 1].split(',');
            QCOMPARE(QDateTime::fromString(QString::fromLatin1(cells[0]), Qt::ISODateWithMs).toMSecsSinceEpoch(),
                     t0 + i * 250);
            for (int c = 0; c < 2; ++c) {
                if (std::isnan(rows[i][c])) {
                    QVERIFY(cells[c + 1].isEmpty());
                    continue;
                }
                const double back = cells[c + 1].toDouble();
                QCOMPARE(back, rows[i][c]);
                QCOMPARE(std::signbit(back), std::signbit(rows[i][c]));
            }
        }
    }

    void settingsRoundTrip()
    {
        QSettings file(env->path() + "/plot.qvn", QSettings::IniFormat);
        QCOMPARE(PlotSettings::read(file, "0/"), PlotSettings()); // a document without plot keys
        PlotSettings s;
        s.visible = s.underView = true;
        s.format = int(PlotFormat::Pairs);
        s.xAxis = int(PlotXAxis::ReceiveTime);
        s.window = 5000;
        s.autoscale = false;
        s.channelNames = {"a", "", "c"};
        s.channelColors = {"#112233"};
        s.hiddenChannels = {1, 2};
        s.write(file, "0/");
        QCOMPARE(PlotSettings::read(file, "0/"), s);
        file.setValue("0/PlotWindow", 99999999);
        QCOMPARE(PlotSettings::read(file, "0/").window, int(PlotSampleStore::MaxKept));
    }

    // The pane costs nothing until shown, sits beside the receive view, and
    // hands the chart no more points than the plot is wide.
    void paneInSession()
    {
        SerialPortWidget session;
        session.resize(1000, 600);
        session.show();
        SessionPlot *plot = session.sessionPlot();
        session.pushByteArray("1,2\n", true, RX);
        QVERIFY(!plot->pane());

        plot->toggleAction()->setChecked(true);
        QVERIFY(plot->pane());
        auto *splitter = session.findChild<QSplitter *>("plotSplitter");
        QVERIFY(splitter);
        QCOMPARE(splitter->widget(1), plot->pane());
        QCOMPARE(splitter->orientation(), Qt::Horizontal);

        QByteArray wave;
        for (int i = 0; i < 20000; ++i)
            wave += QByteArray::number(std::sin(i / 50.0)) + ',' + QByteArray::number(std::cos(i / 50.0)) + "\r\n";
        session.pushByteArray(wave, true, RX);
        session.pushByteArray("9,9\n", false, TX); // sent data is not plotted
        PlotSettings s = plot->settings();
        s.window = 20000;
        plot->applySettings(s);
        plot->pane()->redraw();
        QCOMPARE(plot->pane()->stream().store().size(), qsizetype(20000));
        const auto curves = plot->pane()->chartView()->chart()->series();
        QCOMPARE(curves.size(), 2);
        const int width = int(plot->pane()->chartView()->chart()->plotArea().width());
        for (QAbstractSeries *curve : curves)
            QVERIFY(static_cast<QLineSeries *>(curve)->count() <= 2 * width + 2);

        plot->toggleAction()->setChecked(false);
        session.pushByteArray("3,4\n", true, RX);
        QCOMPARE(plot->pane()->stream().store().size(), qsizetype(20000));
        QVERIFY(!session.formatSettings().Plot.visible);
        session.updateSettings();
        QCOMPARE(session.formatSettings().Plot.window, 20000);
    }

private:
    QScopedPointer<IsolatedEnvironment> env;
};

QTEST_MAIN(TestPlot)
#include "tst_plot.moc"
