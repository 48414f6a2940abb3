#include "author.h"

#include "engine/engine.h"
#include "engine/matching.h"
#include "oracle.h"
#include "promises.h"
#include "session.h"
#include "targets.h"
#include "tree_code.h"

#include <tinyxml.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>

namespace fuzz {

const std::vector<Example> &examples()
{
    static const std::vector<Example> all = [] {
        std::vector<Example> read;
        std::error_code none;
        for (const auto &entry : std::filesystem::directory_iterator(NETPUBLIC_EXAMPLES_DIR, none)) {
            if (entry.path().extension() != ".xml")
                continue;
            std::ifstream file(entry.path(), std::ios::binary);
            std::stringstream text;
            text << file.rdbuf();
            read.push_back({entry.path().stem().string(), text.str()});
        }
        std::sort(read.begin(), read.end(), [](const Example &a, const Example &b) { return a.name < b.name; });
        return read;
    }();
    return all;
}

namespace {

using namespace netpublic;

std::string folded(std::string name)
{
    for (char &c : name)
        c = static_cast<char>(fold(c));
    return name;
}

bool has_key(const Row &row)
{
    return row.key != 0; // the empty text
}

// What is known of elements by their names: the tables of their children, and texts that they held.
class Lore {
public:
    Lore()
    {
        for (const Message *message : messages())
            for (const Table *table : {message->read, message->written})
                if (table != nullptr)
                    add(*table);
    }

    void add(const Table &table)
    {
        if (!tables_.insert(&table).second)
            return;
        for (unsigned i = 0; i < table.rows; ++i) {
            const Row &row = table.row(i);
            if (!has_key(row))
                continue;
            names_.insert(table.key(row));
            if (has_table(row.kind))
                add(table.key(row), *table.ref(row.ref).table);
            if (row.kind == Kind::word || row.kind == Kind::mask || row.kind == Kind::events)
                add(*table.ref(row.ref).words);
            if (table.detail(i).words != nullptr)
                add(*table.detail(i).words);
        }
    }
    void add(const std::string &element, const Table &table)
    {
        auto &known = children_[folded(element)];
        if (std::find(known.begin(), known.end(), &table) == known.end())
            known.push_back(&table);
        add(table);
    }
    void add(const WordTable &words)
    {
        for (const auto &entry : words)
            names_.insert(words.text(entry));
    }
    void add_text(const std::string &element, const std::string &text)
    {
        auto &known = texts_[folded(element)];
        if (known.size() < 32 && text.size() < 400)
            known.push_back(text);
    }

