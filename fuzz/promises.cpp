#include "promises.h"

#include "engine/member.h"

#include <net_types.h>
#include <tinyxml.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

#ifdef NETPUBLIC_GUARDS_POISONED
#include <sanitizer/asan_interface.h>
#endif

#if defined(__x86_64__) && __has_include(<valgrind/memcheck.h>)
#include <valgrind/memcheck.h>
#else
#define VALGRIND_MAKE_MEM_UNDEFINED(from, size) static_cast<void>(0)
#endif

namespace fuzz {
namespace {

using netpublic::Detail;
using netpublic::Kind;
using netpublic::Row;
using netpublic::Shape;
using netpublic::Table;

[[noreturn]] void die(const char *promise, const std::string &what)
{
    std::fprintf(stderr, "%s is broken: %s\n", promise, what.c_str());
    std::abort();
}

Broken handler = die;

// In front of and behind each block. An overrun by a whole list item lands in them, too.
constexpr std::size_t guard_size = 2048;
constexpr unsigned char garbage = 0xA5;
constexpr std::size_t blocks_kept = 24; // released ones, for the next allocation of their size

// Stands at the start of the guard in front.
struct Block {
    std::size_t size;
    bool live;

    unsigned char *front()
    {
        return reinterpret_cast<unsigned char *>(this + 1);
    }
    unsigned char *content()
    {
        return reinterpret_cast<unsigned char *>(this) + guard_size;
    }
    unsigned char *back()
    {
        return content() + size;
    }
    static Block *of(const void *content)
    {
        auto *bytes = static_cast<unsigned char *>(const_cast<void *>(content));
        return reinterpret_cast<Block *>(bytes - guard_size);
    }
};

std::vector<Block *> kept;
long live_blocks = 0;

#ifdef NETPUBLIC_GUARDS_POISONED
void lock(Block *block)
{
    __asan_poison_memory_region(block->front(), 2 * guard_size - sizeof(Block) + block->size);
}

void unlock_content(Block *block)
{
    __asan_unpoison_memory_region(block->content(), block->size);
}

void unlock(Block *block)
{
    __asan_unpoison_memory_region(block->front(), 2 * guard_size - sizeof(Block) + block->size);
}
#else
constexpr unsigned char guard_byte = 0xC7;

void lock(Block *block)
{
    std::memset(block->front(), guard_byte, guard_size - sizeof(Block));
    std::memset(block->back(), guard_byte, guard_size);
}

void unlock_content(Block *) {}
void unlock(Block *) {}

bool is_filled(const unsigned char *from, std::size_t size)
{
    return std::all_of(from, from + size, [](unsigned char byte) { return byte == guard_byte; });
}
#endif

Block *take_block(std::size_t size)
{
    for (Block *&block : kept)
        if (block->size == size) {
            Block *found = block;
            block = kept.back();
            kept.pop_back();
            return found;
        }
    void *memory = std::malloc(size + 2 * guard_size);
    if (memory == nullptr)
        std::abort();
    return new (memory) Block{size, false};
}

void drop(Block *block)
{
    unlock(block);
    std::free(block);
}

// What frees the blocks that are kept at the end of the process, for the leak sanitizer.
struct Sweeper {
    ~Sweeper()
    {
        for (Block *block : kept)
            drop(block);
        kept.clear();
        kept.shrink_to_fit();
    }
} sweeper;

template <class Type> Type load(const char *at)
{
    Type value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

const Row *count_of(const Table &table, const Row &row)
{
    return table.attachment(row, Kind::count);
}

std::string named(const Table &table, const Row &row, const char *what)
{
    return std::string(what) + " of \"" + table.key(row) + "\" in " + table.place().file() + ":" +
           std::to_string(table.place().line());
}

// The record's rows see it from `base` bytes in front of `record` on; `size` bytes of it are there.
struct View {
    const Table &table;
    const char *record;
    std::size_t base;
    std::size_t size;

    bool holds(const Row &row) const
    {
        return row.offset >= base && row.offset - base < size;
    }
    const char *member(const Row &row) const
    {
        return record + (row.offset - base);
    }
};

void check_view(const View &view, const void *exempt);

void check_text(const View &view, const Row &row, const char *text, std::size_t size, const void *exempt)
{
    if (text != exempt && std::memchr(text, '\0', size) == nullptr)
        broken("P4", named(view.table, row, "no terminator in the text"));
}

void check_points(const View &view, const Row &row, const char *at)
{
    const int count = load<int>(at);
    if (count < 0 || count > 8)
        broken("P3", named(view.table, row, "the number of points"));
}

// Members that no kind of row describes: by their shape.
void check_shape(const View &view, const Row &row, const Detail &detail, const void *exempt)
{
    const char *at = view.member(row);
    const std::size_t first = detail.dimensions[0], second = detail.dimensions[1];
    if (detail.shown != nullptr) {
        for (std::size_t i = 0; i < first * second; ++i)
            check_view({*detail.shown, at + i * detail.element_size, detail.shown_offset, detail.element_size}, exempt);
    } else if (detail.shape == Shape::characters && first == 4) {
        // The version in a file's header: four characters and nothing behind them.
    } else if (detail.shape == Shape::characters) {
        const std::size_t size = second == 1 ? first : second;
        for (std::size_t i = 0; i < (second == 1 ? 1 : first); ++i)
            check_text(view, row, at + i * size, size, exempt);
    } else if (detail.shape == Shape::points) {
        for (std::size_t i = 0; i < first * second; ++i)
            check_points(view, row, at + i * sizeof(net_smart_ai_points_t));
    }
}

// How many items of a list to look at; -1 for a count that is no good.
int items_of(const View &view, const Row &row)
{
    const Row *count_row = count_of(view.table, row);
    if (count_row == nullptr)
        return view.table.capacity(row);
    const int count = load<int>(view.member(*count_row));
    if (count >= 0 && count <= view.table.capacity(row))
        return count;
    if (count > 0 && netpublic::is_only_written(view.table, row))
        return view.table.capacity(row); // the first ones; the row that is read tells how many there can be
    broken("P3", named(view.table, row, "the count") + " is " + std::to_string(count));
    return -1;
}

void check_row(const View &view, unsigned index, const void *exempt)
{
    const Table &table = view.table;
    const Row &row = table.row(index);
    const char *at = view.member(row);
    switch (row.kind) {
    case Kind::text:
        return check_text(view, row, at, static_cast<std::size_t>(table.limit(row.limits).high), exempt);
    case Kind::counted_text:
        return check_text(view, row, at + offsetof(net_counted_text_t, text), sizeof(net_counted_text_t::text), exempt);
    case Kind::group: {
        const Table &inner = *table.ref(row.ref).table;
        return check_view({inner, at, 0, inner.record_size}, exempt);
    }
    case Kind::list: {
        const Table &item = *table.ref(row.ref).table;
        const int count = items_of(view, row);
        for (int i = 0; i < count; ++i)
            check_view({item, at + static_cast<std::size_t>(i) * item.record_size, 0, item.record_size}, exempt);
        return;
    }
    case Kind::int_items:
        items_of(view, row);
        return;
    case Kind::wire:
    case Kind::wires:
    case Kind::converted:
    case Kind::named:
        return check_shape(view, row, table.detail(index), exempt);
    default:
        return;
    }
}

void check_view(const View &view, const void *exempt)
{
    for (unsigned i = 0; i < view.table.rows; ++i)
        if (view.holds(view.table.row(i)))
            check_row(view, i, exempt);
}

// A numeric reference that is more, or less, than its digits.
bool has_bad_reference(const std::string &text)
{
    for (std::size_t at = text.find("&#"); at != std::string::npos; at = text.find("&#", at + 1)) {
        const bool hexadecimal = text[at + 2] == 'x';
        const std::size_t first = at + 2 + hexadecimal;
        const std::size_t end = text.find_first_not_of(hexadecimal ? "0123456789abcdefABCDEF" : "0123456789", first);
        if (end == first || end == std::string::npos || text[end] != ';')
            return true;
    }
    return false;
}

// A sequence that does not go on as UTF-8 does, and has markup where it should.
bool has_cut_sequence(const std::string &text)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead < 0xC2 || lead > 0xF4 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (text.substr(at, length).find_first_of("<'\"") != std::string::npos && length > 1)
            return true;
    }
    return false;
}

constexpr const char *refusals[] = {"text too long", "bad reference", "no UTF-8", "too many attributes",
                                    "nested too deeply"};

void mix(std::uint64_t &hash, std::uint64_t value)
{
    hash = (hash ^ value) * 0x9E3779B97F4A7C15u;
    hash ^= hash >> 29;
}

void mix(std::uint64_t &hash, const std::string &text)
{
    mix(hash, text.size());
    std::size_t at = 0;
    std::uint64_t word = 0;
    for (; at + sizeof word <= text.size(); at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        mix(hash, word);
    }
    word = 0;
    std::memcpy(&word, text.data() + at, text.size() - at);
    mix(hash, word);
}

// Without recursion: a tree may be deep.
template <class Visit> void walk(const TiXmlNode &tree, Visit visit)
{
    unsigned level = 0;
    for (const TiXmlNode *node = &tree; node != nullptr;) {
        visit(*node, level);
        if (const TiXmlNode *child = node->FirstChild()) {
            node = child;
            ++level;
            continue;
        }
        for (; node != &tree && node->NextSibling() == nullptr; --level)
            node = node->Parent();
        node = node == &tree ? nullptr : node->NextSibling();
    }
}

} // namespace

