#include "transport/transport.h"

void Transport::setReading(bool on)
{
    if (reading == on)
        return;
    reading = on;
    readingChanged(on);
}

void Transport::readingChanged(bool on)
{
    if (on)
        poll();
}
