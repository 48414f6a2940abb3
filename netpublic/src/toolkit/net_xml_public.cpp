// The XML toolkit's readers and writers, and the extension header.
#include "engine/engine.h"
#include "engine/matching.h"
#include "engine/records.h"
#include "text/scanner.h"
#include "toolkit/extension.h"
#include "values/tables.h"
#include "values/values.h"

#include <net_host.h>
#include <net_public.h>

#include <cstring>

namespace netpublic {
namespace {

enum class Number { int32, flag, uint32, int64, longlong, uint64, real };

// A reader of one value is refused a node whose name does not answer to the key.
int read_number(void *value, Node node, const char *key, Number number)
{
    if (!is_component(value, node, key))
        return -1;
    switch (number) {
    case Number::int32:
        return read_int(static_cast<int *>(value), node);
    case Number::flag:
        return read_flag(static_cast<int *>(value), node);
    case Number::uint32:
        return read_unsigned(static_cast<unsigned int *>(value), node);
    case Number::int64:
        return read_int64(static_cast<long long *>(value), node);
    case Number::longlong:
        return read_longlong(static_cast<long long *>(value), node);
    case Number::uint64:
        return read_unsignedlonglong(static_cast<unsigned long long *>(value), node);
    case Number::real:
        return read_float(static_cast<float *>(value), node);
    }
    return -1;
}

template <class Value>
int append_value(int (*append)(Element, const char *, Value), TiXmlElement *parent, const char *name, Value value,
                 int omit1, int omit2)
{
    if (parent == nullptr || name == nullptr)
        return -1;
    return omit1 != 1 || omit2 != 1 ? append(parent, name, value) : 0;
}

int write_value(const Table &table, const void *value, TiXmlElement *element, const char *function, Place place)
{
    if (value != nullptr && element != nullptr)
        return write_component(table, value, element);
    log_line(Line::writer, place, function);
    return -1;
}

struct InspectionFields : Description {
    using T = net_video_inpsection_info_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0).complain("query error. channelId(%d)\n"),
        integer("type", AT(type)).at_least(0).complain("query error. type(%d)\n"),
        integer("checkFrame", AT(checkFrame)).complain("query error. type(%d)\n", AT(type)), // the type, on purpose
    };
    static constexpr Traits traits = HERE;
};
constexpr auto inspection = describe<InspectionFields>();

// Fills entries from the "deviceInfo" children. Returns how many, or -1.
int read_devices(const Table &entry, void *list, int max, Node node, const char *key)
{
    if (!is_component(list, node, key))
        return -1;
    int count = 0;
    for (Node child = node.first_child(); child && count < max; child = child.next_sibling()) {
        if (!answers_to(child.name(), "deviceInfo"))
            continue;
        char *record = static_cast<char *>(list) + static_cast<std::size_t>(count) * entry.record_size;
        if (read_component(record, child, nullptr, entry) != 0) {
            log_error(NET_HERE, "get_query_device_info_from_xmlnode error\n");
            return -1;
        }
        ++count;
    }
    return count;
}

// The number of inputs and outputs is asked for each time.
int check_input(const net_ext_t &ext)
{
    return ext.inputId >= 0 && ext.inputId < sc_get_default_alarmin_num() ? 0 : -1;
}

int check_output(const net_ext_t &ext)
{
    return ext.outputId >= 0 && ext.outputId < sc_get_default_alarmout_num() ? 0 : -1;
}

struct ExtensionFields : Description {
    using T = net_ext_t;
    static constexpr Field fields[] = {
        integer("channelId", AT(channelId)).at_least(0).complain("query error. channelId(%d)\n"),
        integer("inputId", AT(inputId))
            .then<check_input>()
            .complain("query error. inputId(%d)\n")
            .accepts("a whole number from 0, less than the device has alarm inputs"),
        integer("outputId", AT(outputId))
            .then<check_output>()
            .complain("query error. outputId(%d)\n")
            .accepts("a whole number from 0, less than the device has alarm outputs"),
        integer("patrolId", AT(patrolId)).in(0, 5).complain("query error. patrolId(%d)\n"),
        flag("binaryData", AT(binaryData)).complain("query error. binaryData(%d)\n"),
        integer("encryptLen", AT(encryptLen)).at_least(0).complain("query error. encrypt_len(%d)\n"),
        integer("encryptPos", AT(encryptPos)).at_least(0).complain("query error. encrypt_pos(%d)\n"),
        text("userName", AT(userName)).complain("query error. cUserName(%s)\n"),
        text("token", AT(token)).complain("query error. token(%s)\n"),
        integer("rfID", AT(rfId)).in(0, 31).complain("query error. rfId(%d)\n"),
        integer("chnType", AT(chnType)).at_least(0).complain("query error. iChnType(%d)\n"),
        word("streamType", AT(streamType), stream_types).complain("query error. streamType(%s)\n"),
    };
    static constexpr Traits traits = HERE;
};
constexpr auto extension = describe<ExtensionFields>();

// Of a text that is changed.
int read_extension_text(char *text, std::size_t length, net_ext_t *ext)
{
    ScannedText scanned;
    if (scanned.scan(text, static_cast<unsigned int>(length), header_limits) != 0) {
        // A document type can leave a text without error and without a root.
        if (scanned.error().fault != Fault::no_root)
            log_error(NET_HERE, "xml parse failed:%s\n.", fault_text(scanned.error().fault));
        return -1;
    }
    return read_extension(scanned.root(), ext);
}

} // namespace

int read_extension(Node element, net_ext_t *ext)
{
    return answers_to(element.name(), "ExtenSion") ? read_record(extension, ext, element) : -1;
}

} // namespace netpublic