Broken on_broken(Broken new_handler)
{
    const Broken old = handler;
    handler = new_handler;
    return old;
}

void broken(const char *promise, const std::string &what)
{
    handler(promise, what);
}

void *guarded_allocate(unsigned int size)
{
    Block *block = take_block(size);
    lock(block);
    unlock_content(block);
    std::memset(block->content(), garbage, size);
    VALGRIND_MAKE_MEM_UNDEFINED(block->content(), size);
    block->live = true;
    ++live_blocks;
    return block->content();
}

void guarded_release(void *content)
{
    Block *block = Block::of(content);
    require(block->live, "P6", "a block released twice, or one that is none");
    require(guards_intact(content), "P2", "bytes beside a block were written");
    block->live = false;
    --live_blocks;
    lock(block);
    if (kept.size() == blocks_kept) {
        drop(kept.front());
        kept.erase(kept.begin());
    }
    kept.push_back(block);
}

bool guards_intact(const void *content)
{
#ifdef NETPUBLIC_GUARDS_POISONED
    return Block::of(content)->live; // whoever touches a guard does not come as far as this
#else
    Block *block = Block::of(content);
    return is_filled(block->front(), guard_size - sizeof(Block)) && is_filled(block->back(), guard_size);
#endif
}

std::size_t guarded_size(const void *content)
{
    return Block::of(content)->size;
}

