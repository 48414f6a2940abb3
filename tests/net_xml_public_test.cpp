#include "support.h"

#include <net_public.h>

#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using test::log_of;
using test::print_children;
using test::Xml;

// Elements as a host could build them: their text keeps its blanks.
class Element : public TiXmlElement {
public:
    explicit Element(const char *name) : TiXmlElement(name) {}
    Element(const char *name, const std::string &text) : TiXmlElement(name)
    {
        LinkEndChild(new TiXmlText(text.c_str()));
    }
};

class ReadersTest : public test::HostTest {};
class WritersTest : public test::HostTest {};
class ExtensionTest : public test::HostTest {};

// Numbers ---------------------------------------------------------------------------------------

template <class Value> using Reader = int (*)(Value *, TiXmlNode *, const char *);

template <class Value> void expect_read(Reader<Value> reader, const std::string &text, Value expected)
{
    Element element("n", text);
    Value value = 77;
    EXPECT_EQ(reader(&value, &element, nullptr), 0) << text;
    EXPECT_EQ(value, expected) << text;
}

template <class Value> void expect_refused(Reader<Value> reader, const std::string &text)
{
    Element element("n", text);
    Value value = 77;
    EXPECT_EQ(reader(&value, &element, nullptr), -1) << "'" << text << "'";
    EXPECT_EQ(value, Value{77}) << "'" << text << "'";
}

const char *const no_numbers[] = {"",   " ",  " 5",   "5 ",  "+5",  "0x10", "1.5", "--1",     "1-",
                                  "5a", "a5", "true", "1,2", "1\n", "\t1",  "-+1", "\xD9\xA1"};

TEST_F(ReadersTest, OnlyDigitsBehindOneSignAreANumber)
{
    for (const char *text : no_numbers) {
        expect_refused(get_int_from_xmlnode, text);
        expect_refused(get_bool_from_xmlnode, text);
        expect_refused(get_unsignedint_from_xmlnode, text);
        expect_refused(get_int64_from_xmlnode, text);
        expect_refused(get_longlong_from_xmlnode, text);
        expect_refused(get_unsignedlonglong_from_xmlnode, text);
    }
    expect_read(get_int_from_xmlnode, "-", 0);
    expect_read(get_bool_from_xmlnode, "-", 0);
    expect_read(get_unsignedint_from_xmlnode, "-", 0U);
    expect_read(get_int64_from_xmlnode, "-", 0LL);
    expect_read(get_longlong_from_xmlnode, "-", 0LL);
    expect_read(get_unsignedlonglong_from_xmlnode, "-", 0ULL);
}

TEST_F(ReadersTest, IntegersAreWhatAtoiMakesOfThem)
{
    for (const char *text : {"0", "-0", "7", "-7", "007", "000000000012", "-00000000012", "999999999", "-999999999",
                             "1000000000", "2147483647", "-2147483648", "2147483648", "-2147483649", "4294967296",
                             "99999999999", "-12345678901", "999999999999"})
        expect_read(get_int_from_xmlnode, text, std::atoi(text));
    expect_refused(get_int_from_xmlnode, "0000000000000");
    expect_refused(get_int_from_xmlnode, "-000000000001");
}

TEST_F(ReadersTest, FlagsStoreWhatTheyRefuse)
{
    for (const char *text : {"0", "1", "-0", "000000001"})
        expect_read(get_bool_from_xmlnode, text, std::atoi(text));
    for (const char *text : {"2", "-1", "999999999", "-99999999"}) {
        Element element("n", text);
        int value = 77;
        EXPECT_EQ(get_bool_from_xmlnode(&value, &element, nullptr), -1);
        EXPECT_EQ(value, std::atoi(text));
    }
    expect_refused(get_bool_from_xmlnode, "0000000001");
}

TEST_F(ReadersTest, UnsignedNumbersWrapAround)
{
    for (const char *text : {"0", "4294967295", "-5", "-123456789", "4294967296", "9999999999"})
        expect_read(get_unsignedint_from_xmlnode, text, static_cast<unsigned int>(std::strtoul(text, nullptr, 10)));
    expect_read(get_unsignedint_from_xmlnode, "-5", 4294967291U);
    expect_refused(get_unsignedint_from_xmlnode, "00000000001");

    expect_read(get_unsignedlonglong_from_xmlnode, "-5", ULLONG_MAX - 4);
    expect_read(get_unsignedlonglong_from_xmlnode, "999999999999999999", 999999999999999999ULL);
    expect_read(get_unsignedlonglong_from_xmlnode, "18446744073709551615", ULLONG_MAX);
    expect_read(get_unsignedlonglong_from_xmlnode, "99999999999999999999", ULLONG_MAX);
    expect_refused(get_unsignedlonglong_from_xmlnode, "000000000000000000001");
}

