// What is special about a message, as data: tests/cases/*.txt, whose format tests/cases/README.md shows.
#include "members.h"
#include "messages.h"

#include <net_public.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>

namespace {

using netpublic::Message;
using test::Member;

// A reader of one element, and what writes such elements; called as a message's functions are.
struct Component {
    std::string name, record;
    std::size_t size;
    std::function<int(void *record, TiXmlNode *node, const char *key)> read;
    std::function<int(void *record, TiXmlElement *parent)> write;
};

template <class Record> auto reader(int (*read)(Record *, TiXmlNode *, const char *))
{
    return [read](void *record, TiXmlNode *node, const char *key) {
        return read(static_cast<Record *>(record), node, key);
    };
}
template <class Record> auto reader(int (*read)(Record *, TiXmlNode *))
{
    return [read](void *record, TiXmlNode *node, const char *) { return read(static_cast<Record *>(record), node); };
}
template <class Record> auto writer(int (*write)(Record *, TiXmlElement *))
{
    return [write](void *record, TiXmlElement *parent) { return write(static_cast<Record *>(record), parent); };
}

template <class Value> auto writer(int (*write)(Value, TiXmlElement *))
{
    return [write](void *value, TiXmlElement *parent) { return write(*static_cast<Value *>(value), parent); };
}

// The types that the blocks arm are those that the schedule holds.
int read_time_blocks(net_schedule_t *schedule, TiXmlNode *node, const char *key)
{
    return get_time_block_list_from_xmlnode(schedule, schedule->types, node, key);
}

#define READER(function, record)                                                                                       \
    Component                                                                                                          \
    {                                                                                                                  \
#function, #record, sizeof(record), reader(function), nullptr                                                  \
    }
#define WRITER(function, record)                                                                                       \
    Component                                                                                                          \
    {                                                                                                                  \
#function, #record, sizeof(record), nullptr, writer < record>(function)                                        \
    }
#define BOTH(function, write, record)                                                                                  \
    Component                                                                                                          \
    {                                                                                                                  \
#function, #record, sizeof(record), reader(function), writer(write)                                            \
    }
const Component components[] = {
    BOTH(get_type_schedule_list_from_xmlnode, insert_type_schedule_list_to_xmlnode, net_schedule_t),
    BOTH(get_schedule_list_from_xmlnode, insert_schedule_list_to_xmlnode, net_schedule_t),
    READER(read_time_blocks, net_schedule_t),
    READER(get_scope_from_xmlnode, tag_net_pic_motion_cfg_v20_t),
    READER(get_sensitivity_new_info_x2s, net_md_sens_v20_t),
    READER(get_sensitivity_priority_list_from_xmlnode, int[4]),
    READER(get_md_time_block_list_from_xmlnode, tag_net_pic_motion_cfg_v20_t),
    READER(get_area_from_xmlnode, net_ai_area_t),
    READER(get_smart_ai_from_xmlnode, net_smart_ai_stat_t),
    BOTH(get_direction_from_xmlnode, net_smart_ai_direction_s2x, enum NET_CROSSLINE_DETECT_DIRECTION_E),
    BOTH(get_op_from_xmlnode, net_smart_ai_op_s2x, enum NET_SMAER_AI_OP_E),
    READER(get_day_record_list_from_xmlnode, tag_net_recfile_schedule_v20_t),
    READER(get_day_type_list_from_xmlnode, tag_net_rec_info_v20_t),
    READER(get_duration_times_from_xmlnode, net_replay_duration_v20_t),
    READER(get_duration_from_xmlnode, net_replay_duration_v20_t),
    READER(get_duration_list_from_xmlnode, net_replay_duration_list_v20_t),
    READER(get_recordTimeList_from_xmlnode, tag_record_time_list_t),
    READER(get_compression_info_from_xmlnode, net_compression_info_v20_t),
    READER(get_encodeTable_from_xmlnode, net_stream_info_v20_t),
    READER(get_streamInfo_from_xmlnode, net_stream_info_v20_t),
    READER(get_smartPlug_from_xmlnode, net_iot_linkage_support_t),
    READER(get_alertorBell_from_xmlnode, net_iot_linkage_support_t),
    READER(get_alertorLight_from_xmlnode, net_iot_linkage_support_t),
    READER(get_iot_support_from_xmlnode, tag_net_support_v20_t),
    READER(get_auth_mode_info_from_xmlnode, net_auth_mode_info_t),
    READER(get_user_from_xmlnode, tag_net_userinfo_all__v20_t),
    WRITER(net_smart_ai_points_s2x, net_smart_ai_points_t),
    WRITER(net_ptz_param_s2x, tag_net_ptz_param_v20_t),
};

// A line "  word: text" of a case.
struct Field {
    std::string word, text;
    int line;
};

struct Case {
    std::string file, title, subject, frame;
    int line = 0;
    std::vector<Field> fields;

