// W2 by hand: customers come through one door and are served by three servers, all times exponential.
//
// limitServers CUSTOMERS

#include "workshop.h"

#include <cstdlib>

namespace {

enum eActivity : std::uint32_t { arrive, serve };

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::int64_t customers = std::atoll(argv[1]);
    cRandom random(1);
    cCalendar calendar;
    cStock doors;
    cStock servers;
    cStock waiting;
    cWork work[2];
    double now = 0.0;
    const auto start = [&](eActivity activity, double duration) {
        work[activity].count(now, duration);
        calendar.schedule(now + duration, activity);
    };

    doors.add(1.0, now);
    servers.add(3.0, now);
    for (;;) {
        while (doors.count > 0.0) {
            doors.take(1.0, now);
            start(arrive, random.exponential(2.5));
        }
        while (servers.count > 0.0 && waiting.count > 0.0) {
            servers.take(1.0, now);
            waiting.take(1.0, now);
            start(serve, random.exponential(1.0));
        }
        if (work[serve].instances >= customers) break;
        now = calendar.nextTime();
        if (calendar.take() == arrive) {
            waiting.add(1.0, now);
            doors.add(1.0, now);
        } else {
            servers.add(1.0, now);
        }
    }
    work[arrive].print("Arrive");
    work[serve].print("Serve");
    doors.print("Doors", now);
    servers.print("Servers", now);
    waiting.print("Waiting", now);
    std::printf("%lld instances until %g\n", static_cast<long long>(work[0].instances + work[1].instances), now);
    return 0;
}
