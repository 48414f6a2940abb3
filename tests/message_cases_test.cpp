// What is special about a message, as data: tests/cases/messages/*.txt, whose form the README.md there shows.
#include "components.h"
#include "members.h"
#include "messages.h"

#include <cxxabi.h>
#include <net_public.h>
#include <typed.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <typeinfo>

namespace {

using fuzz::expanded;
using fuzz::trimmed;
using netpublic::Message;
using test::Member;

// A function that reads or writes one record; none is net_exten_x2s(), which reads a text.
using Call = std::function<int(void *record, TiXmlElement *element, const char *key)>;

struct Component {
    std::string record; // its type
    std::size_t size;
    Call call;
};

template <class Record> Component about(Call call)
{
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(Record).name(), nullptr, nullptr, nullptr), std::free);
    return {std::is_enum_v<Record> ? "int" : name.get(), sizeof(Record), std::move(call)};
}
template <class Record> Component component(int (*call)(Record *, TiXmlNode *, const char *))
{
    return about<Record>([call](void *record, TiXmlElement *element, const char *key) {
        return call(static_cast<Record *>(record), element, key);
    });
}
template <class Record, class Node> Component component(int (*call)(Record *, Node *))
{
    return about<Record>([call](void *record, TiXmlElement *element, const char *) {
        return call(static_cast<Record *>(record), element);
    });
}

// Functions of another form. The types that time blocks arm are those that the schedule holds.
int time_blocks(net_schedule_t *schedule, TiXmlNode *node, const char *key)
{
    return get_time_block_list_from_xmlnode(schedule, schedule->types, node, key);
}
int priorities(net_md_sens_v20_t *sensitivity, TiXmlNode *node, const char *key)
{
    return get_sensitivity_priority_list_from_xmlnode(sensitivity->priority, node, key);
}
int write_direction(NET_CROSSLINE_DETECT_DIRECTION_E *direction, TiXmlElement *parent)
{
    return net_smart_ai_direction_s2x(*direction, parent);
}
int write_op(NET_SMAER_AI_OP_E *op, TiXmlElement *parent)
{
    return net_smart_ai_op_s2x(*op, parent);
}

#define ROW(function) {#function, component(function)},
const std::map<std::string, Component> components = {
    NETPUBLIC_COMPONENTS(ROW) ROW(get_type_schedule_list_from_xmlnode) ROW(time_blocks) ROW(priorities)
        ROW(write_direction) ROW(write_op){"net_exten_x2s", {"net_ext_t", sizeof(net_ext_t), nullptr}}};
#undef ROW

// What stands behind a word of a case.
struct Field {
    std::string text;
    int line;
};

struct Case {
    std::string file, subject, frame, title;
    int line;
    std::map<std::string, std::vector<Field>> fields;
};

void PrintTo(const Case &one, std::ostream *out)
{
    *out << one.title;
}

// The body in each place that the frame has for it.
std::string framed(std::string frame, const std::string &body)
{
    for (std::size_t at = 0; (at = frame.find('~', at)) != std::string::npos; at += body.size())
        frame.replace(at, 1, body);
    return frame;
}

std::vector<Case> cases_of(const std::filesystem::path &path)
{
    std::vector<Case> cases;
    Case next{path.stem(), "", "", "", 0, {}};
    Field *last = nullptr;
    std::ifstream file(path);
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        const std::size_t indent = line.find_first_not_of(' '), colon = line.find(':');
        if (indent == std::string::npos || line[indent] == '#')
            continue;
        if (line[0] == '[') {
            const std::size_t end = line.find_first_of(" ]");
            next.subject = line.substr(1, end - 1);
            next.frame = line[end] == ' ' ? line.substr(end + 1, line.rfind(']') - end - 1) : "~";
        } else if (indent == 0) {
            next.title = line;
            next.line = number;
            cases.push_back(next);
        } else if (indent == 2) {
            auto &fields = cases.at(cases.size() - 1).fields[line.substr(indent, colon - indent)];
            fields.push_back({trimmed(line.substr(colon + 1)), number});
            last = &fields.back();
        } else {
            last->text += trimmed(line); // goes on
        }
    }
    return cases;
}

std::vector<Case> all_cases()
{
    std::vector<Case> all;
    for (const auto &entry : std::filesystem::directory_iterator(NETPUBLIC_CASES_DIR "/messages"))
        if (entry.path().extension() == ".txt")
            for (const Case &one : cases_of(entry.path()))
                all.push_back(one);
    return all;
}

// "..." in the expected text stands for anything.
bool matches(const std::string &got, const std::string &expected)
{
    const std::size_t gap = expected.find("...");
    if (gap == std::string::npos || got.compare(0, gap, expected, 0, gap) != 0)
        return got == expected;
    for (std::size_t at = gap; at <= got.size(); ++at)
        if (matches(got.substr(at), expected.substr(gap + 3)))
            return true;
    return false;
}

// What a case is about: a message in its envelope, or a component with its record.
class Subject {
public:
    Subject(const std::string &name, const net_ext_t &request)
    {
        for (const Message &message : test::all_messages())
            if (name == message.name) {
                message_ = message;
                envelope_ = std::make_unique<test::MessageEnvelope>(message, request);
                component_ = {netpublic::payload_table(message)->record, envelope_->size(), nullptr};
                payload_ = static_cast<char *>(envelope_->param.data);
                return;
            }
        component_ = components.at(name);
        block_ = std::make_unique<char[]>(component_.size);
        payload_ = block_.get();
    }