long guarded_live()
{
    return live_blocks;
}

Guarded::Guarded(std::size_t size) : block_(guarded_allocate(static_cast<unsigned int>(size))) {}

Guarded::Guarded(const void *content, std::size_t size) : Guarded(size)
{
    if (size != 0)
        std::memcpy(block_, content, size);
}

Guarded::~Guarded()
{
    guarded_release(block_);
}

void check_record(const Table &table, const void *record, const void *exempt)
{
    check_view({table, static_cast<const char *>(record), 0, table.record_size}, exempt);
}

LowLimits::LowLimits(bool low) : limits_(netpublic::header_limits)
{
    if (low) {
        netpublic::header_limits.levels = 4;
        netpublic::header_limits.attributes = 3;
    }
}

LowLimits::~LowLimits()
{
    netpublic::header_limits = limits_;
}

const char *header_refusal(std::string_view log)
{
    for (const char *refusal : refusals)
        if (log.find(std::string("xml parse failed:") + refusal + "\n") != std::string_view::npos)
            return refusal;
    return nullptr;
}

void check_header(const std::string &text, const char *refusal)
{
    const std::string_view why = refusal != nullptr ? refusal : "";
    require((why == "text too long") == (text.size() > netpublic::header_limits.length), "P15",
            "the length of a header");
    require(why != "bad reference" || has_bad_reference(text), "P15", "a header's good reference was refused");
    require(why != "no UTF-8" || has_cut_sequence(text), "P15", "a header's UTF-8 was refused");
    constexpr std::size_t most = 2048; // of what was refused: it may be as deep as it is long
    if (refusal != nullptr && text.size() > most)
        return;
    TiXmlDocument document;
    document.Parse((text + std::string(xml_padding, '\0')).c_str());
    const Extent extent = extent_of(document);
    const bool deep = extent.levels > netpublic::header_limits.levels,
               many = extent.attributes > netpublic::header_limits.attributes;
    // Of a malformed text the XML library keeps other parts than the header's reader looks at before it stops.
    if (document.Error())
        return;
    if (refusal == nullptr)
        require(!deep && !many, "P15", "a header beyond the limits was read");
    else
        require((why != "nested too deeply" || deep) && (why != "too many attributes" || many), "P15",
                "a header within the limits was refused");
}

Extent extent_of(const TiXmlNode &tree)
{
    Extent extent;
    walk(tree, [&](const TiXmlNode &node, unsigned level) {
        if (const TiXmlElement *element = node.ToElement()) {
            extent.levels = std::max(extent.levels, level);
            unsigned own = 0;
            for (const TiXmlAttribute *at = element->FirstAttribute(); at != nullptr; at = at->Next())
                ++own;
            extent.attributes = std::max(extent.attributes, own);
        }
    });
    return extent;
}

std::uint64_t fingerprint(const TiXmlNode &tree)
{
    std::uint64_t hash = 0;
    walk(tree, [&](const TiXmlNode &node, unsigned) {
        mix(hash, reinterpret_cast<std::uintptr_t>(&node));
        mix(hash, node.ValueStr());
        if (const TiXmlElement *element = node.ToElement())
            for (const TiXmlAttribute *at = element->FirstAttribute(); at != nullptr; at = at->Next()) {
                mix(hash, at->NameTStr());
                mix(hash, at->ValueStr());
            }
    });
    return hash;
}

} // namespace fuzz
