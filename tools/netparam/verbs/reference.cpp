#include "verbs/reference.h"

#include "model/facts.h"
#include "model/rows.h"
#include "model/text.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

namespace netparam {
namespace {

using netpublic::Table;
using netpublic::WordTable;

std::vector<const Entry *> messages()
{
    std::vector<const Entry *> found;
    for (const Entry &entry : entries())
        if (entry.message != nullptr)
            found.push_back(&entry);
    std::sort(found.begin(), found.end(), [](const Entry *a, const Entry *b) { return a->name() < b->name(); });
    return found;
}

// Every table once, with its first path as a name, and how often rows refer to it and to word lists.
class Survey {
public:
    Survey()
    {
        for (const Entry *entry : messages())
            for (const Table *table : entry->tables()) {
                ++uses_[table];
                // tables() leaves out null, but the analyser takes the comparison with `read` for a sign of it.
                // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker)
                visit(*table, entry->name() + (table == entry->message->read || !entry->parses() ? ""
                                               : table == entry->message->written                ? "(written)"
                                                                                                 : "(payload)"));
            }
    }
    const std::vector<const Table *> &tables() const
    {
        return order_;
    }
    const std::string &path(const Table &table) const
    {
        return paths_.at(&table);
    }
    int uses(const Table &table) const
    {
        return uses_.at(&table);
    }
    int uses(const WordTable &words) const
    {
        return word_uses_.at(&words);
    }
    const std::vector<const WordTable *> &words() const
    {
        return word_order_;
    }
    // Of the key that first uses them.
    const std::string &words_key(const WordTable &words) const
    {
        return word_keys_.at(&words);
    }

private:
    void visit(const Table &table, const std::string &path)
    {
        if (!paths_.emplace(&table, path).second)
            return;
        order_.push_back(&table);
        for (const unsigned i : described_rows(table)) {
            const std::string key = name_of(table, i);
            if (const WordTable *words = row_words(table, table.row(i))) {
                if (++word_uses_[words] == 1)
                    word_order_.push_back(words);
                word_keys_.emplace(words, key);
            }
            for (const Table *inner : inner_tables(table, i)) {
                ++uses_[inner];
                visit(*inner, path + "/" + key + (inner != inner_tables(table, i).front() ? "(again)" : ""));
            }
        }
    }

    std::map<const Table *, std::string> paths_;
    std::map<const Table *, int> uses_;
    std::map<const WordTable *, int> word_uses_;
    std::map<const WordTable *, std::string> word_keys_;
    std::vector<const Table *> order_;
    std::vector<const WordTable *> word_order_;
};

std::string cell(const std::string &text)
{
    std::string out;
    for (const char c : text) {
        if (c == '<')
            out += "&lt;";
        else if (c == '|' || c == '*' || c == '_' || c == '`' || (c == '\\'))
            out += std::string("\\") + c;
        else
            out += c;
    }
    return out;
}

std::string sentence(std::string words)
{
    words.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(words.front())));
    return words + ".";
}

// Code stays as it is, but for what ends a table's cell.
std::string code(const std::string &text)
{
    return text.empty() ? "" : "`" + text + "`";
}

// Texts with `code` in them.
std::string prose(const std::string &text)
{
    std::string out, part;
    bool in_code = false;
    for (const char c : text + '`')
        if (c == '`') {
            out += in_code ? code(part) : cell(part);
            part.clear();
            in_code = !in_code;
        } else {
            part += c;
        }
    return out;
}

std::string in_code(const std::vector<std::string> &keys)
{
    std::vector<std::string> texts;
    texts.reserve(keys.size());
    for (const std::string &key : keys)
        texts.push_back(code(key));
    return joined(texts, ", ");
}

constexpr char introduction[] = R"(# The messages

What the library reads and writes, message by message, as its tables say it. This page is made from them:
`netparam describe --all --markdown`; `netparam describe MESSAGE` shows one message alone.

## How to read this page

- **Key** is the name of a child element; `list/item` is a child of a child. The keys stand in the order in which
  they are tried. The order in which children arrive in a body does not matter, unless a note says so.
- **A child answers to the first key that begins with its name**, case aside: `<STAT>` is read as `state` when no
  earlier key begins with "stat", and `<s>` as the first key that begins with "s". A name that is longer than
  the key never answers to it. Where an earlier key begins with the whole name of a later one, the earlier one takes the
  child; a note at the later one says so. Children that answer to no key have no effect, unless a note says so.
- **Member** is the C type and name in the structure, whose name stands below the heading. A key without one is kept
  in another form: code of its own turns its element into what the structure holds, and back. A member without a key
  has no child of its own; the note says what fills it.
- **Accepts** is what can be read; anything else refuses the message. Plain whole numbers have at most 12
  characters, a sign included. Words are compared as a whole, case aside, unless a note says otherwise; the number
  in front of a word is what the member then holds. Texts that are too long are refused, never cut.
