#include "common/logging.h"

Q_LOGGING_CATEGORY(lcDefault, "default")
