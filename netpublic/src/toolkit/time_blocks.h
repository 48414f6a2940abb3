// Time blocks: runs of hours of one weekday, as weekly tables carry them.
#ifndef NETPUBLIC_TIME_BLOCKS_H
#define NETPUBLIC_TIME_BLOCKS_H

class TiXmlElement;
class TiXmlNode;

#include "toolkit/schedules.h"

namespace netpublic {

// Hands each "timeBlock" child to `apply`; at most 168, the rest is ignored. A child of any other name,
// a block that lacks a value or one that ends before it begins is -1.
int read_time_blocks(TiXmlNode *list, void *context, void (*apply)(void *context, const TimeBlock &block));

// Appends one enabled "timeBlock" for each longest run of the set hours; bit h is hour h.
[[nodiscard]] int append_time_blocks(TiXmlElement *list, int weekday, unsigned int hours);

} // namespace netpublic

#endif
