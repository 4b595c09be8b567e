#ifndef QUORVANE_TIMERBEAT_H
#define QUORVANE_TIMERBEAT_H

class QTimer;

// Starts a repeating timer on the program's beat of its interval: the same
// timer of every session then comes due at the same moment, and the event
// loop wakes once for all of them instead of once for each. The first
// timeout comes early, at the next beat; from there the interval holds.
// A phase puts the timer that many milliseconds after the beat.
void startOnBeat(QTimer *timer, int interval, int phase = 0);

#endif
