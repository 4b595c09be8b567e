#include <QtTest>

#include <QLabel>
#include <QProcess>
#include <QRegularExpression>
#include <QTranslator>
#include <QXmlStreamReader>

#include "app/setconfigfilepathdialog.h"
#include "app/startup.h"
#include "testsupport.h"

namespace {

// One <message> of a Qt Linguist .ts file.
struct Message
{
    QString context;
    QString source;
    QString comment;
    QStringList translations; // one entry, or one per numerus form
    QString type;             // "", "unfinished", "vanished" or "obsolete"

    QString key() const { return context + QLatin1Char('\x1f') + source + QLatin1Char('\x1f') + comment; }
    QString label() const { return context + QStringLiteral(": \"") + source + QLatin1Char('"'); }
    bool isCurrent() const { return type != QLatin1String("vanished") && type != QLatin1String("obsolete"); }
    bool isFinished() const
    {
        if (type == QLatin1String("unfinished") || translations.isEmpty())
            return false;
        for (const QString &text : translations) {
            if (text.isEmpty())
                return false;
        }
        return true;
    }
};

void readTranslation(QXmlStreamReader &xml, Message &message)
{
    message.type = xml.attributes().value(QLatin1String("type")).toString();
    bool hasForms = false;
    QString plain;
    while (xml.readNext() != QXmlStreamReader::EndElement || xml.name() != QLatin1String("translation")) {
        if (xml.hasError() || xml.atEnd())
            return;
        if (xml.isCharacters())
            plain += xml.text();
        else if (xml.isStartElement() && xml.name() == QLatin1String("numerusform")) {
            hasForms = true;
            message.translations << xml.readElementText();
        }
    }
    if (!hasForms)
        message.translations << plain;
}

// The current (not obsolete) messages of a .ts file, or an error text.
QList<Message> readTsFile(const QString &path, QString *error)
{
    QList<Message> messages;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = path + QStringLiteral(": ") + file.errorString();
        return messages;
    }
    QXmlStreamReader xml(&file);
    QString context;
    Message message;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            if (xml.name() == QLatin1String("context"))
                context.clear();
            else if (xml.name() == QLatin1String("name"))
                context = xml.readElementText();
            else if (xml.name() == QLatin1String("message"))
                message = Message{context, {}, {}, {}, {}};
            else if (xml.name() == QLatin1String("source"))
                message.source = xml.readElementText();
            else if (xml.name() == QLatin1String("comment"))
                message.comment = xml.readElementText();
            else if (xml.name() == QLatin1String("translation"))
                readTranslation(xml, message);
        } else if (xml.isEndElement() && xml.name() == QLatin1String("message")) {
            if (message.isCurrent())
                messages << message;
        }
    }
    if (xml.hasError())
        *error = path + QStringLiteral(": ") + xml.errorString();
    return messages;
}

// "%1", "%L2" and the log name fields such as "%D", in order.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("%(L?\\d+|[A-Za-z])"));
    QStringList found;
    for (const auto &match : pattern.globalMatch(text))
        found << match.captured();
    return found;
}

QStringList markupTags(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("<[^>]*>"));
    QStringList found;
    for (const auto &match : pattern.globalMatch(text))
        found << match.captured();
    return found;
}

// The mnemonic letter after a single "&" (lower case), or an empty string;
// "&&" stands for a literal ampersand.
QString mnemonic(const QString &text)
{
    for (int i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('&'))
            continue;
        if (text.at(i + 1) == QLatin1Char('&')) {
            ++i;
            continue;
        }
        return text.at(i + 1).toLower();
    }
    return QString();
}

} // namespace

class TestTranslation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void catalogueLoadsFromResources();
    void formsAreTranslated();
    void committedCatalogueIsComplete();
    void translationsKeepPlaceholdersAndMarkup();
    void everyExtractedTextIsTranslated();

private:
    IsolatedEnvironment environment;
    QList<Message> committed;
};

void TestTranslation::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QString error;
    committed = readTsFile(QStringLiteral(QUORVANE_TS_FILE), &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QVERIFY2(committed.size() > 100, "the translation source holds too few messages");
}

