#include <QtTest>

#include <QtWidgets>

#include "app/setconfigfilepathdialog.h"
#include "app/startup.h"
#include "session/statustexts.h"
#include "testsupport.h"

namespace {

// What a translation must keep: placeholders ("%1", "%L2", log fields such as
// "%D"), markup, the accelerator letter in any case ("&&" is a literal
// ampersand), line breaks, and shortcut texts unchanged.
void checkMarks(const QString &label, const QString &source, const QString &translation, QStringList &faults)
{
    using RE = QRegularExpression;
    static const QList<QPair<QString, RE>> marks = {
        {"placeholders", RE("%(L?\\d+|[A-Za-z])")},
        {"markup", RE("<[^>]*>")},
        {"accelerator", RE("(?<!&)&(?!&).", RE::CaseInsensitiveOption)},
        {"line breaks", RE("\n")},
        {"shortcut", RE("^(Ctrl|Shift|Alt|Meta)\\+.*")}};
    const auto found = [](const RE &pattern, const QString &text) {
        QStringList all;
        for (const auto &match : pattern.globalMatch(text))
            all << (pattern.patternOptions() & RE::CaseInsensitiveOption ? match.captured().toLower()
                                                                        : match.captured());
        return all;
    };
    for (const auto &[what, pattern] : marks) {
        if (found(pattern, source) != found(pattern, translation))
            faults << label + " -> \"" + translation + "\" breaks the " + what;
    }
}

} // namespace

class TestTranslation : public QObject
{
    Q_OBJECT

private slots:
    void catalogueLoadsFromResources();
    void everyTextIsTranslated();
    void statusTextsAreTranslated();

private:
    IsolatedEnvironment environment;
};

// Code texts and form texts (translated under the form's class) both resolve,
// and so do Qt's own standard buttons.
void TestTranslation::catalogueLoadsFromResources()
{
    QTranslator translator;
    QVERIFY(installTranslation(translator, 1, "en_US"));
    QCOMPARE(QCoreApplication::translate("MainWindow", "&File"), QString("文件(&F)"));
    QTranslator qtTranslator;
    QVERIFY(installQtTranslation(qtTranslator));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QString("取消"));
    QCoreApplication::removeTranslator(&qtTranslator);
    SetConfigFilePathDialog dialog;
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(dialog.findChild<QLabel *>("label_2")->text(), QString("请在下方指定一个文件夹。"));
    QCOMPARE(QCoreApplication::translate("MainWindow", "&File"), QString("&File"));
}

// lupdate merges the texts of the sources as they are now into a copy of the
// committed catalogue: a new tr() or form text arrives there unfinished and
// fails here, as does any unfinished or mark-breaking translation. To fix,
// run 'cmake --build build --target update_translations' and translate.
void TestTranslation::everyTextIsTranslated()
{
    QTemporaryDir scratch;
    const QString merged = scratch.filePath("merged_zh_CN.ts");
    QVERIFY(QFile::copy(QUORVANE_TS_FILE, merged));
    QProcess lupdate;
    lupdate.setWorkingDirectory(scratch.path());
    lupdate.start(QUORVANE_LUPDATE, {QUORVANE_SOURCE_DIR, "-no-obsolete", "-locations", "none", "-ts", merged});
    QVERIFY2(lupdate.waitForFinished(120000) && lupdate.exitStatus() == QProcess::NormalExit && lupdate.exitCode() == 0,
             qPrintable(lupdate.errorString() + '\n' + lupdate.readAllStandardError()));

    QFile file(merged);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QString context, source, label;
    bool numerus = false;
    QStringList faults;
    int messages = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"message") {
            numerus = xml.attributes().value("numerus") == u"yes";
            ++messages;
        } else if (xml.name() == u"source") {
            source = xml.readElementText();
            label = context + ": \"" + source + '"';
        } else if (xml.name() == u"translation" && !xml.attributes().value("type").isEmpty()) {
            faults << label + " is unfinished";
        } else if ((xml.name() == u"translation" && !numerus) || xml.name() == u"numerusform") {
            const QString text = xml.readElementText();
            if (text.isEmpty())
                faults << label + " has no translation";
            checkMarks(label, source, text, faults);
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QVERIFY2(messages > 100, "lupdate found too few texts");
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join('\n')));
}

// Status texts are put together in code, where lupdate cannot tell a
// forgotten tr() from a text meant to stay as it is: every one of them must
// come out in Chinese, except the socket state names, which stay English.
void TestTranslation::statusTextsAreTranslated()
{
    QTranslator translator;
    QVERIFY(installTranslation(translator, 1, "en_US"));
    QStringList stateNames;
    const QMetaEnum states = QMetaEnum::fromType<QAbstractSocket::SocketState>();
    for (int i = 0; i < states.keyCount(); ++i)
        stateNames << StatusTexts::socketState(QAbstractSocket::SocketState(states.value(i))).text;
    QStringList texts;
    texts << StatusTexts::udpBound("127.0.0.1", 6000) << StatusTexts::serverWaiting("0.0.0.0", 6000)
          << StatusTexts::serverListening("0.0.0.0", 6000) << StatusTexts::serialClosed("COM1")
          << StatusTexts::serialOpened("COM1", QSerialPort());
    for (auto parity : {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity, QSerialPort::SpaceParity,
                        QSerialPort::MarkParity})
        texts << StatusTexts::parity(parity);
    for (auto flow : {QSerialPort::NoFlowControl, QSerialPort::HardwareControl, QSerialPort::SoftwareControl})
        texts << StatusTexts::flowControl(flow);
    QCoreApplication::removeTranslator(&translator);

    const QRegularExpression chinese("\\p{Han}");
    QStringList untranslated;
    for (const QString &text : std::as_const(texts)) {
        if (!chinese.match(text).hasMatch())
            untranslated << text;
    }
    QVERIFY2(untranslated.isEmpty(), qPrintable(untranslated.join('\n')));
    QVERIFY(!chinese.match(stateNames.join('\n')).hasMatch());
}

QTEST_MAIN(TestTranslation)
#include "tst_translation.moc"