    std::string content() const
    {
        return std::string(payload_, component_.size);
    }
    int read(std::string body, const char *key)
    {
        if (envelope_ == nullptr && component_.call == nullptr)
            return net_exten_x2s(body.data(), reinterpret_cast<net_ext_t *>(payload_));
        if (body == "(no node)")
            return component_.call(payload_, nullptr, key);
        if (body == "(no record)")
            return component_.call(nullptr, test::Xml("<body/>"), key);
        test::Xml xml(body);
        return envelope_ != nullptr ? message_.parse(&envelope_->param, xml.root())
                                    : component_.call(payload_, xml, key);
    }
    std::string write()
    {
        if (envelope_ != nullptr)
            return test::written(&envelope_->param, message_.write);
        TiXmlElement parent("body");
        const int result = component_.call(payload_, &parent, nullptr);
        EXPECT_TRUE(result == 0 || parent.NoChildren());
        return result == 0 ? test::print_children(parent) : "failed";
    }

    // Where the member is, and in what.
    std::pair<Member, void *> at(const std::string &path)
    {
        if (path == "loglevel" || path == "modulemask")
            return {Member("unsigned int", ""), path == "loglevel" ? &loglevel : &modulemask};
        if (path.compare(0, 9, "envelope.") == 0)
            return {Member("net_param_t", path.substr(9)), &envelope_->param};
        return {Member(component_.record, path == "." ? "" : path), payload_};
    }

private:
    Message message_{};
    std::unique_ptr<test::MessageEnvelope> envelope_;
    Component component_;
    std::unique_ptr<char[]> block_;
    char *payload_;
};

// Calls use(path, value) for each "path = value" of some fields, ";" between them.
template <class Use> void for_members(const std::vector<Field> &fields, Use use)
{
    for (const Field &field : fields) {
        std::string text = field.text + ";";
        for (std::size_t end; (end = text.find(';')) != std::string::npos; text.erase(0, end + 1)) {
            const std::size_t equals = text.find('=');
            use(trimmed(text.substr(0, equals)), expanded(trimmed(text.substr(equals + 1, end - equals - 1))));
        }
    }
}

class CaseTest : public test::HostTest, public testing::WithParamInterface<Case> {
protected:
    // One body, or none, in an envelope of its own.
    void run(Case one, const std::string &input, int result)
    {
        net_ext_t request{};
        for_members(one.fields["request"], [&](const std::string &path, const std::string &value) {
            Member("net_ext_t", path).assign(&request, value);
        });
        Subject subject(one.subject, request);
        const auto read = [&](const std::string &text) {
            const std::string body = expanded(text[0] == '(' ? text : framed(one.frame, text));
            return subject.read(body, one.fields["key"].empty() ? nullptr : one.fields["key"][0].text.c_str());
        };
        for (const Field &field : one.fields["given"])
            EXPECT_EQ(read(field.text), 0) << field.text;
        for_members(one.fields["set"], [&](const std::string &path, const std::string &value) {
            subject.at(path).first.assign(subject.at(path).second, value);
        });
        const std::string before = subject.content();
        int got = result;
        std::string log = result <= 0 ? test::log_of([&] { got = read(input); }) : "";
        EXPECT_EQ(got, result);
        for (const Field &field : one.fields["keeps"])
            EXPECT_TRUE(field.text == "all" && subject.content() == before) << "the record has changed";
        for_members(one.fields["holds"], [&](const std::string &path, const std::string &value) {
            const auto [member, record] = subject.at(path);
            EXPECT_TRUE(member.equals(record, value)) << path << " is " << member.print(record) << ", not " << value;
        });
        for (const Field &field : one.fields["writes"]) {
            std::string text;
            log += test::log_of([&] { text = subject.write(); });
            EXPECT_PRED2(matches, text, expanded(field.text));
        }
        log += log.empty() || log.back() == '\n' ? "" : "(unfinished)\n";
        std::string lines;
        for (const Field &field : one.fields["logs"])
            lines += expanded(field.text) + "\n";
        EXPECT_PRED2(matches, log, lines);
    }
};

TEST_P(CaseTest, Holds)
{
    Case one = GetParam();
    const std::string known = " request key given set accepts refuses logs holds keeps writes ";
    for (const auto &[word, fields] : one.fields)
        EXPECT_NE(known.find(" " + word + " "), std::string::npos)
            << one.file << ".txt:" << fields[0].line << ": " << word;
    const auto place = [&](int line) { return one.file + ".txt:" + std::to_string(line) + ": " + one.title; };
    for (const char *word : {"accepts", "refuses"})
        for (const Field &field : one.fields[word]) {
            SCOPED_TRACE(place(field.line));
            run(one, field.text, *word == 'a' ? 0 : -1);
        }
    SCOPED_TRACE(place(one.line));
    if (one.fields["accepts"].empty() && one.fields["refuses"].empty()) {
        EXPECT_FALSE(one.fields["writes"].empty()) << "nothing is read or written";
        run(one, "", 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, CaseTest, testing::ValuesIn(all_cases()),
                         [](const auto &one) { return one.param.file + "_" + std::to_string(one.param.line); });

} // namespace
