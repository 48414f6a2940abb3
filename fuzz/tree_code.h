// Trees as bytes: what no text can say, such as empty names, texts beside elements and repeated nodes.
#ifndef NETPUBLIC_FUZZ_TREE_CODE_H
#define NETPUBLIC_FUZZ_TREE_CODE_H

#include "bytes.h"

#include <string>

class TiXmlElement;

namespace fuzz {

// Appends the nodes that the bytes describe to the root. At most 2,000 nodes, 200 levels.
void decode_tree(Bytes &input, TiXmlElement &root);
// The bytes for the children of a root.
std::string encode_tree(const TiXmlElement &root);

} // namespace fuzz

#endif