- **Code of its own** is the message's: what it accepts beyond the row stands behind a colon.
- **The example** has been read by the library when this page was made, or, of a message that is only written, has
  been written by it. In long ones elements that repeat are left out.
- Sizes are the same on 32-bit and 64-bit machines.
- `dataSize` is the envelope's; the initialiser sets it. "Host" messages have no initialiser: the host prepares the
  envelope, with a zeroed payload of that size.
)";

class Reference {
public:
    Reference(std::ostream &out, const Examples &examples) : out_(out), examples_(examples) {}

    void print()
    {
        name_shared();
        out_ << introduction;
        print_index();
        out_ << "\n# Messages\n";
        for (const Entry *entry : messages())
            print_message(*entry);
        out_ << "\n# Shared records\n";
        for (const Table *table : survey_.tables())
            if (const auto found = names_.find(table); found != names_.end()) {
                out_ << "\n## Record " << found->second << "\n\n";
                if (in_payload(*table))
                    out_ << code(table->record) << ", " << table->record_size << " bytes.\n\n";
                print_record(*table, true);
            }
        out_ << "\n# Shared word lists\n";
        for (const WordTable *words : survey_.words())
            if (const auto found = word_names_.find(words); found != word_names_.end())
                out_ << "\n## Words " << found->second << "\n\n"
                     << cell(words_text(*words, mask_words_.at(words))) << ".\n";
    }

private:
    template <class Key> void give_name(std::map<const Key *, std::string> &names, const Key &key, std::string name)
    {
        int number = 1;
        const std::string plain = name;
        while (!taken_.insert(name).second)
            name = plain + "-" + std::to_string(++number);
        names[&key] = name;
    }

    void name_shared()
    {
        constexpr unsigned least_rows = 2, least_words = 9;
        std::set<const Table *> roots;
        for (const Entry *entry : messages())
            for (const Table *table : entry->tables())
                roots.insert(table);
        for (const Table *table : survey_.tables()) {
            if (survey_.uses(*table) > 1 && table->rows >= least_rows && roots.count(table) == 0)
                give_name(names_, *table, table->record);
            for (const unsigned i : described_rows(*table))
                if (const WordTable *words = row_words(*table, table->row(i)))
                    mask_words_[words] = is_mask(*table, i);
        }
        for (const WordTable *words : survey_.words())
            if (survey_.uses(*words) > 1 && words->count >= least_words)
                give_name(word_names_, *words, survey_.words_key(*words));
    }

    // As the usual renderers make it of a heading.
    static std::string anchor(const std::string &heading)
    {
        std::string text = lower(heading);
        std::replace(text.begin(), text.end(), ' ', '-');
        return "#" + text;
    }

    void print_index()
    {
        out_ << "\n## Index\n\n| Message | What it is | Id | Bytes | Directions | Initialiser "
                "|\n|---|---|--:|--:|---|---|\n";
        std::vector<std::string> alone;
        for (const Entry &entry : entries())
            if (entry.message == nullptr)
                alone.emplace_back(entry.initialiser->name);
        for (const Entry *entry : messages())
            out_ << "| [" << entry->name() << "](" << anchor(entry->name()) << ") | " << cell(entry->title()) << " | "
                 << id_text(*entry) << " | " << entry->size() << " | " << entry->directions() << " | "
                 << (entry->initialiser != nullptr ? code(entry->initialiser->name) : "the host prepares it") << " |\n";
        out_ << "\nInitialisers without parser and writer: " << in_code(alone) << ".\n";
    }

    void print_message(const Entry &entry)
    {
        const Table *read = entry.message->read, *written = entry.message->written;
        out_ << "\n## " << entry.name() << "\n\n**" << cell(sentence(entry.title())) << "** " << cell(entry.summary())
             << "\n\n";
        if (entry.initialiser != nullptr)
            out_ << code(entry.initialiser->name) << ", id " << id_text(entry) << ", ";
        else
            out_ << "Host message, ";
        if (entry.table() != nullptr)
            out_ << code(entry.table()->record) << ", ";
        out_ << entry.size() << " bytes.\n\n";
        if (entry.parses())
            out_ << "- Read by " << code(entry.parser())
                 << (read != nullptr ? ": " + prose(read_check(*read)) : ", code of its own") << ".\n";
        if (entry.writes())
            out_ << "- Written by " << code(entry.writer()) << (entry.root().empty() ? "" : " as " + code(entry.root()))
                 << (written != nullptr ? ": " + prose(write_check(*written)) : ", which writes nothing") << ".\n";
        if (read != nullptr)
            print_record(*read, read == written);
        if (written != nullptr && written != read) {
            if (read != nullptr)
                out_ << "\nWhat is written:\n\n";
            print_record(*written, true);
        }
        if (entry.table() != nullptr && entry.table() != read && entry.table() != written) {
            out_ << "\nWhat the payload holds, under the names that `netparam parse --json` gives it:\n\n| Name | "
                    "Member | Words | |\n|---|---|---|---|\n";
            bare_ = true;
            print_level(*entry.table(), "", false);
            bare_ = false;
        }
        if (const auto example = examples_.find(entry.name()); example != examples_.end())
            out_ << "\n" << example->second;
    }

