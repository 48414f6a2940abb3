// Floodlights: the switch command, the report of the states, the task.
#include "support.h"

#include <net_public.h>

#include <cstring>

namespace {

using namespace test;

class FloodlightTest : public HostTest {};

TEST_F(FloodlightTest, Switch)
{
    Envelope<net_floodlight_status_t> message(nets_param_floodlight_status_init, channel(5));
    message.param.dataSize = 0; // the size is not looked at
    EXPECT_EQ(
        message.read(nets_param_floodlight_status_x2s, "<FloodlightManual><status>-1</status></FloodlightManual>"), 0);
    EXPECT_EQ(message->channel, 5);
    EXPECT_EQ(message->status, -1);
    EXPECT_EQ(message.read(nets_param_floodlight_status_x2s,
                           "<F><channel>63</channel><duration>0</duration><status>1</status></F>"),
              0);
    EXPECT_EQ(message->channel, 63);
    EXPECT_EQ(message->status, 1);
    for (const char *refused :
         {"<channel>64</channel>", "<channel>-1</channel>", "<duration>-1</duration>", "<status>on</status>"})
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(message.read(nets_param_floodlight_status_x2s, "<F>" + std::string(refused) + "</F>"),
                                -1);
                  }),
                  "");
    EXPECT_EQ(message->duration, -1) << "stored, then refused";
    EXPECT_EQ(nets_param_floodlight_status_x2s(&message.param, nullptr), -1);
    EXPECT_EQ(message.param.inited, 1U);
}

TEST_F(FloodlightTest, Report)
{
    Envelope<net_floodlight_status_report_t> message(nets_param_floodlight_status_report_init);
    message->state[1].reserved = 8;
    EXPECT_EQ(message.read(nets_param_floodlight_status_report_x2s, R"(
        <FloodlightStatusList>
            <FloodlightStatus><channel>100</channel><status>1</status></FloodlightStatus>
            <FloodlightStatus><channel>1</channel><status>2</status></FloodlightStatus>
            <other/>
            <FloodlightStatus><channel>2</channel></FloodlightStatus>
        </FloodlightStatusList>)"),
              0);
    EXPECT_EQ(message->state[0].channel, 100);
    EXPECT_EQ(message->state[0].status, 1);
    EXPECT_EQ(message->state[1].channel, 2) << "the third one overwrites the second";
    EXPECT_EQ(message->state[1].status, 2);
    EXPECT_EQ(message->state[1].reserved, 8);
    EXPECT_EQ(message.read(nets_param_floodlight_status_report_x2s,
                           "<l><FloodlightStatus><channel>-1</channel></FloodlightStatus></l>"),
              -1);
    EXPECT_EQ(nets_param_floodlight_status_report_x2s(nullptr, nullptr), -1);
}

