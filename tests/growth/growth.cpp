// P11: work on inputs of once, twice and four times a size, for tests/gates/growth.py, which lets callgrind
// count it. One dump a run, named by what was done and by the factor.
#include "messages.h"

#include <net_public.h>
#include <typed.h>
#include <valgrind/callgrind.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using test::repeated;

struct Counted {
    std::string label;
    std::function<void()> work;
};
std::vector<Counted> all;

// What `make` returns for a factor is to be counted; what it prepares is not.
void count(const std::string &what, const std::function<std::function<void()>(int)> &make)
{
    for (const int factor : {1, 2, 4})
        all.push_back({what + " " + std::to_string(factor), make(factor)});
}

void count_all()
{
    CALLGRIND_START_INSTRUMENTATION;
    for (const Counted &one : all) {
        one.work(); // the first run tidies up the heap
        CALLGRIND_ZERO_STATS;
        one.work();
        CALLGRIND_DUMP_STATS_AT(one.label.c_str());
    }
    CALLGRIND_STOP_INSTRUMENTATION;
}

// The element with each child so many times, and so many unknown ones in front, in it and below.
void grow(const TiXmlElement &from, TiXmlElement &to, int copies, int unknown)
{
    for (int i = 0; i < unknown; ++i)
        to.LinkEndChild(new TiXmlElement("zz"));
    for (const TiXmlNode *child = from.FirstChild(); child != nullptr; child = child->NextSibling())
        for (int i = 0; i < copies; ++i) {
            const TiXmlElement *element = child->ToElement();
            if (element == nullptr || element->FirstChildElement() == nullptr) {
                to.LinkEndChild(child->Clone());
                continue;
            }
            auto *made = new TiXmlElement(element->Value());
            grow(*element, *made, 1, unknown);
            to.LinkEndChild(made);
        }
}

int children_of(const TiXmlElement &element)
{
    int count = 0;
    for (const TiXmlNode *child = element.FirstChild(); child != nullptr; child = child->NextSibling())
        ++count;
    return count;
}

// The element and those below that have elements of their own.
int inner_elements(const TiXmlElement &element)
{
    int count = 1;
    for (const TiXmlElement *child = element.FirstChildElement(); child != nullptr; child = child->NextSiblingElement())
        count += child->FirstChildElement() != nullptr ? inner_elements(*child) : 0;
    return count;
}

void count_parser(const netpublic::Message &message)
{
    const auto example = std::make_shared<TiXmlDocument>();
    example->Parse((test::best_example(message) + std::string(8, '\0')).c_str());
    const auto parse = [&](int copies, int unknown) -> std::function<void()> {
        const auto body = std::make_shared<TiXmlElement>(example->RootElement()->Value());
        grow(*example->RootElement(), *body, copies, unknown);
        const auto envelope = std::make_shared<test::MessageEnvelope>(message);
        return [=] { message.parse(&envelope->param, body.get()); };
    };
    // So many that a walk over the elder siblings of each shows.
    constexpr int most = 500;
    const int children = children_of(*example->RootElement()), inner = inner_elements(*example->RootElement());
    count(std::string(message.name) + "/known", [&](int factor) { return parse(most / (children + 1) * factor, 0); });
    count(std::string(message.name) + "/unknown", [&](int factor) { return parse(1, most / inner * factor); });
}

void count_header(const std::string &what, const std::string &front, const std::string &item, const std::string &back)
{
    count("header/" + what, [&](int factor) -> std::function<void()> {
        const auto text = std::make_shared<std::string>(
            front + repeated(15000 / static_cast<int>(item.size()) * factor, item) + back);
        return [=] {
            net_ext_t ext = {};
            net_exten_x2s(text->data(), &ext);
        };
    });
}

// A function over a text of so many pieces.
void count_text(const std::string &what, const std::string &piece, const std::function<void(std::string &)> &function)
{
    count("text/" + what, [&](int factor) -> std::function<void()> {
        const auto text = std::make_shared<std::string>(repeated(4000 * factor, piece));
        return [=] { function(*text); };
    });
}

void count_texts()
{
    int number;
    static int numbers[16000];
    static unsigned char bytes[64000];
    static char cells[128000];
    count_text("filter", "<key>a</key>", [](std::string &text) { net_xml_printf_filter(text.c_str()); });
    count_text("filter of open tags", "<key>", [](std::string &text) { net_xml_printf_filter(text.c_str()); });
    count_text("single filter", "<a>x</a>", [](std::string &text) { net_xml_filter(text, "<a>", "</a>"); });
    count_text("words", "MDio,", [&](std::string &text) { get_alarm_in_type_intValue(&number, text.data(), 0); });
    count_text("actions", "ptz ", [&](std::string &text) { get_handleType_intValue(&number, text.data()); });
    count_text("operations", "net_ro, ", [](std::string &text) {
        NET_ABILITY_OPERATION_V20_E op;
        make_string_to_enum(text.data(), "network", op);
    });
    count_text("numbers", "1,", [](std::string &text) { changeStringToIntTable(text.data(), numbers, 16000, 0); });
    count_text("written numbers", "1234", [](std::string &text) {
        changeIntTableToString(cells, static_cast<int>(sizeof cells), numbers, static_cast<int>(text.size() / 4), -1);
    });
    count_text("base64", "AAAA", [](std::string &text) {
        base64_decode(bytes, sizeof bytes, reinterpret_cast<const unsigned char *>(text.data()),
                      static_cast<unsigned>(text.size()));
    });
    count_text("written base64", "abc", [](std::string &text) {
        base64_encode(bytes, sizeof bytes, reinterpret_cast<const unsigned char *>(text.data()),
                      static_cast<unsigned>(text.size()) / 3 * 2);
    });
    count_text("cells", "AAAA", [](std::string &text) {
        Base64DecodeToBinaryArray(cells, static_cast<int>(sizeof cells), text.data(),
                                  static_cast<int>(text.size()) / 4);
    });
    count_text("written cells", "01101011", [](std::string &text) {
        EncodeBinaryArrayToBase64(reinterpret_cast<unsigned char *>(text.data()), cells, static_cast<int>(text.size()),
                                  76);
    });
    count_text("name", "a", [](std::string &text) { net_check_cert_name(text.data()); });
}

// A list of any length, written below a parent that has children already.
void count_writers()
{
    count("write/list", [](int factor) -> std::function<void()> {
        const auto entries = std::make_shared<std::vector<net_stream_info_v20_t>>(60u * static_cast<unsigned>(factor));
        return [=] {
            TiXmlElement parent("p");
            int cursor = 0;
            xml_enc_info_list_s2x(entries->data(), static_cast<int>(entries->size()), &parent, &cursor, 1 << 30);
        };
    });
    count("write/siblings", [](int factor) -> std::function<void()> {
        return [=] {
            TiXmlElement parent("p");
            for (int i = 0; i < 500 * factor; ++i)
                InsertChildToXmlElement_int(&parent, "a", i, 0, 0);
        };
    });
}

} // namespace

int main()
{
    net_host_reset();
    const test::Output quiet;
    for (const netpublic::Message &message : test::all_messages())
        if (message.parse != nullptr)
            count_parser(message);
    for (const fuzz::Case &header : fuzz::read_cases(NETPUBLIC_GROWTH_DIR "/headers.txt"))
        count_header(header.function, header.arguments.at(0), header.arguments.at(1), header.arguments.at(2));
    count_texts();
    count_writers();
    count_all();
    return 0;
}