using namespace netpublic;

int get_int_from_xmlnode(int *value, TiXmlNode *node, const char *key)
{
    return read_number(value, node, key, Number::int32);
}

int get_bool_from_xmlnode(int *value, TiXmlNode *node, const char *key)
{
    return read_number(value, node, key, Number::flag);
}

int get_unsignedint_from_xmlnode(unsigned int *value, TiXmlNode *node, const char *key)
{
    return read_number(value, node, key, Number::uint32);
}

int get_int64_from_xmlnode(long long *value, TiXmlNode *node, const char *key)
{
    return read_number(value, node, key, Number::int64);
}

int get_longlong_from_xmlnode(long long *value, TiXmlNode *node, const char *key)
{
    return read_number(value, node, key, Number::longlong);
}

int get_unsignedlonglong_from_xmlnode(unsigned long long *value, TiXmlNode *node, const char *key)
{
    return read_number(value, node, key, Number::uint64);
}

int get_float_from_xmlnode(float *value, TiXmlNode *node, const char *key)
{
    return read_number(value, node, key, Number::real);
}

int get_str_from_xmlnode(char *dst, int size, TiXmlNode *node, const char *key)
{
    if (dst == nullptr || node == nullptr || size < 0)
        return -1;
    const auto bytes = static_cast<std::size_t>(size);
    // Unlike the other readers, this one wants the whole key; the buffer is zeroed all the same.
    if (key != nullptr && !is_named(node->Value(), key)) {
        std::memset(dst, 0, bytes);
        return -1;
    }
    return read_text(dst, bytes, node);
}

long long atoi64(const char *text)
{
    const bool negative = *text == '-';
    unsigned long long value = 0;
    for (text += negative; *text != '\0'; ++text)
        value = value * 10 + static_cast<unsigned long long>(*text - '0');
    return static_cast<long long>(negative ? 0 - value : value);
}

int get_time_from_xmlnode(tag_net_time_v20_t *time, TiXmlNode *node, const char *key)
{
    return read_component(time, node, key, time_record);
}

int get_net_int_value_from_xmlnode(net_int_value_t *value, TiXmlNode *node, const char *key)
{
    return read_component(value, node, key, int_value_record);
}

int get_net_float_value_from_xmlnode(net_float_value_t *value, TiXmlNode *node, const char *key)
{
    return read_component(value, node, key, float_value_record);
}

int get_query_device_from_xmlnode(net_video_inpsection_info_t *list, int max, TiXmlNode *node, const char *key)
{
    return read_devices(inspection, list, max, node, key);
}

int get_query_device_from_xmlnode(net_query_deive_t *list, int max, TiXmlNode *node, const char *key)
{
    return read_devices(query_device, list, max, node, key) < 0 ? -1 : 0;
}

int InsertChildToXmlElement_string(TiXmlElement *parent, const char *name, const char *text, int omit1, int omit2)
{
    if (text == nullptr)
        return -1;
    return append_value(append_text, parent, name, text, omit1, omit2);
}

int InsertChildToXmlElement_int(TiXmlElement *parent, const char *name, int value, int omit1, int omit2)
{
    return append_value(append_int, parent, name, value, omit1, omit2);
}

int InsertChildToXmlElement_unsignedint(TiXmlElement *parent, const char *name, unsigned int value, int omit1,
                                        int omit2)
{
    return append_value(append_unsigned, parent, name, value, omit1, omit2);
}

int InsertChildToXmlElement_int64(TiXmlElement *parent, const char *name, long long value, int omit1, int omit2)
{
    return append_value(append_longlong, parent, name, value, omit1, omit2);
}

int InsertChildToXmlElement_longlong(TiXmlElement *parent, const char *name, long long value)
{
    return append_value(append_longlong, parent, name, value, 0, 0);
}

int InsertChildToXmlElement_unsignedlonglong(TiXmlElement *parent, const char *name, unsigned long long value,
                                             int omit1, int omit2)
{
    return append_value(append_unsignedlonglong, parent, name, value, omit1, omit2);
}

int InsertChildToXmlElement_float(TiXmlElement *parent, const char *name, float value, int omit1, int omit2)
{
    return append_value(append_float, parent, name, value, omit1, omit2);
}

int InsertChildToXmlElement_time(TiXmlElement *parent, tag_net_time_v20_t *time)
{
    if (parent != nullptr && time != nullptr)
        write_component(time_record, time, parent);
    return -1; // also after success: callers must not take it for an error
}

int net_int_value_s2x(net_int_value_t *value, TiXmlElement *element)
{
    return write_value(int_value_record, value, element, "net_int_value_s2x", NET_HERE);
}

int net_float_value_s2x(net_float_value_t *value, TiXmlElement *element)
{
    return write_value(float_value_record, value, element, "net_float_value_s2x", NET_HERE);
}

int net_get_exten_xml(TiXmlPrinter &printer, int channelId)
{
    auto *root = new_element("Extension", "version");
    if (append_int(root, "channelId", channelId) != 0) {
        delete root;
        return -1;
    }
    return print_document(printer, root);
}

int net_exten_x2s(char *text, net_ext_t *ext)
{
    if (text == nullptr || ext == nullptr)
        return -1;
    // One byte more than is allowed tells as much as the whole text.
    const std::size_t length = strnlen(text, header_limits.length + 1);
    void *copy = net_malloc(static_cast<unsigned int>(length + 1));
    if (copy == nullptr)
        return -1;
    std::memcpy(copy, text, length);
    static_cast<char *>(copy)[length] = '\0';
    const int result = read_extension_text(static_cast<char *>(copy), length, ext);
    net_free(&copy);
    return result;
}