TEST_F(ReadersTest, LongNumbersWrapAroundOrEndAtTheirLimits)
{
    expect_read(get_int64_from_xmlnode, "9223372036854775807", LLONG_MAX);
    expect_read(get_int64_from_xmlnode, "-9223372036854775808", LLONG_MIN);
    expect_read(get_int64_from_xmlnode, "9223372036854775808", LLONG_MIN);
    expect_read(get_int64_from_xmlnode, "99999999999999999999", 7766279631452241919LL);
    expect_refused(get_int64_from_xmlnode, "-99999999999999999999");

    expect_read(get_longlong_from_xmlnode, "-999999999999999999", -999999999999999999LL);
    expect_read(get_longlong_from_xmlnode, "9223372036854775808", LLONG_MAX);
    expect_read(get_longlong_from_xmlnode, "-99999999999999999999", LLONG_MIN);
    expect_read(get_longlong_from_xmlnode, "000000000000000000012", 12LL);
    expect_refused(get_longlong_from_xmlnode, "0000000000000000000012");

    EXPECT_EQ(atoi64(""), 0);
    EXPECT_EQ(atoi64("-42"), -42);
    EXPECT_EQ(atoi64("1x"), 10 + ('x' - '0')) << "no character is checked";
    EXPECT_EQ(atoi64("18446744073709551617"), 1);
}

TEST_F(ReadersTest, FloatsTakeAnyText)
{
    expect_read(get_float_from_xmlnode, "1.5", 1.5F);
    expect_read(get_float_from_xmlnode, " -2.5e3x", -2500.0F);
    expect_read(get_float_from_xmlnode, "abc", 0.0F);
    expect_read(get_float_from_xmlnode, "1,5", 1.0F);
    expect_read(get_float_from_xmlnode, "0.1", 0.1F);
    expect_read(get_float_from_xmlnode, std::string(100, '0') + "4", 4.0F);
    Element empty("n");
    float value = 7;
    EXPECT_EQ(get_float_from_xmlnode(&value, &empty, nullptr), -1);
    EXPECT_EQ(value, 7.0F);
}

// Every reader refuses what is no element, what has no text, and wrong names.
template <class Value> void expect_checks(Reader<Value> reader)
{
    Value value = 77;
    Element element("CHANNEL", "1");
    EXPECT_EQ(reader(nullptr, &element, nullptr), -1);
    EXPECT_EQ(reader(&value, nullptr, nullptr), -1);
    EXPECT_EQ(reader(&value, &element, "chan"), -1) << "the name is longer than the key";
    EXPECT_EQ(reader(&value, &element, "chanel"), -1);
    TiXmlText text("1");
    TiXmlComment comment("1");
    EXPECT_EQ(reader(&value, &text, nullptr), -1);
    EXPECT_EQ(reader(&value, &comment, nullptr), -1);
    Xml no_text("<n><!--c-->1</n>");
    EXPECT_EQ(reader(&value, no_text, nullptr), -1) << "the first child is no text";
    Xml nested("<n><m>1</m></n>");
    EXPECT_EQ(reader(&value, nested, nullptr), -1);
    EXPECT_EQ(value, Value{77});

    for (const char *key : {"channel", "channelId", "CHANNELX"}) {
        value = 77;
        EXPECT_EQ(reader(&value, &element, key), 0) << key;
        EXPECT_EQ(value, Value{1});
    }
    Element nameless("", "1");
    EXPECT_EQ(reader(&value, &nameless, "anything"), 0);
    Xml data("<n><![CDATA[1]]></n>");
    EXPECT_EQ(reader(&value, data, nullptr), 0);
}

TEST_F(ReadersTest, NodesAndNamesAreChecked)
{
    expect_checks(get_int_from_xmlnode);
    expect_checks(get_bool_from_xmlnode);
    expect_checks(get_unsignedint_from_xmlnode);
    expect_checks(get_int64_from_xmlnode);
    expect_checks(get_longlong_from_xmlnode);
    expect_checks(get_unsignedlonglong_from_xmlnode);
    expect_checks(get_float_from_xmlnode);
}

// Texts -----------------------------------------------------------------------------------------

// The buffer's 8 bytes behind a read of `size` of them into '~'.
std::string read_string(int size, TiXmlNode *node, const char *key, int result)
{
    char buffer[8];
    std::memset(buffer, '~', sizeof buffer);
    EXPECT_EQ(get_str_from_xmlnode(buffer, size, node, key), result);
    std::string shown(buffer, sizeof buffer);
    for (char &c : shown)
        c = c == '\0' ? '.' : c;
    return shown;
}

