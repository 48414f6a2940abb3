#include "reading/payload.h"

#include "model/failure.h"
#include "reading/load.h"
#include "reading/shapes.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <set>

namespace netparam {
namespace {

// Of the byte at this place, from 0 on.
Spot spot_at(const std::string &text, std::size_t at)
{
    at = std::min(at, text.size());
    const std::size_t line = at > 0 ? text.rfind('\n', at - 1) : std::string::npos;
    const std::size_t start = line != std::string::npos ? line + 1 : 0;
    const auto row = 1 + std::count(text.begin(), text.begin() + static_cast<long>(start), '\n');
    return {static_cast<int>(row), static_cast<int>(at - start) + 1};
}

// Finds a value in a JSON text by its path. The text is known to be well-formed.
class Finder {
public:
    Finder(const std::string &text, const std::string &wanted) : text_(text), wanted_(wanted)
    {
        value("");
    }
    std::size_t found() const
    {
        return found_;
    }

private:
    void skip(const char *characters)
    {
        at_ = std::min(text_.find_first_not_of(characters, at_), text_.size());
    }
    std::string token()
    {
        const std::size_t start = at_;
        if (text_[at_] == '"') {
            for (++at_; text_[at_] != '"'; ++at_)
                at_ += text_[at_] == '\\';
            ++at_;
        } else {
            at_ = std::min(text_.find_first_of(" \t\r\n,:]}", at_), text_.size());
        }
        return text_.substr(start, at_ - start);
    }
    void value(const std::string &path)
    {
        constexpr char blanks[] = " \t\r\n", gaps[] = " \t\r\n,:";
        skip(blanks);
        if (path == wanted_)
            found_ = std::min(found_, at_);
        if (text_[at_] != '{' && text_[at_] != '[') {
            token();
            return;
        }
        const bool object = text_[at_++] == '{';
        for (int index = 0; skip(gaps), text_[at_] != '}' && text_[at_] != ']'; ++index) {
            std::string inner = path + "[" + std::to_string(index) + "]";
            if (object) {
                inner = (path.empty() ? "" : path + "/") + Json::parse(token()).get<std::string>();
                skip(gaps);
            }
            value(inner);
        }
        ++at_;
    }

    const std::string &text_, &wanted_;
    std::size_t at_ = 0, found_ = std::string::npos;
};

// The library's sentence without its own name for it and its own count of the place.
std::string syntax_error(const std::string &what)
{
    const std::size_t sentence = what.find(": ");
    return what.substr(sentence == std::string::npos ? 0 : sentence + 2);
}

// JSON lets an object name a member twice; then nobody knows which one is meant.
Json parse_once(const std::string &text, const std::string &name)
{
    std::vector<std::set<std::string>> seen;
    const auto watch = [&](int, Json::parse_event_t event, Json &value) {
        if (event == Json::parse_event_t::object_start)
            seen.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            seen.pop_back();
        else if (event == Json::parse_event_t::key && !seen.back().insert(value.get<std::string>()).second)
            throw Failure(exit_malformed, name + ": the member " + in_quotes(value.get<std::string>()) +
                                              " is given twice in an object");
        return true;
    };
    return Json::parse(text, watch);
}

} // namespace

Spot PayloadFile::spot_of(const std::string &member) const
{
    for (const std::string &path : {"payload" + (member.empty() ? "" : "/" + member), member})
        if (const std::size_t at = Finder(text, path).found(); at != std::string::npos)
            return spot_at(text, at);
    return {};
}

PayloadFile read_payload(const std::string &path, const Entry &entry)
{
    const std::string text = read_text(path), name = printable(file_name(path));
    Json json;
    try {
        json = parse_once(text, name);
    } catch (const Json::parse_error &error) {
        const Spot spot = spot_at(text, error.byte > 0 ? error.byte - 1 : 0);
        throw Failure(exit_malformed, name + ":" + std::to_string(spot.row) + ":" + std::to_string(spot.column) +
                                          ": not well-formed JSON: " + printable(syntax_error(error.what())));
    } catch (const Json::exception &error) {
        throw Failure(exit_malformed, name + ": not fit to be read: " + printable(syntax_error(error.what())));
    }
    if (!json.is_object() || !json.contains("payload"))
        return {name, text, json};
    if (json.contains("message") && json["message"] != entry.name())
        throw Failure(exit_refused, name + ": this is a payload of " + printable(json["message"].dump()) +
                                        ", not of \"" + entry.name() + "\"");
    return {name, text, json["payload"]};
}

// A list of the payload's whose number of items the envelope keeps; empty without one.
static std::string counted_list(const Entry &entry)
{
    const netpublic::Table *read = entry.read();
    return read != nullptr && read->parsed == netpublic::ParsedAs::envelope ? read->key(read->row(0)) : "";
}

void load_payload(Session &session, const Json &payload)
{
    const Entry &entry = session.entry();
    const netpublic::Table *table = entry.table();
    const net_param_t &param = session.envelope();
    if (table == nullptr || param.data == nullptr || table->record_size > session.allocated())
        throw Failure(exit_usage, "no rows describe the payload of " + entry.name());
    if (!session.is_list(*table)) {
        load_record(*table, param.data, payload);
        if (const std::string list = counted_list(entry); !list.empty() && payload.contains(list))
            session.set_items(static_cast<unsigned int>(payload[list].size()));
        return;
    }
    const std::size_t size = session.record_size();
    const std::string accepted =
        "an object with \"record\", an array of at most " + std::to_string(session.records()) + " objects";
    if (!payload.is_object() || payload.size() != 1 || !payload.contains("record") || !payload["record"].is_array() ||
        payload["record"].size() > session.records())
        throw Misfit("", payload.is_object() ? "other members" : "no object", "this is no list of records", accepted);
    char *const first = static_cast<char *>(param.data);
    const Json &records = payload["record"];
    for (std::size_t i = 0; i < records.size(); ++i)
        load_record(*table, first + i * size, records[i], "record[" + std::to_string(i) + "]");
    std::memset(first + records.size() * size, 0, (session.records() - records.size()) * size);
}

std::vector<Item> payload_items(const Session &session, bool show_secrets)
{
    const netpublic::Table *table = session.entry().table();
    const net_param_t &param = session.envelope();
    const std::size_t records = session.records();
    if (table == nullptr || param.data == nullptr || table->record_size > session.allocated())
        return {};
    const char *data = static_cast<const char *>(param.data);
    if (!session.is_list(*table))
        return dump(*table, data, show_secrets, data, session.trace());
    // A list of records; those behind the last used one are left out.
    const std::size_t size = session.record_size();
    std::size_t used = records;
    while (used > 1 && all_zero(data + (used - 1) * size, size))
        --used;
    Item list;
    list.name = "record";
    list.list = true;
    for (std::size_t i = 0; i < used; ++i) {
        Item record;
        record.name = "record[" + std::to_string(i) + "]";
        record.items = dump(*table, data + i * size, show_secrets, data, session.trace());
        list.items.push_back(record);
    }
    return {list};
}

void save_bytes(const Session &session, const std::string &path)
{
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    file.write(static_cast<const char *>(session.envelope().data), static_cast<std::streamsize>(session.allocated()));
    if (!file.flush())
        throw Failure(exit_file, printable(path) + ": " + std::strerror(errno));
}

} // namespace netparam
