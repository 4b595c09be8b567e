#ifndef QUORVANE_MAINWINDOW_H
#define QUORVANE_MAINWINDOW_H

#include <array>

#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>

#include "app/preferences.h"
#include "app/sessiondocument.h"

class QAction;
class QComboBox;
class QDialog;
class QLabel;
class QSettings;
class QTimer;
class SerialPortWidget;

namespace Ui {
class MainWindow;
}

// The application window: owns the workspace of port sessions, drives them
// together from the menus and toolbar, and keeps the session document and
// the remembered preferences.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    static constexpr int MaxSessions = SessionDocument::MaxSessions;
    static constexpr int MaxRecentFiles = 9;

    // startDocument, when given, is opened instead of the last document.
    explicit MainWindow(QWidget *parent = nullptr, const QString &startDocument = QString());
    ~MainWindow() override;

    void start(const QString &name);
    void updateGrid();
    void updatePort(bool remove);

    bool readSettingFile(const QString &fileName);
    bool writeSettingFile(const QString &fileName, bool showProgress);
    bool loadFile(const QString &fileName);

    int sessionCount() const { return portCount; }
    SerialPortWidget *session(int index) const;
    SerialPortWidget *currentSession() const;
    SerialPortWidget *maximizedWorkspaceSession() const;
    int sessionsPerRow() const { return portNumberPerColumn; }
    int workspaceRunState() const { return runState; }
    QString currentFile() const { return curFile; }
    QStringList recentFiles() const { return prefs.recentFiles; }

public slots:
    void shutDown();
    void changePort();
    void onUpdateDisplay();
    void updateStatusBar();
    void clearErrorMessage();
    void openURL(const QString &url);
    bool save();
    bool saveAs();
    bool saveFile(const QString &fileName, bool showProgress);
    void open();
    void openDocument(const QString &fileName);
    void openRecentFile();
    void removeSession(SerialPortWidget *session);
    void toggleMaximized(SerialPortWidget *session);

protected:
    void closeEvent(QCloseEvent *event) override;

    // Everything that would wait for the user goes through these, so that
    // they can be answered without a modal loop.
    virtual QString chooseOpenFile(const QString &caption, const QString &folder, const QString &filter);
    virtual QString chooseSaveFile(const QString &caption, const QString &folder, const QString &filter);
    virtual QMessageBox::StandardButton ask(QMessageBox::Icon icon, const QString &title, const QString &text,
                                            QMessageBox::StandardButtons buttons);
    virtual int askSessionsPerRow(int current);
    virtual bool runDialog(QDialog &dialog);
    // Where the workspace starts one session; a seam for starting without ports.
    virtual bool startSession(SerialPortWidget &session, const QString &portName);

private slots:
    void on_acFileNew_triggered();
    void on_acFileOpen_triggered();
    void on_acFileSave_triggered();
    void on_acFileSaveAs_triggered();
    void on_acFileRecordDataLog_triggered();
    void on_acFileViewCurrentDataLog_triggered();
    void on_acFileOpenLogFolder_triggered();
    void on_acFileExit_triggered();
    void on_acMonStart_triggered();
    void on_acEditPause_triggered();
    void on_acMonStop_triggered();
    void on_acEditAdd_triggered();
    void on_acEditRemove_triggered();
    void on_acEditCloseSession_triggered();
    void on_acEditClearSession_triggered();
    void on_acEditClear_triggered();
    void on_actionClearSendHistory_triggered();
    void on_actionNewLine_triggered();
    void on_actionCarriage_Return_triggered();
    void on_actionCR_NL_triggered();
    void on_actionNL_CR_triggered();
    void on_acViewHorizontal_triggered();
    void on_acViewVertical_triggered();
    void on_acViewGrid_triggered();
    void on_acViewCustom_triggered();
    void on_acViewQuickSettings_triggered();
    void on_acViewAlwaysTop_triggered();
    void on_actionEnglish_triggered();
    void on_actionChinese_triggered();
    void on_acControlOpen_triggered();
    void on_acToolsSetting_triggered();
    void on_actionNew_Connection_triggered();
    void on_acToolCalc_triggered();
    void on_acToolsAscii_triggered();
    void on_acDebugSend_triggered();
    void on_acHelpHomepage_triggered();
    void on_actionAbout_triggered();
    void on_actionTest_triggered();

private:
    void addPlotAction();
    void addFindAction();
    static QString documentFilter();
    void createRecentFileActions();
    void adoptWorkspaceIntoScrollArea();
    void createStatusBar();
    void readSettings(QSettings &store);
    void writeSettings();
    bool okToContinue();
    bool okToLoseUnloggedText();
    void setCurrentFile(const QString &fileName);
    void updateRecentFileActions(bool dropMissing);

    SerialPortWidget *appendSession();
    void destroySession(int index);
    int indexOfSession(const SerialPortWidget *wanted) const;
    void destroyAllSessions();
    void chooseLayout(QAction *layoutAction, int sessionsPerRow);
    void fillPortCombo();
    void updateLanguageChecks();
    void chooseLanguage(int language);
    QString firstPortName() const;

    Ui::MainWindow *ui;
    std::array<SerialPortWidget *, MaxSessions> sessions{};
    int portCount = 0;
    bool shuttingDown = false;
    int portNumberPerColumn = 1;
    int runState = Stopped;
    int lastPortCount = -1;

    QPointer<SerialPortWidget> maximizedSession;
    QPointer<SerialPortWidget> focusedSession;

    QComboBox *portCombo = nullptr;
    QAction *portComboAction = nullptr;
    std::array<QAction *, MaxRecentFiles> recentFileActions{};

    QString curFile;
    QString currentLogFile;
    Preferences prefs;

    QLabel *errorLabel = nullptr;
    QLabel *stateLabel1 = nullptr;
    QLabel *stateLabel2 = nullptr;
    QLabel *stateLabel3 = nullptr;
    QLabel *logLabel = nullptr;
    QLabel *noticeLabel = nullptr;

    QTimer *displayTimer = nullptr;
    QTimer *errorTimer = nullptr;
};

#endif
