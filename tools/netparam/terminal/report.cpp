#include "terminal/report.h"

#include "engine/matching.h"
#include "model/accept.h"
#include "model/facts.h"
#include "model/rows.h"
#include "reading/secrets.h"
#include "reading/shapes.h"

#include <algorithm>
#include <map>

namespace netparam {
namespace {

void print_level(std::ostream &out, const std::vector<Item> &items, const std::string &path, std::size_t width,
                 const Style &style)
{
    for (const Item &item : items) {
        const std::string name = path + item.name;
        if (!item.items.empty()) {
            print_level(out, item.items, item.list ? path : name + "/", width, style);
            if (!item.drawing.lines.empty())
                out << "  " << name << '\n';
        } else {
            out << "  " << padded(name, width) << "  " << item.text << '\n';
        }
        for (const std::string &line : item.drawing.lines)
            out << "      " << style.faint(line) << '\n';
    }
}

// The member at this place, the innermost one.
const Item *item_at(const std::vector<Item> &items, std::size_t offset, const std::string &path, std::string &found)
{
    for (const Item &item : items) {
        if (const Item *inner = item_at(item.items, offset, item.list ? path : path + item.name + "/", found))
            return inner;
        if (!item.list && item.bytes > 0 && item.offset == offset) {
            found = path + item.name;
            return &item;
        }
    }
    return nullptr;
}

// What the writer makes a text of.
std::string writable(const netpublic::Table &table, const netpublic::Row &row)
{
    for (const std::string &note : row_notes(table, table.index_of(row), true))
        if (note.find("writing fails unless") == 0)
            return "what its condition wants: " + note;
    const netpublic::WordTable *words = row_words(table, row);
    return words != nullptr ? "one of these words: " + joined(spellings(*words, netpublic::Use::write), ", ")
                            : accepted_by(table, row);
}

// What a row of the payload's memory shows.
struct Place {
    std::string offset, bytes, type, from, path, value;
};

std::string place_text(Spot spot)
{
    return spot.row > 0 ? std::to_string(spot.row) + ":" + std::to_string(spot.column) : "-";
}

// "5:14"; of several elements the first and the last.
std::string from_text(const std::vector<Spot> &origins)
{
    if (origins.empty())
        return "-";
    return place_text(origins.front()) + (origins.size() > 1 ? "..." + place_text(origins.back()) : "");
}

} // namespace

void print_memory(std::ostream &out, const std::vector<Item> &items, const Style &style)
{
    std::vector<std::pair<Place, const Item *>> places = {
        {{"OFFSET", "BYTES", "TYPE", "FROM", "PATH", "VALUE"}, nullptr}};
    for_items(items, [&](const std::string &path, const Item &item) {
        if (item.items.empty() || !item.drawing.lines.empty())
            places.push_back({{std::to_string(item.offset), std::to_string(item.bytes), item.type,
                               from_text(item.origins), path, item.text},
                              &item});
    });
    constexpr std::size_t widest_type = 26, widest_path = 40;
    std::size_t type = 0, from = 0, path = 0, bytes = 5;
    for (const auto &[place, item] : places) {
        type = std::max(type, std::min(place.type.size(), widest_type));
        from = std::max(from, place.from.size());
        path = std::max(path, std::min(place.path.size(), widest_path));
        bytes = std::max(bytes, place.bytes.size());
    }
    const auto right = [](const std::string &text, std::size_t width) {
        return std::string(width - std::min(width, text.size()), ' ') + text;
    };
    for (const auto &[place, item] : places) {
        const std::string line = "  " + right(place.offset, 7) + "  " + right(place.bytes, bytes) + "  " +
                                 padded(place.type, type) + "  " + padded(place.from, from) + "  " +
                                 padded(place.path, path) + "  " + place.value;
        out << (item == nullptr ? style.faint(line) : line) << '\n';
        for (std::size_t i = 0; item != nullptr && i < item->drawing.lines.size(); ++i)
            out << "      " << style.faint(item->drawing.lines[i]) << '\n';
    }
}

std::string json_text(const Json &json)
{
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

Json rows_json(const std::vector<Item> &items)
{
    Json rows = Json::array();
    for_items(items, [&](const std::string &path, const Item &item) {
        if (!item.items.empty())
            return;
        Json from = Json::array();
        for (const Spot &spot : item.origins)
            from.push_back({{"line", spot.row}, {"column", spot.column}});
        rows.push_back(
            {{"path", path}, {"offset", item.offset}, {"bytes", item.bytes}, {"type", item.type}, {"from", from}});
    });
    return rows;
}

void print_items(std::ostream &out, const std::vector<Item> &items, const Style &style)
{
    constexpr std::size_t widest_column = 44;
    std::size_t widest = 0;
    for_items(items, [&](const std::string &path, const Item &item) {
        widest = std::max(widest, item.items.empty() ? path.size() : 0);
    });
    print_level(out, items, "", std::min(widest, widest_column), style);
}

Refusal refusal_of(const Session &session, const Document &document)
{
    if (const Refusal *refusal = session.trace()->refusal())
        return *refusal;
    const TiXmlElement *root = document.tree().RootElement();
    if (&document == session.extension_document() && root != nullptr &&
        !netpublic::answers_to(root->Value(), "Extension"))
        return {
            spot_of(*root), root->ValueStr(), "", "", "this is no extension header", "a root element called Extension"};
    return {spot_of(document.body()),
            path_of(document.body()),
            "",
            "",
            session.trace()->taken() != 0 ? "the message as a whole is refused, although each of its elements was read"
                                          : "the message as a whole is refused; none of its elements was read",
            ""};
}

std::string read_text(const Refusal &refusal)
{
    constexpr std::size_t longest = 80;
    return refusal.read == hidden ? hidden : in_quotes(refusal.read, longest);
}

void print_refusal(std::ostream &out, const Session &session, const Document &document, const Options &options)
{
    const Refusal refusal = refusal_of(session, document);
    const Style &style = options.style;
    out << document.at(refusal.spot) << ": " << style.error("refused:") << ' ' << refusal.reason << '\n';
    out << document.excerpt(refusal.spot, style, options.show_secrets);
    out << "  element   " << refusal.path;
    const std::string name = refusal.path.substr(refusal.path.rfind('/') + 1);
    if (!refusal.key.empty() && name.substr(0, name.find('[')) != refusal.key)
        out << "  (key " << refusal.key << ")";
    out << '\n';
    if (!refusal.read.empty())
        out << "  read      " << read_text(refusal) << '\n';
    if (!refusal.accepted.empty())
        out << "  accepted  " << refusal.accepted << '\n';
}

Refusal unwritten(const Session &session, const std::vector<Item> &items)
{
    Refusal refusal;
    refusal.reason = "the payload cannot be written";
    const char *data = static_cast<const char *>(session.envelope().data);
    for (const Session::Stop &stop : session.stops()) {
        const char *member = static_cast<const char *>(stop.record) + stop.row->offset;
        const std::string key = stop.table->key(*stop.row);
        if (refusal.key.empty())
            refusal.accepted = writable(*stop.table, *stop.row);
        const bool inside = member >= data && member < data + session.allocated();
        const Item *item = inside && refusal.path.empty()
                               ? item_at(items, static_cast<std::size_t>(member - data), "", refusal.path)
                               : nullptr;
        if (item != nullptr && item->items.empty())
            refusal.read = item->text;
        refusal.key = key + (refusal.key.empty() ? "" : "/" + refusal.key);
    }
    if (refusal.path.empty())
        refusal.path = refusal.key;
    if (refusal.path.empty())
        refusal.reason += ": " + session.entry().writer() + "() refuses it as a whole";
    return refusal;
}

void print_unwritten(std::ostream &out, const Refusal &refusal, const std::string &place, const Style &style)
{
    out << place << ": " << style.error("refused:") << ' ' << refusal.reason << '\n';
    if (!refusal.path.empty())
        out << "  member    " << refusal.path << '\n';
    if (!refusal.read.empty())
        out << "  holds     " << refusal.read << '\n';
    if (!refusal.accepted.empty())
        out << "  written   " << refusal.accepted << '\n';
}

void print_notes(std::ostream &out, const Trace &trace, const Document &document, const Options &options)
{
    const std::string label = ": " + options.style.note("note:") + ' ';
    std::map<Note::Kind, std::size_t> shown;
    for (const Note &note : trace.notes()) {
        out << document.at(note.spot) << label << note.path << ' ' << note.text << '\n';
        ++shown[note.kind];
    }
    for (const auto &[kind, count] : shown)
        if (trace.in_all(kind) > count)
            out << document.at({}) << label << trace.in_all(kind) << " children are " << name_of(kind) << " in all\n";
}

void print_log(std::ostream &out, const Session &session, const Style &style)
{
    const std::vector<std::string> lines = log_lines(session);
    if (lines.empty())
        return;
    out << style.heading("The library's log") << '\n';
    for (const std::string &line : lines)
        out << "  " << line << '\n';
}

void print_refused(std::ostream &out, const Session &session, const Document &document, const Options &options)
{
    print_refusal(out, session, document, options);
    print_log(out, session, options.style);
}

Json refusal_json(const Session &session, const Document &document)
{
    Refusal refusal = refusal_of(session, document);
    refusal.spot = document.in_file(refusal.spot);
    return refusal_json(refusal, document.name());
}

Json refusal_json(const Refusal &refusal, const std::string &file)
{
    const auto optional = [](const std::string &text) { return text.empty() ? Json() : Json(text); };
    return {{"file", file},
            {"line", refusal.spot.row},
            {"column", refusal.spot.column},
            {"element", refusal.path},
            {"key", refusal.key},
            {"read", optional(refusal.read)},
            {"accepted", refusal.accepted},
            {"reason", refusal.reason}};
}

Json reading_json(const Session &session, const Document *document, bool accepted, const std::vector<Item> &items)
{
    const Entry &entry = session.entry();
    const net_param_t &param = session.envelope();
    Json json;
    json["message"] = entry.name();
    json["initialiser"] = entry.initialiser != nullptr ? Json(entry.initialiser->name) : Json();
    json["id"] = entry.initialiser != nullptr ? Json(param.paramId) : Json();
    json["size"] = session.record_size();
    json["dataSize"] = param.dataSize;
    json["inited"] = param.inited;
    json["refused"] = accepted ? Json() : refusal_json(session, *document);
    json["notes"] =
        session.trace() != nullptr && document != nullptr ? notes_json(*session.trace(), *document) : Json::array();
    json["log"] = log_lines(session);
    json["payload"] = to_json(items);
    json["rows"] = rows_json(items);
    return json;
}

Json notes_json(const Trace &trace, const Document &document)
{
    Json list = Json::array();
    for (const Note &note : trace.notes())
        list.push_back({{"kind", name_of(note.kind)},
                        {"line", document.in_file(note.spot).row},
                        {"column", note.spot.column},
                        {"element", note.path},
                        {"key", note.key.empty() ? Json() : Json(note.key)},
                        {"text", note.text}});
    return list;
}

std::vector<std::string> log_lines(const Session &session)
{
    std::vector<std::string> lines(1);
    const std::string log = session.log();
    for (std::size_t at = 0; at < log.size(); ++at) {
        if (log[at] == '\033' && at + 1 < log.size() && log[at + 1] == '[')
            at = std::min(log.find('m', at), log.size());
        else if (log[at] == '\n')
            lines.emplace_back();
        else
            lines.back() += log[at];
    }
    if (lines.back().empty())
        lines.pop_back();
    for (std::string &line : lines)
        line = printable(line);
    return lines;
}

std::vector<Item> nonzero(const std::vector<Item> &items, const Session &session)
{
    const char *data = static_cast<const char *>(session.envelope().data);
    std::vector<Item> kept;
    for (Item item : items) {
        const bool inner = !item.items.empty();
        item.items = nonzero(item.items, session);
        const char *at = data + item.offset;
        if (inner ? !item.items.empty() : item.bytes == 0 || !all_zero(at, item.bytes))
            kept.push_back(item);
    }
    return kept;
}

std::string title(const Session &session)
{
    const Entry &entry = session.entry();
    const net_param_t &param = session.envelope();
    std::string text = entry.name() + ": ";
    if (entry.initialiser != nullptr)
        text += std::string(entry.initialiser->name) + ", id " + std::to_string(param.paramId) + ", ";
    else
        text += "prepared by the host, ";
    text += std::to_string(session.record_size()) + " bytes";
    if (session.records() > 1)
        text += " a record, " + std::to_string(session.records()) + " records";
    if (param.dataSize != session.record_size())
        text += ", dataSize " + std::to_string(param.dataSize);
    return text;
}

} // namespace netparam
