#ifndef QUORVANE_SESSIONDOCUMENT_H
#define QUORVANE_SESSIONDOCUMENT_H

#include <functional>

#include "session/portsettings.h"

class QSettings;

// Top-level keys of a session document.
struct DocumentLayout {
    int portCount = 1;
    int columnCount = 1;
    bool quickView = true;
};

// Maps the workspace to and from a ".qvn" document (an INI file). Only the
// key vocabulary and encodings live here; the main window owns the sessions.
namespace SessionDocument {

constexpr int MaxSessions = 16;

// Called with 10, 20, 30, 50 and 100 as the writing of one session proceeds.
using ProgressStage = std::function<void(int stage)>;

// Whether the file can be a session document at all: a readable INI text
// file with a session count or at least one session group.
constexpr qint64 MaxDocumentBytes = qint64(16) << 20;
bool isSessionDocument(const QString &fileName);

void writeLayout(QSettings &file, const DocumentLayout &layout);
// Session and column counts always come back within 1..MaxSessions.
DocumentLayout readLayout(const QSettings &file);

void writeSession(QSettings &file, int index, const PortSettings &port, const FormatSetting &format,
                  const ProgressStage &progress = {});
// Replaces every field the document knows; a missing key gives 0, false or
// empty, except where that would break the session (empty font family, empty
// host list), which keeps a usable value instead.
void readSession(const QSettings &file, int index, PortSettings &port, FormatSetting &format);

// "a-||-b-||-" <-> {"a", "b"}; never empty on read.
QString joinHosts(const QStringList &hosts);
QStringList splitHosts(const QString &text);

// Progress bar value at one stage of session `index` of `count`; the two
// terms are divided separately.
int progressValue(int stage, int index, int count);

// Whether the written document reached the disk.
bool flushed(QSettings &file);

} // namespace SessionDocument

#endif
