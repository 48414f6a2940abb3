#include "cases.h"

#include <net_public.h>

#include <climits>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>

namespace {

using test::Arguments;
using test::log_of;
using test::number;
using test::outcome;
using test::pointer;
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

template <class Value> using Reader = int (*)(Value *, TiXmlNode *, const char *);

template <class Value> std::string read_number(Reader<Value> reader, TiXmlNode *node, const char *key)
{
    Value value = 77;
    EXPECT_EQ(reader(nullptr, node, key), -1);
    const int result = reader(&value, node, key);
    return outcome(result, value);
}

template <class Value> test::Call number_reader(Reader<Value> reader)
{
    return [reader](Arguments &arguments) {
        Element element("n", arguments.at(0));
        return read_number(reader, &element, nullptr);
    };
}

std::string read_whole(TiXmlNode *node, const char *key)
{
    const std::string text = read_number(get_int_from_xmlnode, node, key);
    EXPECT_EQ(read_number(get_bool_from_xmlnode, node, key), text);
    EXPECT_EQ(read_number(get_unsignedint_from_xmlnode, node, key), text);
    EXPECT_EQ(read_number(get_int64_from_xmlnode, node, key), text);
    EXPECT_EQ(read_number(get_longlong_from_xmlnode, node, key), text);
    EXPECT_EQ(read_number(get_unsignedlonglong_from_xmlnode, node, key), text);
    return text;
}

std::string read_text(TiXmlNode *node, const std::string &size, const char *key)
{
    int result = 0;
    const std::string buffer =
        test::left_in(8, [&](char *out) { result = get_str_from_xmlnode(out, number(size), node, key); });
    return outcome(result, buffer);
}

std::string read_time(Arguments &arguments)
{
    Xml node("<beginTime>" + arguments.at(0) + "</beginTime>");
    tag_net_time_v20_t t = {-9, -9, -9, -9, -9, -9};
    const int result = get_time_from_xmlnode(&t, node, pointer(arguments.at(1)));
    return outcome(result, t.year, t.month, t.day, t.hour, t.minute, t.second);
}

std::string read_range(Arguments &arguments)
{
    Xml node("<bright>" + arguments.at(0) + "</bright>");
    net_int_value_t whole = {-9, -9, -9, -9};
    net_float_value_t real = {-9, -9, -9, -9};
    const int result = get_net_int_value_from_xmlnode(&whole, node, pointer(arguments.at(1)));
    const std::string text = outcome(result, whole.min, whole.max, whole.cur, whole.def);
    const int real_result = get_net_float_value_from_xmlnode(&real, node, pointer(arguments.at(1)));
    EXPECT_EQ(outcome(real_result, real.min, real.max, real.cur, real.def), text);
    return text;
}

template <class Record> int read_list(Record *list, Arguments &arguments)
{
    std::optional<Xml> xml;
    if (pointer(arguments.at(0)) != nullptr)
        xml.emplace(arguments[0]);
    return get_query_device_from_xmlnode(list, number(arguments.at(1)), xml ? xml->root() : nullptr,
                                         pointer(arguments.at(2)));
}

std::string read_inspections(Arguments &arguments)
{
    net_video_inpsection_info_t list[3] = {{-9, -9, -9}, {-9, -9, -9}, {-9, -9, -9}};
    std::string text = outcome(read_list(list, arguments));
    for (const auto &entry : list)
        text += outcome("", entry.channelId, entry.type, entry.checkFrame);
    return text;
}

std::string read_devices(Arguments &arguments)
{
    net_query_deive_t list[2] = {};
    for (auto &entry : list) {
        std::strcpy(entry.uid, "~");
        entry.logicChnBitmap = 9;
    }
    std::string text = outcome(read_list(list, arguments));
    for (const auto &entry : list)
        text += outcome("", entry.uid, entry.logicChnBitmap);
    return text;
}

std::string float_text(float value)
{
    Element parent("p");
    EXPECT_EQ(InsertChildToXmlElement_float(&parent, "f", value, 0, 0), 0);
    return parent.FirstChildElement()->GetText();
}

std::string write_omitting(Arguments &arguments)
{
    const int one = number(arguments.at(0)), other = number(arguments.at(1));
    Element p("p");
    int result = InsertChildToXmlElement_string(&p, "a", "x", one, other);
    result |= InsertChildToXmlElement_int(&p, "b", 1, one, other);
    result |= InsertChildToXmlElement_unsignedint(&p, "c", 2, one, other);
    result |= InsertChildToXmlElement_int64(&p, "d", 3, one, other);
    result |= InsertChildToXmlElement_unsignedlonglong(&p, "e", 4, one, other);
    result |= InsertChildToXmlElement_float(&p, "f", 5, one, other);
    return outcome(result, print_children(p));
}

net_ext_t old_extension()
{
    net_ext_t ext = {};
    for (int *field : {&ext.channelId, &ext.inputId, &ext.outputId, &ext.patrolId, &ext.binaryData, &ext.encryptLen,
                       &ext.encryptPos, &ext.rfId, &ext.chnType, &ext.streamType})
        *field = -9;
    std::strcpy(ext.userName, "old");
    std::strcpy(ext.token, "old");
    net_host().alarm_inputs = 4;
    net_host().alarm_outputs = 0;
    return ext;
}

int read_extension(net_ext_t &ext, std::string text)
{
    const std::string before = text;
    const int result = net_exten_x2s(text.data(), &ext);
    EXPECT_EQ(text, before) << "the text is the host's";
    return result;
}

std::string read_fields(Arguments &arguments)
{
    net_ext_t ext = old_extension();
    const int result = read_extension(ext, arguments.at(0));
    return outcome(result, ext.channelId, ext.inputId, ext.outputId, ext.patrolId, ext.binaryData, ext.encryptLen,
                   ext.encryptPos, ext.rfId, ext.chnType, ext.streamType, ext.userName, ext.token);
}

std::string refused_child(Arguments &arguments)
{
    net_ext_t ext = old_extension();
    const std::string text = "<e><encryptPos>77</encryptPos>" + arguments.at(0) + "<chnType>5</chnType></e>";
    const std::string log = log_of([&] { EXPECT_EQ(read_extension(ext, text), -1); });
    EXPECT_NE(ext.chnType, 5) << "the walk ends there";
    EXPECT_EQ(ext.streamType, -9);
    return log;
}

TEST_F(ReadersTest, Cases)
{
    test::run_cases("xml_public.txt",
                    {{"every whole number",
                      [](Arguments &arguments) {
                          Element element("n", arguments.at(0));
                          return read_whole(&element, nullptr);
                      }},
                     {"get_int_from_xmlnode", number_reader(get_int_from_xmlnode)},
                     {"get_bool_from_xmlnode", number_reader(get_bool_from_xmlnode)},
                     {"get_unsignedint_from_xmlnode", number_reader(get_unsignedint_from_xmlnode)},
                     {"get_unsignedlonglong_from_xmlnode", number_reader(get_unsignedlonglong_from_xmlnode)},
                     {"get_int64_from_xmlnode", number_reader(get_int64_from_xmlnode)},
                     {"get_longlong_from_xmlnode", number_reader(get_longlong_from_xmlnode)},
                     {"get_float_from_xmlnode", number_reader(get_float_from_xmlnode)},
                     {"atoi64", [](Arguments &arguments) { return outcome(atoi64(arguments.at(0).c_str())); }},
                     {"every number",
                      [](Arguments &arguments) {
                          Xml parent(arguments.at(0));
                          TiXmlNode *node = parent.root()->FirstChild();
                          const std::string text = read_whole(node, pointer(arguments.at(1)));
                          EXPECT_EQ(read_number(get_float_from_xmlnode, node, pointer(arguments[1])), text);
                          return text;
                      }},
                     {"get_str_from_xmlnode",
                      [](Arguments &arguments) {
                          Element element(arguments.at(0).c_str(), arguments.at(1));
                          return read_text(&element, arguments.at(2), pointer(arguments.at(3)));
                      }},
                     {"get_str_from_xmlnode, first child",
                      [](Arguments &arguments) {
                          Xml parent(arguments.at(0));
                          return read_text(parent.root()->FirstChild(), arguments.at(1), nullptr);
                      }},
                     {"get_time_from_xmlnode", read_time},
                     {"ranges", read_range},
                     {"inspection list", read_inspections},
                     {"device list", read_devices},
                     {"InsertChildToXmlElement_float",
                      [](Arguments &arguments) { return float_text(std::strtof(arguments.at(0).c_str(), nullptr)); }},
                     {"omits", write_omitting},
                     {"net_exten_x2s", read_fields},
                     {"refused extension", refused_child},
                     {"malformed extension", [](Arguments &arguments) {
                          net_ext_t ext = {};
                          return log_of([&] { EXPECT_EQ(read_extension(ext, arguments.at(0)), -1); });
                      }}});
}

// Names that no text can give, and the switch of the lines.
TEST_F(ReadersTest, NamelessNodesAndSilence)
{
    Element nameless("", "1"), parent("v");
    EXPECT_EQ(read_whole(&nameless, "anything"), "0 1");
    parent.LinkEndChild(new Element("", "8"));
    net_int_value_t value = {};
    EXPECT_EQ(get_net_int_value_from_xmlnode(&value, &parent, nullptr), 0);
    EXPECT_EQ(value.min + value.max + value.cur + value.def, 32) << "the empty name answers to all four keys";
    Xml list("<l><deviceInfo><logicChnBitmap>x</logicChnBitmap></deviceInfo></l>");
    EXPECT_EQ(get_query_device_from_xmlnode(static_cast<net_video_inpsection_info_t *>(nullptr), 3, list, nullptr), -1);
    net_query_deive_t device[1] = {};
    loglevel = 0;
    EXPECT_EQ(log_of([&] { EXPECT_EQ(get_query_device_from_xmlnode(device, 1, list, nullptr), -1); }), "");
}

// What does not fit is the platform's affair.
TEST_F(ReadersTest, LongIntegersAreWhatTheCLibraryMakesOfThem)
{
    for (const char *text : {"2147483648", "-2147483649", "4294967296", "99999999999", "-12345678901", "9999999999"}) {
        Element element("n", text);
        EXPECT_EQ(read_number(get_int_from_xmlnode, &element, nullptr), outcome(0, std::atoi(text)));
        const auto number = static_cast<unsigned int>(std::strtoul(text, nullptr, 10));
        EXPECT_EQ(read_number(get_unsignedint_from_xmlnode, &element, nullptr),
                  std::strlen(text) < 11 ? outcome(0, number) : "-1 77");
    }
}

// Writers ---------------------------------------------------------------------------------------

TEST_F(WritersTest, TypedChildren)
{
    Element parent("p");
    int result = InsertChildToXmlElement_string(&parent, "s", "a<b", 0, 0);
    result |= InsertChildToXmlElement_string(&parent, "e", "", 0, 0);
    result |= InsertChildToXmlElement_int(&parent, "i", INT_MIN, 0, 0);
    result |= InsertChildToXmlElement_int(&parent, "i", INT_MAX, 0, 0);
    result |= InsertChildToXmlElement_int(&parent, "i", 0, 0, 0);
    result |= InsertChildToXmlElement_unsignedint(&parent, "u", UINT_MAX, 0, 0);
    result |= InsertChildToXmlElement_int64(&parent, "l", LLONG_MIN, 0, 0);
    result |= InsertChildToXmlElement_longlong(&parent, "l", LLONG_MAX);
    result |= InsertChildToXmlElement_longlong(&parent, "l", -4294967296);
    result |= InsertChildToXmlElement_unsignedlonglong(&parent, "ul", ULLONG_MAX, 0, 0);
    net_int_value_t whole = {1, 2, 3, 4};
    net_float_value_t real = {0.5F, 1.5F, 2.5F, 3.5F};
    result |= net_int_value_s2x(&whole, &parent);
    result |= net_float_value_s2x(&real, &parent);
    EXPECT_EQ(result, 0);
    tag_net_time_v20_t time = {2024, 2, 30, 23, 0, -1};
    EXPECT_EQ(InsertChildToXmlElement_time(&parent, &time), -1) << "written all the same";
    EXPECT_EQ(print_children(parent), "<s>a&lt;b</s><e></e><i>-2147483648</i><i>2147483647</i><i>0</i>"
                                      "<u>4294967295</u><l>-9223372036854775808</l><l>9223372036854775807</l>"
                                      "<l>-4294967296</l><ul>18446744073709551615</ul>"
                                      "<min>1</min><max>2</max><cur>3</cur><def>4</def>"
                                      "<min>0.5</min><max>1.5</max><cur>2.5</cur><def>3.5</def>"
                                      "<year>2024</year><month>2</month><day>30</day><hour>23</hour>"
                                      "<minute>0</minute><second>-1</second>");
    for (const TiXmlNode *child = parent.FirstChild(); child != nullptr; child = child->NextSibling())
        EXPECT_TRUE(child->FirstChild() != nullptr && child->FirstChild()->ToText() != nullptr) << child->Value();
    const std::string whole_line = "<red net_xml_public.cpp>func:net_int_value_s2x line:#\n";
    const std::string real_line = "<red net_xml_public.cpp>func:net_float_value_s2x line:#\n";
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_int_value_s2x(nullptr, &parent), -1); }), whole_line);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_int_value_s2x(&whole, nullptr), -1); }), whole_line);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(net_float_value_s2x(nullptr, &parent), -1); }), real_line);
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
    EXPECT_EQ(read_extension(ext, printer.CStr()), 0);
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
    for (const auto &[text, value] : {std::pair{"-1.75e1", -17.5F}, {"1,5", 1.0F}, {"7", 7.0F}}) {
        Element element("n", text);
        float read = 0;
        EXPECT_EQ(get_float_from_xmlnode(&read, &element, nullptr), 0);
        EXPECT_EQ(read, value) << text;
    }
    std::setlocale(LC_NUMERIC, before.c_str());
}

