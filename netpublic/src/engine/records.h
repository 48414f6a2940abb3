// Records that several message families carry.
#ifndef NETPUBLIC_RECORDS_H
#define NETPUBLIC_RECORDS_H

#include "engine/describe.h"

namespace netpublic {

// "year" to "second".
struct TimeFields : Description {
    using T = tag_net_time_v20_t;
    static constexpr Field fields[] = {
        integer("year", AT(year)).at_least(0),   integer("month", AT(month)).in(1, 12),
        integer("day", AT(day)).in(1, 31),       integer("hour", AT(hour)).in(0, 23),
        integer("minute", AT(minute)).in(0, 59), integer("second", AT(second)).in(0, 59),
    };
};
inline constexpr auto time_record = describe<TimeFields>();

// "min", "max", "def", "cur", each tested on its own: a child named "m" is read into both min and max.
struct IntValueFields : Description {
    using T = net_int_value_t;
    static constexpr Field fields[] = {
        integer("min", AT(min)).own_test(),
        integer("max", AT(max)).own_test(),
        integer("def", AT(def)).own_test(),
        integer("cur", AT(cur)).own_test(),
    };
    static constexpr auto written = order("min", "max", "cur", "def");
};
inline constexpr auto int_value_record = describe<IntValueFields>();

struct FloatValueFields : Description {
    using T = net_float_value_t;
    static constexpr Field fields[] = {
        real("min", AT(min)).own_test(),
        real("max", AT(max)).own_test(),
        real("def", AT(def)).own_test(),
        real("cur", AT(cur)).own_test(),
    };
    static constexpr auto written = order("min", "max", "cur", "def");
};
inline constexpr auto float_value_record = describe<FloatValueFields>();

} // namespace netpublic

#endif
