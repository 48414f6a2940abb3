#include "engine/table.h"

#include <cstring>

namespace netpublic {
namespace {

const char *behind(const char *text)
{
    return text + std::strlen(text) + 1;
}

} // namespace

const Row *Table::find_attachment(const Row &of, Kind kind, unsigned limits_column) const
{
    const Row *first = &row(0);
    const unsigned index = index_of(of);
    // The attachments are the last rows, in the order of their kinds.
    for (const Row *row = first + rows - 1; row->kind >= kind; --row)
        if (row->kind == kind && row->ref == index && (limits_column == any_column || row->limits == limits_column))
            return row;
    return nullptr;
}

const char *Table::complaint(const Row &of) const
{
    return behind(key(of));
}

const char *Table::second_line(const Row &of) const
{
    const Row *line = attachment(of, Kind::second_line);
    return line != nullptr ? key(*line) : nullptr;
}

const char *Table::unknown() const
{
    return behind(parser());
}

const char *Table::missing() const
{
    return behind((flags & table_unknown) != 0 ? unknown() : parser());
}

const Source &Table::source() const
{
    static constexpr Source none = {{0}, 0, 0, 0, Line::parser, Line::writer, Line::none};
    return (flags & table_source) != 0 ? *reinterpret_cast<const Source *>(bytes(refs - source_room)) : none;
}

const char *Table::parser() const
{
    return text(source().parser);
}

const char *Table::writer() const
{
    return text(source().writer);
}

const char *Table::root() const
{
    return text(source().root);
}

void Table::log_failure() const
{
    log_line(source().failure, place(), parser());
}

void Table::log_entry(const char *function) const
{
    log_line(source().entry, place(), function != nullptr ? function : parser());
}

void Table::log_write_entry() const
{
    log_line(source().write_entry, place(), writer());
}

} // namespace netpublic
