// The engine: reads and writes records by walking the rows of their tables.
#ifndef NETPUBLIC_ENGINE_H
#define NETPUBLIC_ENGINE_H

#include "engine/describe.h"

#include <net_types.h>

#include <climits>

class TiXmlNode;
class TiXmlElement;

namespace netpublic {

// Does an element of this name answer to the key? The name's own length bounds the comparison, so any
// beginning of the key answers to it, the empty name to every key.
bool answers_to(const char *name, const char *key);
// Is this the whole key, case aside?
bool is_named(const char *name, const char *key);
// Are a component reader's record and node there, and does the node's name answer to the key, if one is given?
bool is_component(const void *record, const TiXmlNode *node, const char *key);

// A message body into the envelope's payload; the body of every <name>_x2s.
int parse_message(net_param_t *param, TiXmlNode *node, const Table &message);
// The payload as a root element under the parent; the body of every <name>_s2x. The parent is
// untouched when the writer fails.
int write_message(net_param_t *param, TiXmlElement *parent, const Table &message);

// The root element alone, of a record that is not in an envelope.
int append_root(const Table &message, const void *record, TiXmlElement *parent);

// The body of an exported component reader: a null record or node fails, and so does a node whose
// name does not answer to the key, if one is given.
int read_component(void *record, TiXmlNode *node, const char *key, const Table &table);

// The children of an element into a record, and back. Null is not checked.
int read_record(const Table &table, void *record, TiXmlNode *element);
int write_record(const Table &table, const void *record, TiXmlElement *element);

// For readers that choose the record, or look at the row, while they walk: the row of one chain of keys
// that the child answers to, or no_row; `likely` is 0 at the first child. Then one child into a record,
// by its row: 0, or -1 with the row's log lines. Hooks, presets and required keys play no part.
constexpr unsigned no_row = UINT_MAX;
unsigned find_child(const Table &table, const TiXmlNode *child, unsigned *likely);
int read_child(const Table &table, void *record, unsigned row, TiXmlNode *child);

// The checks of parse_message() and write_message(), with their log line, for messages that walk by
// themselves. 0 or -1.
int check_parser(const Table &message, const net_param_t *param, const TiXmlNode *node);
int check_writer(const Table &message, const net_param_t *param, const TiXmlElement *parent);

#ifdef NETPUBLIC_DESCRIBED
// What the engine tells the tools about a walk.
enum class Event { taken, ignored, refused, missing };

struct Watch {
    void *context;
    // `row` is null for an ignored child, `node` the element that lacks a child for a missing one.
    void (*happened)(void *context, Event event, const Table &table, const Row *row, void *record, TiXmlNode *node);
};
extern thread_local const Watch *watch;
#endif

} // namespace netpublic

#endif
