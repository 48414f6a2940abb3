#include "support.h"

#include <net_public.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using test::Envelope;
using test::example;
using test::log_of;
using test::Xml;

using Support = tag_net_support_v20_t;
using Channel = net_chn_support_v20_t;

constexpr char refused[] = "Func(net_support_x2s) Line(#)\n";
constexpr char refused_item[] = "Func(get_item_from_xmlnode) Line(#)\nFunc(net_support_x2s) Line(#)\n";
constexpr char refused_linkage[] = "<green net_xml_system.cpp>\n";

// A "Support" with these children; after a success the envelope must not claim more than the initialiser did.
int read(Envelope<Support> &support, const std::string &children)
{
    const int result = support.read(net_support_x2s, "<Support>" + children + "</Support>");
    EXPECT_EQ(support.param.inited, 1u);
    return result;
}

std::string log_of_refusal(Envelope<Support> &support, const std::string &children)
{
    return log_of([&] { EXPECT_EQ(read(support, children), -1) << children; });
}

// The same number in every field from one member to another one.
template <class Record> void number_fields(Record &record, int Record::*first, int Record::*last, int number)
{
    for (int *field = &(record.*first); field <= &(record.*last); ++field)
        *field = number++;
}

class SupportTest : public test::HostTest {
protected:
    Envelope<Support> support{nets_param_support_init};
};

TEST_F(SupportTest, TakesImageFeaturesForGranted)
{
    support->channel[0].newIspCfg = 0x50000;
    ASSERT_EQ(read(support, "<item><chnID>1</chnID><newIspCfg>3</newIspCfg></item>"), 0);
    EXPECT_EQ(support->channel[0].newIspCfg, 0x51fff);
    EXPECT_EQ(support->channel[1].newIspCfg, 3);
    ASSERT_EQ(read(support, "<item><chnID>0</chnID><newIspCfg>5</newIspCfg></item>"), 0);
    EXPECT_EQ(support->channel[0].newIspCfg, 5);
}

TEST_F(SupportTest, DerivesTheFirstChannelsPanTiltFlags)
{
    struct Case {
        int type, preset, patrol, other, automatic;
    };
    const Case cases[] = {{0, 9, 9, 9, 9}, {1, 0, 0, 0, 1}, {2, 1, 1, 0, 1}, {3, 1, 1, 0, 1},
                          {4, 1, 1, 0, 1}, {5, 1, 0, 0, 1}, {6, 9, 9, 9, 9}, {-1, 9, 9, 9, 9}};
    for (const Case &one : cases) {
        SCOPED_TRACE(one.type);
        Channel &first = support->channel[0];
        first.ptzPreset = first.ptzPatrol = first.ptzTattern = first.ptzControl = first.autoPt = 9;
        first.ptzType = one.type;
        // The item is about another channel.
        ASSERT_EQ(read(support, "<item><chnID>3</chnID><ptzType>2</ptzType></item>"), 0);
        EXPECT_EQ(first.ptzPreset, one.preset);
        EXPECT_EQ(first.ptzPatrol, one.patrol);
        EXPECT_EQ(first.ptzTattern, one.other);
        EXPECT_EQ(first.ptzControl, one.other);
        EXPECT_EQ(first.autoPt, one.automatic);
        EXPECT_EQ(support->channel[3].ptzPreset, 0);
    }
    support->channel[0].ptzType = 2;
    ASSERT_EQ(read(support, "<item><chnID>3</chnID><ptzPreset>0</ptzPreset></item>"), 0);
    EXPECT_EQ(support->channel[0].ptzPreset, 9);
}

TEST_F(SupportTest, LogsRefusedLinkageInEachReader)
{
    modulemask = 0;
    EXPECT_EQ(log_of_refusal(support,
                             "<IOTsupport><smartPlug><openClose>1</openClose><duration>on</duration></smartPlug>"
                             "</IOTsupport>"),
              refused_linkage + std::string(refused_linkage) + refused);
    EXPECT_EQ(support->IOTsupport.smartPlug, 1u);

    net_iot_linkage_support_t linkage = {0, 0};
    Xml bad("<any><type>x</type><openClose>x</openClose></any>");
    using Reader = int (*)(net_iot_linkage_support_t *, TiXmlNode *);
    for (const Reader reader :
         {get_smartPlug_from_xmlnode, get_alertorBell_from_xmlnode, get_alertorLight_from_xmlnode}) {
        EXPECT_EQ(log_of([&] { EXPECT_EQ(reader(&linkage, bad.root()), -1); }), refused_linkage);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(reader(&linkage, nullptr), -1); }), refused_linkage);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(reader(nullptr, bad.root()), -1); }), refused_linkage);
    }
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_iot_support_from_xmlnode(nullptr, bad.root()), -1); }), refused_linkage);
}