TEST_F(FloodlightTest, Task)
{
    Envelope<net_floodlight_task_t> message(nets_param_floodlight_task_init, channel(3));
    EXPECT_EQ(message.read(nets_param_floodlight_task_x2s, "<FloodlightTask><enable>1</enable></FloodlightTask>"), 0);
    EXPECT_EQ(message->channel, 3);
    EXPECT_EQ(message->alarmMode, 1) << "the older name";
    EXPECT_EQ(message->auto_bright, 2);
    EXPECT_EQ(message->detectType, -1);
    EXPECT_EQ(message->lastAlarmMode, -1);

    EXPECT_EQ(message.read(nets_param_floodlight_task_x2s, R"(
        <FloodlightTask version="1.1">
            <channel>63</channel><enable>1</enable><alarmMode>2</alarmMode><preview_auto>3</preview_auto>
            <duration>180</duration><brightness_cur>50</brightness_cur><brightness_max>100</brightness_max>
            <brightness_min>1</brightness_min>
            <Schedule><startHour>18</startHour><startMin>5</startMin><endHour>6</endHour><endMin>10</endMin></Schedule>
            <lightAlarmSchedule><startHour>20</startHour><startMin>1</startMin><endHour>5</endHour><endMin>2</endMin>
            </lightAlarmSchedule>
            <auto_bright>0</auto_bright><detectType>people,other</detectType><lastAlarmMode>4</lastAlarmMode>
            <lightSensThreshold><min>1</min><max>2</max><lightCur>3</lightCur><darkCur>4</darkCur>
                <lightDef>5</lightDef><darkDef>-6</darkDef></lightSensThreshold>
            <FloodlightScheduleList><maxNum>32</maxNum>
                <item><enable>1</enable><daymap>127</daymap><action>2</action><timeStamp>99</timeStamp>
                    <time><year>2026</year><month>10</month><day>3</day><hour>19</hour><minute>30</minute>
                    <second>7</second></time></item>
                <item><action>5</action></item>
            </FloodlightScheduleList>
            <nightLongViewMultiBrightness><enable>1</enable>
                <alarmBrightness><min>1</min><max>100</max><cur>60</cur><def>50</def></alarmBrightness>
                <alarmDelay><min>5</min><max>600</max><cur>10</cur><def>30</def></alarmDelay>
            </nightLongViewMultiBrightness>
        </FloodlightTask>)"),
              0);
    EXPECT_EQ(message->channel, 63);
    EXPECT_EQ(message->alarmMode, 2);
    EXPECT_EQ(message->preview_auto, 3);
    EXPECT_EQ(message->duration, 180);
    EXPECT_EQ(message->brightness_cur, 50);
    EXPECT_EQ(message->brightness_max, 100);
    EXPECT_EQ(message->brightness_min, 1);
    const net_floodlight_period_t schedule = {18, 5, 6, 10}, alarm = {20, 1, 5, 2};
    EXPECT_EQ(std::memcmp(&message->schedule, &schedule, sizeof schedule), 0);
    EXPECT_EQ(std::memcmp(&message->lightAlarmSchedule, &alarm, sizeof alarm), 0);
    EXPECT_EQ(message->auto_bright, 0);
    EXPECT_EQ(message->detectType, 0x240000);
    EXPECT_EQ(message->lastAlarmMode, 4);
    const net_light_sens_threshold_t threshold = {1, 2, 3, 4, 5, -6};
    EXPECT_EQ(std::memcmp(&message->lightSensThreshold, &threshold, sizeof threshold), 0);
    const net_floodlight_schedule_t &list = message->FloodlightScheduleList;
    EXPECT_EQ(list.num, 2);
    EXPECT_EQ(list.maxNum, 32);
    const net_floodlight_schedule_item_t item = {{2026, 10, 3, 19, 30, 7}, 1, 99, 2, 127};
    EXPECT_EQ(std::memcmp(&list.item[0], &item, sizeof item), 0);
    EXPECT_EQ(list.item[1].action, 5);
    const net_night_multi_brightness_t night = {1, {1, 100, 60, 50}, {5, 600, 10, 30}};
    EXPECT_EQ(std::memcmp(&message->nightLongViewMultiBrightness, &night, sizeof night), 0);

    // The defaults come back before each walk; the rest stays.
    EXPECT_EQ(message.read(nets_param_floodlight_task_x2s,
                           "<F><lastAlarmMode>7</lastAlarmMode><detectType>none,face</detectType></F>"),
              0);
    EXPECT_EQ(message->auto_bright, 2);
    EXPECT_EQ(message->detectType, 0);
    EXPECT_EQ(message->lastAlarmMode, 7);
    EXPECT_EQ(message->alarmMode, 2);
    EXPECT_EQ(message->FloodlightScheduleList.num, 2);
    EXPECT_EQ(message.param.inited, 1U);

    const struct {
        const char *word;
        int mask;
    } objects[] = {{"PEOPLE", 0x40000},   {"vehicle", 0x80000}, {"face", 0x100000},
                   {"dog_cat", 0x400000}, {"other", 0x200000},  {"package", 0}};
    for (const auto &one : objects) {
        EXPECT_EQ(message.read(nets_param_floodlight_task_x2s,
                               "<F><detectType>" + std::string(one.word) + "</detectType></F>"),
                  0);
        EXPECT_EQ(message->detectType, one.mask) << one.word;
    }
}

TEST_F(FloodlightTest, TaskRefusals)
{
    Envelope<net_floodlight_task_t> message(nets_param_floodlight_task_init);
    for (const std::string &refused :
         {std::string("<enable>on</enable>"), std::string("<alarmMode/>"), std::string("<channel>64</channel>"),
          std::string("<channel>-1</channel>"), "<detectType>" + std::string(128, 'd') + "</detectType>",
          std::string("<Schedule><endMin>x</endMin></Schedule>"),
          std::string("<lightSensThreshold><darkDef/></lightSensThreshold>"),
          std::string("<FloodlightScheduleList><item><time><hour>24</hour></time></item></FloodlightScheduleList>"),
          std::string("<nightLongViewMultiBrightness><alarmDelay><cur>1.5</cur></alarmDelay>"
                      "</nightLongViewMultiBrightness>")}) {
        message->auto_bright = 0;
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(message.read(nets_param_floodlight_task_x2s,
                                             "<F><duration>5</duration>" + refused + "<duration>9</duration></F>"),
                                -1);
                  }),
                  "<red net_xml_alarm.cpp>XML IS ERROR\n")
            << refused;
        EXPECT_EQ(message->duration, 5);
        EXPECT_EQ(message->auto_bright, 2) << "the defaults come first";
    }
    EXPECT_EQ(nets_param_floodlight_task_x2s(&message.param, nullptr), -1);
}

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