TEST_F(ReadersTest, TextsFitOrAreRefused)
{
    Element four("name", "abcd"), five("name", "abcde"), empty("name"), blanks("name", " a ");
    EXPECT_EQ(read_string(5, &four, nullptr, 0), "abcd.~~~");
    EXPECT_EQ(read_string(8, &four, nullptr, 0), "abcd....");
    EXPECT_EQ(read_string(5, &five, nullptr, -1), ".....~~~");
    EXPECT_EQ(read_string(5, &empty, nullptr, 0), ".....~~~");
    EXPECT_EQ(read_string(5, &blanks, nullptr, 0), " a ..~~~");
    EXPECT_EQ(read_string(1, &four, nullptr, -1), ".~~~~~~~");
    EXPECT_EQ(read_string(0, &four, nullptr, -1), "~~~~~~~~");
    EXPECT_EQ(read_string(-1, &four, nullptr, -1), "~~~~~~~~");
    EXPECT_EQ(read_string(5, nullptr, nullptr, -1), "~~~~~~~~");
    TiXmlComment comment("name");
    EXPECT_EQ(read_string(5, &comment, nullptr, -1), ".....~~~");
    Xml child("<name><a/>abc</name>");
    EXPECT_EQ(read_string(5, child, nullptr, 0), ".....~~~") << "no text in front is an empty text";
}

TEST_F(ReadersTest, TextsWantTheWholeKey)
{
    Element element("NAME", "abcd");
    EXPECT_EQ(read_string(5, &element, "name", 0), "abcd.~~~");
    EXPECT_EQ(read_string(5, &element, "names", -1), ".....~~~");
    EXPECT_EQ(read_string(5, &element, "nam", -1), ".....~~~");
    // 31 characters are compared, no more.
    const std::string long_name(31, 'x');
    Element first((long_name + "a").c_str(), "abcd"), second((std::string(30, 'x') + "a").c_str(), "abcd");
    EXPECT_EQ(read_string(5, &first, (long_name + "b").c_str(), 0), "abcd.~~~");
    EXPECT_EQ(read_string(5, &second, (std::string(30, 'x') + "b").c_str(), -1), ".....~~~");
}

// Records ---------------------------------------------------------------------------------------

constexpr tag_net_time_v20_t untouched_time = {-9, -9, -9, -9, -9, -9};

std::string shown(const tag_net_time_v20_t &t)
{
    std::string text;
    for (int field : {t.year, t.month, t.day, t.hour, t.minute, t.second})
        text += std::to_string(field) + " ";
    return text;
}

// "result: year month day hour minute second"
std::string read_time(const std::string &children, const char *key = nullptr)
{
    Xml node("<beginTime>" + children + "</beginTime>");
    tag_net_time_v20_t time = untouched_time;
    const int result = get_time_from_xmlnode(&time, node, key);
    return std::to_string(result) + ": " + shown(time);
}

TEST_F(ReadersTest, Times)
{
    const char *const noon = "<year>2024</year><month>2</month><day>31</day><hour>12</hour><minute>0</minute>"
                             "<second>59</second>";
    EXPECT_EQ(read_time(noon), "0: 2024 2 31 12 0 59 ") << "no check that February has a 31st";
    EXPECT_EQ(read_time(noon, "beginTime"), "0: 2024 2 31 12 0 59 ");
    EXPECT_EQ(read_time(noon, "endTime"), "-1: -9 -9 -9 -9 -9 -9 ");
    EXPECT_EQ(read_time("<other>1</other>"), "0: -9 -9 -9 -9 -9 -9 ");
    EXPECT_EQ(read_time("<Y>0</Y><m>1</m><D>1</D><h>0</h><MI>1</MI><s>0</s>"), "0: 0 1 1 0 1 0 ");
    EXPECT_EQ(read_time("<m>1</m><m>2</m>"), "0: -9 2 -9 -9 -9 -9 ");
    // Out of range: stored, then refused; what follows is not read.
    const std::string second = "<second>5</second>";
    for (const char *year : {"-1", "-2024"})
        EXPECT_EQ(read_time("<year>" + std::string(year) + "</year>" + second),
                  "-1: " + std::string(year) + " -9 -9 -9 -9 -9 ");
    EXPECT_EQ(read_time("<month>0</month>" + second), "-1: -9 0 -9 -9 -9 -9 ");
    EXPECT_EQ(read_time("<month>13</month>" + second), "-1: -9 13 -9 -9 -9 -9 ");
    EXPECT_EQ(read_time("<day>0</day>" + second), "-1: -9 -9 0 -9 -9 -9 ");
    EXPECT_EQ(read_time("<day>32</day>" + second), "-1: -9 -9 32 -9 -9 -9 ");
    EXPECT_EQ(read_time("<hour>24</hour>" + second), "-1: -9 -9 -9 24 -9 -9 ");
    EXPECT_EQ(read_time("<minute>60</minute>" + second), "-1: -9 -9 -9 -9 60 -9 ");
    EXPECT_EQ(read_time(second + "<second>60</second>"), "-1: -9 -9 -9 -9 -9 60 ");
    EXPECT_EQ(read_time("<hour>x</hour>"), "-1: -9 -9 -9 -9 -9 -9 ");
    // A text and a comment are children too; their names are their texts.
    EXPECT_EQ(read_time("<!--remark-->" + second), "0: -9 -9 -9 -9 -9 5 ");
    EXPECT_EQ(read_time("<!--year-->" + second), "-1: -9 -9 -9 -9 -9 -9 ");
    EXPECT_EQ(read_time("<!---->" + second), "-1: -9 -9 -9 -9 -9 -9 ");
    EXPECT_EQ(read_time(second + "mi"), "-1: -9 -9 -9 -9 -9 5 ");
}