// Extension header ------------------------------------------------------------------------------

// The device's numbers are asked for at each element, not once.
TEST_F(ExtensionTest, InputsFollowTheHost)
{
    net_ext_t ext = {};
    loglevel = 0;
    net_host().alarm_inputs = 1;
    EXPECT_EQ(read_extension(ext, "<e><inputId>1</inputId></e>"), -1);
    net_host().alarm_inputs = 2;
    EXPECT_EQ(read_extension(ext, "<e><inputId>1</inputId></e>"), 0);
    net_host().alarm_outputs = 8;
    EXPECT_EQ(read_extension(ext, "<e><outputId>7</outputId></e>"), 0);
    EXPECT_EQ(ext.outputId, 7);
}

TEST_F(ExtensionTest, CutCharactersAndNullPointersAreRefused)
{
    net_ext_t ext = {};
    for (const char *text : {"<ExtenSion><token>\xE2", "<?xml version='1.0'?><ExtenSion>\xF0\x9F", "\xEF\xBB\xBF<\xC3"})
        EXPECT_NE(log_of([&] { EXPECT_EQ(read_extension(ext, text), -1); }), "");
    EXPECT_EQ(net_exten_x2s(nullptr, &ext), -1);
    char text[] = "<ExtenSion/>";
    EXPECT_EQ(net_exten_x2s(text, nullptr), -1);
}

TEST_F(ExtensionTest, BlocksForACopyAndItsTokensAndNoneLeftBehind)
{
    net_ext_t ext = {};
    EXPECT_EQ(read_extension(ext, "<e/>"), 0);
    EXPECT_EQ(net_host_memory().total, 2U);
    const std::string lines[] = {"<red net_public.cpp>malloc failed\n",
                                 "<red net_public.cpp>malloc failed\n"
                                 "<red net_xml_public.cpp>xml parse failed:out of memory\n."};
    for (unsigned long which : {1U, 2U}) {
        net_host_fail_allocation(which);
        EXPECT_EQ(log_of([&] { EXPECT_EQ(read_extension(ext, "<e><channelId>5</channelId></e>"), -1); }),
                  lines[which - 1]);
    }
    EXPECT_EQ(ext.channelId, 0);
    EXPECT_EQ(net_host_memory().live, 0);
}

} // namespace
