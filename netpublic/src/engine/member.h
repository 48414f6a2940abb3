// A row's member in its record.
#ifndef NETPUBLIC_MEMBER_H
#define NETPUBLIC_MEMBER_H

#include "engine/table.h"

namespace netpublic {

template <class Type> Type &member(void *record, const Row &row)
{
    return *reinterpret_cast<Type *>(static_cast<char *>(record) + row.offset);
}

template <class Type> const Type &member(const void *record, const Row &row)
{
    return *reinterpret_cast<const Type *>(static_cast<const char *>(record) + row.offset);
}

template <class Type> const Type &member_at(const void *record, std::int32_t offset)
{
    return *reinterpret_cast<const Type *>(static_cast<const char *>(record) + offset);
}

inline bool is_only_written(const Table &table, const Row &row)
{
    return &row >= &table.row(table.keys);
}

// The functions whose frames must not lie under those of the recursive ones, which pile up with the depth of a
// message.
#define NETPUBLIC_LEAF [[gnu::noinline]]

} // namespace netpublic

#endif