void TestTranslation::catalogueLoadsFromResources()
{
    QTranslator translator;
    QVERIFY(installTranslation(translator, 1, QStringLiteral("en_US")));
    QCOMPARE(QCoreApplication::translate("MainWindow", "&File"), QStringLiteral("文件(&F)"));
    QCOMPARE(QCoreApplication::translate("SerialPortWidget", "Rx: %L1 Bytes"),
             QStringLiteral("接收：%L1 字节"));
    QCOMPARE(QCoreApplication::translate("SettingsDialog", "Please input correct log file name!"),
             QStringLiteral("请输入正确的日志文件名！"));
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(QCoreApplication::translate("MainWindow", "&File"), QStringLiteral("&File"));
}

void TestTranslation::formsAreTranslated()
{
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/language/language/zh_CN")));
    QCoreApplication::installTranslator(&translator);
    SetConfigFilePathDialog dialog;
    QCoreApplication::removeTranslator(&translator);

    auto *label = dialog.findChild<QLabel *>(QStringLiteral("label_2"));
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("请在下方指定一个文件夹。"));
}

void TestTranslation::committedCatalogueIsComplete()
{
    QStringList missing;
    for (const Message &message : std::as_const(committed)) {
        if (!message.isFinished())
            missing << message.label();
    }
    QVERIFY2(missing.isEmpty(),
             qPrintable(QStringLiteral("untranslated or unfinished:\n") + missing.join(QLatin1Char('\n'))));
}

void TestTranslation::translationsKeepPlaceholdersAndMarkup()
{
    static const QRegularExpression shortcut(QStringLiteral("^(Ctrl|Shift|Alt|Meta)\\+"));
    QStringList broken;
    for (const Message &message : std::as_const(committed)) {
        for (const QString &text : message.translations) {
            QStringList faults;
            if (placeholders(text) != placeholders(message.source))
                faults << QStringLiteral("placeholders");
            if (markupTags(text) != markupTags(message.source))
                faults << QStringLiteral("markup");
            if (mnemonic(text) != mnemonic(message.source))
                faults << QStringLiteral("accelerator");
            if (text.count(QLatin1Char('\n')) != message.source.count(QLatin1Char('\n')))
                faults << QStringLiteral("line breaks");
            if (message.source.contains(shortcut) && text != message.source)
                faults << QStringLiteral("shortcut");
            if (!faults.isEmpty())
                broken << message.label() + QStringLiteral(" -> \"") + text + QStringLiteral("\": ")
                              + faults.join(QStringLiteral(", "));
        }
    }
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(QLatin1Char('\n'))));
}

// Extracts the texts from the sources as they are now, so that a new tr()
// text or form text without a translation fails here.
void TestTranslation::everyExtractedTextIsTranslated()
{
    const QString lupdate = QStringLiteral(QUORVANE_LUPDATE);
    if (!QFileInfo(lupdate).isExecutable())
        QSKIP("lupdate is not available");

    QTemporaryDir scratch;
    QVERIFY(scratch.isValid());
    const QString extractedPath = scratch.filePath(QStringLiteral("extracted_zh_CN.ts"));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(scratch.path());
    process.start(lupdate, {QStringLiteral(QUORVANE_SOURCE_DIR), QStringLiteral("-no-obsolete"),
                            QStringLiteral("-locations"), QStringLiteral("none"),
                            QStringLiteral("-ts"), extractedPath});
    QVERIFY2(process.waitForFinished(120000), qPrintable(process.errorString()));
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
             process.readAll().constData());

    QString error;
    const QList<Message> extracted = readTsFile(extractedPath, &error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QVERIFY(!extracted.isEmpty());

    QHash<QString, Message> known;
    for (const Message &message : std::as_const(committed))
        known.insert(message.key(), message);
    QStringList missing;
    for (const Message &message : extracted) {
        const auto it = known.constFind(message.key());
        if (it == known.constEnd() || !it->isFinished())
            missing << message.label();
    }
    QVERIFY2(missing.isEmpty(),
             qPrintable(QStringLiteral("texts without a finished translation (refresh with "
                                       "'cmake --build build --target update_translations' and "
                                       "translate them):\n")
                        + missing.join(QLatin1Char('\n'))));
}

QTEST_MAIN(TestTranslation)
#include "tst_translation.moc"
