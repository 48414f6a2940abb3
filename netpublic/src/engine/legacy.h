// On its way out: what messages that still walk by themselves call.
#ifndef NETPUBLIC_LEGACY_H
#define NETPUBLIC_LEGACY_H

#include "engine/matching.h"
#include "engine/reading.h"

namespace netpublic {

inline bool is_element(const TiXmlNode *node)
{
    return node->Type() == TiXmlNode::TINYXML_ELEMENT;
}
inline int check_parser(const Table &message, const net_param_t *param, const TiXmlNode *node)
{
    return check_parser(message, param, node, message.record_size);
}
inline unsigned find_child(const Table &table, const TiXmlNode *child, unsigned *likely)
{
    return find_expected(table, child->Value(), *likely);
}
int read_child(const Table &table, void *record, unsigned row, Node child);

} // namespace netpublic

#endif