constexpr char device_wide[] =
    "<chnType>1</chnType><IOInputPortNum>2</IOInputPortNum><IOOutputPortNum>3</IOOutputPortNum><diskNum>4</diskNum>"
    "<disk>42</disk><channelNum>5</channelNum><IOTNum>6</IOTNum><audioNum>7</audioNum>"
    "<scheduleVersion>48</scheduleVersion><ptzMode>none</ptzMode><ptzCfg>10</ptzCfg><B485>11</B485>"
    "<autoUpdate>12</autoUpdate><pushAlarm>13</pushAlarm><logVersion>64</logVersion><ftp>14</ftp><ftpTest>15</ftpTest>"
    "<email>16</email><wifi>17</wifi><wifiVersion>61</wifiVersion><newRecordType>18</newRecordType>"
    "<wifiTest>19</wifiTest><rtsp>20</rtsp><onvif>21</onvif><rfVersion>22</rfVersion><rtmp>23</rtmp>"
    "<timeFormat>25</timeFormat><ddnsVersion>26</ddnsVersion><ddnsCfg>44</ddnsCfg><SupportUpgrade>45</SupportUpgrade>"
    "<upgrade>47</upgrade><emailVersion>27</emailVersion><buzzerVersion>28</buzzerVersion>"
    "<pushVersion>29</pushVersion><pushType>32</pushType><pppoe>43</pppoe><cloudVersion>33</cloudVersion>"
    "<thirdCloudVersion>34</thirdCloudVersion><replayVersion>35</replayVersion><ExportImport>40</ExportImport>"
    "<storagemode>46</storagemode><sambaVer>49</sambaVer><netPort>57</netPort><chVerInfo>50</chVerInfo>"
    "<networkDiagnosis>52</networkDiagnosis><remoteUpgrade>53</remoteUpgrade><IOInputNum>54</IOInputNum>"
    "<IOOutputNum>55</IOOutputNum><switchCtrl>58</switchCtrl><loginLocked>60</loginLocked>"
    "<snaptlpsEnableCfg>71</snaptlpsEnableCfg><sceneModeCfg>72</sceneModeCfg><linkages>73</linkages>"
    "<replayIpcVersion>74</replayIpcVersion><IOTLink>75</IOTLink><netSecurity>67</netSecurity><user>63</user>"
    "<nasVersion>30</nasVersion><ledCtrl>39</ledCtrl><batteryVersion>69</batteryVersion>"
    "<videoInspection>70</videoInspection><timelapse>31</timelapse><topologyVersion>65</topologyVersion>"
    "<eventLogVersion>76</eventLogVersion><doorbellVersion>68</doorbellVersion>";

TEST_F(SupportTest, WritesTheChannels)
{
    support->count = 2;
    number_fields(support->channel[1], &Channel::reboot, &Channel::thumbnail, 1);
    const std::string text = support.write(net_support_s2x);
    EXPECT_EQ(text.substr(text.find("<item><chnID>1<")),
              "<item><chnID>1</chnID><noAudio>10</noAudio><newRfCfg>9</newRfCfg><videoClip>15</videoClip>"
              "<osdCfg>17</osdCfg><dynamicReso>22</dynamicReso><aitype>12</aitype><aiAnimalType>13</aiAnimalType>"
              "<ptzPreset>25</ptzPreset><ptzPatrol>26</ptzPatrol><ptzTattern>27</ptzTattern><ptzType>7</ptzType>"
              "<ptzControl>28</ptzControl><newIspCfg>20</newIspCfg><audioVersion>23</audioVersion>"
              "<ledCtrl>24</ledCtrl><ipcAudioTalk>4</ipcAudioTalk><channelType>ipc</channelType><encCtrl>31</encCtrl>"
              "<autoPt>29</autoPt><fishEye>36</fishEye><lightType>38</lightType><binoCfg>37</binoCfg>"
              "<networkVersion>40</networkVersion><timelapse>14</timelapse><battery>18</battery>"
              "<recordCfg>41</recordCfg><pushAlarm>2</pushAlarm><emailVersion>11</emailVersion><ftp>3</ftp>"
              "<rfVersion>6</rfVersion><reboot>1</reboot><wifiVersion>39</wifiVersion>"
              "<doorbellVersion>42</doorbellVersion><snaptlpsVersion>43</snaptlpsVersion>"
              "<replayVersion>16</replayVersion><aiUpdateAbility>44</aiUpdateAbility><largeBattery>35</largeBattery>"
              "<batteryMode>19</batteryMode><remoteAbility>46</remoteAbility><thumbnail>49</thumbnail>"
              "<eventTypeVersion>47</eventTypeVersion><mdConfig>0</mdConfig><snap>30</snap><wifiTest>5</wifiTest>"
              "<smartAI>45</smartAI></item></Support>");
    // The index is the record's place, whatever the record says.
    EXPECT_NE(text.find("<smartHome /><item><chnID>0<"), std::string::npos);
    EXPECT_NE(text.find("<battery>0</battery><pushAlarm>0<"), std::string::npos);
}

