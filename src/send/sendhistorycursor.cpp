#include "send/sendhistorycursor.h"

std::optional<QString> SendHistoryCursor::older(const QStringList &history, const QString &current)
{
    if (index + 1 >= history.size())
        return std::nullopt;
    if (index < 0)
        draft = current;
    return history.at(++index);
}

std::optional<QString> SendHistoryCursor::newer(const QStringList &history)
{
    if (index < 0)
        return std::nullopt;
    index = qMin(index, int(history.size()));
    --index;
    return index < 0 ? draft : history.at(index);
}
