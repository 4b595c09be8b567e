#ifndef QUORVANE_BENCH_FEEDER_H
#define QUORVANE_BENCH_FEEDER_H

#include <QStringList>

// The far end of the bench's sessions, run as a process of its own so that
// the bench's processor time is the sessions' alone. Arguments:
//   serial RATE SECONDS BYTES DEVICE...   one stream per device
//   tcp RATE SECONDS BYTES PORT CLIENTS   one stream per loopback client
//   churn RATE STANDING SECONDS PORT FIRST
//       RATE connects a second to the port, each client staying STANDING /
//       RATE seconds; client i sends the two lines of stream FIRST + i, one
//       when connected and one when it leaves
// A RATE of 0 (serial, tcp) sends as fast as the other end takes; they stop
// after SECONDS, or earlier once every stream has sent BYTES (if not 0).
//
// It reports on stdout, a line each: "start" as it begins; for churn
// "steady N" once the first clients leave and "ending N" when it stops
// connecting (N = connects so far); "sent B..." (bytes written, per stream)
// once everything went out; for churn "stats name=value ...". Then it waits
// to be ended.
int runFeeder(const QStringList &arguments);

#endif