TEST_F(SupportTest, WritesChannelTypes)
{
    const char *const words[] = {"ipc",   "plug", "usb",         "KT3",      "Doorbell",
                                 "Light", "R58",  "fisheye_ipc", "repeater", "ipc"};
    support->count = 1;
    for (int code = 0; code < 10; ++code) {
        support->channel[0].channelType = code;
        EXPECT_NE(support.write(net_support_s2x).find("<channelType>" + std::string(words[code]) + "<"),
                  std::string::npos);
    }
}

TEST_F(SupportTest, WritesNoMoreChannelsThanThereAre)
{
    const auto items = [&](int count) {
        support->count = count;
        const std::string text = support.write(net_support_s2x);
        int found = 0;
        for (std::size_t at = text.find("<chnID>"); at != std::string::npos; at = text.find("<chnID>", at + 1))
            ++found;
        return found;
    };
    EXPECT_EQ(items(0), 0);
    EXPECT_EQ(items(-1), 0);
    EXPECT_EQ(items(64), 64);
    EXPECT_EQ(items(65), 64);
}

TEST_F(SupportTest, RefusesBadEnvelopes)
{
    Xml xml("<Support><ftp>1</ftp></Support>");
    net_param_t empty = support.param;
    empty.data = nullptr;
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(net_support_x2s(nullptr, xml.root()), -1);
                  EXPECT_EQ(net_support_x2s(&support.param, nullptr), -1);
                  EXPECT_EQ(net_support_x2s(&empty, xml.root()), -1);
              }),
              "<red net_xml_system.cpp>Func(net_support_x2s) Line(#) \n"
              "<red net_xml_system.cpp>Func(net_support_x2s) Line(#) \n"
              "<red net_xml_system.cpp>Func(net_support_x2s) Line(#) \n");
    support.param.dataSize -= 4;
    EXPECT_EQ(support.read(net_support_x2s, "<Support><ftp>1</ftp></Support>"), 0); // only the writer looks at the size
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(support.write(net_support_s2x), "failed");
                  EXPECT_EQ(net_support_s2x(nullptr, xml.root()), -1);
                  EXPECT_EQ(net_support_s2x(&empty, xml.root()), -1);
              }),
              "<red net_xml_system.cpp>func:net_support_s2x line:#\n"
              "<red net_xml_system.cpp>func:net_support_s2x line:#\n"
              "<red net_xml_system.cpp>func:net_support_s2x line:#\n");
}

// Abilities

class AbilityTest : public test::HostTest {
protected:
    static constexpr auto ro = NET_ABILITY_OPERATION_RO;
    static constexpr auto rw = NET_ABILITY_OPERATION_RW;
    static constexpr auto none = NET_ABILITY_OPERATION_NONE;
    Envelope<net_ability_v20_t> ability{nets_param_ability_init};

    int read_image(const std::string &children)
    {
        return ability.read(net_ability_x2s, "<AbilityInfo><image>" + children + "</image></AbilityInfo>");
    }
};

TEST_F(AbilityTest, AppendsTokens)
{
    char list[32] = "left from before";
    int count = 0;
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "general", none, &count), 0);
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "general", static_cast<NET_ABILITY_OPERATION_V20_E>(4), &count),
              0);
    EXPECT_STREQ(list, "left from before");
    EXPECT_EQ(count, 0);
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "uid", ro, &count), 0);
    EXPECT_STREQ(list, "uid_ro");
    EXPECT_EQ(count, 1);
    EXPECT_EQ(make_enum_to_string(list, sizeof list, "norm", rw, &count), 0);
    EXPECT_STREQ(list, "uid_ro, norm_rw");
    EXPECT_EQ(count, 1);
}

