// Reads records by walking the children of an element: each goes to the row whose key its name answers to.
#ifndef NETPUBLIC_READING_H
#define NETPUBLIC_READING_H

#include "engine/table.h"

namespace netpublic {

// The children of an element into a record. 0, or -1 with the rows' log lines; what was read before stays.
int read_record(const Table &table, void *record, Node element);

// A message body into the envelope's payload; the body of every <name>_x2s.
int parse_message(net_param_t *param, Node body, const Table &message);

// The check in front of it, with its log line: are envelope, payload and body there, and is the payload's size the
// given one, if the message compares it? 0 or -1.
int check_parser(const Table &message, const net_param_t *param, Node body, std::size_t size);

// The body of an exported component reader: a null record or node is -1, and so is a node that is no element or
// whose name does not answer to the key, if one is given.
int read_component(void *record, Node node, const char *key, const Table &table);
// The same, which logs the table's entry line for that ...
int read_component_logged(void *record, Node node, const char *key, const Table &table);
// ... or only for what is null; with the reader's own name where the table bears another one.
int read_component_noting_null(void *record, Node node, const char *key, const Table &table,
                               const char *function = nullptr);
// As read_component(), of an element that is a value itself: the table's first row reads it.
int read_component_value(void *record, Node node, const char *key, const Table &table);
bool is_component(const void *record, Node node, const char *key);

// One item of an indexed list of `capacity` records, the first of which is given: see Field::indexed(). With `seen`,
// bit i of it tells that a child has answered to row i, and the hooks for rows without a child do not run.
int read_indexed(const Table &table, void *first, int capacity, Node element, std::uint32_t *seen);

#ifdef NETPUBLIC_DESCRIBED
// What the engine tells the tools about a walk, and at which row a writer has failed. A child is `placeless` that is
// refused unread, because it stands in front of the child that chooses its item's record.
enum class Event { taken, ignored, refused, placeless, missing, unwritten };

struct Watch {
    void *context;
    // `row` is null for an ignored child, `node` the element that lacks a child for a missing one, null in a writer.
    void (*happened)(void *context, Event event, const Table &table, const Row *row, void *record, Node node);
};
extern thread_local const Watch *watch;

// One child into the record by the row at this index, for tests of single rows.
int read_child(const Table &table, void *record, unsigned row, Node child);
#endif

} // namespace netpublic

#endif
