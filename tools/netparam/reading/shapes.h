// Values by the shape of their member: as text for people, as JSON for programs, as a drawing.
#ifndef NETPARAM_SHAPES_H
#define NETPARAM_SHAPES_H

#include "model/rows.h"
#include "reading/item.h"

namespace netparam {

bool all_zero(const char *bytes, std::size_t size);

void set(Item &item, const std::string &text, Json value);
void set_text(Item &item, const char *text, std::size_t size);
// One element of a member.
void set_scalar(Item &item, const char *at, const netpublic::Detail &detail);
// Numbers in one line; zeros at the end are only counted.
void set_numbers(Item &item, const char *at, const netpublic::Detail &detail, std::size_t count);

// The cells of a row's member, as many as the record says.
void set_grid(Item &item, const RecordView<const char> &view, unsigned index);
// 7 x 24 numbers, and 7 x 24 sets of alarm types.
void set_week(Item &item, const char *at);
void set_schedule(Item &item, const time_section_t (&section)[7][24]);
// The hours of seven days as the bits of a number each.
void set_hours(Item &item, const char *at);
// A code for each day of a month, as the first letter of its word; "none" is a dot.
void set_month(Item &item, const netpublic::WordTable &words, const char *at, int days);

void set_word(Item &item, const netpublic::WordTable &words, int code);
void set_mask(Item &item, const netpublic::WordTable &words, unsigned int mask);

} // namespace netparam

#endif