    // `writes`: it is written, too.
    void print_record(const Table &table, bool writes)
    {
        for (const std::string &note : table_notes(table))
            out_ << "- " << static_cast<char>(std::toupper(note.front())) << prose(note.substr(1)) << ".\n";
        if (writes && table.written > 0)
            out_ << "- Written in this order: " << in_code(written_order(table)) << ".\n";
        out_ << "\n| Key | Member | Accepts | Notes |\n|---|---|---|---|\n";
        print_level(table, "", writes);
    }

    void print_level(const Table &table, const std::string &path, bool writes)
    {
        for (const RowFacts &row : facts_of(table, writes)) {
            std::string accepts = bare_ ? "" : cell(row.accepts);
            std::vector<std::string> notes = bare_ ? std::vector<std::string>() : row.notes;
            if (row.words != nullptr) {
                const auto found = word_names_.find(row.words);
                accepts += (accepts.empty() ? "" : ": ") +
                           (found != word_names_.end()
                                ? "[words " + cell(found->second) + "](" + anchor("words " + found->second) + ")"
                                : cell(row.spelled));
            }
            const auto shared = row.inner.size() == 1 ? names_.find(row.inner.front().table) : names_.end();
            const bool is_shared = shared != names_.end();
            if (is_shared)
                accepts += (accepts.empty() ? "[record " : "; see [record ") + cell(shared->second) + "](" +
                           anchor("record " + shared->second) + ")";
            for (const RowFacts::Inner &inner : row.inner)
                if (!is_shared && !bare_ && !inner.notes.empty())
                    notes.push_back(inner.notes);
            if (!row.order.empty() && !is_shared)
                notes.push_back("written in this order: `" + joined(row.order, "`, `") + "`");
            out_ << "| " << (bare_ || row.has_key ? code(path + row.name) : "") << " | " << code(row.declared())
                 << " | " << accepts << " | " << prose(joined(notes, "; ")) << " |\n";
            for (const RowFacts::Inner &inner : row.inner)
                if (!is_shared)
                    print_level(*inner.table, path + row.name + "/", inner.written);
        }
    }

    bool bare_ = false; // only the members, not how they are read
    std::ostream &out_;
    const Examples &examples_;
    Survey survey_;
    std::map<const Table *, std::string> names_;
    std::map<const WordTable *, std::string> word_names_;
    std::map<const WordTable *, bool> mask_words_;
    std::set<std::string> taken_;
};

void print_table_rows(std::ostream &out, const Survey &survey, const Table &table)
{
    out << '\n' << survey.path(table) << ": " << table.record << ", " << table.record_size << " bytes";
    if (*table.parser() != '\0')
        out << "; parser " << table.parser() << ", " << read_check(table);
    if (*table.writer() != '\0')
        out << "; writer " << table.writer() << ", root " << table.root() << ", " << write_check(table);
    for (const std::string &note : table_notes(table))
        out << "; " << note;
    if ((table.flags & netpublic::table_unknown) != 0)
        out << " as " << in_quotes(table.unknown());
    out << '\n';
    for (const RowFacts &row : facts_of(table, true)) {
        out << "  " << row.name << " | " << kind_name(table.row(row.index).kind) << " | ";
        if (!row.type.empty())
            out << table.row(row.index).offset << '+' << row.bytes << ' ' << row.type << ' '
                << table.text(table.detail(row.index).member);
        out << " | " << row.accepts;
        if (row.words != nullptr)
            out << ": " << row.spelled;
        for (const RowFacts::Inner &inner : row.inner)
            out << " -> " << survey.path(*inner.table);
        for (const std::string &note : row.notes)
            out << "; " << note;
        out << '\n';
    }
    if (table.written > 0)
        out << "  written: " << joined(written_order(table), ", ") << '\n';
}

} // namespace

void print_page(std::ostream &out, const Examples &examples)
{
    Reference(out, examples).print();
}

void print_rows(std::ostream &out)
{
    const Survey survey;
    out << "Every table under the path at which the messages first use it; a row is: key | kind | offset+bytes, C "
           "type\n"
           "and member | what is accepted, the words, -> the table of its records, what is unusual.\n";
    for (const Table *table : survey.tables())
        print_table_rows(out, survey, *table);
}

} // namespace netparam
