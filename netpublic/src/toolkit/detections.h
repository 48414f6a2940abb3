// The rule-based detections by the alarm-type code of their first rule. Here it is "intrusion", although the alarm type
// is called "intrude".
#ifndef NETPUBLIC_DETECTIONS_H
#define NETPUBLIC_DETECTIONS_H

#include "values/tables.h"

namespace netpublic {

inline constexpr Word detection_list[] = {
    {smart_ai_first, "crossline"},
    {smart_ai_first + 1 * smart_ai_rules, "intrusion"},
    {smart_ai_first + 2 * smart_ai_rules, "loitering"},
    {smart_ai_first + 3 * smart_ai_rules, "legacy"},
    {smart_ai_first + 4 * smart_ai_rules, "loss"},
};
inline constexpr auto detections = words<detection_list>();

} // namespace netpublic

#endif