    std::vector<Field> all(const char *word) const
    {
        std::vector<Field> found;
        std::copy_if(fields.begin(), fields.end(), std::back_inserter(found),
                     [word](const Field &field) { return field.word == word; });
        return found;
    }
};

void PrintTo(const Case &one, std::ostream *out)
{
    *out << one.title;
}

std::string trimmed(const std::string &text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

void replace(std::string &text, const std::string &what, const std::string &with)
{
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

// "{3*text#}": the text as often, with its place for each "#"; "\s" is a blank.
std::string expanded(std::string text)
{
    for (std::size_t open; (open = text.rfind('{')) != std::string::npos;) {
        const std::size_t star = text.find('*', open), close = text.find('}', open);
        if (star == std::string::npos || close == std::string::npos || star > close)
            throw std::invalid_argument("no {COUNT*TEXT}: " + text);
        std::string all;
        for (int i = 0; i < std::stoi(text.substr(open + 1)); ++i) {
            std::string one = text.substr(star + 1, close - star - 1);
            replace(one, "#", std::to_string(i));
            all += one;
        }
        text.replace(open, close + 1 - open, all);
    }
    replace(text, "\\s", " ");
    return text;
}

// The cases of a file; those whose file is not well-formed have a field that says so.
std::vector<Case> read_cases(const std::filesystem::path &path)
{
    std::vector<Case> cases;
    Case section;
    section.file = path.stem();
    std::ifstream file(path);
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
        if (indent == line.size() || line[indent] == '#')
            continue;
        if (line[0] == '[') {
            const std::size_t end = line.find_first_of(" ]");
            section.subject = line.substr(1, end - 1);
            section.frame = line[end] == ' ' ? line.substr(end + 1, line.rfind(']') - end - 1) : "~";
        } else if (indent == 0) {
            cases.push_back(section);
            cases.back().title = line;
            cases.back().line = number;
        } else if (indent == 2) {
            const std::size_t colon = line.find(':');
            cases.back().fields.push_back({line.substr(2, colon - 2), trimmed(line.substr(colon + 1)), number});
        } else {
            cases.back().fields.back().text += trimmed(line); // goes on
        }
    }
    return cases;
}

std::vector<Case> all_cases()
{
    std::vector<Case> all;
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(NETPUBLIC_CASES_DIR))
        if (entry.path().extension() == ".txt")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const auto &file : files)
        for (const Case &one : read_cases(file))
            all.push_back(one);
    return all;
}

// "..." in the expected text stands for anything.
bool matches(const std::string &got, const std::string &expected)
{
    const std::size_t gap = expected.find("...");
    if (gap == std::string::npos)
        return got == expected;
    if (got.compare(0, gap, expected, 0, gap) != 0)
        return false;
    const std::string rest = expected.substr(gap + 3);
    for (std::size_t at = gap; at <= got.size(); ++at)
        if (matches(got.substr(at), rest))
            return true;
    return false;
}

// What a case is about: a message in its envelope, or a component's record.
class Subject {
public:
    Subject(const std::string &name, const net_ext_t &request)
    {
        for (const Message &message : test::all_messages())
            if (name == message.name) {
                message_ = message;
                envelope_ = std::make_unique<test::MessageEnvelope>(message, request);
                record = netpublic::payload_table(message)->record;
                size = envelope_->size();
            }
        for (const Component &component : components)
            if (name == component.name) {
                block_ = std::make_unique<char[]>(component.size);
                component_ = &component;
                record = component.record;
                size = component.size;
            }
        if (size == 0)
            throw std::invalid_argument("no message or component \"" + name + "\"");
    }

    void *payload()
    {
        return component_ != nullptr ? block_.get() : envelope_->param.data;
    }
    int read(const std::string &body, const char *key)
    {
        const bool none = body == "(no record)";
        std::unique_ptr<test::Xml> xml;
        if (body != "(no node)")
            xml = std::make_unique<test::Xml>(none ? "<body/>" : body);
        TiXmlNode *node = xml != nullptr ? xml->root() : nullptr;
        if (component_ != nullptr)
            return component_->read(none ? nullptr : payload(), node, key);
        return message_.parse(&envelope_->param, node);
    }
    std::string write()
    {
        if (component_ == nullptr)
            return test::written(&envelope_->param, message_.write);
        TiXmlElement parent("body");
        return component_->write(payload(), &parent) == 0 ? test::print_children(parent) : "failed";
    }
    // "= value" stores there; without that, is it the value?
    void set(const std::string &path, const std::string &value)
    {
        if (path == "loglevel" || path == "modulemask")
            (path == "loglevel" ? loglevel : modulemask) = static_cast<unsigned>(std::stoul(value));
        else
            Member(record_of(path), inner(path)).assign(base(path), value);
    }
    void expect(const std::string &path, const std::string &value)
    {
        const Member member(record_of(path), inner(path));
        EXPECT_TRUE(member.equals(base(path), value))
            << path << "\n  expected: " << value << "\n  got:      " << member.print(base(path));
    }