    const std::vector<const Table *> &children(const std::string &element) const
    {
        static const std::vector<const Table *> none;
        const auto found = children_.find(folded(element));
        return found != children_.end() ? found->second : none;
    }
    const std::vector<std::string> &texts(const std::string &element) const
    {
        static const std::vector<std::string> none;
        const auto found = texts_.find(folded(element));
        return found != texts_.end() ? found->second : none;
    }
    const std::set<std::string> &names() const
    {
        return names_;
    }

private:
    std::map<std::string, std::vector<const Table *>> children_;
    std::map<std::string, std::vector<std::string>> texts_;
    std::set<const Table *> tables_;
    std::set<std::string> names_;
};

Lore &lore()
{
    static Lore all;
    return all;
}

void learn_child(void *, Event, const Table &table, const Row *, void *, Node child)
{
    const TiXmlNode *node = child.tree();
    if (node->Parent() != nullptr && node->Parent()->ToElement() != nullptr)
        lore().add(node->Parent()->ValueStr(), table);
}

void learn_texts(const TiXmlElement &element)
{
    if (element.GetText() != nullptr)
        lore().add_text(element.ValueStr(), element.GetText());
    for (const TiXmlElement *child = element.FirstChildElement(); child != nullptr; child = child->NextSiblingElement())
        learn_texts(*child);
}

// The bodies of an example: the root's children, or the root.
std::vector<TiXmlElement *> bodies_of(TiXmlElement &root)
{
    std::vector<TiXmlElement *> bodies;
    if (is_named(root.Value(), "body"))
        for (TiXmlElement *child = root.FirstChildElement(); child != nullptr; child = child->NextSiblingElement())
            bodies.push_back(child);
    if (bodies.empty())
        bodies.push_back(&root);
    return bodies;
}

// Hands each body of the examples, with the messages that read something of it, to the function.
template <class Use> void for_examples(Use use)
{
    for (const Example &example : examples()) {
        TiXmlDocument document;
        document.Parse((example.text + std::string(8, '\0')).c_str(), nullptr, TIXML_ENCODING_UTF8);
        if (document.RootElement() == nullptr)
            continue;
        for (TiXmlElement *body : bodies_of(*document.RootElement()))
            use(example, *body);
    }
}

// How well a message reads a body: children taken, less those ignored. 0 for a refused body.
int fit(const Message &message, TiXmlElement &body)
{
    Host host;
    const std::string head = plain_head(message).substr(sizeof(std::uint16_t));
    Bytes input(reinterpret_cast<const std::uint8_t *>(head.data()), head.size());
    Session session(message, host.play(input), host);
    if (!session.ready() || session.parse(&body) != 0)
        return 0;
    return static_cast<int>(session.taken()) - 3 * static_cast<int>(session.ignored());
}

const Message *reader_of(TiXmlElement &body)
{
    const Message *best = nullptr;
    int best_fit = 0;
    for (const Message *message : messages()) {
        const int mine = parses(*message) ? fit(*message, body) : 0;
        if (mine > best_fit) {
            best_fit = mine;
            best = message;
        }
    }
    return best;
}

std::vector<TiXmlElement *> elements_of(TiXmlElement &body)
{
    std::vector<TiXmlElement *> all = {&body};
    for (std::size_t i = 0; i < all.size() && all.size() < 4000; ++i)
        for (TiXmlElement *child = all[i]->FirstChildElement(); child != nullptr; child = child->NextSiblingElement())
            all.push_back(child);
    return all;
}

void set_text(TiXmlElement &element, const std::string &text)
{
    element.Clear();
    if (!text.empty())
        element.LinkEndChild(new TiXmlText(text));
}

} // namespace

std::string Author::name(const std::string &key)
{
    const unsigned kind = pick(64);
    if (kind < 52)
        return key;
    if (kind < 58)
        return key.substr(0, 1 + pick(static_cast<unsigned>(key.size())));
    if (kind < 60)
        return folded(key);
    if (kind < 62)
        return key + "X";
    return anything_ ? "" : key.substr(0, 1);
}

std::string Author::number(const Table &table, const Row &row)
{
    const bool limited = row.limits != no_limits && (row.kind == Kind::integer);
    const long long low = limited ? table.limit(row.limits).low : 0;
    const long long high = limited ? table.limit(row.limits).high : 1;
    const long long middle = low + static_cast<long long>(pick(1 << 16)) % (high - low + 1);
    constexpr const char *odd[] = {"",     "-",          "12345678901", "123456789012", "1234567890123", "4294967295",
                                   "-0",   "2147483647", "-2147483648", "2147483648",   "1 2",           "+5",
                                   "0x10", "007",        "1.5",         "1e3",          "nan",           "-1e40"};
    switch (pick(16)) {
    case 0:
    case 1:
        return std::to_string(low);
    case 2:
    case 3:
        return std::to_string(high);
    case 4:
        return std::to_string(low - 1);
    case 5:
        return std::to_string(high + 1);
    case 6:
        return odd[pick(sizeof odd / sizeof odd[0])];
    case 7:
        return std::to_string(pick(70));
    default:
        return std::to_string(middle);
    }
}

std::string Author::text(std::size_t longest, const std::string &key)
{
    std::string made = is_secret_key(key.c_str()) ? secret_mark : "";
    constexpr const char *odd[] = {"a&b<c>\"d'", "\xE2\x82\xAC", "a  b", "192.168.0.1", "aa:bb:cc:00:11:22",
                                   "AAAA",       "////",         "0101", "none",        "1920*1080"};
    switch (pick(8)) {
    case 0:
        made += odd[pick(sizeof odd / sizeof odd[0])];
        break;
    case 1:
        made.resize(longest, 'x');
        break;
    case 2:
        made.resize(longest + 1, 'y');
        break;
    case 3:
        break;
    default:
        made += "text" + std::to_string(pick(100));
        break;
    }
    return made;
}

std::string Author::word(const WordTable &words)
{
    if (words.count == 0)
        return "";
    const std::string chosen = words.text(*(words.begin() + pick(words.count)));
    switch (pick(12)) {
    case 0:
        return chosen.substr(0, pick(static_cast<unsigned>(chosen.size()) + 1));
    case 1:
        return folded(chosen);
    case 2:
        return chosen + "s";
    default:
        return chosen;
    }
}

std::string Author::words(const WordTable &words)
{
    std::string joined;
    for (unsigned count = pick(5); count > 0; --count)
        joined += word(words) + (pick(4) == 0 ? "" : ",");
    return pick(8) == 0 ? joined + "none" : joined;
}

std::string Author::seen_before(const std::string &key)
{
    const auto &texts = lore().texts(key);
    return texts.empty() ? std::to_string(pick(4)) : texts[pick(static_cast<unsigned>(texts.size()))];
}

std::string Author::content(const Table &table, unsigned index)
{
    const Row &row = table.row(index);
    const std::string key = table.key(row);
    if (pick(8) == 0 && !is_secret_key(key.c_str()))
        return seen_before(key);
    switch (row.kind) {
    case Kind::text:
    case Kind::view:
        // Some take a text of any length; so much is enough.
        return text(std::min<std::size_t>(static_cast<std::size_t>(table.limit(row.limits).low), 3000), key);
    case Kind::counted_text:
        return text(255, key);
    case Kind::word:
        return word(*table.ref(row.ref).words);
    case Kind::mask:
    case Kind::events:
        return words(*table.ref(row.ref).words);
    case Kind::int_list: {
        std::string joined;
        for (unsigned count = pick(static_cast<unsigned>(table.capacity(row)) + 2u); count > 0; --count)
            joined += number(table, row) + ",";
        return joined;
    }
    case Kind::converted:
        if (table.detail(index).words != nullptr)
            return pick(2) == 0 ? word(*table.detail(index).words) : words(*table.detail(index).words);
        return pick(4) == 0 ? number(table, row) : seen_before(key);
    default:
        return number(table, row);
    }
}

TiXmlElement *Author::make(const Table &table, unsigned index, Plan plan, int depth)
{
    const Row &row = table.row(index);
    auto *element = new TiXmlElement(name(table.key(row)));
    const Table *inner = has_table(row.kind) ? table.ref(row.ref).table : nullptr;
    constexpr int deepest = 8;
    if (inner != nullptr && depth < deepest && pick(32) != 0)
        fill(*element, *inner, plan, depth + 1);
    else
        set_text(*element, content(table, index));
    return element;
}

void Author::fill(TiXmlElement &element, const Table &table, Plan plan, int depth)
{
    // In the order in which it is written, as most bodies are, or in that of the rows.
    std::vector<unsigned> rows;
    for (unsigned i = 0; i < table.written; ++i)
        rows.push_back(table.ordered(i));
    if (rows.empty() || pick(4) == 0) {
        rows.clear();
        for (unsigned i = 0; i < table.rows; ++i)
            if (has_key(table.row(i)))
                rows.push_back(i);
    }
    for (const unsigned index : rows) {
        if (plan == Plan::some && pick(3) != 0)
            continue;
        const Row &row = table.row(index);
        unsigned times = 1;
        if (is_list(row.kind))
            times = plan == Plan::whole ? 2
                    : pick(64) == 0     ? std::min(static_cast<unsigned>(table.capacity(row)) + 1u, 70u)
                                        : pick(4);
        for (; times > 0; --times)
            element.LinkEndChild(make(table, index, plan, depth));
    }
}

const Table *Author::table_of(const TiXmlElement &element, const TiXmlElement &body, const Message &message)
{
    if (&element == &body)
        return message.read != nullptr ? message.read : message.written;
    const auto &known = lore().children(element.ValueStr());
    return known.empty() ? nullptr : known[pick(static_cast<unsigned>(known.size()))];
}

void Author::change_once(TiXmlElement &body, const Message &message)
{
    const std::vector<TiXmlElement *> all = elements_of(body);
    TiXmlElement &chosen = *all[pick(static_cast<unsigned>(all.size()))];
    TiXmlElement &around = chosen.Parent() != nullptr && &chosen != &body ? *chosen.Parent()->ToElement() : body;
    const Table *table = table_of(chosen, body, message);
    const Table *outer = table_of(around, body, message);
    const auto any_row = [this](const Table *of) {
        for (int attempt = 0; of != nullptr && attempt < 16; ++attempt) {
            const unsigned row = pick(of->rows);
            if (has_key(of->row(row)))
                return row;
        }
        return UINT_MAX;
    };
    switch (pick(12)) {
    case 0:
    case 1: // a further child
        if (const unsigned row = any_row(table); row != UINT_MAX)
            chosen.LinkEndChild(make(*table, row, Plan::some, 0));
        break;
    case 2: // a child in front
        if (const unsigned row = any_row(chosen.FirstChild() != nullptr ? table : nullptr); row != UINT_MAX) {
            const std::unique_ptr<TiXmlElement> made(make(*table, row, Plan::some, 0));
            chosen.InsertBeforeChild(chosen.FirstChild(), *made);
        }
        break;
    case 3: // one less
        if (&chosen != &body)
            around.RemoveChild(&chosen);
        break;
    case 4: // repeated
        if (&chosen != &body)
            for (unsigned times = pick(16) == 0 ? 1 + pick(80) : 1 + pick(4); times > 0; --times)
                around.InsertAfterChild(&chosen, chosen);
        break;
    case 5:
    case 6: // another text, of the row that it answers to
        if (outer != nullptr && &chosen != &body)
            for (unsigned i = 0; i < outer->rows; ++i)
                if (has_key(outer->row(i)) && is_named(chosen.Value(), outer->key(outer->row(i))))
                    return set_text(chosen, content(*outer, i));
        break;
    case 7: // another name
        if (&chosen != &body) {
            const unsigned row = any_row(outer);
            chosen.SetValue(name(row != UINT_MAX && pick(2) == 0 ? outer->key(outer->row(row)) : chosen.ValueStr()));
            if (chosen.ValueStr().empty() && !anything_)
                chosen.SetValue("a");
        }
        break;
    case 8: // moved somewhere else
        if (&chosen != &body) {
            TiXmlNode *copy = chosen.Clone();
            around.RemoveChild(&chosen);
            const std::vector<TiXmlElement *> left = elements_of(body);
            left[pick(static_cast<unsigned>(left.size()))]->LinkEndChild(copy);
        }
        break;
    case 9: // all children that there can be
        if (table != nullptr)
            fill(chosen, *table, pick(2) == 0 ? Plan::whole : Plan::some);
        break;
    case 10: { // a comment or a text among the children
        if (pick(2) == 0) {
            auto *comment = new TiXmlComment;
            comment->SetValue(table != nullptr && pick(2) == 0 ? table->key(table->row(0)) : "c");
            chosen.LinkEndChild(comment);
        } else {
            chosen.LinkEndChild(new TiXmlText("1"));
        }
        break;
    }
    default: // nothing left
        if (pick(4) == 0)
            chosen.Clear();
        else
            set_text(chosen, seen_before(chosen.ValueStr()));
        break;
    }
}

void Author::change(TiXmlElement &body, const Message &message)
{
    for (unsigned times = 1 + pick(5); times > 0; --times)
        change_once(body, message);
}

std::vector<std::string> all_names()
{
    return {lore().names().begin(), lore().names().end()};
}

void learn_examples()
{
    for_examples([](const Example &, TiXmlElement &body) {
        learn_texts(body);
        for (const Message *message : messages()) {
            if (!parses(*message))
                continue;
            Host host;
            Session session(*message, net_ext_t{}, host);
            const Watch learner = {nullptr, learn_child};
            session.parse(&body, &learner);
        }
    });
}

std::string mutated(const Target &target, const std::uint8_t *data, std::size_t size, std::size_t most, unsigned seed)
{
    if (target.body == Body::none || size < head_size)
        return "";
    Author author(seed, target.body == Body::tree);
    std::string head(reinterpret_cast<const char *>(data), head_size);
    Bytes input(data + head_size, size - head_size);
    TiXmlElement fresh("body");
    TiXmlDocument document;
    TiXmlElement *body = &fresh;
    bool empty = false;
    Bytes start(data, size);
    const std::uint16_t number = start.number<std::uint16_t>();
    const Message *message = &message_of(number, parses);
    if (author.pick(24) == 0) { // another message
        message = messages()[author.pick(static_cast<unsigned>(messages().size()))];
        head = plain_head(*message);
        empty = true;
    } else if (target.body == Body::tree) {
        decode_tree(input, fresh);
    } else {
        const Text text(input.rest(), input.left());
        if (text.get() != nullptr)
            document.Parse(text.get(), nullptr, TIXML_ENCODING_UTF8);
        empty = document.Error() || document.RootElement() == nullptr;
        if (!empty)
            body = document.RootElement();
    }
    const Table *table = message->read != nullptr ? message->read : message->written;
    if (table != nullptr && (empty || author.pick(48) == 0))
        author.fill(*body, *table, author.pick(3) == 0 ? Author::Plan::whole : Author::Plan::some);
    else
        author.change(*body, *message);
    const std::string made = head + (target.body == Body::tree ? encode_tree(*body) : print(*body));
    return made.size() <= most ? made : "";
}

void message_seeds(const Sink &sink, Body form)
{
    learn_examples();
    const auto put = [&](const std::string &name, const Message &message, const TiXmlElement &body) {
        sink(name, plain_head(message) + (form == Body::tree ? encode_tree(body) : print(body)));
    };
    for_examples([&](const Example &example, TiXmlElement &body) {
        if (const Message *message = reader_of(body))
            put(example.name, *message, body);
    });
    unsigned seed = 1;
    for (const Message *message : messages()) {
        const Table *table = message->read != nullptr ? message->read : message->written;
        if (table == nullptr)
            continue;
        for (const Author::Plan plan : {Author::Plan::whole, Author::Plan::some, Author::Plan::some}) {
            TiXmlElement body("body");
            Author author(seed++, form == Body::tree);
            author.fill(body, *table, plan);
            put(message->name, *message, body);
        }
    }
}

} // namespace fuzz