// "result: min max cur def", with the integer and the float reader alike.
std::string read_range(const std::string &children, const char *key = nullptr)
{
    Xml node("<bright>" + children + "</bright>");
    net_int_value_t whole = {-9, -9, -9, -9};
    net_float_value_t real = {-9, -9, -9, -9};
    const int result = get_net_int_value_from_xmlnode(&whole, node, key);
    EXPECT_EQ(get_net_float_value_from_xmlnode(&real, node, key), result);
    std::string text = std::to_string(result) + ":";
    for (int value : {whole.min, whole.max, whole.cur, whole.def})
        text += " " + std::to_string(value);
    EXPECT_EQ(real.min, static_cast<float>(whole.min));
    EXPECT_EQ(real.max, static_cast<float>(whole.max));
    EXPECT_EQ(real.cur, static_cast<float>(whole.cur));
    EXPECT_EQ(real.def, static_cast<float>(whole.def));
    return text;
}

TEST_F(ReadersTest, ValuesWithTheirRange)
{
    EXPECT_EQ(read_range("<min>1</min><max>2</max><cur>3</cur><def>4</def>"), "0: 1 2 3 4");
    EXPECT_EQ(read_range("<def>4</def><cur>3</cur><MAX>2</MAX><Min>1</Min>"), "0: 1 2 3 4");
    EXPECT_EQ(read_range("<m>5</m>"), "0: 5 5 -9 -9") << "one child, two fields";
    EXPECT_EQ(read_range("<m>5</m><ma>6</ma>"), "0: 5 6 -9 -9");
    EXPECT_EQ(read_range("<c>5</c><d>6</d>"), "0: -9 -9 5 6");
    EXPECT_EQ(read_range("<minimum>5</minimum>"), "0: -9 -9 -9 -9");
    EXPECT_EQ(read_range("<min>1</min><max/><cur>3</cur>"), "-1: 1 -9 -9 -9");
    EXPECT_EQ(read_range("<min>1</min>", "brightness"), "0: 1 -9 -9 -9");
    EXPECT_EQ(read_range("<min>1</min>", "brigh"), "-1: -9 -9 -9 -9");
    Element parent("v");
    parent.LinkEndChild(new Element("", "8"));
    net_int_value_t value = {};
    EXPECT_EQ(get_net_int_value_from_xmlnode(&value, &parent, nullptr), 0);
    EXPECT_EQ(value.min + value.max + value.cur + value.def, 32) << "the empty name answers to all four keys";
}

// Device lists ----------------------------------------------------------------------------------

constexpr char list_error[] = "<red net_xml_public.cpp>get_query_device_info_from_xmlnode error\n";

std::string info(const std::string &children)
{
    return "<deviceInfo>" + children + "</deviceInfo>";
}

TEST_F(ReadersTest, InspectionLists)
{
    const std::string first = info("<channelId>1</channelId><type>2</type><checkFrame>-3</checkFrame>");
    Xml three("<deviceInfoList><note/>" + first + "<device><c>4</c><t>5</t></device>" + first + "</deviceInfoList>");
    net_video_inpsection_info_t list[3] = {{-9, -9, -9}, {-9, -9, -9}, {-9, -9, -9}};
    EXPECT_EQ(get_query_device_from_xmlnode(list, 2, three, nullptr), 2);
    EXPECT_EQ(list[0].channelId, 1);
    EXPECT_EQ(list[0].type, 2);
    EXPECT_EQ(list[0].checkFrame, -3);
    EXPECT_EQ(list[1].channelId, 4);
    EXPECT_EQ(list[1].type, 5);
    EXPECT_EQ(list[1].checkFrame, -9);
    EXPECT_EQ(list[2].channelId, -9) << "beyond the room";
    EXPECT_EQ(get_query_device_from_xmlnode(list, 3, three, "deviceInfoList"), 3);
    EXPECT_EQ(get_query_device_from_xmlnode(list, 3, three, "deviceInfo"), -1);
    EXPECT_EQ(get_query_device_from_xmlnode(list, 0, three, nullptr), 0);
    Xml none("<deviceInfoList/>");
    EXPECT_EQ(get_query_device_from_xmlnode(list, 3, none, nullptr), 0);
    EXPECT_EQ(get_query_device_from_xmlnode(list, 3, nullptr, nullptr), -1);
    EXPECT_EQ(get_query_device_from_xmlnode(static_cast<net_video_inpsection_info_t *>(nullptr), 3, none, nullptr), -1);
}

