#ifndef QUORVANE_LOGGING_H
#define QUORVANE_LOGGING_H

#include <QLoggingCategory>

// All diagnostics go to one category named "default", so that turning debug
// output off ("default.debug=false") makes every qCDebug(lcDefault) free.
Q_DECLARE_LOGGING_CATEGORY(lcDefault)

#endif
