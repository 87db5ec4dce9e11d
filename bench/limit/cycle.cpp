// W1, W1L and W3 by hand: excavators load trucks, which haul, dump with a spotter's help, and return.
//
// limitCycle EXCAVATORS TRUCKS SPOTTERS LOADS REPLICATIONS

#include "workshop.h"

#include <cstdlib>

namespace {

enum eActivity : std::uint32_t { load, haul, dump, back };

struct cSite {
    cStock excavators;
    cStock trucksAtPit;
    cStock trucksAtFill;
    cStock spotters;
    cWork work[4];
    cCalendar calendar;
    double now = 0.0;

    void start(eActivity activity, double duration) {
        work[activity].count(now, duration);
        calendar.schedule(now + duration, activity);
    }

    void run(cRandom& random, double excavatorCount, double truckCount, double spotterCount, std::int64_t loads) {
        excavators.add(excavatorCount, now);
        trucksAtPit.add(truckCount, now);
        spotters.add(spotterCount, now);
        for (;;) {
            while (excavators.count > 0.0 && trucksAtPit.count > 0.0) {
                excavators.take(1.0, now);
                trucksAtPit.take(1.0, now);
                start(load, random.triangular(2.0, 3.5, 5.0));
            }
            while (spotters.count > 0.0 && trucksAtFill.count > 0.0) {
                spotters.take(1.0, now);
                trucksAtFill.take(1.0, now);
                start(dump, random.uniform(0.8, 1.4));
            }
            if (work[load].instances >= loads) return;
            now = calendar.nextTime();
            switch (calendar.take()) {
                case load:
                    excavators.add(1.0, now);
                    start(haul, random.normal(9.0, 1.0));
                    break;
                case haul: trucksAtFill.add(1.0, now); break;
                case dump:
                    spotters.add(1.0, now);
                    start(back, random.normal(6.5, 0.8));
                    break;
                default: trucksAtPit.add(1.0, now); break;
            }
        }
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 6) return 2;
    const double counts[]{std::atof(argv[1]), std::atof(argv[2]), std::atof(argv[3])};
    const std::int64_t loads = std::atoll(argv[4]);
    const int replications = std::atoi(argv[5]);
    std::int64_t instances = 0;
    cSite site;
    for (int i = 0; i < replications; ++i) {
        cRandom random(static_cast<std::uint32_t>(1 + i));
        cCalendar calendar = std::move(site.calendar);
        calendar.clear();
        site = cSite{};
        site.calendar = std::move(calendar);
        site.run(random, counts[0], counts[1], counts[2], loads);
        for (const cWork& work : site.work) instances += work.instances;
    }
    const char* names[]{"Load", "Haul", "Dump", "Return"};
    for (int i = 0; i < 4; ++i) site.work[i].print(names[i]);
    site.excavators.print("Excavators", site.now);
    site.trucksAtPit.print("TrucksAtPit", site.now);
    site.trucksAtFill.print("TrucksAtFill", site.now);
    site.spotters.print("Spotters", site.now);
    std::printf("%lld instances until %g\n", static_cast<long long>(instances), site.now);
    return 0;
}