TEST_F(ReadersTest, InspectionListsLogWhatTheyRefuse)
{
    const struct {
        const char *children;
        const char *line;
    } cases[] = {
        {"<channelId>-1</channelId>", "query error. channelId(-1)\n"},
        {"<channelId>x</channelId>", "query error. channelId(-9)\n"},
        {"<type>-4</type>", "query error. type(-4)\n"},
        {"<type/>", "query error. type(-9)\n"},
        {"<type>6</type><checkFrame>x</checkFrame>", "query error. type(6)\n"},
    };
    for (const auto &one : cases) {
        Xml node("<l>" + info("<channelId>7</channelId>") + info(one.children) + info("<type>1</type>") + "</l>");
        net_video_inpsection_info_t list[3] = {{-9, -9, -9}, {-9, -9, -9}, {-9, -9, -9}};
        const std::string log =
            log_of([&] { EXPECT_EQ(get_query_device_from_xmlnode(list, 3, node, nullptr), -1) << one.children; });
        EXPECT_EQ(log, std::string("<red net_xml_public.cpp>") + one.line + list_error);
        EXPECT_EQ(list[0].channelId, 7) << "entries in front stay";
        EXPECT_EQ(list[2].type, -9);
    }
}

TEST_F(ReadersTest, DeviceLists)
{
    Xml two("<l>" + info("<uid>95270000</uid><logicChnBitmap>18446744073709551615</logicChnBitmap>") +
            info("<uid/><logicChnBitmap>5</logicChnBitmap>") + "</l>");
    net_query_deive_t list[2];
    std::memset(list, '~', sizeof list);
    EXPECT_EQ(get_query_device_from_xmlnode(list, 1, two, nullptr), 0) << "no count here";
    EXPECT_STREQ(list[0].uid, "95270000");
    EXPECT_EQ(list[0].logicChnBitmap, ULLONG_MAX);
    EXPECT_EQ(list[1].uid[0], '~');
    EXPECT_EQ(get_query_device_from_xmlnode(list, 2, two, "list"), 0);
    EXPECT_STREQ(list[1].uid, "");
    EXPECT_EQ(list[1].logicChnBitmap, 5U);
    EXPECT_EQ(get_query_device_from_xmlnode(list, 2, two, "other"), -1);
    EXPECT_EQ(get_query_device_from_xmlnode(list, 2, nullptr, nullptr), -1);

    Xml long_uid("<l>" + info("<uid>" + std::string(31, 'u') + "</uid>") +
                 info("<uid>" + std::string(32, 'u') + "</uid>") + "</l>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_query_device_from_xmlnode(list, 2, long_uid, nullptr), -1); }),
              std::string("<red net_xml_public.cpp>query error. device->uid()\n") + list_error);
    EXPECT_EQ(list[0].uid, std::string(31, 'u'));
    Xml bad_bitmap("<l>" + info("<logicChnBitmap>x</logicChnBitmap>") + "</l>");
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_query_device_from_xmlnode(list, 2, bad_bitmap, nullptr), -1); }), list_error);
    loglevel = 0;
    EXPECT_EQ(log_of([&] { get_query_device_from_xmlnode(list, 2, bad_bitmap, nullptr); }), "");
}

// Writers ---------------------------------------------------------------------------------------

TEST_F(WritersTest, TypedChildren)
{
    Element parent("p");
    EXPECT_EQ(InsertChildToXmlElement_string(&parent, "s", "a<b", 0, 0), 0);
    EXPECT_EQ(InsertChildToXmlElement_string(&parent, "e", "", 0, 0), 0);
    EXPECT_EQ(InsertChildToXmlElement_int(&parent, "i", INT_MIN, 0, 0), 0);
    EXPECT_EQ(InsertChildToXmlElement_int(&parent, "i", INT_MAX, 0, 0), 0);
    EXPECT_EQ(InsertChildToXmlElement_int(&parent, "i", 0, 0, 0), 0);
    EXPECT_EQ(InsertChildToXmlElement_unsignedint(&parent, "u", UINT_MAX, 0, 0), 0);
    EXPECT_EQ(InsertChildToXmlElement_int64(&parent, "l", LLONG_MIN, 0, 0), 0);
    EXPECT_EQ(InsertChildToXmlElement_longlong(&parent, "l", LLONG_MAX), 0);
    EXPECT_EQ(InsertChildToXmlElement_longlong(&parent, "l", -4294967296), 0);
    EXPECT_EQ(InsertChildToXmlElement_unsignedlonglong(&parent, "ul", ULLONG_MAX, 0, 0), 0);
    EXPECT_EQ(print_children(parent), "<s>a&lt;b</s><e></e><i>-2147483648</i><i>2147483647</i><i>0</i>"
                                      "<u>4294967295</u><l>-9223372036854775808</l><l>9223372036854775807</l>"
                                      "<l>-4294967296</l><ul>18446744073709551615</ul>");
    for (const TiXmlNode *child = parent.FirstChild(); child != nullptr; child = child->NextSibling())
        EXPECT_TRUE(child->FirstChild() != nullptr && child->FirstChild()->ToText() != nullptr) << child->Value();
}

std::string float_text(float value)
{
    Element parent("p");
    EXPECT_EQ(InsertChildToXmlElement_float(&parent, "f", value, 0, 0), 0);
    return parent.FirstChildElement()->GetText();
}