TEST_F(AbilityTest, CutsListsAtTheirSize)
{
    struct Case {
        int size;
        const char *first, *second;
    };
    for (const Case &one :
         {Case{13, "uid_ro", "uid_ro, norm"}, Case{9, "uid_ro", "uid_ro, "}, Case{8, "uid_ro", "uid_ro,"},
          Case{7, "uid_ro", "uid_ro"}, Case{5, "uid_", "uid_"}, Case{1, "", ""}}) {
        SCOPED_TRACE(one.size);
        std::string list(20, '#');
        int count = 0;
        EXPECT_EQ(make_enum_to_string(&list[0], one.size, "uid", ro, &count), 0);
        EXPECT_STREQ(list.c_str(), one.first);
        EXPECT_EQ(make_enum_to_string(&list[0], one.size, "norm", rw, &count), 0);
        EXPECT_STREQ(list.c_str(), one.second);
        EXPECT_EQ(list[static_cast<std::size_t>(one.size)], '#');
    }
}

TEST_F(AbilityTest, RefusesBadTokens)
{
    char list[16] = "uid_ro";
    int count = 1;
    constexpr char invalid[] = "<red net_xml_system.cpp>Func(make_enum_to_string) Line(#) error. param is invalid\n";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(nullptr, 16, "a", ro, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, nullptr, ro, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, "a", ro, nullptr), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 0, "a", none, &count), -1); }), invalid);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(make_enum_to_string(list, 16, "a", NET_ABILITY_OPERATION_BUTT, &count), -1); }),
              "<red net_xml_system.cpp>Func(make_enum_to_string) Line(#) error. enum value is BUTT\n");
    EXPECT_STREQ(list, "uid_ro");
}

TEST_F(AbilityTest, RefusesBadImageAbilities)
{
    constexpr char no_channel[] = "<red net_xml_system.cpp>get channelId failed!\n";
    constexpr char no_text[] = "<red net_xml_system.cpp>get cString failed!\n";
    const auto sub_module = [](const std::string &channel, const std::string &value) {
        return "<subModule><channelId>" + channel + "</channelId><abilityValue>" + value +
               "</abilityValue></subModule>";
    };
    const auto log = [&](const std::string &children) { return log_of([&] { EXPECT_EQ(read_image(children), -1); }); };
    EXPECT_EQ(log(sub_module("16", "ispBasic_ro")), no_channel);
    EXPECT_EQ(log(sub_module("-1", "ispBasic_ro")), no_channel);
    EXPECT_EQ(log(sub_module("", "ispBasic_ro")), no_channel);
    const std::string longest(511 - std::strlen("ledState_rw"), 'x');
    EXPECT_EQ(read_image(sub_module("4", longest + "ledState_rw")), 0);
    EXPECT_EQ(ability->channel[4].ledState, rw);
    EXPECT_EQ(log(sub_module("4", longest + "xledState_ro")), no_text);
    EXPECT_EQ(ability->channel[4].ledState, rw);

    Xml xml("<AbilityInfo />");
    net_param_t empty = ability.param;
    empty.data = nullptr;
    const std::string null = "<red net_xml_system.cpp>arguments are null.\n";
    EXPECT_EQ(log_of([&] {
                  EXPECT_EQ(net_ability_x2s(nullptr, xml.root()), -1);
                  EXPECT_EQ(net_ability_x2s(&ability.param, nullptr), -1);
                  EXPECT_EQ(net_ability_x2s(&empty, xml.root()), -1);
              }),
              null + null + null);
}

// Every second operation is read-only, the others are read-write.
template <class Record> void alternate(Record &record)
{
    auto *operations = reinterpret_cast<NET_ABILITY_OPERATION_V20_E *>(&record);
    for (std::size_t i = 0; i < sizeof record / sizeof *operations; ++i)
        operations[i] = i % 2 == 0 ? NET_ABILITY_OPERATION_RO : NET_ABILITY_OPERATION_RW;
}

