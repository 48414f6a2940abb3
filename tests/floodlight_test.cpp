// Floodlights: the switch command, the report of the states, the task.
#include "support.h"

#include <net_public.h>

#include <cstring>

namespace {

using namespace test;

class FloodlightTest : public HostTest {};

TEST_F(FloodlightTest, Components)
{
    std::string items;
    for (int i = 0; i < 66; ++i)
        items += "<item><timeStamp>" + std::to_string(i) + "</timeStamp></item>";
    Xml list("<FloodlightScheduleList>" + items + "<maxNum>64</maxNum></FloodlightScheduleList>");
    struct {
        net_floodlight_schedule_t schedule;
        net_floodlight_schedule_item_t behind;
    } room{};
    room.schedule.num = 60;
    room.behind.timeStamp = -1;
    EXPECT_EQ(get_floodlight_schedule_from_xmlnode(&room.schedule, list, "FloodlightScheduleList"), 0);
    EXPECT_EQ(room.schedule.num, 64) << "counted from 0 again, the rest ignored";
    EXPECT_EQ(room.schedule.maxNum, 64);
    EXPECT_EQ(room.schedule.item[63].timeStamp, 63);
    EXPECT_EQ(room.behind.timeStamp, -1);

    // "t" is the time, which stands in front of the time stamp.
    Xml item("<item><t><year>5</year></t><timeS>6</timeS><d>7</d><e>8</e></item>");
    net_floodlight_schedule_item_t one{};
    EXPECT_EQ(get_floodlight_schedule_item_from_xmlnode(&one, item, "item"), 0);
    EXPECT_EQ(one.time.year, 5);
    EXPECT_EQ(one.timeStamp, 6);
    EXPECT_EQ(one.daymap, 7);
    EXPECT_EQ(one.enable, 8);
    EXPECT_EQ(get_floodlight_schedule_item_from_xmlnode(&one, item, "time"), -1);

    Xml period("<schedule><startM>-1</startM><end>99</end></schedule>");
    net_floodlight_period_t light = {1, 2, 3, 4};
    EXPECT_EQ(get_schedule_val_from_xmlnode(&light, period, "scheduleList"), 0);
    EXPECT_EQ(light.startHour, 1);
    EXPECT_EQ(light.startMin, -1);
    EXPECT_EQ(light.endHour, 99);
    EXPECT_EQ(light.endMin, 4);
    Xml threshold("<lightSensThreshold><m>1</m><light>2</light></lightSensThreshold>");
    net_light_sens_threshold_t sensor{};
    EXPECT_EQ(get_lightsens_threshold_from_xmlnode(&sensor, threshold, nullptr), 0);
    EXPECT_EQ(sensor.min, 1);
    EXPECT_EQ(sensor.max, 0);
    EXPECT_EQ(sensor.lightCur, 2);
    Xml night("<nightLongViewMultiBrightness><alarm><m>4</m></alarm></nightLongViewMultiBrightness>");
    net_night_multi_brightness_t brightness{};
    EXPECT_EQ(get_night_multi_brightness_from_xmlnode(&brightness, night, nullptr), 0);
    EXPECT_EQ(brightness.alarmBrightness.min, 4);
    EXPECT_EQ(brightness.alarmBrightness.max, 4) << "min and max are tested one after the other";
    EXPECT_EQ(get_night_multi_brightness_from_xmlnode(nullptr, night, nullptr), -1);
}

} // namespace