TEST_F(WritersTest, FloatsHaveEightDigits)
{
    EXPECT_EQ(float_text(0.1F), "0.1");
    EXPECT_EQ(float_text(1.0F), "1");
    EXPECT_EQ(float_text(-0.5F), "-0.5");
    EXPECT_EQ(float_text(123456789.0F), "1.2345679e+08");
    EXPECT_EQ(float_text(1.0F / 3), "0.33333334");
    // Halves behind the eighth digit are rounded to even.
    for (float value : {0.0F, 1e-7F, 3.4028235e38F, -1.17549435e-38F, 16777216.0F, 1048576.25F, 1048576.75F,
                        131072.125F, 131072.375F}) {
        char expected[64];
        gcvt(static_cast<double>(value), 8, expected);
        EXPECT_EQ(float_text(value), expected);
    }
}

TEST_F(WritersTest, BothOmitsTogetherWriteNothing)
{
    const int pairs[][2] = {{0, 0}, {0, 1}, {1, 0}, {2, 2}, {-1, 1}, {1, 1}};
    for (const auto &pair : pairs) {
        Element p("p");
        EXPECT_EQ(InsertChildToXmlElement_string(&p, "a", "x", pair[0], pair[1]), 0);
        EXPECT_EQ(InsertChildToXmlElement_int(&p, "b", 1, pair[0], pair[1]), 0);
        EXPECT_EQ(InsertChildToXmlElement_unsignedint(&p, "c", 2, pair[0], pair[1]), 0);
        EXPECT_EQ(InsertChildToXmlElement_int64(&p, "d", 3, pair[0], pair[1]), 0);
        EXPECT_EQ(InsertChildToXmlElement_unsignedlonglong(&p, "e", 4, pair[0], pair[1]), 0);
        EXPECT_EQ(InsertChildToXmlElement_float(&p, "f", 5, pair[0], pair[1]), 0);
        EXPECT_EQ(print_children(p),
                  pair[0] == 1 && pair[1] == 1 ? "" : "<a>x</a><b>1</b><c>2</c><d>3</d><e>4</e><f>5</f>");
    }
}

TEST_F(WritersTest, TimesAreWrittenAndReportedAsFailed)
{
    Element p("p");
    tag_net_time_v20_t time = {2024, 2, 30, 23, 0, -1};
    EXPECT_EQ(InsertChildToXmlElement_time(&p, &time), -1);
    EXPECT_EQ(print_children(p), "<year>2024</year><month>2</month><day>30</day><hour>23</hour>"
                                 "<minute>0</minute><second>-1</second>");
    Element untouched("p");
    EXPECT_TRUE(untouched.NoChildren());
}

TEST_F(WritersTest, ValuesWithTheirRange)
{
    Element p("p");
    net_int_value_t whole = {1, 2, 3, 4};
    net_float_value_t real = {0.5F, 1.5F, 2.5F, 3.5F};
    EXPECT_EQ(net_int_value_s2x(&whole, &p), 0);
    EXPECT_EQ(net_float_value_s2x(&real, &p), 0);
    EXPECT_EQ(print_children(p), "<min>1</min><max>2</max><cur>3</cur><def>4</def>"
                                 "<min>0.5</min><max>1.5</max><cur>2.5</cur><def>3.5</def>");
    const std::string whole_line = "<red net_xml_public.cpp>func:net_int_value_s2x line:#\n";
    const std::string real_line = "<red net_xml_public.cpp>func:net_float_value_s2x line:#\n";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_int_value_s2x(nullptr, &p), -1); }), whole_line);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_int_value_s2x(&whole, nullptr), -1); }), whole_line);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_float_value_s2x(nullptr, &p), -1); }), real_line);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_float_value_s2x(&real, nullptr), -1); }), real_line);
}

TEST_F(WritersTest, ExtensionDocument)
{
    TiXmlPrinter printer;
    EXPECT_EQ(net_get_exten_xml(printer, 3), 0);
    EXPECT_STREQ(printer.CStr(), "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
                                 "<Extension version=\"1.1\">\n<channelId>3</channelId>\n</Extension>\n");
    // What is written reads back, although the names differ in case.
    net_ext_t ext = {};
    std::string text = printer.CStr();
    EXPECT_EQ(net_exten_x2s(text.data(), &ext), 0);
    EXPECT_EQ(ext.channelId, 3);
}