TEST_F(AbilityTest, WritesAllModules)
{
    net_host().channels = 2;
    for (int &flag : ability->section)
        flag = 1;
    std::strcpy(ability->userName, "guest");
    alternate(ability->device);
    alternate(ability->channel[0]);
    const auto channels = [](const std::string &value) {
        return "<subModule><channelId>0</channelId><abilityValue>" + value +
               "</abilityValue></subModule><subModule><channelId>1</channelId><abilityValue></abilityValue></"
               "subModule>";
    };
    const auto device = [](const std::string &value) {
        return "<subModule><abilityValue>" + value + "</abilityValue></subModule>";
    };
    const std::string text = ability.write(net_ability_s2x);
    EXPECT_EQ(
        text,
        "<AbilityInfo version=\"1.1\"><userName>guest</userName><system>" +
            device("general_ro, norm_rw, version_ro, channelVersion_rw, uid_ro, autoReboot_rw, restore_ro, reboot_rw, "
                   "shutdown_ro, dst_rw, log_ro, output_rw, performance_ro, upgrade_rw, export_ro, import_rw, "
                   "bootPwd_ro, polling_rw") +
            "</system><streaming>" + channels("preview_ro, compress_rw, snap_ro, rtsp_rw, streamTable_ro") +
            "</streaming><record>" +
            channels("download_rw, fileFind_ro, manualRecord_rw, recordCfg_ro, recordSchedule_rw, "
                     "subStreamRecord_ro") +
            "</record><network>" +
            device("port_ro, dns_rw, email_ro, ftp_rw, ftpSchedule_ro, ipFilter_rw, 3g_ro, localLink_rw, pppoe_ro, "
                   "upnp_rw, wifi_ro, ntp_rw, netStatus_ro, push_rw, ptop_ro, autontp_rw") +
            "</network><PTZ>" + device("control_ro, preset_rw, cruise_ro, track_rw, decoder_ro, ptzInfo_rw") +
            "</PTZ><IO>" + device("manualAlarm_ro, ioAlarmIn_rw, ioAlarmOut_ro") + "</IO><alarm>" +
            device("hddFull_rw, hddError_ro, disconnect_rw, ipConflict_ro, rfAlarm_rw") +
            channels("motion_rw, videoLost_ro, hide_rw, smart_ro") + "</alarm><image>" +
            channels("ispBasic_rw, ispAdvance_ro, ledState_rw") + "</image><video>" +
            channels("osdName_ro, osdTime_rw, shelter_ro") + "</video><audio>" + device("talk_ro") +
            "</audio><security>" + device("user_rw, userOnline_ro, bootPwd_rw") + "</security><replay>" +
            channels("replay_rw, seek_ro") + "</replay><disk>" + device("format_ro, hddCfg_rw, hddInit_ro") +
            "</disk></AbilityInfo>");
}

TEST_F(AbilityTest, FailsToWriteWhatIsNoOperation)
{
    ability->section[NET_ABILITY_SECTION_DISK] = 1;
    ability->device.hddCfg = NET_ABILITY_OPERATION_BUTT;
    ability->device.hddInit = static_cast<NET_ABILITY_OPERATION_V20_E>(-7); // as good as none
    EXPECT_EQ(log_of([&] { EXPECT_EQ(ability.write(net_ability_s2x), "failed"); }),
              "<red net_xml_system.cpp>Func(make_enum_to_string) Line(#) error. enum value is BUTT\n");
    ability->device.hddCfg = ro;
    EXPECT_NE(ability.write(net_ability_s2x).find("<abilityValue>hddCfg_ro</abilityValue>"), std::string::npos);
    ability.param.dataSize += 4;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(ability.write(net_ability_s2x), "failed"); }),
              "<red net_xml_system.cpp>func:net_ability_s2x line:#\n");
}

// Heart beat

class HeartBeatTest : public test::HostTest {
protected:
    Envelope<net_heart_beat_t> beat{net_param_heart_beat_init};

    int read(const std::string &children)
    {
        return beat.read(nets_param_heart_beat_x2s, "<HeartBeat>" + children + "</HeartBeat>");
    }
    std::string log_of_refusal(const std::string &children)
    {
        return log_of([&] { EXPECT_EQ(read(children), -1) << children; });
    }
};

TEST_F(HeartBeatTest, RefusesBadNumbersWithUngatedLines)
{
    modulemask = 0;
    EXPECT_EQ(log_of_refusal("<size>-1</size>"), "Func(nets_param_heart_beat_x2s) Line(#)\n");
    EXPECT_EQ(log_of_refusal("<sec>-2</sec>"), "Func(nets_param_heart_beat_x2s) Line(#) -2\n");
    EXPECT_EQ(log_of_refusal("<usec>-3</usec>"), "Func(nets_param_heart_beat_x2s) Line(#) -3 \n");
    EXPECT_EQ(log_of_refusal("<usec>soon</usec>"), "Func(nets_param_heart_beat_x2s) Line(#) -3 \n");
}

} // namespace
