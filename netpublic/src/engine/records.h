// Records that several message families carry.
#ifndef NETPUBLIC_RECORDS_H
#define NETPUBLIC_RECORDS_H

#include "engine/describe.h"

#include <net_xml_public.h>
#include <net_xml_stream.h>

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

// A device of a search.
struct QueryDeviceFields : Description {
    using T = net_query_deive_t;
    static constexpr Field fields[] = {
        text("uid", AT(uid)).complain("query error. device->uid(%s)\n"),
        unsigned_longlong("logicChnBitmap", AT(logicChnBitmap)),
    };
    static constexpr Traits traits = HERE.logged_as("net_xml_public.cpp");
};
inline constexpr auto query_device = describe<QueryDeviceFields>();

// The size of a picture, in a record that has room for it. The lines are handed the value and the source line, and
// show them the other way round.
template <class Record> struct SizeFields : Description {
    using T = Record;
    static constexpr Field fields[] = {
        integer("width", AT(width))
            .at_least(1)
            .complain_plainly("Func(get_resolution_from_xmlnode) Line(%2$d) width(%1$d)\n"),
        integer("height", AT(height))
            .at_least(1)
            .complain_plainly("Func(get_resolution_from_xmlnode) Line(%2$d) height(%1$d)\n"),
    };
    static constexpr Traits traits =
        HERE.logged_as("net_xml_stream.cpp").parser("get_resolution_from_xmlnode").entry(Line::plain);
};
using ResolutionFields = SizeFields<net_resolution_info_v20_t>;
inline constexpr auto resolution_record = describe<ResolutionFields>();

// Written with its name, which is never read.
struct NamedResolutionFields : Description {
    using T = net_resolution_info_v20_t;
    static constexpr Field fields[] = {
        ResolutionFields::fields[0],
        ResolutionFields::fields[1],
        text("resolutionName", AT(name)).write_only(),
    };
    static constexpr auto written = order("resolutionName", "width", "height");
    static constexpr Traits traits = ResolutionFields::traits;
};
inline constexpr auto named_resolution_record = describe<NamedResolutionFields>();

} // namespace netpublic

#endif