    std::string record;
    std::size_t size = 0;

private:
    static bool is_envelope(const std::string &path)
    {
        return path.compare(0, 6, "param.") == 0;
    }
    std::string record_of(const std::string &path) const
    {
        return is_envelope(path) ? "net_param_t" : record;
    }
    static std::string inner(const std::string &path)
    {
        return is_envelope(path) ? path.substr(6) : path == "." ? "" : path;
    }
    void *base(const std::string &path)
    {
        return is_envelope(path) ? static_cast<void *>(&envelope_->param) : payload();
    }

    Message message_{};
    std::unique_ptr<test::MessageEnvelope> envelope_;
    const Component *component_ = nullptr;
    std::unique_ptr<char[]> block_;
};

// Calls use(path, value) for each "path = value" of a field, ";" between them.
template <class Use> void for_members(const Field &field, Use use)
{
    std::string text = field.text + ";";
    for (std::size_t end; (end = text.find(';')) != std::string::npos; text.erase(0, end + 1)) {
        const std::string one = text.substr(0, end);
        const std::size_t equals = one.find('=');
        if (equals == std::string::npos)
            throw std::invalid_argument("no PATH = VALUE: " + field.text);
        use(trimmed(one.substr(0, equals)), expanded(trimmed(one.substr(equals + 1))));
    }
}

class CaseTest : public test::HostTest, public testing::WithParamInterface<Case> {
protected:
    // One body, or none, in a fresh envelope.
    void run(const Case &one, const Field *input)
    {
        net_ext_t request{};
        for (const Field &field : one.all("request"))
            for_members(field, [&](const std::string &path, const std::string &value) {
                Member("net_ext_t", path).assign(&request, value);
            });
        Subject subject(one.subject, request);
        const std::vector<Field> key = one.all("key");
        const auto read = [&](const std::string &text) {
            std::string body = one.frame;
            replace(body, "~", text);
            return subject.read(expanded(text[0] == '(' ? text : body), key.empty() ? nullptr : key[0].text.c_str());
        };
        for (const Field &field : one.fields) {
            if (field.word == "given")
                EXPECT_EQ(read(field.text), 0) << field.text;
            else if (field.word == "set")
                for_members(field, [&](const auto &path, const auto &value) { subject.set(path, value); });
        }
        const std::string before(static_cast<const char *>(subject.payload()), subject.size);
        std::string log;
        if (input != nullptr) {
            int result = 1;
            log = test::log_of([&] { result = read(input->text); });
            EXPECT_EQ(result, input->word == "accepts" ? 0 : -1);
        }
        for (const Field &field : one.all("holds")) {
            if (field.text == "unchanged")
                EXPECT_TRUE(before == std::string(static_cast<const char *>(subject.payload()), subject.size));
            else
                for_members(field, [&](const auto &path, const auto &value) { subject.expect(path, value); });
        }
        for (const Field &field : one.all("writes")) {
            std::string text;
            log += test::log_of([&] { text = subject.write(); });
            EXPECT_PRED2(matches, text, expanded(field.text));
        }
        std::string lines;
        for (const Field &field : one.all("logs"))
            lines += expanded(field.text) + "\n";
        EXPECT_PRED2(matches, log, lines);
    }
};

TEST_P(CaseTest, Holds)
{
    const Case &one = GetParam();
    int inputs = 0;
    for (const Field &field : one.fields) {
        const std::string place = one.file + ".txt:" + std::to_string(field.line) + ": " + one.title;
        if (field.word != "accepts" && field.word != "refuses")
            continue;
        SCOPED_TRACE(place + "\n" + field.word + ": " + field.text);
        ++inputs;
        run(one, &field);
    }
    SCOPED_TRACE(one.file + ".txt:" + std::to_string(one.line) + ": " + one.title);
    if (inputs == 0)
        run(one, nullptr);
    EXPECT_GT(one.all("accepts").size() + one.all("refuses").size() + one.all("writes").size(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Cases, CaseTest, testing::ValuesIn(all_cases()),
                         [](const auto &one) { return one.param.file + "_" + std::to_string(one.param.line); });

} // namespace