// The protocol's decimal point is '.', whatever the process has made of its locale.
TEST_F(WritersTest, TheLocaleDoesNotReachTheWire)
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    bool comma = false;
    for (const char *name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8", "fr_FR.utf8", "nl_NL.UTF-8"})
        comma = comma || (std::setlocale(LC_NUMERIC, name) != nullptr && *std::localeconv()->decimal_point == ',');
    if (!comma) {
        std::setlocale(LC_NUMERIC, before.c_str());
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    EXPECT_EQ(float_text(0.25F), "0.25");
    EXPECT_EQ(float_text(123456789.0F), "1.2345679e+08");
    expect_read(get_float_from_xmlnode, "-1.75e1", -17.5F);
    expect_read(get_float_from_xmlnode, "1,5", 1.0F);
    expect_read(get_float_from_xmlnode, "7", 7.0F);
    std::setlocale(LC_NUMERIC, before.c_str());
}

// Extension header ------------------------------------------------------------------------------

int read_extension(net_ext_t &ext, std::string text)
{
    const std::string before = text;
    const int result = net_exten_x2s(text.data(), &ext);
    EXPECT_EQ(text, before) << "the text is the host's";
    return result;
}

int read_child(net_ext_t &ext, const std::string &children)
{
    return read_extension(ext, "<ExtenSion version=\"1.1\">" + children + "</ExtenSion>");
}

TEST_F(ExtensionTest, AllFields)
{
    net_ext_t ext = {};
    EXPECT_EQ(read_child(ext, "<channelId>3</channelId><inputId>1</inputId><outputId>2</outputId>"
                              "<patrolId>5</patrolId><binaryData>1</binaryData><encryptLen>1024</encryptLen>"
                              "<encryptPos>16</encryptPos><userName>admin</userName><token>a&amp;b</token>"
                              "<rfID>31</rfID><chnType>7</chnType><streamType>EXTERNSTREAM</streamType><new>x</new>"),
              0);
    EXPECT_EQ(ext.channelId, 3);
    EXPECT_EQ(ext.inputId, 1);
    EXPECT_EQ(ext.outputId, 2);
    EXPECT_EQ(ext.patrolId, 5);
    EXPECT_EQ(ext.binaryData, 1);
    EXPECT_EQ(ext.encryptLen, 1024);
    EXPECT_EQ(ext.encryptPos, 16);
    EXPECT_STREQ(ext.userName, "admin");
    EXPECT_STREQ(ext.token, "a&b");
    EXPECT_EQ(ext.rfId, 31);
    EXPECT_EQ(ext.chnType, 7);
    EXPECT_EQ(ext.streamType, STREAM_TYPE_EXTERN);

    std::memset(&ext, 0x55, sizeof ext);
    const net_ext_t before = ext;
    EXPECT_EQ(read_child(ext, "<c>9</c>"), 0);
    EXPECT_EQ(ext.channelId, 9);
    ext.channelId = before.channelId;
    EXPECT_EQ(std::memcmp(&ext, &before, sizeof ext), 0) << "absent children leave their fields alone";
}

TEST_F(ExtensionTest, RangesAndTheirLogLines)
{
    net_host().alarm_inputs = 4;
    net_host().alarm_outputs = 0;
    for (const char *good : {"<channelId>0</channelId>", "<channelId>2147483647</channelId>", "<inputId>0</inputId>",
                             "<inputId>3</inputId>", "<patrolId>0</patrolId>", "<patrolId>5</patrolId>",
                             "<rfID>0</rfID>", "<rfID>31</rfID>", "<chnType>0</chnType>", "<encryptPos>0</encryptPos>",
                             "<encryptLen>0</encryptLen>", "<userName/>", "<streamType>mainStream</streamType>"}) {
        net_ext_t ext = {};
        EXPECT_EQ(log_of([&] { EXPECT_EQ(read_child(ext, good), 0) << good; }), "");
    }
    const std::string long_name(32, 'n'), long_token(256, 't');
    const struct {
        std::string child;
        std::string line;
    } cases[] = {
        {"<channelId>-1</channelId>", "channelId(-1)"},
        {"<channelId>x</channelId>", "channelId(-9)"},
        {"<inputId>4</inputId>", "inputId(4)"},
        {"<inputId>-1</inputId>", "inputId(-1)"},
        {"<inputId/>", "inputId(-9)"},
        {"<outputId>0</outputId>", "outputId(0)"},
        {"<patrolId>6</patrolId>", "patrolId(6)"},
        {"<patrolId>-1</patrolId>", "patrolId(-1)"},
        {"<binaryData>2</binaryData>", "binaryData(2)"},
        {"<binaryData>true</binaryData>", "binaryData(-9)"},
        {"<encryptLen>-1</encryptLen>", "encrypt_len(-1)"},
        {"<encryptPos>-1</encryptPos>", "encrypt_pos(-1)"},
        {"<userName>" + long_name + "</userName>", "cUserName()"},
        {"<token>" + long_token + "</token>", "token()"},
        {"<!--token-->", "token()"}, // not what the host has there, which may have no end
        {"<rfID>32</rfID>", "rfId(32)"},
        {"<rfID>-1</rfID>", "rfId(-1)"},
        {"<chnType>-2</chnType>", "iChnType(-2)"},
        {"<streamType>main</streamType>", "streamType(main)"},
        {"<streamType>mainStreams</streamType>", "streamType(mainStreams)"},
        {"<streamType></streamType>", "streamType()"},
        {"<streamType>" + long_name + "</streamType>", "streamType()"},
    };
    for (const auto &one : cases) {
        net_ext_t ext;
        for (int *field : {&ext.channelId, &ext.inputId, &ext.outputId, &ext.patrolId, &ext.binaryData, &ext.encryptLen,
                           &ext.encryptPos, &ext.rfId, &ext.chnType, &ext.streamType})
            *field = -9;
        std::strcpy(ext.userName, "old");
        std::strcpy(ext.token, "old");
        EXPECT_EQ(log_of([&] {
                      EXPECT_EQ(read_child(ext, "<encryptPos>77</encryptPos>" + one.child + "<chnType>5</chnType>"), -1)
                          << one.child;
                  }),
                  "<red net_xml_public.cpp>query error. " + one.line + "\n");
        EXPECT_NE(ext.chnType, 5) << "the walk ends at " << one.child;
        EXPECT_EQ(ext.streamType, -9);
    }
    net_ext_t ext = {};
    EXPECT_EQ(read_child(ext, "<userName>" + std::string(31, 'n') + "</userName><token>" + std::string(255, 't') +
                                  "</token>"),
              0);
    EXPECT_EQ(std::strlen(ext.userName), 31U);
    EXPECT_EQ(std::strlen(ext.token), 255U);
}

// The device's numbers are asked for at each element, not once.
TEST_F(ExtensionTest, InputsFollowTheHost)
{
    net_ext_t ext = {};
    loglevel = 0;
    net_host().alarm_inputs = 1;
    EXPECT_EQ(read_child(ext, "<inputId>1</inputId>"), -1);
    net_host().alarm_inputs = 2;
    EXPECT_EQ(read_child(ext, "<inputId>1</inputId>"), 0);
    net_host().alarm_outputs = 8;
    EXPECT_EQ(read_child(ext, "<outputId>7</outputId>"), 0);
}

TEST_F(ExtensionTest, RootNames)
{
    net_ext_t ext = {};
    for (const char *name : {"ExtenSion", "Extension", "EXTENSION", "Ext", "e"})
        EXPECT_EQ(read_extension(ext, std::string("<!--c--><") + name + "/>"), 0) << name;
    for (const char *name : {"Extensions", "body", "xtension"})
        EXPECT_EQ(log_of([&] { EXPECT_EQ(read_extension(ext, std::string("<") + name + "/>"), -1) << name; }), "");
    // Only the first root counts.
    EXPECT_EQ(read_extension(ext, "<body/><ExtenSion/>"), -1);
}

TEST_F(ExtensionTest, WhatIsNoDocumentIsRefusedWithItsReason)
{
    net_ext_t ext = {};
    const auto refused = [&](const std::string &text) {
        return log_of([&] { EXPECT_EQ(read_extension(ext, text), -1) << text; });
    };
    const std::string failed = "<red net_xml_public.cpp>xml parse failed:";
    EXPECT_EQ(refused("<ExtenSion><channelId>1</ExtenSion>"), failed + "Error reading end tag.\n.");
    EXPECT_EQ(refused(""), failed + "Error document empty.\n.");
    EXPECT_EQ(refused("plain text"), failed + "Error document empty.\n.");
    EXPECT_EQ(refused("<ExtenSion>" + std::string(65536, ' ') + "</ExtenSion>"), failed + "text too long\n.");
    std::string deep;
    for (int i = 0; i < 65; ++i)
        deep += "<z>";
    EXPECT_EQ(refused(deep), failed + "nested too deeply\n.");
    // No error for the library, but no root either.
    EXPECT_EQ(refused("<!DOCTYPE a [ <!ENTITY b 'c'> ]>"), "");
    EXPECT_EQ(refused("<!-- only a comment -->"), "");
    EXPECT_EQ(refused("<?xml version=\"1.0\"?>"), "");
    // Cut in the middle of a character.
    for (const char *text : {"<ExtenSion><token>\xE2", "<?xml version='1.0'?><ExtenSion>\xF0\x9F", "\xEF\xBB\xBF<\xC3"})
        EXPECT_NE(refused(text), "");
    EXPECT_EQ(net_exten_x2s(nullptr, &ext), -1);
    char text[] = "<ExtenSion/>";
    EXPECT_EQ(net_exten_x2s(text, nullptr), -1);
}

TEST_F(ExtensionTest, BlocksForACopyAndItsTokensAndNoneLeftBehind)
{
    net_ext_t ext = {};
    EXPECT_EQ(read_child(ext, ""), 0);
    EXPECT_EQ(net_host_memory().total, 2U);
    net_host_fail_allocation(1);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(read_child(ext, "<channelId>5</channelId>"), -1); }),
              "<red net_public.cpp>malloc failed\n");
    net_host_fail_allocation(2);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(read_child(ext, "<channelId>5</channelId>"), -1); }),
              "<red net_public.cpp>malloc failed\n<red net_xml_public.cpp>xml parse failed:out of memory\n.");
    EXPECT_EQ(ext.channelId, 0);
    EXPECT_EQ(net_host_memory().live, 0);
}

} // namespace
