// Writes records as the children of an element, row by row in the order of writing.
#ifndef NETPUBLIC_WRITING_H
#define NETPUBLIC_WRITING_H

#include "engine/table.h"

namespace netpublic {

// The record as children of the element; `index` is its place in a list. 0 or -1; a null element fails.
int write_record(const Table &table, const void *record, Element element, unsigned index = 0);

// What a wire's function has given, as an element of the item's name; nothing when it has given nothing.
Give write_given(Give decision, const Table &wire, const void *record, const Item &item, Element parent);

// The payload as a root element under the parent; the body of every <name>_s2x. The parent is untouched when the
// writer fails.
int write_message(net_param_t *param, TiXmlElement *parent, const Table &message);

// The check in front of it, with its log line. 0 or -1.
int check_writer(const Table &message, const net_param_t *param, const TiXmlElement *parent);

// The root element alone, of a record that is not in an envelope.
int append_root(const Table &message, const void *record, Element parent);

// The record's children at the end of an element of the host's; all of them or none. The body of exported
// component writers.
int write_component(const Table &table, const void *record, Element element);

} // namespace netpublic

#endif
